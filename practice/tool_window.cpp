#include "practice/tool_window.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QMenuBar>
#include <QTime>
#include <QVBoxLayout>

#include "practice/tool_words.h"

namespace spellwick::practice {
namespace {

constexpr int kMostLogLines = 2000;
constexpr int kRefreshMs = 30;
constexpr int kHalfLightness = 128;
constexpr int kWayRole = Qt::UserRole;

QTableWidget* MakeTable(int rows, const QString& name) {
    auto* table = new QTableWidget(rows, 2);
    table->setAccessibleName(name);
    table->horizontalHeader()->hide();
    table->verticalHeader()->hide();
    table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 5);
    table->setShowGrid(false);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table->setFixedHeight(rows * table->verticalHeader()->defaultSectionSize() +
                          2 * table->frameWidth());
    table->setTabKeyNavigation(false);
    return table;
}

void SetRow(QTableWidget& table, int row, const QString& name) {
    table.setItem(row, 0, new QTableWidgetItem(name));
    auto* value = new QTableWidgetItem;
    value->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    table.setItem(row, 1, value);
}

QGroupBox* InBox(const QString& title, QWidget* content) {
    auto* box = new QGroupBox(title);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(content);
    return box;
}

}  // namespace

ToolWindow::ToolWindow(PracticeTool& tool) : m_tool(tool) {
    setObjectName(QStringLiteral("ToolWindow"));
    setWindowTitle(tool.Title());
    MakeMenu();

    m_status = new QLabel;
    m_status->setObjectName(QStringLiteral("Status"));
    m_status->setTextFormat(Qt::PlainText);

    auto* centre = new QWidget;
    auto* grid = new QGridLayout(centre);
    grid->setContentsMargins(10, 8, 10, 10);
    grid->setSpacing(8);
    grid->addWidget(m_status, 0, 0, 1, 3);
    grid->addWidget(MakePack(), 1, 0, 2, 1);
    grid->addWidget(MakeCharacter(), 1, 1);
    grid->addWidget(MakePrograms(), 2, 1);
    grid->addWidget(MakeLog(), 1, 2, 2, 1);
    grid->addLayout(MakeButtons(), 3, 0, 1, 3);
    grid->setColumnStretch(2, 1);
    grid->setRowStretch(2, 1);
    setCentralWidget(centre);

    m_refresh.setSingleShot(true);
    m_refresh.setInterval(kRefreshMs);
    connect(&m_refresh, &QTimer::timeout, this, &ToolWindow::Refresh);
    connect(&m_tool, &PracticeTool::Changed, this, [this] {
        if (!m_refresh.isActive()) {
            m_refresh.start();
        }
    });
    connect(&m_tool, &PracticeTool::Happened, this, &ToolWindow::Add);
    m_pack->selectRow(0);
    Refresh();
    resize(860, sizeHint().height());
}

QWidget* ToolWindow::MakePack() {
    m_pack = MakeTable(static_cast<int>(kStockItems.size()), tr("Stock of the pack"));
    m_pack->setObjectName(QStringLiteral("Pack"));
    for (std::size_t item = 0; item < kStockItems.size(); ++item) {
        SetRow(*m_pack, static_cast<int>(item), FromView(kStockItems.at(item).name));
    }
    m_pack->setFixedWidth(190);
    auto* box = InBox(tr("Pack"), m_pack);
    box->layout()->setAlignment(Qt::AlignTop);
    return box;
}

QWidget* ToolWindow::MakeCharacter() {
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    m_mana = new QProgressBar;
    m_mana->setObjectName(QStringLiteral("Mana"));
    m_mana->setAccessibleName(tr("Mana"));
    m_mana->setFormat(tr("Mana %v of %m"));
    layout->addWidget(m_mana);
    m_skills = MakeTable(static_cast<int>(kCasterSkills.size()), tr("Skills"));
    m_skills->setObjectName(QStringLiteral("Skills"));
    m_skills->setSelectionMode(QAbstractItemView::NoSelection);
    m_skills->setFocusPolicy(Qt::NoFocus);
    for (std::size_t skill = 0; skill < kCasterSkills.size(); ++skill) {
        SetRow(*m_skills, static_cast<int>(skill), FromView(kCasterSkills.at(skill).name));
    }
    m_skills->setFixedWidth(220);
    layout->addWidget(m_skills);
    return InBox(tr("Character"), content);
}

