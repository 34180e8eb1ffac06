#include "settings_dialog/reagents_tab.h"

#include <QGridLayout>
#include <QHBoxLayout>

#include "text/number_forms.h"
#include "widgets/form_font.h"

namespace spellwick {

namespace {

constexpr int kMageryReagents = kFirstNecroReagent - 1;
constexpr int kCountWidth = 48;
constexpr int kSpinWidth = 14;
constexpr int kTotalWidth = 44;
// Room for a picture of 20 pixels, with a margin.
constexpr int kPitch = 27;

struct ReagentsGrid {
    enum Row { kTypeRow, kHintRow, kBagRow, kFirstLineRow };
};
enum GridColumn {
    kLeftPicture,
    kLeftName,
    kLeftSpin,
    kLeftCount,
    kArrows,
    kRightCount,
    kRightSpin,
    kRightName,
    kRightPicture,
    kTotal,
    kColumns
};

}  // namespace

ReagentsTab::ReagentsTab(const SettingsServices& services, QWidget* parent)
    : SettingsTab(services, parent),
      PicRegsL(Named(new ReagentPictures(services.pictures.Reagents(), Qt::Vertical, this),
                     QStringLiteral("PicRegsL"), QStringLiteral("Reagents"))),
      PicRegsR(Named(new ReagentPictures(services.pictures.Reagents(), Qt::Vertical, this),
                     QStringLiteral("PicRegsR"), QStringLiteral("Reagents"))),
      m_totalHeading(
          Named(new QLabel(QStringLiteral("Total"), this), IndexedName("LabelTotal", 0))) {
    for (int list = 0; list < 2; ++list) {
        auto* combo =
            Named(new ChoiceBox(this), IndexedName("ComboTransfer", list),
                  list == 0 ? QStringLiteral("Left container") : QStringLiteral("Right container"));
        m_events.On(combo, &QComboBox::activated, "choosing a container",
                    [this, list] { ClickTransfer(list); });
        ComboTransfer[static_cast<std::size_t>(list)] = combo;
    }
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        MakeLine(reagent);
    }
    MakeTypes();
    PlaceControls();
}

void ReagentsTab::MakeTypes() {
    constexpr std::array<const char*, 2> kCaptions{"Magery Reagents", "Necromancy Reagents"};
    const PictureStrip& strip = m_services.pictures.Reagents();
    for (int type = 0; type < 2; ++type) {
        const auto at = static_cast<std::size_t>(type);
        auto* option = new PictureOption(QLatin1String(kCaptions[at]), this);
        option->setObjectName(IndexedName("RegType", type));
        option->setIcon(strip.Strip().copy(strip.Cell(type == 0 ? 0 : kMageryReagents)));
        option->setIconSize(strip.CellSize());
        m_events.On(option, &QToolButton::clicked, "choosing reagents",
                    [this] { ShowReagentType(); });
        RegType[at] = option;
    }
    RegType[0]->setChecked(true);
}

void ReagentsTab::MakeLine(i32 reagent) {
    Line& line = m_lines(reagent);
    line.left = MakeSide(BagSide::kLeft, reagent);
    line.arrows = Named(new TransferArrows(this), IndexedName("UpDown1", reagent));
    line.right = MakeSide(BagSide::kRight, reagent);
    line.total = Named<QLabel>(new FigureLabel(this), IndexedName("LabelTotal", reagent));
    line.total->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_events.On(line.arrows, &TransferArrows::MoveWanted, "moving a reagent",
                [this, reagent](BagSide to) { ClickArrow(reagent, to); });
}

ReagentsTab::Side ReagentsTab::MakeSide(BagSide side, i32 reagent) {
    const bool isLeft = side == BagSide::kLeft;
    auto* name =
        Named(new QLabel(this), IndexedName(isLeft ? "lblRegMan1" : "lblRegMan2", reagent));
    auto* count =
        Named(new CounterBox(this), IndexedName(isLeft ? "ReagentLeft" : "ReagentRight", reagent));
    auto* upDown = Named(new UpDown(*count, this),
                         IndexedName(isLeft ? "UpDownLeft" : "UpDownRight", reagent));
    connect(count, &EntryBox::GotFocus, count, &QLineEdit::selectAll);
    m_events.On(count, &EntryBox::LostFocus, "changing the count of a reagent",
                [this, side, reagent] { CountLostFocus(side, reagent); });
    m_events.On(count, &CounterBox::KeyDropped, "changing the count of a reagent",
                [this] { m_services.desktop.Beep(); });
    connect(count, &CounterBox::Stepped, upDown, &UpDown::Step);
    m_events.On(upDown, &UpDown::Changed, "changing the count of a reagent",
                [this, side, reagent] { ArrowsChangedCount(side, reagent); });
    return {name, upDown, count};
}

