// The tab of general options: the player, the main window, casting, meditation and the warning
// limit.
#pragma once

#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QRadioButton>
#include <array>

#include "settings_dialog/common_dialog.h"
#include "settings_dialog/controls.h"
#include "settings_dialog/settings_tab.h"
#include "widgets/entry_box.h"

namespace spellwick {

// A clickable patch of colour.
class ColourPatch : public QAbstractButton {
    Q_OBJECT

  public:
    explicit ColourPatch(QWidget* parent);

    void SetColour(Colour colour);
    Colour BackColour() const { return m_colour; }

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Colour m_colour = 0;
};

class GeneralTab : public SettingsTab {
    Q_OBJECT

  public:
    GeneralTab(const SettingsServices& services, CommonDialog& commonDialog, QWidget* parent);

    void Load() override;
    QWidget* FirstControl() override { return ComboUOwindow; }
    QWidget* ControlFor(const Target& target) override {
        return target.way == Way::kNecroReagents ? CheckShowNecroRegs : FirstControl();
    }

    // Called when the dialog becomes active: selects CurrentPlayerName, hides the timer options.
    void Activate();

    void ClickUOwindow();
    void ClickAlwaysOnTop();
    void ClickDisplayVertical();
    void ClickCasting();
    void ClickMeditation();
    void ClickShowNecroRegs();
    void ChangeMana();
    void ChangeYellow();
    void ClickColor();
    void ClickSpellTimer();

    ChoiceBox* ComboUOwindow;
    QCheckBox* CheckAlwaysOnTop;
    QCheckBox* CheckDisplayVertical;
    QCheckBox* CheckShowNecroRegs;
    QCheckBox* CheckCasting;
    QCheckBox* CheckMeditation;
    EntryBox* TextMana;
    EntryBox* TextYellow;
    ColourPatch* LabelColor;
    QGroupBox* Frame2;
    std::array<QRadioButton*, 3> optSpellTimer{};

  signals:
    // Another player has been loaded; the main window's UpdatePage follows.
    void PlayerChanged();

  private:
    QCheckBox* MakeOption(const char* name, const char* caption, void (GeneralTab::*clicked)());
    EntryBox* MakeNumber(const char* name, const char* accessibleName,
                         void (GeneralTab::*changed)());
    void MakeTimerOptions();
    void PlaceControls();

    CommonDialog& m_commonDialog;
};

}  // namespace spellwick
