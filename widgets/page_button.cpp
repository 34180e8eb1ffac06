#include "widgets/page_button.h"

#include <QPainter>

namespace spellwick {

PageButton::PageButton(QWidget* parent) : QAbstractButton(parent) {
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
}

// Wide enough for the caption in bold.
QSize PageButton::sizeHint() const {
    constexpr QSize kLeast(43, 24);
    constexpr int kMargin = 6;
    QFont captionFont = font();
    captionFont.setBold(m_boldWhenPressed);
    const QSize caption = QFontMetrics(captionFont).size(Qt::TextShowMnemonic, text());
    return QSize(caption.width() + 2 * kMargin, caption.height() + kMargin).expandedTo(kLeast);
}

void PageButton::enterEvent(QEnterEvent* /*event*/) {
    update();
}
void PageButton::leaveEvent(QEvent* /*event*/) {
    update();
}

void PageButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette& colours = palette();
    const bool pressed = isChecked();
    // Use the active colours: some themes hide the highlight in an inactive window, and this one is
    // inactive while the game is played.
    QColor ground = pressed ? colours.color(QPalette::Active, QPalette::Highlight)
                            : colours.color(QPalette::Button);
    if (m_overPicture && !pressed) {
        ground.setAlpha(225);
    }
    if (isDown() || (underMouse() && !pressed)) {
        ground = ground.lightness() > 128 ? ground.darker(108) : ground.lighter(125);
    }
    const bool dark = colours.color(QPalette::Window).lightness() < 128;
    QColor rim = colours.color(QPalette::WindowText);
    rim.setAlpha(hasFocus() ? 200 : (dark ? 90 : 70));
    painter.setPen(QPen(rim, 1.0));
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3.0, 3.0);

    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        painter.setPen(QPen(pressed ? colours.color(QPalette::Active, QPalette::HighlightedText)
                                    : colours.color(QPalette::Active, QPalette::Highlight),
                            1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(2.0, 2.0, -2.0, -2.0), 2.0, 2.0);
    }
    painter.setPen(pressed ? colours.color(QPalette::Active, QPalette::HighlightedText)
                           : colours.color(QPalette::ButtonText));
    QFont captionFont = font();
    captionFont.setBold(pressed && m_boldWhenPressed);
    painter.setFont(captionFont);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

}  // namespace spellwick