void ReagentsTab::PlaceControls() {
    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(0);
    grid->setColumnStretch(kLeftName, 1);
    grid->setColumnStretch(kRightName, 1);

    auto* types = new QHBoxLayout;
    types->setSpacing(4);
    for (QToolButton* option : RegType) {
        types->addWidget(option);
    }
    types->addStretch();
    grid->addLayout(types, ReagentsGrid::kTypeRow, 0, 1, kColumns);
    QLabel* hint = MakeCaption(
        this, 1,
        QStringLiteral("Click the arrows in the middle to transfer reagents between containers "));
    hint->setContentsMargins(0, 6, 0, 6);
    grid->addWidget(hint, ReagentsGrid::kHintRow, 0, 1, kColumns);

    grid->addWidget(ComboTransfer[0], ReagentsGrid::kBagRow, kLeftPicture, 1, kArrows);
    grid->addWidget(ComboTransfer[1], ReagentsGrid::kBagRow, kRightCount, 1, kTotal - kRightCount);
    m_totalHeading->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(m_totalHeading, ReagentsGrid::kBagRow, kTotal);
    grid->setRowMinimumHeight(ReagentsGrid::kBagRow, ComboTransfer[0]->sizeHint().height() + 4);
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        PlaceLine(reagent);
    }
    for (int line = 0; line < kMageryReagents; ++line) {
        grid->setRowMinimumHeight(ReagentsGrid::kFirstLineRow + line, kPitch);
    }
    for (ReagentPictures* pictures : {PicRegsL, PicRegsR}) {
        pictures->setFixedWidth(m_services.pictures.Reagents().CellSize().width());
    }
    grid->addWidget(PicRegsL, ReagentsGrid::kFirstLineRow, kLeftPicture, kMageryReagents, 1);
    grid->addWidget(PicRegsR, ReagentsGrid::kFirstLineRow, kRightPicture, kMageryReagents, 1);
    grid->setRowStretch(ReagentsGrid::kFirstLineRow + kMageryReagents, 1);
}

void ReagentsTab::PlaceLine(i32 reagent) {
    auto* grid = static_cast<QGridLayout*>(layout());
    const Line& line = m_lines(reagent);
    const int row = ReagentsGrid::kFirstLineRow +
                    (reagent < kFirstNecroReagent ? reagent - 1 : reagent - kFirstNecroReagent);
    for (const Side* side : {&line.left, &line.right}) {
        side->count->setFixedWidth(Scaled(kCountWidth));
        side->upDown->setFixedWidth(Scaled(kSpinWidth));
        side->upDown->setFixedHeight(side->count->sizeHint().height());
    }
    line.total->setFixedWidth(Scaled(kTotalWidth));
    grid->addWidget(line.left.name, row, kLeftName);
    grid->addWidget(line.left.upDown, row, kLeftSpin);
    grid->addWidget(line.left.count, row, kLeftCount);
    grid->addWidget(line.arrows, row, kArrows, Qt::AlignCenter);
    grid->addWidget(line.right.count, row, kRightCount);
    grid->addWidget(line.right.upDown, row, kRightSpin);
    grid->addWidget(line.right.name, row, kRightName);
    grid->addWidget(line.total, row, kTotal);
}

// The pictures follow the pitch of the edits, which a large font increases.
void ReagentsTab::resizeEvent(QResizeEvent* event) {
    SettingsTab::resizeEvent(event);
    const auto* grid = static_cast<QGridLayout*>(layout());
    const int pitch = grid->cellRect(ReagentsGrid::kFirstLineRow + 1, 0).top() -
                      grid->cellRect(ReagentsGrid::kFirstLineRow, 0).top();
    PicRegsL->SetPitch(pitch);
    PicRegsR->SetPitch(pitch);
}

BagPair ReagentsTab::Bags() const {
    return {.left = ComboTransfer[0]->currentIndex(), .right = ComboTransfer[1]->currentIndex()};
}

CounterBox& ReagentsTab::Count(BagSide side, i32 reagent) {
    return side == BagSide::kLeft ? ReagentLeft(reagent) : ReagentRight(reagent);
}

i32 ReagentsTab::BagOf(BagSide side) const {
    return side == BagSide::kLeft ? Bags().left : Bags().right;
}

// A saved number that is no bag selects nothing, and there is no count to show.
void ReagentsTab::ShowCount(BagSide side, i32 reagent) {
    const i32 bag = BagOf(side);
    ShowText(Count(side, reagent),
             bag < 0 ? std::string() : PlainText(i32{m_state.ReagentStock(reagent, bag)}));
}

// A cast debits what the main window's counters show, so a stale count there would undo the
// change.
void ReagentsTab::ShowInMainWindow(i32 reagent) {
    const BagPair bags = Bags();
    const i32 inUse = m_state.CurrentReagentBag;
    if (inUse >= 0 && (bags.left == inUse || bags.right == inUse)) {
        m_services.companion.ShowCounter(reagent);
    }
}

