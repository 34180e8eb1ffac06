// The one colour and file dialog of the settings dialog. What it holds stays until the end of the
// run: the name of the last file, and whether a cancel is a failure.
#pragma once

#include <string>

#include "model/colours.h"
#include "platform/dialogs.h"

namespace spellwick {

class CommonDialog {
  public:
    explicit CommonDialog(Dialogs& dialogs) : m_dialogs(dialogs) {}

    // From now on the cancel of any of the dialogs throws RuntimeFailure (cancelled).
    void ReportCancelAsFailure() { m_cancelFails = true; }

    // The colour chosen, `start` after a cancel that is no failure.
    Colour ShowColour(Colour start);

    // Ask for a file, with FileName standing in the dialog in place of the question's own name. The
    // whole path of a chosen file becomes FileName; a cancel leaves it.
    void ShowOpen(FileQuestion question);
    void ShowSave(FileQuestion question);

    std::string FileName;

  private:
    void Take(const std::optional<std::filesystem::path>& file);
    void RequireAnswer(bool answered) const;

    Dialogs& m_dialogs;
    bool m_cancelFails = false;
};

}  // namespace spellwick
