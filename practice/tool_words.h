// Puts the lines on the assist tool's socket into words for its log.
#pragma once

#include <QString>
#include <string_view>

#include "practice/tool_lines.h"

namespace spellwick::practice {

// Of UTF-8.
QString FromView(std::string_view text);

// For example "Garlic: 60"; the bare numbers of an unknown message.
QString WordsOf(const ToolMessage& message);

// The same for a line in either direction.
QString WordsOfLine(const QString& line);

}  // namespace spellwick::practice
