#include "spell_info/form_info.h"

#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

#include "model/spell_description.h"
#include "model/updating_scope.h"
#include "text/number_forms.h"
#include "widgets/form_font.h"
#include "widgets/ground.h"
#include "widgets/on_screen.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

constexpr Colour kTooLow = 0xC0C0FF;  // light red
constexpr const char* kRedToolTip = "Red background indicates a too low value for this spell.";

// Pixels of the design.
constexpr int kTextWidth = 390;
constexpr int kTextMargin = 4;
constexpr int kBoxWidth = 48;
constexpr int kIconSize = 42;

struct ValueFacts {
    const char* caption;
    const char* accessibleName;
    i16 SharedState::*value;
    bool hasToolTip;
};

constexpr std::array<ValueFacts, FormInfo::kBoxCount> kValues{{
    {"Magery:", "Magery", &SharedState::Magery, true},
    {"Dexterity:", "Dexterity", &SharedState::Dexterity, false},
    {"Intelligence.:", "Intelligence", &SharedState::Intelligence, true},
    {"Evaluate Int.:", "Evaluate Intelligence", &SharedState::EvalInt, false},
    {"Target Resist:", "Resistance of the target", &SharedState::TargetResist, false},
    {"Target Intell.:", "Intelligence of the target", &SharedState::TargetInt, false},
    {"Spirit Speak:", "Spirit Speak", &SharedState::SpiritSpeak, false},
    {"Necromancy:", "Necromancy", &SharedState::Necro, true},
}};
constexpr int kMageryBox = 0;
constexpr int kIntelligenceBox = 2;

enum LineIndex { kName, kWords, kCost, kDamage, kResisting, kDuration, kReagents, kExtraInfo };

struct LineFacts {
    const char* caption;
    int number;  // in the array Label
    int height;  // minimum, in lines of text
};

// In screen order.
constexpr std::array<LineFacts, 8> kLines{{
    {"Name", 11, 1},
    {"Incantation", 12, 1},
    {"Cost", 13, 1},
    {"Damage", 14, 1},
    {"Resisting", 21, 1},
    {"Duration", 15, 1},
    {"Reagents", 16, 1},
    {"Extra Info", 17, 2},
}};

QLabel* MakeCaption(const char* text, QWidget* form) {
    auto* caption = new QLabel(QLatin1String(text), form);
    caption->setTextFormat(Qt::PlainText);
    return caption;
}

}  // namespace