QWidget* ToolWindow::MakePrograms() {
    m_programs = new QListWidget;
    m_programs->setObjectName(QStringLiteral("Programs"));
    m_programs->setAccessibleName(tr("Registered programs"));
    m_programs->setSelectionMode(QAbstractItemView::NoSelection);
    m_programs->setFocusPolicy(Qt::NoFocus);
    m_programs->setMinimumHeight(50);
    m_programs->setFixedWidth(220);
    m_programs->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    return InBox(tr("Registered programs"), m_programs);
}

QWidget* ToolWindow::MakeLog() {
    m_log = new QListWidget;
    m_log->setObjectName(QStringLiteral("Log"));
    m_log->setAccessibleName(tr("Log"));
    m_log->setSelectionMode(QAbstractItemView::NoSelection);
    m_log->setUniformItemSizes(true);
    m_log->setTextElideMode(Qt::ElideRight);
    m_log->setMinimumWidth(320);
    m_log->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    return InBox(tr("Log: \u2190 from programs, \u2192 to programs"), m_log);
}

QLayout* ToolWindow::MakeButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    m_amount = new QSpinBox;
    m_amount->setObjectName(QStringLiteral("Amount"));
    m_amount->setAccessibleName(tr("Amount to gain or lose"));
    m_amount->setRange(1, 1000);
    m_amount->setValue(10);
    row->addWidget(m_amount);
    const auto button = [&](const char* name, const QString& text, const QString& tip) {
        auto* made = new QPushButton(text);
        made->setObjectName(QLatin1String(name));
        made->setToolTip(tip);
        row->addWidget(made);
        return made;
    };
    m_gain = button("Gain", tr("&Gain"), tr("Add to the selected item in the pack"));
    m_lose = button("Lose", tr("&Lose"), tr("Take from the selected item in the pack"));
    row->addSpacing(16);
    m_fizzle = button("Fizzle", tr("Fi&zzle"), tr("The next cast fizzles and is not reported"));
    m_fizzle->setCheckable(true);
    row->addStretch(1);
    m_close = button("Close", tr("&Close"), tr("Programs no longer find the tool"));
    m_open = button("ComeBack", tr("Come &back"),
                    tr("The tool is back and has forgotten who registered"));
    connect(m_gain, &QPushButton::clicked, this, [this] { Change(1); });
    connect(m_lose, &QPushButton::clicked, this, [this] { Change(-1); });
    connect(m_fizzle, &QPushButton::clicked, this, [this](bool on) {
        m_tool.Script().SetFizzle(on ? ToolScript::Fizzle::kBeforeTheReport
                                     : ToolScript::Fizzle::kNone);
    });
    connect(m_close, &QPushButton::clicked, &m_tool, &PracticeTool::Close);
    connect(m_open, &QPushButton::clicked, &m_tool, &PracticeTool::Open);
    return row;
}

void ToolWindow::MakeMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Faults"));
    menu->setObjectName(QStringLiteral("Faults"));
    int group = 1;
    for (const FaultRow& row : AllFaults()) {
        if (row.group != group) {
            menu->addSeparator();
            group = row.group;
        }
        QAction* action = menu->addAction(FromView(row.caption));
        action->setObjectName(FromView(row.name));
        if (!row.lasts) {
            connect(action, &QAction::triggered, this, [this, row] { m_tool.Play(row.fault); });
            continue;
        }
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, row](bool on) {
            if (on) {
                m_tool.Play(row.fault);
            } else {
                m_tool.Mend(row.fault);
            }
        });
        m_lasting[row.fault] = action;
    }
    QMenu* character = menuBar()->addMenu(tr("C&haracter"));
    QAction* idle = character->addAction(tr("&Mana regenerates"));
    idle->setCheckable(true);
    idle->setChecked(true);
    connect(idle, &QAction::triggered, this, [this](bool on) {
        m_tool.Obey({.kind = ToolCommand::Kind::kIdle, .which = on ? 1 : 0});
    });
    connect(character->addAction(tr("Log &out for 5 seconds")), &QAction::triggered, this,
            [this] { m_tool.Obey({.kind = ToolCommand::Kind::kLogout}); });
}

