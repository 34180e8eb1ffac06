// Macro codes, digit strings and the other texts of the store: any bytes are read or fail in a
// defined way, and what was written is read back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "store/digit_string.h"
#include "store/macro_code.h"
#include "store/section_name.h"
#include "store/text_forms.h"
#include "text/runtime_failure.h"

namespace {

using namespace spellwick;

template <typename Call>
void MayFail(Call call) {
    try {
        call();
    } catch (const RuntimeFailure& failure) {
        if (failure.Kind() != FailureKind::kTypeMismatch &&
            failure.Kind() != FailureKind::kOverflow) {
            std::abort();
        }
    }
}

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void TryMacro(std::string_view text) {
    const Macro macro = ReadMacroCode(text);
    // An empty key cannot be read back, since the code is too short.
    Require(!macro.key.empty());
    Require(ReadMacroCode(MacroCode(macro)) == macro);
    SavedOrDefaultMacro(static_cast<i32>(text.size() % 96) + 1, text);
}

void TryDigits(std::string_view text) {
    MayFail([&] {
        ReagentAmounts amounts;
        ReadDigitString(text, amounts);
        const std::string written = DigitString(amounts);
        Require(written.size() == 15);
        ReagentAmounts again;
        ReadDigitString(written, again);
        Require(UnsavedDigitString(amounts).size() == 16);
    });
}

void TryForms(std::string_view text) {
    MayFail([&] { ReadBool(text); });
    MayFail([&] { ReadI16(text); });
    MayFail([&] { ReadByte(text); });
    MayFail([&] { ReadStock(text); });
    MayFail([&] { ReadTithing(text); });
    MayFail([&] {
        const float value = ReadFloat(text);
        Require(ReadFloat(FloatText(value)) == value);
    });
    Require(SectionOfPlayer(text) != kGlobalSection);
    Require(PlayerOfSection(SectionOfPlayer(text)) == text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    TryMacro(text);
    TryDigits(text);
    TryForms(text);
    return 0;
}