FormInfo::FormInfo(const InfoServices& services)
    : m_services(services),
      m_state(services.state),
      m_events(services.failures, this),
      m_icons(QStringLiteral("colour"), qGuiApp->devicePixelRatio() * FormScale()) {
    setObjectName(QStringLiteral("FormInfo"));
    setWindowTitle(QStringLiteral("Spellwick - Spell Info"));
    setAccessibleName(QStringLiteral("Spell info"));
    setWindowFlags(Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
    setFont(FormFont());
    MakeLines();
    auto* rule = new QFrame(this);
    rule->setFrameShape(QFrame::HLine);
    rule->setFrameShadow(QFrame::Sunken);
    auto* boxes = new QGridLayout;
    boxes->setHorizontalSpacing(8);
    boxes->setVerticalSpacing(4);
    MakeBoxes(*boxes);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(10, 10, 10, 10);
    all->setSpacing(8);
    all->addWidget(m_textArea);
    all->addWidget(rule);
    all->addLayout(boxes);
    all->setSizeConstraint(QLayout::SetFixedSize);
    m_boxes[0]->setFocus();
}

void FormInfo::MakeLines() {
    m_textArea = new QScrollArea(this);
    m_textArea->setFrameShape(QFrame::NoFrame);
    m_textArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_textArea->setFocusPolicy(Qt::NoFocus);
    m_textArea->setWidget(new QWidget);
    auto& grid = *new QGridLayout(m_textArea->widget());
    grid.setContentsMargins(0, 0, 0, 0);
    grid.setHorizontalSpacing(10);
    grid.setVerticalSpacing(4);
    m_picture = new QLabel(this);
    m_picture->setObjectName(QStringLiteral("SpellPicture"));
    m_picture->setFixedSize(Scaled(QSize(kIconSize, kIconSize)));
    m_picture->setScaledContents(FormScale() > 1.0);
    grid.addWidget(m_picture, 0, 2, kCost + 1, 1, Qt::AlignRight | Qt::AlignTop);
    for (int i = 0; i < static_cast<int>(kLines.size()); ++i) {
        const LineFacts& facts = kLines[static_cast<std::size_t>(i)];
        grid.addWidget(MakeCaption(facts.caption, this), i, 0, Qt::AlignTop);
        auto* line = new QLabel(this);
        line->setObjectName(IndexedName("Label", facts.number));
        line->setAccessibleName(QLatin1String(facts.caption));
        line->setTextFormat(Qt::PlainText);
        line->setWordWrap(true);
        line->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        // The icon stands beside the first lines.
        const bool isBesideIcon = i <= kCost;
        line->setFixedWidth(
            Scaled(isBesideIcon ? kTextWidth - kIconSize - kTextMargin : kTextWidth));
        grid.addWidget(line, i, 1, 1, isBesideIcon ? 1 : 2, Qt::AlignTop);
        m_lines[static_cast<std::size_t>(i)] = line;
    }
    QFont strong = font();
    strong.setBold(true);
    m_lines[kName]->setFont(strong);
    // The window manager places the window by its first size.
    for (int i = 0; i < static_cast<int>(kLines.size()); ++i) {
        ShowText(i, {});
    }
    FitTextArea();
}

void FormInfo::MakeBoxes(QGridLayout& grid) {
    constexpr int kRows = kBoxCount / 2;
    for (int index = 0; index < kBoxCount; ++index) {
        const ValueFacts& facts = kValues[static_cast<std::size_t>(index)];
        auto* box = new CounterBox(this);
        box->setObjectName(IndexedName("TextBox", index));
        box->setAccessibleName(QLatin1String(facts.accessibleName));
        box->setFixedWidth(Scaled(kBoxWidth));
        if (facts.hasToolTip) {
            box->setToolTip(QLatin1String(kRedToolTip));
        }
        m_boxes[static_cast<std::size_t>(index)] = box;
        QLabel* caption = MakeCaption(facts.caption, this);
        caption->setBuddy(box);
        const int column = index / kRows * 3;
        grid.addWidget(caption, index % kRows, column);
        grid.addWidget(box, index % kRows, column + 1);
        m_events.On(box, &CounterBox::textChanged, "entering a value",
                    [this, index] { ChangeBox(index); });
        connect(box, &CounterBox::GotFocus, box, &CounterBox::selectAll);
        m_events.On(box, &CounterBox::LostFocus, "showing a spell", [this] { LeaveBox(); });
        m_events.On(box, &CounterBox::KeyDropped, "entering a value",
                    [this] { m_services.desktop.Beep(); });
    }
    grid.setColumnStretch(2, 1);
}

void FormInfo::ComeForward() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    // The screen on which it was closed may be gone.
    if (!isVisible() && testAttribute(Qt::WA_Moved)) {
        move(OnScreens(pos(), *this));
    }
    show();
    raise();
    activateWindow();
}

void FormInfo::DisplayInfo(i32 row) {
    // ODDITY(info-last-spell): leaving an edit shows the spell cast last, if one was cast in the
    // meantime; kept because the window and the casts share one last spell.
    m_state.CurrentSpell = ToI16(row);
    {
        const UpdatingScope updating(m_state);
        for (int index = 0; index < kBoxCount; ++index) {
            ShowValue(index);
        }
        // Typing replaces the text of the edit that has the focus, with each new spell.
        if (auto* box = qobject_cast<CounterBox*>(focusWidget())) {
            box->selectAll();
        }
        // ODDITY(info-magery-box): a Necromancer spell or Paladin ability that is too hard turns
        // the Magery edit red and never the Necromancy edit; kept because one edit warns of the
        // skill, whichever skill it is.
        const SpellShortage shortage = ShortageFor(m_state, row);
        SetGround(TextBox(kIntelligenceBox), shortage.intelligence ? kTooLow : kWindowBackground);
        SetGround(TextBox(kMageryBox), shortage.skill ? kTooLow : kWindowBackground);
    }
    const SpellDescription spell = DescribeSpell(m_state, row);
    ShowPicture(row);
    ShowText(kCost, spell.cost);
    ShowText(kWords, spell.words);
    ShowText(kName, spell.name);
    ShowText(kReagents, spell.reagents);
    ShowText(kDamage, spell.damage);
    ShowText(kDuration, spell.duration);
    ShowText(kExtraInfo, spell.extraInfo);
    ShowText(kResisting, spell.resisting);
    FitTextArea();
}

