#include "app/qt_dialogs.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>

#include "widgets/ground.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

QString Filter(const std::string& name, const std::string& pattern) {
    return QStringLiteral("%1 (%2)").arg(ToQString(name).section(QLatin1Char('('), 0, 0).trimmed(),
                                         ToQString(pattern));
}

std::optional<std::filesystem::path> Pick(QFileDialog& dialog, const FileQuestion& question) {
    dialog.setObjectName(QStringLiteral("FileDialog"));
    const QString filter = Filter(question.filterName, question.filterPattern);
    QStringList filters(filter);
    if (!question.otherFilterName.empty()) {
        filters << Filter(question.otherFilterName, question.otherFilterPattern);
    }
    dialog.setNameFilters(filters);
    const QString extension = ToQString(question.defaultExtension);
    const auto follow = [&dialog, filter, extension,
                         other = ToQString(question.otherFilterPattern).remove(QLatin1Char('*'))](
                            const QString& chosen) {
        if (!extension.isEmpty()) {
            dialog.setDefaultSuffix(chosen == filter ? extension : other);
        }
    };
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, follow);
    if (question.startsWithOther) {
        dialog.selectNameFilter(filters.constLast());
    }
    follow(dialog.selectedNameFilter());
    if (!question.fileName.empty()) {
        dialog.selectFile(ToQString(question.fileName));
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return QFileInfo(dialog.selectedFiles().constFirst()).filesystemFilePath();
}

QString StartFolder(const FileQuestion& question) {
    const QString folder =
        question.folder.empty() ? QString() : QFileInfo(question.folder).filePath();
    return folder.isEmpty() || !QDir(folder).exists() ? QDir::homePath() : folder;
}

}  // namespace

std::optional<i32> QtDialogs::PickColour(i32 start) {
    const QColor picked = QColorDialog::getColor(ToQColor(start), QApplication::activeWindow());
    if (!picked.isValid()) {
        return std::nullopt;
    }
    return picked.red() | (picked.green() << 8) | (picked.blue() << 16);
}

std::optional<std::size_t> QtDialogs::PickOne(const std::string& title, const std::string& text,
                                              const std::vector<std::string>& choices) {
    QStringList rows;
    for (const std::string& choice : choices) {
        rows.append(ToQString(choice));
    }
    QInputDialog dialog(QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("FormChoice"));
    dialog.setWindowTitle(ToQString(title));
    dialog.setLabelText(ToQString(text));
    dialog.setOption(QInputDialog::UseListViewForComboBoxItems);
    dialog.setComboBoxItems(rows);
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    const qsizetype row = rows.indexOf(dialog.textValue());
    return row < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(row));
}

std::optional<std::filesystem::path> QtDialogs::PickFileToOpen(const FileQuestion& question) {
    QFileDialog dialog(QApplication::activeWindow(), ToQString(question.title),
                       StartFolder(question));
    dialog.setFileMode(QFileDialog::AnyFile);
    return Pick(dialog, question);
}

std::optional<std::filesystem::path> QtDialogs::PickFileToSave(const FileQuestion& question) {
    QFileDialog dialog(QApplication::activeWindow(), ToQString(question.title),
                       StartFolder(question));
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    return Pick(dialog, question);
}

}  // namespace spellwick
