#include "store/macro_writer.h"

#include <algorithm>
#include <map>
#include <utility>

namespace spellwick {

namespace {

constexpr std::string_view kTagBlanks = " \t\r\n";

// Where a value stands, from its first byte to behind its last one, without its quotes.
struct Span {
    std::size_t begin;
    std::size_t end;
};

// The values in a well-formed start tag, by the names of the attributes.
std::map<std::string_view, Span> ValuesInTag(std::string_view tag) {
    std::map<std::string_view, Span> values;
    std::size_t at = tag.find_first_of(kTagBlanks);
    while (at < tag.size()) {
        const std::size_t name = tag.find_first_not_of(kTagBlanks, at);
        const std::size_t equals = std::min(tag.find('=', at), tag.size());
        const std::size_t quote = std::min(tag.find_first_of("\"'", equals), tag.size());
        const std::size_t end = quote < tag.size() ? tag.find(tag[quote], quote + 1) : tag.size();
        if (end >= tag.size()) {
            break;
        }
        const std::size_t nameEnd = tag.find_first_of(" \t\r\n=", name);
        values[tag.substr(name, nameEnd - name)] = {quote + 1, end};
        at = end + 1;
    }
    return values;
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char sign : text) {
        switch (sign) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += static_cast<unsigned char>(sign) < ' ' ? ' ' : sign;
        }
    }
    return escaped;
}

std::string_view OnOff(bool on) {
    return on ? "True" : "False";
}

// A start tag and what is to be changed in it.
class TagEdits {
  public:
    explicit TagEdits(std::string_view tag) : m_tag(tag), m_values(ValuesInTag(tag)) {}

    void Set(std::string_view name, std::string_view value) {
        const auto found = m_values.find(name);
        if (found != m_values.end()) {
            m_edits.emplace(found->second.begin, std::pair(found->second, std::string(value)));
        } else {
            m_missing.append(" ").append(name).append("=\"").append(value).append("\"");
        }
    }

    // Calls with each place in the tag and its new text, from the first to the last.
    template <typename Call>
    void ForEach(const Call& call) const {
        for (const auto& [place, edit] : m_edits) {
            call(edit.first, edit.second);
        }
        if (!m_missing.empty()) {
            const std::size_t close = m_tag.size() - (m_tag.ends_with("/>") ? 2 : 1);
            const std::size_t last = m_tag.find_last_not_of(kTagBlanks, close - 1) + 1;
            call(Span{last, last}, m_missing);
        }
    }

    bool IsEmpty() const { return m_edits.empty() && m_missing.empty(); }

  private:
    std::string_view m_tag;
    std::map<std::string_view, Span> m_values;
    std::map<std::size_t, std::pair<Span, std::string>> m_edits;
    std::string m_missing;
};

// The blanks in front of the first macro if it begins its line.
std::string_view IndentOf(std::string_view bytes, const MacroXml& xml) {
    const std::size_t first = xml.macros.empty() ? 0 : xml.macros.front().tagBegin;
    const std::size_t line = bytes.substr(0, first).find_last_of("\r\n") + 1;
    const std::string_view before = bytes.substr(line, first - line);
    const bool isBlank = before.find_first_not_of(" \t") == std::string_view::npos;
    return isBlank ? before : std::string_view();
}

}  // namespace

MacroWriter::MacroWriter(std::string_view bytes, const MacroXml& xml)
    : m_bytes(bytes),
      m_xml(xml),
      m_lineEnd(bytes.find("\r\n") != std::string_view::npos ? "\r\n" : "\n") {
    const std::string_view indent = IndentOf(bytes, xml);
    if (!indent.empty()) {
        m_indent = indent;
    }
    for (const XmlMacro& macro : xml.macros) {
        m_names.emplace(ValueOf(macro.attributes, "name"));
    }
}

bool MacroWriter::Change(const XmlMacro& macro, i32 code, const Macro& wanted) {
    TagEdits edits(m_bytes.substr(macro.tagBegin, macro.tagEnd - macro.tagBegin));
    const auto setNumber = [&](std::string_view name, i32 value) {
        if (NumberOf(macro.attributes, name) != value) {
            edits.Set(name, std::to_string(value));
        }
    };
    const auto setMark = [&](std::string_view name, bool on) {
        if (IsOn(macro.attributes, name) != on) {
            edits.Set(name, OnOff(on));
        }
    };
    setNumber("key", code);
    setNumber("mousebutton", 0);
    setMark("wheelscroll", false);
    setMark("alt", wanted.alt);
    setMark("ctrl", wanted.ctrl);
    setMark("shift", wanted.shift);
    edits.ForEach([&](const Span& place, std::string_view text) {
        Replace(macro.tagBegin + place.begin, macro.tagBegin + place.end, text);
    });
    return !edits.IsEmpty();
}

void MacroWriter::Add(const std::string& spell, const ClientAction& action, i32 code,
                      const Macro& wanted) {
    std::string name = spell;
    for (int count = 2; !m_names.insert(name).second; ++count) {
        name = spell + " " + std::to_string(count);
    }
    const auto newLine = [this](int depth) -> std::string& {
        m_added.append(m_lineEnd);
        for (int level = 0; level < depth; ++level) {
            m_added.append(m_indent);
        }
        return m_added;
    };
    newLine(1).append("<macro name=\"").append(Escaped(name));
    m_added.append("\" key=\"").append(std::to_string(code));
    m_added.append("\" mousebutton=\"0\" wheelscroll=\"False\" wheelup=\"False\" alt=\"");
    m_added.append(OnOff(wanted.alt)).append("\" ctrl=\"").append(OnOff(wanted.ctrl));
    m_added.append("\" shift=\"").append(OnOff(wanted.shift)).append("\">");
    newLine(2).append("<actions>");
    newLine(3).append("<action code=\"").append(std::to_string(action.code));
    m_added.append("\" subcode=\"").append(std::to_string(action.subcode));
    m_added.append("\" submenutype=\"1\" />");
    newLine(2).append("</actions>");
    newLine(1).append("</macro>");
}

std::string MacroWriter::Finish() {
    if (!m_added.empty()) {
        AddTheNew();
    }
    m_out.append(m_bytes.substr(m_taken));
    return std::move(m_out);
}

void MacroWriter::Replace(std::size_t begin, std::size_t end, std::string_view text) {
    m_out.append(m_bytes.substr(m_taken, begin - m_taken)).append(text);
    m_taken = end;
}

// They go behind the last thing that the file holds, before the blanks in front of the end tag.
void MacroWriter::AddTheNew() {
    const std::string_view root = m_bytes.substr(0, m_xml.rootTagEnd);
    if (root.ends_with("/>")) {
        const std::size_t name = root.rfind('<') + 1;
        const std::size_t nameEnd = root.find_first_of(" \t\r\n/", name);
        const std::string endTag =
            "</" + std::string(root.substr(name, nameEnd - name)).append(">");
        Replace(root.size() - 2, root.size(),
                std::string(">").append(m_added).append(m_lineEnd).append(endTag));
        return;
    }
    const std::string_view before = m_bytes.substr(0, m_xml.endTagBegin);
    const std::size_t last = before.find_last_not_of(kTagBlanks) + 1;
    if (last == before.size()) {
        m_added.append(m_lineEnd);
    }
    Replace(last, last, m_added);
}

}  // namespace spellwick
