// Texts with markers: any bytes are expanded, or fail at a number without a figure.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "model/formula_text.h"
#include "text/characters.h"
#include "text/number_forms.h"
#include "text/runtime_failure.h"

namespace {

using namespace spellwick;

// A naive reference: expands one marker at a time, searching from the start each time.
std::string ExpandSlowly(std::string text, const FormulaTexts& figures) {
    constexpr std::string_view kMarker = "#Formula";
    for (;;) {
        const std::size_t at = text.find(kMarker);
        if (at == std::string::npos) {
            return std::string(TrimBlanks(text));
        }
        const std::string_view ahead = std::string_view(text).substr(at + kMarker.size());
        const i32 number = ToI32(NumericPrefix(FirstCharacters(ahead, 2)));
        std::string next = text.substr(0, at);
        next += TrimBlanks(figures(number));
        next += SkipCharacters(ahead, 3);
        text = TrimBlanks(next);
    }
}

template <typename Expand>
std::string Outcome(Expand expand) {
    try {
        return expand();
    } catch (const RuntimeFailure& failure) {
        if (failure.Kind() != FailureKind::kSubscript) {
            std::abort();
        }
        return "failed";
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FormulaTexts kFigures = BuildFormulaTexts(
        {.magery = 65, .evalInt = 70, .intelligence = 80, .spiritSpeak = 55, .targetResist = 67},
        3);
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string fast =
        Outcome([&] { return std::string(TrimBlanks(ExpandFormulas(text, kFigures))); });
    const std::string slow = Outcome([&] { return ExpandSlowly(std::string(text), kFigures); });
    if (fast != slow) {
        std::abort();
    }
    return 0;
}
