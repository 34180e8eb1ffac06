// The two arrangements at work, and the pictures that the form draws itself.
#include <QFontMetrics>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <iterator>

#include "main_window/form_main.h"
#include "widgets/on_screen.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

constexpr int kAnkh = 13;  // cell of the strip
constexpr int kAnkhRise = 8;
constexpr int kSmallRow = 15;
constexpr int kSmallFontPixels = 11;

constexpr int kDarkGround = 128;  // lightness below which a ground is dark

// A light rim around a picture that a dark ground would swallow.
void DrawRim(QPainter& painter, const QRect& place, const QPixmap& strip, const QRect& cell) {
    QPixmap shape = strip.copy(cell);
    QPainter light(&shape);
    light.setCompositionMode(QPainter::CompositionMode_SourceIn);
    light.fillRect(QRect(QPoint(), cell.size()), QColor(255, 255, 255, 140));
    light.end();
    for (const QPoint& step : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
        painter.drawPixmap(place.translated(step), shape, shape.rect());
    }
}

void Place(QWidget& control, const Box4& box) {
    control.setGeometry(box.left, box.top, box.width, box.height);
}

}  // namespace

TextSizes FormMain::MeasureTexts() const {
    const QFontMetrics metrics(font());
    TextSizes texts;
    for (std::size_t i = 0; i < m_command.size(); ++i) {
        texts.captionWidths[i] = metrics.horizontalAdvance(m_command[i]->text());
    }
    texts.captionHeight = metrics.height();
    texts.joinedWidth = metrics.horizontalAdvance(m_command[0]->text() + m_command[1]->text());
    texts.comboHeight = m_counters.ComboReagent->sizeHint().height();
    return texts;
}

void FormMain::Arrange() {
    const TextSizes texts = MeasureTexts();
    Apply(m_state.DisplayVertical ? PlanVertical(m_state.ShowNecroRegs, texts)
                                  : PlanHorizontal(m_state.ShowNecroRegs, texts));
}

void FormMain::LayoutAgain() {
    Arrange();
    if (!m_state.DisplayVertical) {
        TakePlace(pos());
    }
}

QPoint FormMain::PlaceFor(QPoint wanted) const {
    const QPoint place = OnScreens(wanted, *this);
    if (m_state.DisplayVertical) {
        return place;
    }
    return {
        LeftOnScreen(place.x(), frameGeometry().width(), screen()->virtualGeometry().right() + 1),
        place.y()};
}

void FormMain::Apply(const LayoutPlan& plan) {
    for (std::size_t k = 0; k < plan.imgReg.size(); ++k) {
        const i32 reagent = static_cast<i32>(k) + 1;
        const bool shown = reagent < kFirstNecroReagent || plan.showsNecroRegs;
        QFont counterFont = font();
        if (plan.reagent[k].height <= kSmallRow) {
            counterFont.setPixelSize(kSmallFontPixels);
        }
        m_counters.Reagent(reagent).SetNumberFont(counterFont);
        Place(m_counters.ImgReg(static_cast<int>(k)), plan.imgReg[k]);
        Place(m_counters.Reagent(reagent), plan.reagent[k]);
        Place(m_counters.Arrows(reagent), plan.upDown[k]);
        m_counters.ImgReg(static_cast<int>(k)).setVisible(shown);
        m_counters.Reagent(reagent).setVisible(shown);
        m_counters.Arrows(reagent).setVisible(shown);
    }
    Place(*m_counters.ComboReagent, plan.comboReagent);
    for (std::size_t slot = 0; slot < plan.spellIcon.size(); ++slot) {
        Place(*m_page.LabelAmount[slot], plan.labelAmount[slot]);
        Place(*m_page.SpellIcons[slot], plan.spellIcon[slot]);
        Place(*m_page.LabelChance[slot], plan.labelChance[slot]);
    }
    for (std::size_t i = 0; i < plan.checkCircle.size(); ++i) {
        Place(*m_page.CheckCircle[i], plan.checkCircle[i]);
    }
    for (std::size_t i = 0; i < plan.image1.size(); ++i) {
        Place(*m_page.Image1[i], plan.image1[i]);
    }
    for (std::size_t i = 0; i < plan.command.buttons.size(); ++i) {
        Place(*m_command[i], plan.command.buttons[i]);
    }
    Place(*m_page.LabelMana, plan.labelMana);
    Place(*m_page.LabelCurrentMana, plan.labelCurrentMana);
    Place(*m_page.LabelCost, plan.labelCost);
    Place(*m_page.LabelName, plan.labelName);
    Place(*m_page.LabelWords, plan.labelWords);
    Place(*m_linkMark, plan.linkMark);
    Place(*m_tithes.LabelTithes, plan.labelTithes);
    Place(*m_tithes.TxtTithes, plan.txtTithes);
    Place(*m_tithes.ImageAnkh, plan.imageAnkh);
    // The foot of the ankh reaches into the line below and takes the click there.
    m_tithes.ImageAnkh->raise();
    setFixedSize(plan.clientWidth, plan.clientHeight);
    m_page.SetColumns(m_state.DisplayVertical ? kSlotCount / 2 : kSlotCount);
    SetTabOrder(m_state.DisplayVertical);
    update();
}

void FormMain::SetTabOrder(bool vertical) {
    std::vector<QWidget*> order;
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        order.push_back(&m_counters.Reagent(reagent));
    }
    order.push_back(m_counters.ComboReagent);
    std::ranges::copy(m_page.SpellIcons, std::back_inserter(order));
    // Vertical: user pages after the circles; horizontal: before.
    for (int index = 0; index < kPageButtonCount; ++index) {
        const int shifted = vertical && index < 10 ? (index + 2) % 10 : index;
        order.push_back(m_page.CheckCircle[static_cast<std::size_t>(shifted)]);
    }
    order.insert(vertical ? order.end() : order.begin() + kReagentCount + 1, m_command.begin(),
                 m_command.end());
    order.push_back(m_tithes.ImageAnkh);
    order.push_back(m_tithes.TxtTithes);
    for (std::size_t i = 1; i < order.size(); ++i) {
        QWidget::setTabOrder(order[i - 1], order[i]);
    }
}

void FormMain::DrawReagents(QPainter& painter) {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const bool isDark = palette().color(QPalette::Window).lightness() < kDarkGround;
    const bool isSmall = m_counters.ImgReg(0).height() <= kSmallRow;
    const PictureStrip& strip = isSmall ? m_pictures.SmallReagents() : m_pictures.reagents;
    for (int k = 0; k < kReagentCount; ++k) {
        const QWidget& place = m_counters.ImgReg(k);
        if (place.isVisibleTo(this)) {
            const QRect there(place.pos(), strip.CellSize());
            if (isDark) {
                DrawRim(painter, there, strip.Strip(), strip.Cell(k));
            }
            painter.drawPixmap(there, strip.Strip(), strip.Cell(k));
        }
    }
    // The ankh fills the middle of its cell.
    const QWidget& ankh = *m_tithes.ImageAnkh;
    const PictureStrip& tall = m_pictures.reagents;
    QRect cell = tall.Cell(kAnkh);
    const int margin = (tall.CellSize().width() - ankh.width()) / 2 *
                       (cell.width() / std::max(1, tall.CellSize().width()));
    cell.adjust(margin, 0, -margin, 0);
    painter.drawPixmap(
        QRect(ankh.x(), ankh.y() - kAnkhRise, ankh.width(), tall.CellSize().height()), tall.Strip(),
        cell);
}

}  // namespace spellwick
