#include "settings_dialog/general_tab.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "model/updating_scope.h"
#include "store/catalogue.h"
#include "text/number_forms.h"
#include "widgets/form_font.h"
#include "widgets/ground.h"

namespace spellwick {

namespace {

constexpr int kNumberWidth = 48;

}  // namespace

ColourPatch::ColourPatch(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

QSize ColourPatch::sizeHint() const {
    return {Scaled(kNumberWidth), fontMetrics().height() + 6};
}

void ColourPatch::SetColour(Colour colour) {
    m_colour = colour;
    update();
}

void ColourPatch::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette::ColorRole rim = hasFocus() ? QPalette::Highlight : QPalette::Mid;
    painter.setPen(QPen(palette().color(rim), hasFocus() ? 2.0 : 1.0));
    painter.setBrush(ToQColor(m_colour));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1.0, 1.0, -1.0, -1.0), 3.0, 3.0);
}

GeneralTab::GeneralTab(const SettingsServices& services, CommonDialog& commonDialog,
                       QWidget* parent)
    : SettingsTab(services, parent),
      ComboUOwindow(Named(new ChoiceBox(this), QStringLiteral("ComboUOwindow"),
                          QStringLiteral("UO window name"))),
      CheckAlwaysOnTop(
          MakeOption("CheckAlwaysOnTop", "Always on Top", &GeneralTab::ClickAlwaysOnTop)),
      CheckDisplayVertical(MakeOption("CheckDisplayVertical", "Display main window vertically",
                                      &GeneralTab::ClickDisplayVertical)),
      CheckShowNecroRegs(MakeOption("CheckShowNecroRegs", "Show Necromancer Reagents",
                                    &GeneralTab::ClickShowNecroRegs)),
      CheckCasting(MakeOption("CheckCasting", "Disable casting if not enough reagents or tithes",
                              &GeneralTab::ClickCasting)),
      CheckMeditation(MakeOption("CheckMeditation", "Start to Meditate when mana drops below",
                                 &GeneralTab::ClickMeditation)),
      TextMana(MakeNumber("TextMana", "Mana below which to meditate", &GeneralTab::ChangeMana)),
      TextYellow(MakeNumber("TextYellow", "Amount at which the indicator changes colour",
                            &GeneralTab::ChangeYellow)),
      LabelColor(Named(new ColourPatch(this), QStringLiteral("LabelColor"),
                       QStringLiteral("Colour of the warning"))),
      Frame2(Named(new QGroupBox(QStringLiteral("Spell Timer"), this), QStringLiteral("Frame2"))),
      m_commonDialog(commonDialog) {
    ComboUOwindow->setToolTip(
        QStringLiteral("While the game is running, Spellwick follows the character in it. Another "
                       "one chosen here gives way to it within a second."));
    m_events.On(ComboUOwindow, &QComboBox::activated, "choosing a player",
                [this] { ClickUOwindow(); });
    m_events.On(LabelColor, &QAbstractButton::clicked, "choosing a colour",
                [this] { ClickColor(); });
    MakeTimerOptions();
    PlaceControls();
}

QCheckBox* GeneralTab::MakeOption(const char* name, const char* caption,
                                  void (GeneralTab::*clicked)()) {
    auto* option = Named(new QCheckBox(QLatin1String(caption), this), QLatin1String(name));
    m_events.On(option, &QCheckBox::clicked, "changing an option",
                [this, clicked] { (this->*clicked)(); });
    return option;
}

EntryBox* GeneralTab::MakeNumber(const char* name, const char* accessibleName,
                                 void (GeneralTab::*changed)()) {
    auto* box = Named(new EntryBox(this), QLatin1String(name), QLatin1String(accessibleName));
    box->setAlignment(Qt::AlignRight);
    box->setFixedWidth(Scaled(kNumberWidth));
    m_events.On(box, &QLineEdit::textChanged, "changing an option",
                [this, changed] { (this->*changed)(); });
    return box;
}

void GeneralTab::MakeTimerOptions() {
    constexpr std::array<const char*, 3> kCaptions{"Off", "Text", "Graphic"};
    auto* row = new QHBoxLayout(Frame2);
    for (std::size_t mode = 0; mode < kCaptions.size(); ++mode) {
        auto* option = Named(new QRadioButton(QLatin1String(kCaptions[mode]), Frame2),
                             IndexedName("optSpellTimer", static_cast<int>(mode)));
        row->addWidget(option);
        m_events.On(option, &QRadioButton::clicked, "changing an option",
                    [this] { ClickSpellTimer(); });
        optSpellTimer[mode] = option;
    }
    row->addStretch();
}

