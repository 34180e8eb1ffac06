// Titles of other programs' windows as an X server hands them over: any bytes become valid UTF-8,
// each form by its own rule, and the names that are read out of the title are those that a search
// character by character finds.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <iconv.h>

#include "link/client_watch.h"
#include "platform/linux/x11_text.h"
#include "text/utf8.h"

namespace {

using namespace spellwick;

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

constexpr char kEscape = '\x1b';

std::u32string CodePoints(std::string_view text) {
    std::u32string codePoints;
    while (!text.empty()) {
        codePoints += TakeCodePoint(text);
    }
    return codePoints;
}

std::string FromCodePoints(const std::u32string& codePoints) {
    std::string text;
    for (const char32_t codePoint : codePoints) {
        AppendUtf8(text, codePoint);
    }
    return text;
}

// "Ultima Online - NAME (SHARD)", looked at one character at a time.
std::optional<TitleNames> ParseSlowly(const std::string& title) {
    constexpr std::size_t kBeforeName = 16;
    const std::u32string whole = CodePoints(title);
    const std::u32string names = whole.substr(std::min(kBeforeName, whole.size()));
    const std::size_t open = names.find(U'(');
    if (open == std::u32string::npos) {
        return std::nullopt;
    }
    Require(open > 0);
    const std::u32string shard = names.substr(open + 1);
    return TitleNames{FromCodePoints(names.substr(0, open - 1)),
                      FromCodePoints(shard.substr(0, shard.find(U')')))};
}

void TryNames(const std::string& title) {
    std::optional<TitleNames> names;
    try {
        names = ParseTitle(title);
    } catch (const RuntimeFailure& failure) {
        Require(failure.Kind() == FailureKind::kInvalidCall);
        const std::u32string whole = CodePoints(title);
        Require(whole.size() > 16 && whole[16] == U'(');
        return;
    }
    Require(names == ParseSlowly(title));
}

std::string Latin1(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        AppendUtf8(text, static_cast<unsigned char>(byte));
    }
    return text;
}

struct CloseIconv {
    void operator()(void* converter) const { iconv_close(converter); }
};

// The tables of a converter are files, which are read once as long as one converter is open.
std::vector<std::unique_ptr<void, CloseIconv>> OpenConverters() {
    std::vector<std::unique_ptr<void, CloseIconv>> open;
    for (const char* part :
         {"2", "3", "4", "5", "6", "7", "8", "9", "10", "13", "14", "15", "16"}) {
        open.emplace_back(iconv_open("UTF-8", (std::string("ISO-8859-") + part).c_str()));
    }
    return open;
}

// What holds of a compound text whatever the escapes in it mean.
void TryCompound(std::string_view bytes, const std::string& text) {
    if (bytes.find(kEscape) == std::string_view::npos) {
        Require(text == Latin1(bytes));
        // A stretch of UTF-8, and the return to what was before.
        const std::string stretch = "\x1b%G" + std::string(bytes) + "\x1b%@\xe9";
        Require(X11Text(X11TextForm::kCompoundText, stretch) == ValidUtf8(bytes) + "\xc3\xa9");
        const std::string cyrillic = "\x1b-L" + std::string(bytes) + "\x1b-A" + std::string(bytes);
        const std::string both = X11Text(X11TextForm::kCompoundText, cyrillic);
        Require(both.ends_with(text) && CodePoints(both).size() == 2 * bytes.size());
    }
    Require(CodePoints(text).size() <= bytes.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto kOpen = OpenConverters();
    if (size == 0) {
        return 0;
    }
    const std::string input(data + 1, data + size);
    const std::string_view bytes = std::string_view(input).substr(0, input.find('\0'));
    constexpr X11TextForm kForms[] = {X11TextForm::kUtf8, X11TextForm::kLatin1,
                                      X11TextForm::kCompoundText};
    const X11TextForm form = kForms[data[0] % 3];
    const std::string text = X11Text(form, input);
    Require(ValidUtf8(text) == text && text.find('\0') == std::string::npos);
    switch (form) {
        case X11TextForm::kUtf8:
            Require(text == ValidUtf8(bytes));
            break;
        case X11TextForm::kLatin1:
            Require(text == Latin1(bytes));
            break;
        case X11TextForm::kCompoundText:
            TryCompound(bytes, text);
            break;
    }
    TryNames(text);
    TryNames("Ultima Online - " + text);
    return 0;
}
