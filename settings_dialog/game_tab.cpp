#include "settings_dialog/game_tab.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QScrollArea>
#include <chrono>

#include "link/game_clients.h"
#include "model/updating_scope.h"

namespace spellwick {

namespace {

constexpr std::chrono::seconds kBetweenGameLooks{1};
constexpr int kListedWindows = 4;  // in sight at once
constexpr std::size_t kMostListed = 500;

// Screen readers speak what it says, since it has no other name.
QLabel* MakeText(QWidget* parent, const QString& name) {
    auto* label = Named(new QLabel(parent), name);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setFocusPolicy(Qt::NoFocus);
    return label;
}

// A row of the table, with the class in the column of this system.
TableRow RowOf(const GameTab& tab, bool x11) {
    const auto text = [](const QLineEdit* edit) { return ToText(edit->text().trimmed()); };
    return {text(tab.TextRowName),
            x11 ? text(tab.TextRowClass) : "",
            x11 ? "" : text(tab.TextRowClass),
            text(tab.TextRowTitle),
            text(tab.TextRowLogin),
            text(tab.TextRowShard),
            tab.CheckRowEnter->isChecked() ? "yes" : "no"};
}

}  // namespace

GameTab::GameTab(const SettingsServices& services, QWidget* parent)
    : SettingsTab(services, parent),
      CommandFirstSteps(MakeButton("CommandFirstSteps", "First steps")),
      LabelGame(MakeText(this, QStringLiteral("LabelGame"))),
      LabelNotice(MakeText(this, QStringLiteral("LabelNotice"))),
      ListWindows(Named(new QTreeWidget(this), QStringLiteral("ListWindows"),
                        QStringLiteral("Windows on the desktop"))),
      TextRowName(MakeEdit("TextRowName", "Client", "what you call it")),
      TextRowClass(MakeEdit("TextRowClass", "Class", "of the window")),
      TextRowTitle(MakeEdit("TextRowTitle", "Title in the game", "with {name}, {shard} and {any}")),
      TextRowLogin(MakeEdit("TextRowLogin", "Title at the login", "may be empty")),
      TextRowShard(MakeEdit("TextRowShard", "Shard", "if the title has none")),
      CheckRowEnter(Named(new QCheckBox(QStringLiteral("Enter behind a macro without text"), this),
                          QStringLiteral("CheckRowEnter"))),
      CommandMyGame(MakeButton("CommandMyGame", "This is my game")),
      CommandTable(MakeButton("CommandTable", "Open the table")),
      CommandLook(MakeButton("CommandLook", "Look again")),
      LabelTool(MakeText(this, QStringLiteral("LabelTool"))),
      CheckFront(Named(new QCheckBox(QStringLiteral("Type only while the game is in front"), this),
                       QStringLiteral("CheckFront"))),
      Typing(new TypingOptions(services, this)),
      ToolsInWine(new WineToolsOption(services, this)),
      Spells(new OwnSpellTable(services, this)),
      Icons(new IconOptions(services, this)),
      Data(new YourData(services, this)) {
    MakePage();
    ConnectAll();
    m_look.setInterval(kBetweenGameLooks);
}

QLineEdit* GameTab::MakeEdit(const char* name, const char* caption, const char* hint) {
    auto* edit = Named(new QLineEdit(this), QLatin1String(name), QLatin1String(caption));
    edit->setPlaceholderText(QLatin1String(hint));
    return edit;
}

QPushButton* GameTab::MakeButton(const char* name, const char* caption) {
    auto* button = Named(new QPushButton(QLatin1String(caption), this), QLatin1String(name));
    button->setAutoDefault(false);
    return button;
}

QGroupBox* GameTab::MakeGroup(const char* caption) {
    auto* group = new QGroupBox(QLatin1String(caption), this);
    m_groups->addWidget(group);
    return group;
}

// The tab may be larger than the dialog.
void GameTab::MakePage() {
    auto* page = new QWidget(this);
    m_groups = new QVBoxLayout(page);
    m_groups->addWidget(CommandFirstSteps, 0, Qt::AlignLeft);
    auto* found = new QVBoxLayout(MakeGroup("Your game"));
    found->addWidget(LabelGame);
    found->addWidget(LabelNotice);
    auto* windows = new QVBoxLayout(MakeGroup("Another window"));
    ListWindows->setHeaderLabels({QStringLiteral("Class"), QStringLiteral("Title")});
    ListWindows->setRootIsDecorated(false);
    ListWindows->setUniformRowHeights(true);
    ListWindows->setTabKeyNavigation(false);
    const int line = ListWindows->fontMetrics().height() + 4;
    ListWindows->setFixedHeight((kListedWindows + 1) * line + 8);
    ListWindows->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    windows->addWidget(ListWindows);
    windows->addWidget(MakeRowEdits());
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(CommandMyGame);
    buttons->addStretch();
    buttons->addWidget(CommandTable);
    buttons->addWidget(CommandLook);
    windows->addLayout(buttons);
    auto* tool = new QVBoxLayout(MakeGroup("Assist tool"));
    tool->addWidget(LabelTool);
    tool->addWidget(ToolsInWine);
    (new QVBoxLayout(MakeGroup("Spell table")))->addWidget(Spells);
    m_options = new QVBoxLayout(MakeGroup("Options"));
    m_options->addWidget(CheckFront);
    m_options->addWidget(Typing);
    m_options->addWidget(Icons);
    auto* own = MakeGroup("Your data");
    (new QVBoxLayout(own))->addWidget(Data);
    own->setHidden(m_services.data == nullptr);
    m_groups->addStretch();

    auto* scroll = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("ScrollGame"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(page);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(scroll);
}

QWidget* GameTab::MakeRowEdits() {
    auto* edits = new QWidget(this);
    m_row = new QFormLayout(edits);
    m_row->setContentsMargins(0, 0, 0, 0);
    m_row->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    const auto pair = [this](QLineEdit* left, QLineEdit* right) {
        auto* row = new QHBoxLayout;
        row->addWidget(left);
        row->addWidget(new QLabel(right->accessibleName(), this));
        row->addWidget(right);
        m_row->addRow(left->accessibleName(), row);
    };
    pair(TextRowName, TextRowClass);
    m_row->addRow(TextRowTitle->accessibleName(), TextRowTitle);
    m_row->addRow(TextRowLogin->accessibleName(), TextRowLogin);
    auto* last = new QHBoxLayout;
    last->addWidget(TextRowShard);
    last->addWidget(CheckRowEnter);
    m_row->addRow(TextRowShard->accessibleName(), last);
    return edits;
}

void GameTab::ConnectAll() {
    m_events.On(CommandFirstSteps, &QPushButton::clicked, "opening the first steps",
                [this] { emit FirstStepsWanted(); });
    m_events.On(CheckFront, &QCheckBox::clicked, "changing an option", [this] { ClickFront(); });
    m_events.On(ListWindows, &QTreeWidget::itemSelectionChanged, "choosing a window",
                [this] { ProposeRow(); });
    m_events.On(CommandMyGame, &QPushButton::clicked, "adding a game", [this] { ClickMyGame(); });
    m_events.On(CommandTable, &QPushButton::clicked, "opening the table", [this] { ClickTable(); });
    m_events.On(CommandLook, &QPushButton::clicked, "listing the windows", [this] { LookAgain(); });
    m_events.On(&m_look, &QTimer::timeout, "showing the game", [this] { ShowFound(); });
}

void GameTab::Load() {
    const UpdatingScope updating(m_state);
    CheckFront->setChecked(m_state.CheckFront);
    Typing->Load();
    ToolsInWine->Load();
    Icons->Load();
}

void GameTab::showEvent(QShowEvent* event) {
    SettingsTab::showEvent(event);
    m_events.Run("showing the game", [this] {
        m_look.start();
        LookAgain();
        Spells->Load();
    });
}

void GameTab::hideEvent(QHideEvent* event) {
    SettingsTab::hideEvent(event);
    m_look.stop();
}

void GameTab::ClickFront() {
    SetSwitch(m_services, kCheckFrontKey, CheckFront->isChecked());
}

void GameTab::ShowFound() {
    LabelGame->setText(ToQString(m_services.game.FoundText()));
    const QString notice = ToQString(m_services.game.NoticeText());
    LabelNotice->setText(notice);
    LabelNotice->setVisible(!notice.isEmpty());
    LabelTool->setText(ToQString(m_services.companion.LinkReport()));
}

void GameTab::LookAgain() {
    ShowFound();
    m_windows = m_services.game.Windows();
    if (m_windows.size() > kMostListed) {
        m_windows.resize(kMostListed);
    }
    ListWindows->clear();
    for (const TopLevelWindow& window : m_windows) {
        const QString title = ToQString(window.title).simplified();
        auto* item = new QTreeWidgetItem(ListWindows, {ToQString(window.windowClass), title});
        item->setToolTip(1, title);
    }
    ProposeRow();
}

void GameTab::ProposeRow() {
    const QList<QTreeWidgetItem*> chosen = ListWindows->selectedItems();
    const bool any = !chosen.isEmpty();
    const std::initializer_list<QWidget*> edits{TextRowName,  TextRowClass, TextRowTitle,
                                                TextRowLogin, TextRowShard, CheckRowEnter,
                                                CommandMyGame};
    for (QWidget* edit : edits) {
        edit->setEnabled(any);
    }
    const TableRow row = any ? m_services.game.Propose(m_windows.at(static_cast<std::size_t>(
                                   ListWindows->indexOfTopLevelItem(chosen[0]))))
                             : TableRow(kGameClientColumns.size());
    TextRowName->setText(ToQString(row[0]));
    TextRowClass->setText(ToQString(row[1].empty() ? row[2] : row[1]));
    TextRowTitle->setText(ToQString(row[3]));
    TextRowLogin->setText(ToQString(row[4]));
    TextRowShard->setText(ToQString(row[5]));
    CheckRowEnter->setChecked(row[6] == "yes");
}

void GameTab::ClickMyGame() {
    const bool x11 = m_services.game.ClassKind() == WindowClassKind::kX11;
    const std::string trouble = m_services.game.AddRow(RowOf(*this, x11));
    if (!trouble.empty()) {
        m_services.boxes.Show({.text = trouble, .icon = BoxIcon::kExclamation});
        return;
    }
    ListWindows->clearSelection();
    ShowFound();
}

void GameTab::ClickTable() {
    std::string trouble = m_services.game.MakeOwnTable();
    if (trouble.empty() && !m_services.desktop.OpenDocument(*m_services.game.OwnTable())) {
        trouble = NotOpened(*m_services.game.OwnTable());
    }
    if (!trouble.empty()) {
        m_services.boxes.Show({.text = trouble, .icon = BoxIcon::kExclamation});
    }
}

}  // namespace spellwick
