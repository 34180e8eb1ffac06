// The controls of the Skills tab: how they are made and where they are placed.
#include <QGridLayout>
#include <QHBoxLayout>
#include <algorithm>

#include "settings_dialog/skill_groups.h"
#include "settings_dialog/skills_tab.h"
#include "widgets/form_font.h"

namespace spellwick {

namespace {

constexpr i32 kMostIntelligenceSpun = 150;
constexpr i32 kMostSkillSpun = 120;

// Each column of edits takes three columns of the layout: a gap, the edit, its arrows.
constexpr int kSkillSpinWidth = 14;
constexpr int kBoxWidth = 52;
constexpr int kBoxColumns = 4;
constexpr int kIconSide = 20;
constexpr int kIconMargin = 7;
constexpr int kTallestHeading = 1000;
struct SkillsGrid {
    enum Row { kGroupRow, kHeadingRow, kFirstLineRow, kLinkRow = kFirstLineRow + kSlotCount + 1 };
};

constexpr int BoxColumn(int box) {
    return 1 + box * 3 + 1;
}

}  // namespace

SkillsTab::SkillsTab(const SettingsServices& services, QWidget* parent)
    : SettingsTab(services, parent) {
    MakeGroups();
    for (int line = 0; line < kSlotCount; ++line) {
        MakeLine(line);
    }
    MinimumInt[kCharacterLine] =
        MakeCounter("MinimumInt", kCharacterLine, QStringLiteral("Intelligence of the character"));
    UpDownInt = MakeSpin(*MinimumInt[kCharacterLine], "UpDownInt", kMostIntelligenceSpun);
    MinimumSkill[kCharacterLine] =
        MakeCounter("MinimumSkill", kCharacterLine, QStringLiteral("Skill of the character"));
    UpDownSkill = MakeSpin(*MinimumSkill[kCharacterLine], "UpDownSkill", kMostSkillSpun);
    for (int line = 0; line <= kCharacterLine; ++line) {
        const auto at = static_cast<std::size_t>(line);
        m_events.On(MinimumInt[at], &QLineEdit::textChanged, "changing a skill",
                    [this, line] { ChangeMinimumInt(line); });
        m_events.On(MinimumInt[at], &EntryBox::LostFocus, "changing a skill",
                    [this, line] { MinimumIntLostFocus(line); });
        m_events.On(MinimumSkill[at], &QLineEdit::textChanged, "changing a skill",
                    [this, line] { ChangeMinimumSkill(line); });
        m_events.On(MinimumSkill[at], &EntryBox::LostFocus, "changing a skill",
                    [this] { MinimumSkillLostFocus(); });
    }
    MakeLabels();
    PlaceControls();
}

void SkillsTab::MakeGroups() {
    for (int group = 0; group < kSkillGroups; ++group) {
        const auto at = static_cast<std::size_t>(group);
        auto* option = new PictureOption(QLatin1String(kSkillGroupFacts[at].caption), this);
        option->setObjectName(IndexedName("SkillType", group));
        // Leaves room for the icon, which is set later.
        option->setIconSize({kIconSide, kIconSide});
        option->setMinimumHeight(std::max(kIconSide, fontMetrics().height()) + kIconMargin);
        option->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
        m_events.On(option, &QToolButton::clicked, "choosing a group of skills",
                    [this, group] { ClickSkillType(group); });
        SkillType[at] = option;
    }
    SkillType[0]->setChecked(true);
}

CounterBox* SkillsTab::MakeCounter(const char* name, int line, const QString& accessibleName) {
    auto* box = Named(new CounterBox(this), IndexedName(name, line), accessibleName);
    connect(box, &EntryBox::GotFocus, box, &QLineEdit::selectAll);
    m_events.On(box, &CounterBox::KeyDropped, "changing a skill",
                [this] { m_services.desktop.Beep(); });
    return box;
}

UpDown* SkillsTab::MakeSpin(CounterBox& box, const char* name, i32 most) {
    auto* spin = Named(new UpDown(box, this, most), QLatin1String(name),
                       box.accessibleName() + QStringLiteral(", up and down"));
    m_events.On(spin, &UpDown::Changed, "changing a skill", [this] { UpdateChance(); });
    connect(&box, &CounterBox::Stepped, spin, &UpDown::Step);
    return spin;
}

void SkillsTab::MakeLine(int line) {
    const auto at = static_cast<std::size_t>(line);
    m_titles[at] = Named(new QLabel(QLatin1String(kCircleTitles[at]), this),
                         IndexedName("lblSkillCircles", line + 1));
    m_titles[at]->setTextFormat(Qt::PlainText);
    MinimumInt[at] = MakeCounter("MinimumInt", line,
                                 QStringLiteral("Intelligence required, line %1").arg(line + 1));
    MinimumSkill[at] =
        MakeCounter("MinimumSkill", line, QStringLiteral("Skill required, line %1").arg(line + 1));

    MaximumSkill[at] = Named(new EntryBox(this), IndexedName("MaximumSkill", line),
                             QStringLiteral("Skill for success, line %1").arg(line + 1));
    MaximumSkill[at]->setAlignment(Qt::AlignRight);
    connect(MaximumSkill[at], &EntryBox::GotFocus, MaximumSkill[at], &QLineEdit::selectAll);
    m_events.On(MaximumSkill[at], &QLineEdit::textChanged, "changing a skill",
                [this, line] { ChangeMaximumSkill(line); });
    m_events.On(MaximumSkill[at], &EntryBox::LostFocus, "changing a skill",
                [this, line] { MaximumSkillLostFocus(line); });

    TextChance[at] = Named(new EntryBox(this), IndexedName("TextChance", line),
                           QStringLiteral("Chance, line %1").arg(line + 1));
    TextChance[at]->setAlignment(Qt::AlignRight);
    TextChance[at]->setReadOnly(true);
    // Not reachable by Tab: it would hand the focus straight to OK.
    TextChance[at]->setFocusPolicy(Qt::ClickFocus);
    connect(TextChance[at], &EntryBox::GotFocus, this, &SkillsTab::FocusGivenAway);
}

void SkillsTab::MakeLabels() {
    constexpr int kHeadingWidth = kBoxWidth + 2 * kSkillSpinWidth;
    const auto makeHeading = [this](int index, const char* text) {
        return MakeHeading(this, index, QLatin1String(text), kHeadingWidth);
    };
    // The title colours need a light ground.
    lblSkillType = Named(new QLabel(this), QStringLiteral("lblSkillType"));
    lblSkillType->setAutoFillBackground(true);
    lblSkillType->setMargin(3);
    lblSkillType->setAlignment(Qt::AlignCenter);
    m_intHeading = makeHeading(34, "INT required");
    m_skillHeading = makeHeading(35, "Magery required");
    m_safeHeading = makeHeading(36, "Magery for 95% success");
    m_chanceHeading = makeHeading(37, "% Chance at current skill");
    m_intHeading->setToolTip(
        QStringLiteral("The intelligence that a spell asks for, which is the mana that it takes."));
    m_skillHeading->setToolTip(
        QStringLiteral("The skill below which a spell cannot be cast at all."));
    m_safeHeading->setToolTip(QStringLiteral("The skill at which 95 of 100 casts succeed."));
    m_chanceHeading->setToolTip(
        QStringLiteral("How many of 100 casts succeed with the character's skill of now."));
    m_characterTitle = MakeCaption(this, 38, QStringLiteral("Characters current values"));
    CommandLHWS =
        Named(new QPushButton(QStringLiteral("Go to Lorehall website for more info"), this),
              QStringLiteral("CommandLHWS"));
    m_events.On(CommandLHWS, &QPushButton::clicked, "opening a web page", [this] { ClickLHWS(); });
}

void SkillsTab::PlaceControls() {
    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(0);
    grid->setVerticalSpacing(3);
    grid->setColumnStretch(0, 1);
    constexpr int kAllColumns = 1 + kBoxColumns * 3;

    auto* groups = new QHBoxLayout;
    groups->setSpacing(2);
    for (QToolButton* option : SkillType) {
        groups->addWidget(option);
    }
    grid->addLayout(groups, SkillsGrid::kGroupRow, 0, 1, kAllColumns);

    grid->addWidget(lblSkillType, SkillsGrid::kHeadingRow, 0, Qt::AlignLeft | Qt::AlignBottom);
    // The longest heading of any group decides, so that no row jumps when the group changes.
    int height = 0;
    for (const SkillGroup& group : kSkillGroupFacts) {
        const QString text = QLatin1String(group.title) + QStringLiteral(" for 95% success");
        const QRect room(0, 0, m_safeHeading->width(), kTallestHeading);
        height = std::max(
            height,
            m_safeHeading->fontMetrics().boundingRect(room, Qt::TextWordWrap, text).height());
    }
    grid->setRowMinimumHeight(SkillsGrid::kHeadingRow, height);
    int box = 0;
    for (QLabel* heading : {m_intHeading, m_skillHeading, m_safeHeading, m_chanceHeading}) {
        grid->setColumnMinimumWidth(BoxColumn(box) - 1, Scaled(kSkillSpinWidth));
        grid->setColumnMinimumWidth(BoxColumn(box) + 1, Scaled(kSkillSpinWidth));
        grid->addWidget(heading, SkillsGrid::kHeadingRow, BoxColumn(box) - 1, 1, 3,
                        Qt::AlignHCenter | Qt::AlignBottom);
        ++box;
    }
    for (int line = 0; line <= kCharacterLine; ++line) {
        PlaceLine(line, SkillsGrid::kFirstLineRow + line);
    }
    for (UpDown* spin : {UpDownInt, UpDownSkill}) {
        spin->setFixedWidth(Scaled(kSkillSpinWidth));
    }
    grid->addWidget(UpDownInt, SkillsGrid::kFirstLineRow + kCharacterLine, BoxColumn(0) + 1);
    grid->addWidget(UpDownSkill, SkillsGrid::kFirstLineRow + kCharacterLine, BoxColumn(1) + 1);
    grid->addWidget(CommandLHWS, SkillsGrid::kLinkRow, 0, 1, kAllColumns, Qt::AlignLeft);
    grid->setRowStretch(SkillsGrid::kLinkRow + 1, 1);
}

void SkillsTab::PlaceLine(int line, int gridRow) {
    auto* grid = static_cast<QGridLayout*>(layout());
    const auto at = static_cast<std::size_t>(line);
    const bool isSpell = line < kCharacterLine;
    grid->addWidget(isSpell ? m_titles[at] : m_characterTitle, gridRow, 0);
    int column = 0;
    for (QWidget* box :
         {static_cast<QWidget*>(MinimumInt[at]), static_cast<QWidget*>(MinimumSkill[at])}) {
        box->setFixedWidth(Scaled(kBoxWidth));
        grid->addWidget(box, gridRow, BoxColumn(column++));
    }
    // A hidden line keeps its height.
    grid->setRowMinimumHeight(gridRow, MinimumInt[at]->sizeHint().height());
    if (isSpell) {
        for (EntryBox* box : {MaximumSkill[at], TextChance[at]}) {
            box->setFixedWidth(Scaled(kBoxWidth));
            grid->addWidget(box, gridRow, BoxColumn(column++));
        }
    }
}

}  // namespace spellwick
