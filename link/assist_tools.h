// The table of assist tools: how their windows are told from others, and what their reports mean.
#pragma once

#include <array>
#include <filesystem>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "link/assist_tool.h"
#include "link/player_table.h"
#include "link/title_pattern.h"

namespace spellwick {

// The table beside the program, and the player's own in the settings' folder.
inline constexpr const char* kAssistToolsFile = "AssistTools.txt";

inline constexpr std::array<std::string_view, 7> kAssistToolColumns{
    "name", "title", "casts", "counts on request", "reports casts", "reports stock", "0x531"};

struct AssistToolRow {
    AssistTool tool;
    std::vector<TitlePattern> titles;
};

using AssistTools = Table<AssistToolRow>;  // the likelier first

AssistTools ReadAssistTools(std::istream& input);

// The table as it is delivered; it is part of the program, and has no fault.
std::string_view DeliveredAssistTools();

// The player's own table in this folder, else the delivered one.
LoadedTable<AssistToolRow> LoadAssistTools(
    const std::optional<std::filesystem::path>& folder = std::nullopt);

// The row of the tool that a window with this title belongs to, or null. Points into `rows`.
const AssistToolRow* FindAssistTool(const std::vector<AssistToolRow>& rows, std::string_view title);

}  // namespace spellwick
