#include "settings_dialog/first_steps.h"

#include <QGridLayout>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>

#include "settings_dialog/controls.h"
#include "widgets/form_font.h"

namespace spellwick {

namespace {

constexpr std::chrono::seconds kBetweenLooks{1};
constexpr int kMarkSide = 20;
constexpr int kTextWidth = 400;
constexpr int kLeastTextWidth = 160;
constexpr int kBesideTexts = 240;  // marks, states, buttons and the frame
constexpr int kGap = 10;
constexpr int kMargin = 12;
enum Column { kMarkColumn, kTextColumn, kStateColumn, kButtonColumn };

// Narrower where the window would not fit the screen.
int WidthOfTexts(const QScreen& screen) {
    const int room = screen.availableGeometry().width() - Scaled(kBesideTexts);
    return std::clamp(room, Scaled(kLeastTextWidth), Scaled(kTextWidth));
}

}  // namespace

StepMark::StepMark(QWidget* parent) : QWidget(parent) {
    setFixedSize(kMarkSide, kMarkSide);
}

void StepMark::SetDone(bool done) {
    m_done = done;
    update();
}

void StepMark::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF ring = QRectF(rect()).adjusted(2, 2, -2, -2);
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1.5));
    if (!m_done) {
        painter.drawEllipse(ring);
        return;
    }
    painter.setBrush(palette().color(QPalette::WindowText));
    painter.drawEllipse(ring);
    painter.setPen(
        QPen(palette().color(QPalette::Window), 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({{5.8, 10.2}, {8.8, 13.4}, {14.2, 6.8}}));
}

FirstSteps::FirstSteps(const SharedState& state, FailureSink& failures, QWidget* parent)
    : QDialog(parent), m_state(state), m_events(failures, this) {
    setObjectName(QStringLiteral("FormFirstSteps"));
    setWindowTitle(QStringLiteral("Spellwick - First steps"));
    setAccessibleName(QStringLiteral("First steps"));
    setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowCloseButtonHint);
    setFont(FormFont());
    auto* steps = new QGridLayout;
    steps->setHorizontalSpacing(kGap);
    steps->setVerticalSpacing(2);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    all->setSpacing(kMargin);
    all->addLayout(steps);
    for (int step = 0; step < kFirstStepCount; ++step) {
        MakeStep(step);
        const auto at = static_cast<std::size_t>(step);
        const int row = 3 * step;
        auto* how = Named(new QLabel(QLatin1String(kFirstSteps[at].sentence), this),
                          IndexedName("LabelHow", step));
        how->setWordWrap(true);
        how->setFixedWidth(WidthOfTexts(*screen()));
        steps->addWidget(Mark[at], row, kMarkColumn, Qt::AlignTop);
        steps->addWidget(LabelStep[at], row, kTextColumn);
        steps->addWidget(how, row + 1, kTextColumn);
        steps->addWidget(LabelState[at], row, kStateColumn, Qt::AlignRight);
        steps->addWidget(CommandStep[at], row, kButtonColumn, 2, 1, Qt::AlignTop);
        steps->setRowMinimumHeight(row + 2, step + 1 < kFirstStepCount ? kGap : 0);
    }
    auto* close = Named(new QPushButton(QStringLiteral("&Close"), this),
                        QStringLiteral("CommandClose"), QStringLiteral("Close"));
    m_events.On(close, &QPushButton::clicked, "closing the first steps", [this] { hide(); });
    all->addWidget(close, 0, Qt::AlignRight);
    all->setSizeConstraint(QLayout::SetFixedSize);
    // Before it is shown, since its size decides its place.
    ShowStates();
    m_look.setInterval(kBetweenLooks);
    m_events.On(&m_look, &QTimer::timeout, "showing the first steps", [this] { ShowStates(); });
}

void FirstSteps::MakeStep(int step) {
    const auto at = static_cast<std::size_t>(step);
    const FirstStep& facts = kFirstSteps[at];
    Mark[at] = Named(new StepMark(this), IndexedName("Mark", step));
    LabelStep[at] = Named(
        new QLabel(QStringLiteral("%1. %2").arg(step + 1).arg(QLatin1String(facts.title)), this),
        IndexedName("LabelStep", step));
    LabelState[at] = Named(new QLabel(this), IndexedName("LabelState", step));
    for (QLabel* label : {LabelStep[at], LabelState[at]}) {
        QFont bold = label->font();
        bold.setBold(true);
        label->setFont(bold);
    }
    CommandStep[at] =
        Named(new QPushButton(QLatin1String(facts.button), this), IndexedName("CommandStep", step));
    CommandStep[at]->setAutoDefault(false);
    m_events.On(CommandStep[at], &QPushButton::clicked, "going to a first step",
                [this, way = facts.way] { emit Wanted({way}); });
}

void FirstSteps::ShowStates() {
    const std::array<bool, kFirstStepCount> done = FirstStepsDone(m_state);
    for (std::size_t step = 0; step < done.size(); ++step) {
        const QString state = done[step] ? QStringLiteral("done") : QStringLiteral("to do");
        Mark[step]->SetDone(done[step]);
        if (LabelState[step]->text() != state) {
            LabelState[step]->setText(state);
            LabelState[step]->setAccessibleName(
                QStringLiteral("%1: %2").arg(QLatin1String(kFirstSteps[step].title), state));
        }
    }
}

void FirstSteps::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    m_events.Run("showing the first steps", [this] {
        ShowStates();
        m_look.start();
    });
}

void FirstSteps::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    m_look.stop();
}

}  // namespace spellwick
