// The window of the practice assist tool: what it knows, what it receives and sends, and the
// controls for the player.
#pragma once

#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTimer>
#include <map>

#include "practice/practice_tool.h"

namespace spellwick::practice {

class ToolWindow : public QMainWindow {
    Q_OBJECT

  public:
    // The tool outlives the window.
    explicit ToolWindow(PracticeTool& tool);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    QWidget* MakePack();
    QWidget* MakeCharacter();
    QWidget* MakePrograms();
    QWidget* MakeLog();
    QLayout* MakeButtons();
    void MakeMenu();
    void Change(int sign);
    void Refresh();
    void ShowPrograms();
    void Add(const ToolEvent& event);
    void Paint(QListWidgetItem& item) const;

    PracticeTool& m_tool;
    QTimer m_refresh;
    QLabel* m_status = nullptr;
    QTableWidget* m_pack = nullptr;
    QTableWidget* m_skills = nullptr;
    QProgressBar* m_mana = nullptr;
    QListWidget* m_programs = nullptr;
    QListWidget* m_log = nullptr;
    QSpinBox* m_amount = nullptr;
    QPushButton* m_gain = nullptr;
    QPushButton* m_lose = nullptr;
    QPushButton* m_fizzle = nullptr;
    QPushButton* m_close = nullptr;
    QPushButton* m_open = nullptr;
    std::map<Fault, QAction*> m_lasting;
};

}  // namespace spellwick::practice
