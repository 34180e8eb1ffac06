// The colour and file dialogs, shown with Qt's.
#pragma once

#include "platform/dialogs.h"

namespace spellwick {

class QtDialogs : public Dialogs {
  public:
    std::optional<i32> PickColour(i32 start) override;
    std::optional<std::size_t> PickOne(const std::string& title, const std::string& text,
                                       const std::vector<std::string>& choices) override;
    std::optional<std::filesystem::path> PickFileToOpen(const FileQuestion& question) override;
    std::optional<std::filesystem::path> PickFileToSave(const FileQuestion& question) override;
};

}  // namespace spellwick
