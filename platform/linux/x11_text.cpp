#include "platform/linux/x11_text.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include <iconv.h>

#include "text/utf8.h"

namespace spellwick {

namespace {

constexpr char kEscape = '\x1b';

struct CloseIconv {
    using pointer = iconv_t;
    void operator()(iconv_t converter) const { iconv_close(converter); }
};

std::string FromLatin1(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        AppendUtf8(text, static_cast<unsigned char>(byte));
    }
    return text;
}

// No charset is Latin 1, in which every title begins: it needs none of iconv's tables, which are
// files.
std::string FromCharset(const char* charset, std::string_view bytes) {
    if (charset == nullptr || bytes.empty()) {
        return FromLatin1(bytes);
    }
    const iconv_t opened = iconv_open("UTF-8", charset);
    // NOLINTNEXTLINE: iconv's own way to say that it failed
    if (opened == reinterpret_cast<iconv_t>(-1)) {
        return FromLatin1(bytes);
    }
    const std::unique_ptr<iconv_t, CloseIconv> converter(opened);
    std::string text;
    for (char byte : bytes) {
        std::array<char, 8> out{};
        char* from = &byte;
        char* to = out.data();
        std::size_t fromLeft = 1;
        std::size_t toLeft = out.size();
        if (iconv(converter.get(), &from, &fromLeft, &to, &toLeft) ==
            static_cast<std::size_t>(-1)) {
            AppendUtf8(text, kReplacementCharacter);
        } else {
            text.append(out.data(), out.size() - toLeft);
        }
    }
    return text;
}

// The alphabets that replace the upper half, by their last escape character.
const char* UpperHalfCharset(char final) {
    switch (final) {
        case 'B':
            return "ISO-8859-2";
        case 'C':
            return "ISO-8859-3";
        case 'D':
            return "ISO-8859-4";
        case 'F':
            return "ISO-8859-7";
        case 'G':
            return "ISO-8859-6";
        case 'H':
            return "ISO-8859-8";
        case 'L':
            return "ISO-8859-5";
        case 'M':
            return "ISO-8859-9";
        case 'V':
            return "ISO-8859-10";
        case 'Y':
            return "ISO-8859-13";
        case '_':
            return "ISO-8859-14";
        case 'b':
            return "ISO-8859-15";
        case 'f':
            return "ISO-8859-16";
        default:
            return nullptr;
    }
}

class CompoundReader {
  public:
    explicit CompoundReader(std::string_view bytes) : m_rest(bytes) {}

    std::string Read() {
        while (!m_rest.empty()) {
            const std::size_t end = std::min(m_rest.find(kEscape), m_rest.size());
            AppendRun(m_rest.substr(0, end));
            m_rest.remove_prefix(end);
            if (!m_rest.empty()) {
                TakeEscape();
            }
        }
        return std::move(m_text);
    }

  private:
    enum class Mode : std::uint8_t { kOneByte, kUtf8, kUnknown };

    void AppendRun(std::string_view run) {
        switch (m_mode) {
            case Mode::kOneByte:
                m_text += FromCharset(m_charset, run);
                break;
            case Mode::kUtf8:
                m_text += ValidUtf8(run);
                break;
            case Mode::kUnknown:
                for (std::size_t index = 0; index < run.size(); index += 2) {
                    AppendUtf8(m_text, kReplacementCharacter);
                }
                break;
        }
    }

    void TakeEscape() {
        m_rest.remove_prefix(1);
        std::size_t length = 0;
        while (length < m_rest.size() && m_rest[length] >= ' ' && m_rest[length] <= '/') {
            ++length;
        }
        if (length == m_rest.size()) {
            m_rest = {};
            return;
        }
        const std::string_view between = m_rest.substr(0, length);
        const char final = m_rest[length];
        m_rest.remove_prefix(length + 1);
        if (between == "%") {
            m_mode = final == 'G' ? Mode::kUtf8 : Mode::kOneByte;
        } else if (between == "%/") {
            SkipExtendedSegment();
        } else if (between == "-") {
            m_mode = Mode::kOneByte;
            m_charset = UpperHalfCharset(final);
        } else if (between == "(") {
            m_mode = Mode::kOneByte;
        } else {
            m_mode = Mode::kUnknown;
        }
    }

    // A non-standard encoding, with two bytes of seven bits each for its length.
    void SkipExtendedSegment() {
        if (m_rest.size() < 2) {
            m_rest = {};
            return;
        }
        const auto seven = [this](std::size_t index) {
            return static_cast<std::size_t>(static_cast<unsigned char>(m_rest[index]) & 0x7f);
        };
        const std::size_t length = seven(0) * 128 + seven(1);
        m_rest.remove_prefix(std::min(length + 2, m_rest.size()));
        AppendUtf8(m_text, kReplacementCharacter);
    }

    std::string_view m_rest;
    std::string m_text;
    Mode m_mode = Mode::kOneByte;
    const char* m_charset = nullptr;
};

}  // namespace

std::string X11Text(X11TextForm form, std::string_view bytes) {
    bytes = bytes.substr(0, bytes.find('\0'));
    switch (form) {
        case X11TextForm::kLatin1:
            return FromLatin1(bytes);
        case X11TextForm::kCompoundText:
            return CompoundReader(bytes).Read();
        case X11TextForm::kUtf8:
            break;
    }
    return ValidUtf8(bytes);
}

}  // namespace spellwick
