#include "settings_dialog/common_dialog.h"

#include "text/runtime_failure.h"

namespace spellwick {

void CommonDialog::RequireAnswer(bool answered) const {
    if (!answered && m_cancelFails) {
        throw RuntimeFailure(FailureKind::kCancelled, "The dialog was cancelled.");
    }
}

Colour CommonDialog::ShowColour(Colour start) {
    const std::optional<i32> picked = m_dialogs.PickColour(start);
    RequireAnswer(picked.has_value());
    return picked.value_or(start);
}

void CommonDialog::Take(const std::optional<std::filesystem::path>& file) {
    RequireAnswer(file.has_value());
    if (file) {
        FileName = file->string();
    }
}

void CommonDialog::ShowOpen(FileQuestion question) {
    question.fileName = FileName;
    Take(m_dialogs.PickFileToOpen(question));
}

void CommonDialog::ShowSave(FileQuestion question) {
    question.fileName = FileName;
    Take(m_dialogs.PickFileToSave(question));
}

}  // namespace spellwick
