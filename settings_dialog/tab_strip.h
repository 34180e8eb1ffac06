// The strip of a dialog's tabs. To screen readers it is one list of all tabs, also of one that
// stands elsewhere in the dialog.
#pragma once

#include <QWidget>
#include <vector>

#include "widgets/page_button.h"

namespace spellwick {

class TabStrip : public QWidget {
    Q_OBJECT

  public:
    explicit TabStrip(QWidget* parent);

    // Tells that a tab belongs to the strip. Before the tab gets a text, which a screen reader that
    // is at work asks for at once.
    void Add(PageButton& tab) { m_tabs.push_back(&tab); }
    const std::vector<PageButton*>& Tabs() const { return m_tabs; }

  private:
    std::vector<PageButton*> m_tabs;  // in their order
};

// A dialog with such a strip.
class TabbedDialog {
  public:
    virtual ~TabbedDialog() = default;
    // Null before it is made.
    virtual const TabStrip* Strip() const = 0;
};

// Has the toolkit ask strips, their tabs and their dialogs. After InstallSpoken, in the dialog's
// constructor; may be called any number of times.
void InstallTabStrip();

}  // namespace spellwick