void ReagentsTab::Refresh() {
    const std::array<i16, 2> chosen{m_state.LeftReagentBag, m_state.RightReagentBag};
    for (std::size_t list = 0; list < ComboTransfer.size(); ++list) {
        ComboTransfer[list]->clear();
        for (i32 bag = 0; bag < kBagCount; ++bag) {
            ComboTransfer[list]->addItem(ToQString(m_state.BagName(bag)));
        }
        const bool isBag = chosen[list] >= 0 && chosen[list] < kBagCount;
        ComboTransfer[list]->setCurrentIndex(isBag ? chosen[list] : -1);
    }
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        ShowCount(BagSide::kLeft, reagent);
        ShowCount(BagSide::kRight, reagent);
    }
    UpdateReagentTotals();
}

void ReagentsTab::UpdateReagentTotals() {
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        m_reagentTotal(reagent) = TotalOfReagent(m_state.ReagentStock, reagent);
        LabelTotal(reagent).setText(ToQString(PlainText(i32{m_reagentTotal(reagent)})));
    }
}

void ReagentsTab::ShowReagentType() {
    const bool isMagery = RegType[0]->isChecked();
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        const Line& line = m_lines(reagent);
        const QString name = ToQString(m_state.ReagentName(reagent));
        line.left.name->setText(name);
        line.right.name->setText(name);
        line.left.count->setAccessibleName(name + QStringLiteral(" in the left container"));
        line.right.count->setAccessibleName(name + QStringLiteral(" in the right container"));
        for (const Side* side : {&line.left, &line.right}) {
            side->upDown->setAccessibleName(side->count->accessibleName() +
                                            QStringLiteral(", up and down"));
        }
        line.total->setAccessibleName(QStringLiteral("Total of ") + name);
        line.arrows->setAccessibleName(QStringLiteral("Move ") + name);
        const bool shown = (reagent < kFirstNecroReagent) == isMagery;
        for (QWidget* control : std::initializer_list<QWidget*>{
                 line.left.name, line.left.upDown, line.left.count, line.arrows, line.right.count,
                 line.right.upDown, line.right.name, line.total}) {
            control->setVisible(shown);
        }
    }
    for (ReagentPictures* pictures : {PicRegsL, PicRegsR}) {
        pictures->Show(isMagery ? 1 : kFirstNecroReagent,
                       isMagery ? kMageryReagents : kReagentCount - kMageryReagents);
    }
    UpdateReagentTotals();
}

void ReagentsTab::ClickTransfer(int list) {
    const int bag = ComboTransfer[static_cast<std::size_t>(list)]->currentIndex();
    if (bag == -1) {
        return;
    }
    (list == 0 ? m_state.LeftReagentBag : m_state.RightReagentBag) = ToI16(i32{bag});
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        ShowCount(list == 0 ? BagSide::kLeft : BagSide::kRight, reagent);
    }
}

void ReagentsTab::ClickArrow(i32 reagent, BagSide to) {
    if (LacksTwoBags(Bags())) {
        m_services.boxes.Show({.text = std::string(kSelectTwoBags), .icon = BoxIcon::kExclamation});
    }
    // ODDITY(silent-arrow): an arrow does nothing, without a message, if the other bag has none of
    // the reagent; kept because the count beside it shows 0.
    if (MoveOne(m_state.ReagentStock, reagent, Bags(), to)) {
        ShowInMainWindow(reagent);
        ShowCount(BagSide::kLeft, reagent);
        ShowCount(BagSide::kRight, reagent);
    }
}

void ReagentsTab::CountLostFocus(BagSide side, i32 reagent) {
    const std::string text = ToText(Count(side, reagent).text());
    const BagSide other = side == BagSide::kLeft ? BagSide::kRight : BagSide::kLeft;
    const bool isMove = text.starts_with('+') || text.starts_with('-');
    if (BagOf(side) < 0 || (isMove && BagOf(other) < 0)) {
        ShowCount(side, reagent);
        return;
    }
    const TransferEntry entry = CommitTransfer(m_state.ReagentStock, reagent, Bags(), side, text);
    ShowInMainWindow(reagent);
    if (!entry.moves) {
        UpdateReagentTotals();
        return;
    }
    if (entry.refused) {
        m_services.boxes.Show({.text = std::string(kNotThatManyToMove)});
    }
    ShowCount(BagSide::kLeft, reagent);
    ShowCount(BagSide::kRight, reagent);
}

void ReagentsTab::ArrowsChangedCount(BagSide side, i32 reagent) {
    if (BagOf(side) < 0) {
        ShowCount(side, reagent);
        return;
    }
    m_state.ReagentStock(reagent, BagOf(side)) = CountOfBox(ToText(Count(side, reagent).text()));
    ShowInMainWindow(reagent);
    UpdateReagentTotals();
}

}  // namespace spellwick
