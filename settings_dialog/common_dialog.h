// The one colour and file dialog of the settings dialog. Keeps two things until the program ends:
// the name of the last file, and whether a cancel counts as a failure.
#pragma once

#include <string>

#include "model/colours.h"
#include "platform/dialogs.h"

namespace spellwick {

class CommonDialog {
  public:
    explicit CommonDialog(Dialogs& dialogs) : m_dialogs(dialogs) {}

    // From now on, cancelling any of the dialogs throws RuntimeFailure (cancelled).
    void ReportCancelAsFailure() { m_cancelFails = true; }

    // The chosen colour; `start` if the user cancels and that is no failure.
    Colour ShowColour(Colour start);

    // Ask for a file, offering FileName instead of the question's own name. The full path of the
    // chosen file becomes FileName; a cancel leaves FileName as it was.
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
