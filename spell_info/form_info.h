// The spell info window: everything known about one spell for the character's values. They can be
// changed here to try others.
#pragma once

#include <QLabel>
#include <QWidget>
#include <array>

#include "model/failure_guard.h"
#include "model/shared_state.h"
#include "platform/desktop.h"
#include "widgets/counter_box.h"
#include "widgets/guarded_events.h"
#include "widgets/pictures.h"

class QGridLayout;
class QScrollArea;

namespace spellwick {

// All references outlive the window.
struct InfoServices {
    SharedState& state;
    Desktop& desktop;
    FailureSink& failures;
};

class FormInfo : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kBoxCount = 8;

    explicit FormInfo(const InfoServices& services);

    // Shows the window, restores it if minimised, raises it and gives it the focus.
    void ComeForward();

    // Shows a row. RuntimeFailure: subscript for a row outside the table or a text that asks for an
    // unknown figure, overflow for a value that does not fit its figure.
    void DisplayInfo(i32 row);

    CounterBox& TextBox(int index) { return *m_boxes[static_cast<std::size_t>(index)]; }

  protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void MakeLines();
    void MakeBoxes(QGridLayout& grid);
    void ShowValue(int index);
    void ShowText(int line, const std::string& text);
    void FitTextArea();
    void ShowPicture(i32 row);
    void ChangeBox(int index);
    void LeaveBox();
    void LeaveFocusedBox();

    InfoServices m_services;
    SharedState& m_state;
    const GuardedEvents m_events;
    IconClip m_icons;
    QScrollArea* m_textArea = nullptr;
    QLabel* m_picture = nullptr;
    std::array<QLabel*, 8> m_lines{};
    std::array<CounterBox*, kBoxCount> m_boxes{};
};

}  // namespace spellwick
