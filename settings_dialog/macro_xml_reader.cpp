#include "settings_dialog/macro_xml_reader.h"

#include <QXmlStreamReader>
#include <algorithm>
#include <optional>

#include "text/utf8.h"

namespace spellwick {

namespace {

constexpr std::string_view kUtf8Mark = "\xef\xbb\xbf";
constexpr std::size_t kMostDepth = 16;

// The reader compares each attribute of a tag with all others, so a tag must not be too long.
constexpr std::size_t kMostTagBytes = 8192;

bool HasLongTag(std::string_view bytes) {
    std::size_t at = 0;
    while (at < bytes.size()) {
        const std::size_t next = std::min(bytes.find('<', at + 1), bytes.size());
        if (next - at > kMostTagBytes) {
            return true;
        }
        at = next;
    }
    return false;
}

XmlAttributes AttributesOf(const QXmlStreamReader& reader) {
    XmlAttributes attributes;
    for (const QXmlStreamAttribute& attribute : reader.attributes()) {
        attributes.emplace_back(attribute.qualifiedName().toUtf8().toStdString(),
                                attribute.value().toUtf8().toStdString());
    }
    return attributes;
}

// Goes through the file once. The reader counts in units of UTF-16; places are wanted in bytes.
class Reading {
  public:
    explicit Reading(std::string_view bytes)
        : m_bytes(bytes), m_textBegin(bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0) {
        m_place = m_textBegin;
        m_reader.setNamespaceProcessing(false);
        m_reader.addData(QString::fromUtf8(bytes.data() + m_textBegin,
                                           static_cast<qsizetype>(bytes.size() - m_textBegin)));
    }

    std::variant<MacroXml, std::string> Run() {
        while (!m_reader.atEnd()) {
            m_reader.readNext();
            if (const std::optional<std::string> refusal = TakeToken()) {
                return *refusal;
            }
        }
        if (m_reader.hasError()) {
            return "It is damaged in line " + std::to_string(m_reader.lineNumber()) + ": " +
                   m_reader.errorString().toStdString();
        }
        return m_xml;
    }

  private:
    std::optional<std::string> TakeToken() {
        switch (m_reader.tokenType()) {
            case QXmlStreamReader::StartDocument:
                return CheckEncoding();
            case QXmlStreamReader::DTD:
                return "It declares a type of document, which no macro file does.";
            case QXmlStreamReader::EntityReference:
                return "It refers to something outside it, which no macro file does.";
            case QXmlStreamReader::StartElement:
                return Open();
            case QXmlStreamReader::EndElement:
                Close();
                return std::nullopt;
            default:
                return std::nullopt;
        }
    }

    std::optional<std::string> CheckEncoding() const {
        const QStringView encoding = m_reader.documentEncoding();
        if (!encoding.isEmpty() && encoding.compare(u"utf-8", Qt::CaseInsensitive) != 0) {
            return "It is not written in UTF-8.";
        }
        return std::nullopt;
    }

    std::optional<std::string> Open() {
        if (m_depth == 0) {
            if (m_reader.qualifiedName() != u"macros") {
                return "It is no macro file: it holds no list of macros.";
            }
            m_xml.rootTagEnd = PlaceOfReader();
        } else if (m_depth == 1) {
            m_inMacro = m_reader.qualifiedName() == u"macro";
            if (m_inMacro) {
                const std::size_t end = PlaceOfReader();
                m_xml.macros.push_back(
                    {m_bytes.rfind('<', end - 1), end, AttributesOf(m_reader), {}});
            }
        } else if (m_inMacro && m_reader.qualifiedName() == u"action") {
            m_xml.macros.back().actions.push_back(AttributesOf(m_reader));
        }
        return ++m_depth > kMostDepth
                   ? std::optional<std::string>("It is nested more deeply than any macro file.")
                   : std::nullopt;
    }

    void Close() {
        if (--m_depth == 0) {
            const std::size_t end = PlaceOfReader();
            m_xml.endTagBegin = end == m_xml.rootTagEnd ? end : m_bytes.rfind('<', end - 1);
        }
    }

    // Behind the last byte of the tag that was read: no tag has a '<' in it but its first byte.
    std::size_t PlaceOfReader() {
        const qint64 units = m_reader.characterOffset();
        while (m_units < units && m_place < m_bytes.size()) {
            const auto byte = static_cast<unsigned char>(m_bytes[m_place]);
            // The first byte of a character counts, and twice beyond the basic plane.
            m_units += (byte & 0xC0U) == 0x80U ? 0 : byte >= 0xF0U ? 2 : 1;
            ++m_place;
        }
        while (m_place < m_bytes.size() &&
               (static_cast<unsigned char>(m_bytes[m_place]) & 0xC0U) == 0x80U) {
            ++m_place;
        }
        return m_place;
    }

    std::string_view m_bytes;
    std::size_t m_textBegin;
    std::size_t m_place = 0;
    qint64 m_units = 0;  // before m_place
    QXmlStreamReader m_reader;
    MacroXml m_xml;
    std::size_t m_depth = 0;
    bool m_inMacro = false;
};

}  // namespace

std::variant<MacroXml, std::string> ReadMacroXml(const std::string& bytes) {
    if (bytes.size() > kMostXmlBytes) {
        return "It is larger than any macro file.";
    }
    if (bytes.find('\0') != std::string::npos || ValidUtf8(bytes) != bytes) {
        return "It is not written in UTF-8.";
    }
    // The toolkit's reader passes over a second mark without counting it.
    if (bytes.starts_with(std::string(kUtf8Mark) + std::string(kUtf8Mark))) {
        return "It has two marks of UTF-8 at its start.";
    }
    if (HasLongTag(bytes)) {
        return "It has a tag that is longer than any of a macro file.";
    }
    return Reading(bytes).Run();
}

}  // namespace spellwick
