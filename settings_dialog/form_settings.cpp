#include "settings_dialog/form_settings.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>

#include "model/updating_scope.h"
#include "store/twips.h"
#include "widgets/form_font.h"

namespace spellwick {

namespace {

constexpr std::array<const char*, kTabCount> kTabCaptions{
    "Spells && Reagents", "User Spells", "Macros",   "Skills", "Reagent Management",
    "Spell texts",        "About",       "Settings", "Game"};

// Keeps the user's unfinished entry while the program refills its edit.
class UnfinishedEntry {
  public:
    explicit UnfinishedEntry(QWidget* focused) : m_box(qobject_cast<QLineEdit*>(focused)) {
        if (m_box != nullptr && m_box->isModified()) {
            m_text = m_box->text();
        }
    }

    void PutBack() {
        if (m_text && m_box->text() != *m_text) {
            m_box->setText(*m_text);
            m_box->setModified(true);
        }
    }

  private:
    QLineEdit* m_box;
    std::optional<QString> m_text;
};

}  // namespace

FormSettings::FormSettings(const SettingsServices& services, QWidget* parent)
    : QDialog(parent),
      m_services(services),
      m_state(services.state),
      m_events(services.failures, this),
      m_commonDialog(services.dialogs) {
    InstallSpoken();
    InstallTabStrip();
    setObjectName(QStringLiteral("FormSettings"));
    setWindowTitle(QStringLiteral("Spellwick - Settings"));
    setAccessibleName(QStringLiteral("Settings"));
    setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowCloseButtonHint);
    setFont(FormFont());
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    MakeScroll();
    MakeStrip();
    MakeTabs();
    MakeButtons();
    MakeShortcuts();
    NameLists();
    LightenBoxes();
}

void FormSettings::MakeStrip() {
    m_strip = new TabStrip(this);
    auto* strip = new QHBoxLayout(m_strip);
    strip->setContentsMargins(2, 2, 2, 0);
    strip->setSpacing(1);
    for (int tab = 0; tab < kTabCount; ++tab) {
        MakeTabButton(tab);
        if (tab != kGameTab) {
            strip->addWidget(CheckTab[static_cast<std::size_t>(tab)]);
        }
    }
    m_content->addWidget(m_strip);
}

void FormSettings::MakeTabButton(int tab) {
    auto* button = new PageButton(this);
    m_strip->Add(*button);
    button->setObjectName(IndexedName("CheckTab", tab));
    button->setText(QLatin1String(kTabCaptions[static_cast<std::size_t>(tab)]));
    button->setAccessibleName(button->text().replace(QStringLiteral("&&"), QStringLiteral("&")));
    button->SetBoldWhenPressed(false);
    button->SetSpokenRole(QAccessible::PageTab);
    button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    button->installEventFilter(this);
    CheckTab[static_cast<std::size_t>(tab)] = button;
    m_events.On(button, &QAbstractButton::clicked, "choosing a tab",
                [this, tab] { ClickCheckTab(tab); });
}

void FormSettings::MakeTabs() {
    m_spells = new SpellsTab(m_services, this);
    m_userSpells = new UserSpellsTab(m_services, this);
    m_macros = new MacrosTab(m_services, m_commonDialog, this);
    m_skills = new SkillsTab(m_services, this);
    m_reagents = new ReagentsTab(m_services, this);
    m_spellTexts = new SpellTextsTab(m_services, this);
    m_about = new AboutTab(m_services, this);
    m_general = new GeneralTab(m_services, m_commonDialog, this);
    m_game = new GameTab(m_services, this);
    m_events.On(m_general, &GeneralTab::PlayerChanged, "choosing a player",
                [this] { RefreshDialog(); });
    m_events.On(m_game, &GameTab::FirstStepsWanted, "opening the first steps",
                [this] { OpenFirstSteps(); });
    m_events.On(m_skills, &SkillsTab::FocusGivenAway, "entering a chance",
                [this] { Command1->setFocus(Qt::OtherFocusReason); });
    m_events.On(m_game->Data, &YourData::Replaced, "taking in other data", [this] {
        m_outdated = true;
        hide();
    });
    m_tabs = {m_spells,     m_userSpells, m_macros,  m_skills, m_reagents,
              m_spellTexts, m_about,      m_general, m_game};
    m_panels = new QStackedLayout;
    for (int tab = 0; tab < kTabCount; ++tab) {
        Tab(tab).setObjectName(IndexedName("TabFrame", tab + 1));
        Tab(tab).setAccessibleName(CheckTab[static_cast<std::size_t>(tab)]->accessibleName());
        m_panels->addWidget(&Tab(tab));
    }
    m_content->addLayout(m_panels, 1);
}

