// What the program asks of the desktop around it.
#pragma once

#include <filesystem>
#include <string>

#include "text/number_types.h"

namespace spellwick {

class Desktop {
  public:
    virtual ~Desktop() = default;

    // The short sound of a dropped key.
    virtual void Beep() = 0;

    // Opens a file with the program that the desktop has for it, without waiting for it. False when
    // the file is not there or no opener could be started.
    [[nodiscard]] virtual bool OpenDocument(const std::filesystem::path& file) = 0;

    // Whether the desktop has a program for files of this one's kind; true where it does not say.
    [[nodiscard]] virtual bool HasProgramFor(const std::filesystem::path& /*file*/) { return true; }

    // Opens a page in the user's browser. False when no opener could be started.
    [[nodiscard]] virtual bool OpenWebPage(const std::string& address) = 0;

    // Keeps a window of this program above all others, or lets it go, without moving, hiding or
    // activating it. False when the desktop has no such state.
    [[nodiscard]] virtual bool SetTopMost(WindowHandle window, bool topMost) = 0;

    // Keeps a window of this program out of the desktop's list of windows, from before it is shown
    // until it is hidden. False when the desktop has no such state.
    [[nodiscard]] virtual bool LeaveTaskList(WindowHandle window) = 0;

    // Gives a window of this program the keyboard, on behalf of the user. False where the toolkit
    // is to do it.
    [[nodiscard]] virtual bool Activate(WindowHandle /*window*/) { return false; }
};

}  // namespace spellwick
