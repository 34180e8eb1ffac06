// The controls of the Spells & Reagents tab: how they are made and where they are placed.
#include <QGridLayout>
#include <QHBoxLayout>

#include "settings_dialog/spells_tab.h"
#include "widgets/form_font.h"

namespace spellwick {

namespace {

constexpr int kColumnWidth = 40;
constexpr int kNameGap = 8;
constexpr int kHeadingWidth = 52;
constexpr int kCostWidth = 46;

// Grid columns around the eight columns of reagents.
constexpr int kGapColumn = 1;
constexpr int kFirstReagentColumn = kGapColumn + 1;
constexpr int kCostColumn = kFirstReagentColumn + kSpellColumns;
constexpr int kBookColumn = kCostColumn + 1;
constexpr int kTownColumn = kBookColumn + 1;

// Grid rows.
struct SpellsGrid {
    enum Row { kPageRow, kHeadingRow, kFirstSpellRow, kLineRow = kFirstSpellRow + 8, kPriceRow };
};

}  // namespace

SpellsTab::SpellsTab(const SettingsServices& services, QWidget* parent)
    : SettingsTab(services, parent),
      ComboSpellLevel(Named(new ChoiceBox(this), QStringLiteral("ComboSpellLevel"),
                            QStringLiteral("Page of spells"))),
      PicRegHolder(Named(new ReagentPictures(services.pictures.Reagents(), Qt::Horizontal, this),
                         QStringLiteral("PicRegHolder"), QStringLiteral("Reagents"))),
      CheckPics(Named(new QCheckBox(QStringLiteral("Pictures"), this), QStringLiteral("CheckPics"),
                      QStringLiteral("Pictures of the reagents"))),
      Command2(
          Named(new QPushButton(QStringLiteral("Fill book"), this), QStringLiteral("Command2"))),
      Command3(Named(new QPushButton(QStringLiteral("Empty"), this), QStringLiteral("Command3"),
                     QStringLiteral("Empty the book"))),
      Line2(MakeLine(this, QStringLiteral("Line2"))) {
    m_events.On(ComboSpellLevel, &QComboBox::activated, "choosing a page of spells",
                [this] { ClickSpellLevel(); });
    m_events.On(CheckPics, &QCheckBox::clicked, "changing an option", [this] { ClickPics(); });
    MakePictures();
    for (int row = 0; row < kSlotCount; ++row) {
        MakeRow(row);
    }
    for (int column = 0; column < kSpellColumns; ++column) {
        MakeColumn(column);
    }
    m_events.On(Command2, &QPushButton::clicked, "filling the book", [this] { ClickFill(); });
    m_events.On(Command3, &QPushButton::clicked, "emptying the book", [this] { ClickEmpty(); });
    PlaceControls();
    // The buttons come last in the tab order, as on the screen.
    setTabOrder(RegPrice.back(), Command2);
    setTabOrder(Command2, Command3);
}

void SpellsTab::MakeRow(int row) {
    const auto at = static_cast<std::size_t>(row);
    LabelSpell[at] = Named(new QLabel(this), IndexedName("LabelSpell", row));
    LabelSpell[at]->setTextFormat(Qt::PlainText);
    for (int column = 0; column < kSpellColumns; ++column) {
        const int cell = column * kSlotCount + row + 1;
        auto* box = Named(new EntryBox(this), IndexedName("Reagent", cell),
                          QStringLiteral("Reagent %1 of spell %2").arg(column + 1).arg(row + 1));
        box->setAlignment(Qt::AlignHCenter);
        m_reagents[static_cast<std::size_t>(cell - 1)] = box;
        connect(box, &EntryBox::GotFocus, box, &QLineEdit::selectAll);
        m_events.On(box, &EntryBox::LostFocus, "changing the reagents of a spell",
                    [this, cell] { ReagentLostFocus(cell); });
    }
    SpellPrice[at] = Named(new QLineEdit(this), IndexedName("SpellPrice", row),
                           QStringLiteral("Cost of spell %1").arg(row + 1));
    SpellPrice[at]->setAlignment(Qt::AlignRight);
    SpellPrice[at]->setReadOnly(true);
    SpellPrice[at]->setFocusPolicy(Qt::ClickFocus);
    CheckBook[at] = Named(new QCheckBox(this), IndexedName("CheckBook", row),
                          QStringLiteral("Spell %1 is in the book").arg(row + 1));
    m_events.On(CheckBook[at], &QCheckBox::clicked, "changing the book",
                [this, row] { ClickBook(row); });
    CheckTown[at] = Named(new QCheckBox(this), IndexedName("CheckTown", row),
                          QStringLiteral("Spell %1 may not be cast in town").arg(row + 1));
    m_events.On(CheckTown[at], &QCheckBox::clicked, "changing where a spell may be cast",
                [this, row] { ClickTown(row); });
}

void SpellsTab::MakeColumn(int column) {
    const auto at = static_cast<std::size_t>(column);
    Label2[at] = Named(new QLabel(this), IndexedName("Label2", column));
    Label2[at]->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
    auto* price = Named(new CounterBox(this), IndexedName("RegPrice", column),
                        QStringLiteral("Price of reagent %1").arg(column + 1));
    price->setAlignment(Qt::AlignHCenter);
    RegPrice[at] = price;
    connect(price, &EntryBox::GotFocus, price, &QLineEdit::selectAll);
    m_events.On(price, &EntryBox::LostFocus, "changing a price", [this] { RefreshSpellPage(); });
    m_events.On(price, &CounterBox::KeyDropped, "changing a price",
                [this] { m_services.desktop.Beep(); });
    m_events.On(price, &QLineEdit::textChanged, "changing a price",
                [this, column] { ChangeRegPrice(column); });
}

// PicRegHolder draws the pictures; a widget over each one has its tooltip.
void SpellsTab::MakePictures() {
    PicRegHolder->SetPitch(Scaled(kColumnWidth));
    for (int column = 0; column < kSpellColumns; ++column) {
        auto* place = Named(new QWidget(PicRegHolder), IndexedName("imgReg", column));
        place->setGeometry(PicRegHolder->PlaceOf(column));
        m_pictures[static_cast<std::size_t>(column)] = place;
    }
    const QRect last = m_pictures.back()->geometry();
    PicRegHolder->setFixedSize(last.right() + 1, last.height());
}

void SpellsTab::PlaceControls() {
    constexpr int kRowGap = 2;
    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(0);
    grid->setVerticalSpacing(kRowGap);
    grid->setColumnStretch(0, 1);
    grid->setColumnMinimumWidth(kGapColumn, kNameGap);
    for (int column = 0; column < kSpellColumns; ++column) {
        grid->setColumnMinimumWidth(kFirstReagentColumn + column, Scaled(kColumnWidth));
    }
    grid->addWidget(ComboSpellLevel, SpellsGrid::kPageRow, 0);
    auto* pictures = new QHBoxLayout;
    pictures->setContentsMargins(
        (Scaled(kColumnWidth) - kRowGap - PicRegHolder->PlaceOf(0).width()) / 2, 0, 0, 0);
    pictures->addWidget(PicRegHolder, 0, Qt::AlignLeft | Qt::AlignBottom);
    grid->addLayout(pictures, SpellsGrid::kPageRow, kFirstReagentColumn, 1, kSpellColumns);
    grid->addWidget(CheckPics, SpellsGrid::kPageRow, kCostColumn, 1, 3,
                    Qt::AlignRight | Qt::AlignVCenter);

    for (int column = 0; column < kSpellColumns; ++column) {
        grid->addWidget(Label2[static_cast<std::size_t>(column)], SpellsGrid::kHeadingRow,
                        kFirstReagentColumn + column);
    }
    const auto addHeading = [&](int index, const char* text, int column, const char* tip) {
        QLabel* heading = MakeHeading(this, index, QLatin1String(text), kHeadingWidth);
        heading->setToolTip(QLatin1String(tip));
        grid->addWidget(heading, SpellsGrid::kHeadingRow, column,
                        Qt::AlignHCenter | Qt::AlignBottom);
        grid->setColumnMinimumWidth(column, Scaled(kHeadingWidth) + kRowGap);
    };
    addHeading(3, "Spell costs", kCostColumn, "What the reagents of one cast cost, in gold.");
    addHeading(7, "In book", kBookColumn, "Ticked for the spells that are in your spellbook.");
    addHeading(40, "Not in town", kTownColumn,
               "Ticked for spells that may not be cast in town; their chance stands on red.");
    grid->setColumnMinimumWidth(kCostColumn, Scaled(kHeadingWidth) + kNameGap);
    PlaceRows();

    grid->addWidget(MakeCaption(this, 2, QStringLiteral("Price of Reagent")), SpellsGrid::kPriceRow,
                    0);
    auto* book = new QHBoxLayout;
    book->setSpacing(4);
    book->addWidget(Command2);
    book->addWidget(Command3);
    grid->addLayout(book, SpellsGrid::kPriceRow, kCostColumn, 1, 3, Qt::AlignRight);
    grid->setRowStretch(SpellsGrid::kPriceRow + 1, 1);
}

void SpellsTab::PlaceRows() {
    auto* grid = static_cast<QGridLayout*>(layout());
    const int boxWidth = Scaled(kColumnWidth) - 2;
    for (int row = 0; row < kSlotCount; ++row) {
        const auto at = static_cast<std::size_t>(row);
        const int line = SpellsGrid::kFirstSpellRow + row;
        grid->addWidget(LabelSpell[at], line, 0);
        for (int column = 0; column < kSpellColumns; ++column) {
            EntryBox& box = Reagent(column * kSlotCount + row + 1);
            box.setFixedWidth(boxWidth);
            grid->addWidget(&box, line, kFirstReagentColumn + column);
        }
        SpellPrice[at]->setFixedWidth(Scaled(kCostWidth));
        grid->addWidget(SpellPrice[at], line, kCostColumn, Qt::AlignHCenter);
        grid->addWidget(CheckBook[at], line, kBookColumn, Qt::AlignHCenter);
        grid->addWidget(CheckTown[at], line, kTownColumn, Qt::AlignHCenter);
    }
    grid->addWidget(MakeLine(this, QStringLiteral("Line1")), SpellsGrid::kLineRow, 0, 1,
                    kFirstReagentColumn + kOtherColumns);
    grid->addWidget(Line2, SpellsGrid::kLineRow, kFirstReagentColumn + kOtherColumns, 1,
                    kSpellColumns - kOtherColumns);
    for (int column = 0; column < kSpellColumns; ++column) {
        CounterBox* price = RegPrice[static_cast<std::size_t>(column)];
        price->setFixedWidth(boxWidth);
        grid->addWidget(price, SpellsGrid::kPriceRow, kFirstReagentColumn + column);
    }
}

}  // namespace spellwick
