// The tithing points: a label, and a box that lies over it while they are edited.
#pragma once

#include <QLabel>
#include <QObject>
#include <functional>

#include "main_window/services.h"
#include "widgets/counter_box.h"

namespace spellwick {

class Tithes : public QObject {
    Q_OBJECT

  public:
    Tithes(const MainWindowServices& services, QWidget* form);

    void BeginEdit();
    void LostFocus();
    bool IsEditing() const;

    // Colours the label by what a spell needs.
    void Highlight(const SpellRecord& spell);

    // Writes the number to the label alone, or to the label and the box.
    void ShowOnLabel(const std::string& number);
    void ShowEverywhere(const std::string& number);

    // Called after every change that can move a castable amount.
    std::function<void()> OnAmountsChanged = [] {};

    QLabel* LabelTithes = nullptr;
    CounterBox* TxtTithes = nullptr;
    QLabel* ImageAnkh = nullptr;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    const MainWindowServices& m_services;
    SharedState& m_state;
};

}  // namespace spellwick