void FormInfo::ShowValue(int index) {
    const ValueFacts& facts = kValues[static_cast<std::size_t>(index)];
    TextBox(index).setText(ToQString(StandardText(i32{m_state.*facts.value})));
}

void FormInfo::ShowText(int line, const std::string& text) {
    QLabel& label = *m_lines[static_cast<std::size_t>(line)];
    label.setText(ToQString(text));
    label.setMinimumHeight(0);  // else heightForWidth keeps the previous height
    const int least =
        kLines[static_cast<std::size_t>(line)].height * label.fontMetrics().lineSpacing();
    label.setFixedHeight(std::max(least, label.heightForWidth(label.width())));
}

// Texts that need more than half of the screen scroll, so that the edits stay visible.
void FormInfo::FitTextArea() {
    QWidget& texts = *m_textArea->widget();
    texts.layout()->activate();
    const QSize whole = texts.sizeHint();
    texts.resize(whole);
    QScrollBar& bar = *m_textArea->verticalScrollBar();
    bar.setValue(0);
    const int room = screen()->availableGeometry().height() / 2;
    m_textArea->setFixedSize(whole.width() + (whole.height() > room ? bar.sizeHint().width() : 0),
                             std::min(whole.height(), room));
}

void FormInfo::ShowPicture(i32 row) {
    if (row > kLastPagedRow) {
        m_picture->clear();
        return;
    }
    const PictureStrip& strip = m_icons.StripOf(row);
    QPixmap icon = strip.Strip().copy(strip.Cell(row % kSlotCount));
    icon.setDevicePixelRatio(strip.Strip().devicePixelRatio());
    m_picture->setPixmap(icon);
}

void FormInfo::ChangeBox(int index) {
    if (m_state.Updating) {
        return;
    }
    m_state.*kValues[static_cast<std::size_t>(index)].value =
        EnteredValue(ToText(TextBox(index).text()));
}

// Showing everything also rewrites the edit. The value goes to the edit and not back: a report or
// another character may have brought one that the edit would not accept.
void FormInfo::LeaveBox() {
    DisplayInfo(m_state.CurrentSpell);
}

void FormInfo::LeaveFocusedBox() {
    for (int index = 0; index < kBoxCount; ++index) {
        if (focusWidget() == &TextBox(index)) {
            LeaveBox();
        }
    }
}

void FormInfo::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::ActivationChange) {
        return;
    }
    if (isActiveWindow()) {
        m_events.Run("showing a spell", [&] {
            // Where the desktop has no such state, the window stays as it is.
            static_cast<void>(m_services.desktop.SetTopMost(static_cast<WindowHandle>(winId()),
                                                            m_state.AlwaysOnTop));
        });
        return;
    }
    // Only another window of this program commits the edit, not another program's. Which of the two
    // it is, Qt knows once the event has been handled.
    QTimer::singleShot(0, this, [this] {
        if (!isActiveWindow() && QApplication::activeWindow() != nullptr) {
            m_events.Run("showing a spell", [&] { LeaveFocusedBox(); });
        }
    });
}

// Makes the window come back in the same place; the window manager would choose another.
void FormInfo::closeEvent(QCloseEvent* event) {
    move(pos());
    QWidget::closeEvent(event);
}

// Keys that the edit ignores, such as Enter.
void FormInfo::keyPressEvent(QKeyEvent* event) {
    if (!event->text().isEmpty()) {
        m_events.Run("entering a value", [&] { m_services.desktop.Beep(); });
    }
}

}  // namespace spellwick