void FormSettings::MakeButtons() {
    Command1 = new QPushButton(QStringLiteral("&OK"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setAccessibleName(QStringLiteral("OK"));
    Command1->installEventFilter(this);
    m_events.On(Command1, &QPushButton::clicked, "closing the settings",
                [this] { ClickCommand1(); });
    // The strip above is full, so the last of its buttons stands in the corner.
    CheckTab[kGameTab]->setFixedHeight(Command1->sizeHint().height());
    auto* row = new QHBoxLayout;
    row->setContentsMargins(2, 0, 9, 8);
    row->addWidget(CheckTab[kGameTab]);
    row->addStretch();
    row->addWidget(Command1);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);

    // The Enter key presses it. It is out of sight and not reachable by Tab.
    CommandDummy = new QPushButton(this);
    CommandDummy->setObjectName(QStringLiteral("CommandDummy"));
    CommandDummy->setAccessibleName(QStringLiteral("Take the entry"));
    CommandDummy->setFocusPolicy(Qt::NoFocus);
    CommandDummy->setAutoDefault(false);
    CommandDummy->setDefault(true);
    m_events.On(CommandDummy, &QPushButton::clicked, "taking an entry",
                [this] { ClickCommandDummy(); });
}

void FormSettings::MakeShortcuts() {
    const struct {
        QKeyCombination keys;
        int step = 0;
    } rows[] = {{Qt::CTRL | Qt::Key_Tab, 1},
                {Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, -1},
                {Qt::CTRL | Qt::Key_PageDown, 1},
                {Qt::CTRL | Qt::Key_PageUp, -1}};
    for (const auto& row : rows) {
        auto* shortcut = new QShortcut(QKeySequence(row.keys), this);
        m_events.On(shortcut, &QShortcut::activated, "choosing a tab",
                    [this, step = row.step] { TurnTabs(step); });
    }
}

void FormSettings::Form_Load() {
    m_place = m_services.atStart.place;
    {
        const UpdatingScope updating(m_state);
        CheckTab[0]->setChecked(true);
    }
    m_panels->setCurrentIndex(0);
    const std::initializer_list<SettingsTab*> all{m_spells,     m_macros,   m_general,
                                                  m_userSpells, m_reagents, m_skills,
                                                  m_spellTexts, m_about,    m_game};
    for (SettingsTab* tab : all) {
        IgnoreFailure([&] { tab->Load(); });
    }
    RefreshWhatWorks();
    FitSize();
    // Sets the place of the frame, since there is no native window yet.
    move(QPoint(PixelsOf(m_place.left), PixelsOf(m_place.top)));
    move(PlaceToOpen());
}

std::array<SettingsTab*, 5> FormSettings::TabsOfRefresh() const {
    return {m_spells, m_userSpells, m_spellTexts, m_reagents, m_skills};
}

void FormSettings::RefreshDialog() {
    m_shownPlayer = m_state.CurrentPlayerName;
    for (SettingsTab* tab : TabsOfRefresh()) {
        tab->Refresh();
    }
}

void FormSettings::RefreshWhatWorks() {
    m_shownPlayer = m_state.CurrentPlayerName;
    for (SettingsTab* tab : TabsOfRefresh()) {
        IgnoreFailure([&] { tab->Refresh(); });
    }
}

void FormSettings::UpdateChance() {
    // Another character has logged in while the dialog is open. Its edits must not keep the
    // previous character's data: losing the focus would write them to the new one.
    if (isVisible() && m_shownPlayer != m_state.CurrentPlayerName) {
        m_general->Activate();
        RefreshWhatWorks();
    }
    m_skills->UpdateChance();
}

void FormSettings::Show(const Screen& screen, const Changes& changes) {
    if (changes.reportedMagery) {
        m_skills->ShowReportedSkill(screen.reportedMagery);
    }
    if (changes.reportedIntelligence) {
        m_skills->ShowReportedInt(screen.reportedIntelligence);
    }
    if (changes.chances) {
        UpdateChance();
    }
}

void FormSettings::Form_Activate() {
    // Where the desktop has no such state, the window stays as it is.
    static_cast<void>(
        m_services.desktop.SetTopMost(static_cast<WindowHandle>(winId()), m_state.AlwaysOnTop));
    m_general->Activate();
    const bool waits = Tab(m_panels->currentIndex()).TakesEntriesWhenLeft();
    UnfinishedEntry entry(waits ? focusWidget() : nullptr);
    RefreshDialog();
    entry.PutBack();
}

void FormSettings::ClickCheckTab(int tab) {
    if (m_state.Updating) {
        return;
    }
    {
        const UpdatingScope updating(m_state);
        for (PageButton* button : CheckTab) {
            button->setChecked(false);
        }
        CheckTab[static_cast<std::size_t>(tab)]->setChecked(true);
    }
    m_panels->setCurrentIndex(tab);
    if (QWidget* first = Tab(tab).FirstControl()) {
        first->setFocus(Qt::OtherFocusReason);
    }
}

void FormSettings::TurnTabs(int step) {
    const int tab = (m_panels->currentIndex() + kTabCount + step) % kTabCount;
    if (LeaveEntryFor(*CheckTab[static_cast<std::size_t>(tab)])) {
        ClickCheckTab(tab);
    }
}

bool FormSettings::LeaveEntryFor(QWidget& next) {
    auto* const entry = qobject_cast<EntryBox*>(focusWidget());
    next.setFocus(Qt::OtherFocusReason);
    if (entry != nullptr && focusWidget() == &next) {
        entry->Commit();
    }
    return focusWidget() == &next;
}

// A press moves the focus before it arrives. If an entry was refused then, its edit has the focus
// again and the user has been told; to go on would ask the edit once more.
bool FormSettings::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress && focusWidget() != watched) {
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void FormSettings::ClickCommand1() {
    if (!LeaveEntryFor(*Command1)) {
        return;
    }
    m_services.companion.SaveAll();
    KeepPlace();
    hide();
}

void FormSettings::ClickCommandDummy() {
    UpdateChance();
    CommandDummy->setFocus(Qt::OtherFocusReason);
}

void FormSettings::TakeEntryAtEnd() {
    if (isVisible()) {
        m_macros->DropRefusedKeys();
        LeaveEntryFor(*Command1);
    }
}

StoreResult FormSettings::Form_Unload() {
    KeepPlace();
    const bool hasPlace = !isMinimized() && !isMaximized() && !isFullScreen();
    return m_services.companion.SaveMacros(hasPlace ? std::optional(m_place) : std::nullopt);
}

// pos() is the place of the frame only while the dialog is shown; hiding it removes the frame.
void FormSettings::KeepPlace() {
    if (isVisible() && !isMinimized() && !isMaximized() && !isFullScreen()) {
        const QPoint shown(PixelsOf(m_place.left), PixelsOf(m_place.top));
        if (pos() != shown && pos() != m_aside) {
            m_place = {.top = TwipsOf(y()), .left = TwipsOf(x())};
        }
    }
}

void FormSettings::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || !isActiveWindow()) {
        return;
    }
    m_events.Run("showing the settings", [&] {
        if (m_justShown) {
            // Everything is filled already; only now is there a window to raise.
            m_justShown = false;
            static_cast<void>(m_services.desktop.SetTopMost(static_cast<WindowHandle>(winId()),
                                                            m_state.AlwaysOnTop));
        } else {
            Form_Activate();
        }
    });
}