void GeneralTab::PlaceControls() {
    auto* player = new QHBoxLayout;
    QLabel* name = MakeCaption(this, 8, QStringLiteral("UO window name"));
    name->setToolTip(QStringLiteral(
        "The character whose settings these are, by the title of the game's window."));
    player->addWidget(name);
    player->addWidget(ComboUOwindow, 1);

    auto* mana = new QHBoxLayout;
    mana->addWidget(CheckMeditation);
    mana->addWidget(TextMana);
    mana->addStretch();

    auto* warning = new QHBoxLayout;
    warning->addWidget(
        MakeCaption(this, 39, QStringLiteral("Reagent/Spell indicator changes color at ")));
    warning->addWidget(TextYellow);
    warning->addWidget(MakeCaption(this, 0, QStringLiteral("to")));
    warning->addWidget(LabelColor);
    warning->addWidget(MakeCaption(this, 41, QStringLiteral("(Click color to change)")));
    warning->addStretch();

    auto* all = new QVBoxLayout(this);
    all->setSpacing(8);
    all->addLayout(player);
    all->addSpacing(4);
    all->addWidget(CheckAlwaysOnTop);
    all->addWidget(CheckDisplayVertical);
    all->addWidget(CheckShowNecroRegs);
    all->addSpacing(4);
    all->addWidget(CheckCasting);
    all->addLayout(mana);
    all->addSpacing(4);
    all->addLayout(warning);
    all->addWidget(Frame2);
    all->addStretch();
}

void GeneralTab::Load() {
    const i32 mode = m_state.SpellTimerMode;
    if (mode >= 0 && mode < static_cast<i32>(optSpellTimer.size())) {
        optSpellTimer[static_cast<std::size_t>(mode)]->setChecked(true);
    }
    // ODDITY(player-list): a new character is missing from the list of window names until the
    // program is started again; kept because the list is read once, at the start.
    for (const std::string& player : m_services.atStart.players) {
        ComboUOwindow->addItem(ToQString(player));
    }
    if (ShowText(*TextMana, PlainText(i32{m_state.MeditateLevel}))) {
        ChangeMana();
    }
    if (ShowText(*TextYellow, PlainText(i32{m_state.RegYellow}))) {
        ChangeYellow();
    }
    LabelColor->SetColour(m_state.ColorWarn);
    const UpdatingScope updating(m_state);
    CheckMeditation->setChecked(m_state.Meditate);
    CheckShowNecroRegs->setChecked(m_state.ShowNecroRegs);
    CheckCasting->setChecked(m_state.DisableCasting);
    CheckAlwaysOnTop->setChecked(m_state.AlwaysOnTop);
    CheckDisplayVertical->setChecked(m_state.DisplayVertical);
}

void GeneralTab::Activate() {
    const UpdatingScope updating(m_state);
    const QString name = ToQString(m_state.CurrentPlayerName);
    int entry = ComboUOwindow->count() - 1;
    while (entry >= 0 && ComboUOwindow->itemText(entry) != name) {
        --entry;
    }
    ComboUOwindow->setCurrentIndex(entry);
    // The main window's own menu changes it too.
    CheckDisplayVertical->setChecked(m_state.DisplayVertical);
    // The timer window itself has the choice of display.
    Frame2->hide();
}

void GeneralTab::ClickUOwindow() {
    if (m_state.Updating) {
        return;
    }
    m_services.companion.SavePlayer();
    if (ComboUOwindow->currentIndex() >= 0) {
        m_state.CurrentPlayerName = ToText(ComboUOwindow->currentText());
    }
    m_services.companion.ParseClientTitle();
    m_services.companion.LoadPlayer();
    emit PlayerChanged();
    m_services.companion.UpdatePage();
}

void GeneralTab::ClickAlwaysOnTop() {
    // ODDITY(dialog-on-top): the settings dialog itself follows the option only when it next
    // becomes active; kept because the option is about the main window, which follows as soon as it
    // has the focus.
    SetSwitch(m_services, kAlwaysOnTopKey, CheckAlwaysOnTop->isChecked());
}

void GeneralTab::ClickDisplayVertical() {
    if (m_state.Updating) {
        return;
    }
    m_services.companion.ChooseArrangement(CheckDisplayVertical->isChecked());
}

void GeneralTab::ClickCasting() {
    SetSwitch(m_services, kDisableCastingKey, CheckCasting->isChecked());
}

void GeneralTab::ClickMeditation() {
    SetSwitch(m_services, kMeditateKey, CheckMeditation->isChecked());
}

void GeneralTab::ClickShowNecroRegs() {
    SetSwitch(m_services, kShowNecroRegsKey, CheckShowNecroRegs->isChecked());
    ClickDisplayVertical();
}

// ODDITY(limit-digits): only the first four characters of a mana limit or warning limit count,
// while the edit still shows all of them; kept because every number edit reads four.
// ODDITY(limit-exponent): a limit typed with an exponent, such as 9e9, ends the program; kept
// because no limit can hold such a number, and the data are saved all the same.
void GeneralTab::ChangeMana() {
    m_state.MeditateLevel = ToI16(FirstFour(ToText(TextMana->text())));
}

void GeneralTab::ChangeYellow() {
    m_state.RegYellow = ToI16(FirstFour(ToText(TextYellow->text())));
    m_services.companion.UpdateAmounts();
}

void GeneralTab::ClickColor() {
    m_commonDialog.ReportCancelAsFailure();
    IgnoreFailure([&] {
        LabelColor->SetColour(m_commonDialog.ShowColour(LabelColor->BackColour()));
        m_state.ColorWarn = LabelColor->BackColour();
    });
}

void GeneralTab::ClickSpellTimer() {
    for (std::size_t mode = 0; mode < optSpellTimer.size(); ++mode) {
        if (optSpellTimer[mode]->isChecked()) {
            m_services.companion.SetTimerMode(static_cast<i32>(mode));
        }
    }
    m_services.companion.SaveOption(kTimerModeKey.key, PlainText(m_state.SpellTimerMode));
}

}  // namespace spellwick
