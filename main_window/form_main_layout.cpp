// The two arrangements at work, and the pictures that the form draws itself.
#include <QFontMetrics>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <cmath>
#include <iterator>

#include "main_window/form_main.h"
#include "widgets/form_font.h"
#include "widgets/on_screen.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

constexpr int kAnkh = 13;  // cell of the strip
constexpr int kAnkhRise = 8;
constexpr int kSmallRow = 15;
constexpr int kSmallFontPixels = 11;

// Of a title bar and the borders; not known before the window is shown.
constexpr QSize kFrame(16, 40);

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

int FormMain::InWindow(int pixels) const {
    return qRound(pixels * static_cast<double>(m_fontPixels) / kDesignFontPixels);
}

TextSizes FormMain::MeasureTexts() const {
    const QFontMetrics metrics(font());
    const auto inDesign = [this](int pixels) {
        return static_cast<int>(
            std::ceil(pixels * static_cast<double>(kDesignFontPixels) / m_fontPixels));
    };
    TextSizes texts;
    for (std::size_t i = 0; i < m_command.size(); ++i) {
        texts.captionWidths[i] = inDesign(metrics.horizontalAdvance(m_command[i]->text()));
    }
    texts.captionHeight = inDesign(metrics.height());
    texts.joinedWidth =
        inDesign(metrics.horizontalAdvance(m_command[0]->text() + m_command[1]->text()));
    texts.comboHeight = inDesign(m_counters.ComboReagent->sizeHint().height());
    return texts;
}

LayoutPlan FormMain::Plan() const {
    const TextSizes texts = MeasureTexts();
    const LayoutPlan plan = m_state.DisplayVertical ? PlanVertical(m_state.ShowNecroRegs, texts)
                                                    : PlanHorizontal(m_state.ShowNecroRegs, texts);
    return Enlarged(plan, static_cast<double>(m_fontPixels) / kDesignFontPixels);
}

// In the desktop's font, or in the largest smaller one with which the window fits the screen.
void FormMain::Arrange() {
    const QSize room = screen()->availableGeometry().size() - kFrame;
    const auto useFont = [this](int pixels) {
        m_fontPixels = pixels;
        if (font().pixelSize() != pixels) {
            setFont(FormFont(pixels));
        }
    };
    useFont(FormFontPixels());
    LayoutPlan plan = Plan();
    while (m_fontPixels > kDesignFontPixels &&
           (plan.clientWidth > room.width() || plan.clientHeight > room.height())) {
        useFont(m_fontPixels - 1);
        plan = Plan();
    }
    Apply(plan);
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
        if (plan.reagent[k].height <= InWindow(kSmallRow)) {
            counterFont.setPixelSize(InWindow(kSmallFontPixels));
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
    m_tithes.FitLabel();
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
    const auto inWindow = [this](QSize size) {
        return QSize(InWindow(size.width()), InWindow(size.height()));
    };
    const bool isSmall = m_counters.ImgReg(0).height() <= InWindow(kSmallRow);
    const PictureStrip& strip = isSmall ? m_pictures.SmallReagents() : m_pictures.Reagents();
    for (int k = 0; k < kReagentCount; ++k) {
        const QWidget& place = m_counters.ImgReg(k);
        if (place.isVisibleTo(this)) {
            const QRect there(place.pos(), inWindow(strip.CellSize()));
            if (isDark) {
                DrawRim(painter, there, strip.Strip(), strip.Cell(k));
            }
            painter.drawPixmap(there, strip.Strip(), strip.Cell(k));
        }
    }
    // The ankh fills the middle of its cell.
    const QWidget& ankh = *m_tithes.ImageAnkh;
    const PictureStrip& tall = m_pictures.Reagents();
    QRect cell = tall.Cell(kAnkh);
    const QSize size = inWindow(tall.CellSize());
    const int margin = cell.width() * (size.width() - ankh.width()) / 2 / std::max(1, size.width());
    cell.adjust(margin, 0, -margin, 0);
    painter.drawPixmap(QRect(ankh.x(), ankh.y() - InWindow(kAnkhRise), ankh.width(), size.height()),
                       tall.Strip(), cell);
}

}  // namespace spellwick