void FormSettings::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous()) {
        m_justShown = true;
        m_events.Run("showing the settings", [&] {
            // A screen may have gone since the last time.
            if (const QPoint place = PlaceToOpen(); place != pos()) {
                move(place);
            }
            // An edit may still hold an entry that was refused.
            m_macros->RefreshMacroPage();
            Form_Activate();
            if (m_due != Way::kNone) {
                // Behind the dialog's own activation.
                QTimer::singleShot(0, this, [this] {
                    m_events.Run("following a hint", [this] { DoWhatIsDue(); });
                });
            }
        });
    }
}

void FormSettings::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    if (m_firstSteps != nullptr && !event->spontaneous()) {
        m_firstSteps->hide();
    }
}

void FormSettings::closeEvent(QCloseEvent* event) {
    event->ignore();
    m_events.Run("closing the settings", [&] { Close(); });
}

void FormSettings::reject() {
    m_events.Run("closing the settings", [&] {
        m_macros->DropRefusedKeys();
        Close();
    });
}

void FormSettings::Close() {
    if (LeaveEntryFor(*Command1)) {
        m_services.companion.ReportSave(Form_Unload());
        hide();
    }
}

void FormSettings::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    CommandDummy->move(0, height() + CommandDummy->height());
}

}  // namespace spellwick
