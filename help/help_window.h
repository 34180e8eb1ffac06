// The help in a window of ours, for systems that have no program for the delivered text: chapters,
// search, and the controls as they look at this moment.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPixmap>
#include <QPushButton>
#include <QTextBrowser>
#include <vector>

#include "widgets/guarded_events.h"

namespace spellwick {

// The controls that go by a name in the help, with a small margin; null for an unknown name.
QPixmap PictureOfControls(QWidget& window, const QString& name);

class HelpWindow : public QDialog {
    Q_OBJECT

  public:
    // Both outlive it. It lies over `parent`, which may be a modal dialog.
    HelpWindow(QWidget& window, FailureSink& failures, QWidget* parent);

    // False if the program has no help text in it.
    bool Load();

    // A row of the list of chapters.
    void ShowChapter(int chapter);
    // Goes to the next place with the text of the search, or back to the one before, and begins
    // anew at the other end.
    void Find(bool backward);

    QListWidget* ListChapters;
    QTextBrowser* TextHelp;
    QLineEdit* TextSearch;
    QPushButton* CommandNext;
    QPushButton* CommandPrevious;
    QLabel* LabelSearch;  // says that nothing was found

  private:
    void MakeLayout();
    void ConnectAll();

    QWidget& m_window;
    const GuardedEvents m_events;
    std::vector<int> m_places;  // of the chapters, in characters
};

}  // namespace spellwick