void ToolWindow::Change(int sign) {
    m_tool.Obey({.kind = sign > 0 ? ToolCommand::Kind::kGain : ToolCommand::Kind::kLose,
                 .which = m_pack->currentRow(),
                 .amount = m_amount->value()});
}

void ToolWindow::Refresh() {
    const ToolScript& script = m_tool.Script();
    for (std::size_t item = 0; item < kStockItems.size(); ++item) {
        m_pack->item(static_cast<int>(item), 1)->setText(QString::number(script.Stock(item)));
    }
    for (std::size_t skill = 0; skill < kCasterSkills.size(); ++skill) {
        const int tenths = script.Skill(kCasterSkills.at(skill).number);
        m_skills->item(static_cast<int>(skill), 1)->setText(QString::number(tenths / 10.0, 'f', 1));
    }
    m_mana->setRange(0, std::max(script.Intelligence(), script.Mana()));
    m_mana->setValue(script.Mana());
    m_fizzle->setChecked(script.NextFizzle() != ToolScript::Fizzle::kNone);
    m_close->setEnabled(m_tool.IsOpen());
    m_open->setEnabled(!m_tool.IsOpen());
    m_status->setText(m_tool.IsOpen() ? tr("Open. Programs connected: %1").arg(m_tool.Connections())
                                      : tr("Closed. Programs cannot find the tool."));
    for (const auto& [fault, action] : m_lasting) {
        action->setChecked(m_tool.Lasts(fault));
    }
    ShowPrograms();
}

void ToolWindow::ShowPrograms() {
    QStringList lines;
    for (const int window : m_tool.Script().Registered()) {
        lines += m_tool.Reaches(window) ? tr("Window %1").arg(window)
                                        : tr("Window %1, gone").arg(window);
    }
    if (lines.isEmpty()) {
        lines += tr("none");
    }
    m_programs->clear();
    m_programs->addItems(lines);
}

void ToolWindow::Add(const ToolEvent& event) {
    QString text = event.text;
    if (event.way != ToolEvent::Way::kNote) {
        const QChar arrow = event.way == ToolEvent::Way::kIn ? QChar(0x2190) : QChar(0x2192);
        text = QStringLiteral("%1 %2").arg(arrow).arg(WordsOfLine(text));
    }
    if (event.second) {
        text = tr("(second) %1").arg(text);
    }
    const bool atEnd = m_log->count() == 0 || m_log->item(m_log->count() - 1)->isHidden() ||
                       !m_log->visualItemRect(m_log->item(m_log->count() - 1))
                            .intersected(m_log->viewport()->rect())
                            .isEmpty();
    auto* item = new QListWidgetItem(
        QTime::currentTime().toString(QStringLiteral("hh:mm:ss  ")) + text, m_log);
    item->setToolTip(event.text);
    item->setData(kWayRole, static_cast<int>(event.way));
    Paint(*item);
    if (m_log->count() > kMostLogLines) {
        delete m_log->takeItem(0);
    }
    if (atEnd) {
        m_log->scrollToBottom();
    }
}

void ToolWindow::Paint(QListWidgetItem& item) const {
    const bool dark = palette().color(QPalette::Base).lightness() < kHalfLightness;
    switch (static_cast<ToolEvent::Way>(item.data(kWayRole).toInt())) {
        case ToolEvent::Way::kIn:
            item.setForeground(dark ? QColor(0x8a, 0xc6, 0xff) : QColor(0x14, 0x50, 0x8f));
            break;
        case ToolEvent::Way::kOut:
            item.setForeground(dark ? QColor(0x9d, 0xd9, 0x9b) : QColor(0x1d, 0x66, 0x2a));
            break;
        case ToolEvent::Way::kNote:
            item.setForeground(palette().color(QPalette::Text));
            break;
    }
}

void ToolWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_log != nullptr) {
        for (int line = 0; line < m_log->count(); ++line) {
            Paint(*m_log->item(line));
        }
    }
}

}  // namespace spellwick::practice
