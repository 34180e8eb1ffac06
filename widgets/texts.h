// Converts between UTF-8 texts and QString.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace spellwick {

inline QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string ToText(const QString& text) {
    return text.toStdString();
}

// The name of a control in an array, such as "LabelAmount(3)".
inline QString IndexedName(const char* name, int index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

}  // namespace spellwick
