// What the lines of the assist tool's socket say, in words for its log.
#pragma once

#include <QString>

#include "practice/tool_lines.h"

namespace spellwick::practice {

// For example "Garlic: 60"; the numbers as they stand for a message that is not known.
QString WordsOf(const ToolMessage& message);

// The same for a line of either direction.
QString WordsOfLine(const QString& line);

}  // namespace spellwick::practice
