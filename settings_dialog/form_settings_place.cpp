// Size, place and looks of the settings dialog, and the names of its lists.
#include <QCheckBox>
#include <QScreen>

#include "settings_dialog/box_rim.h"
#include "settings_dialog/form_settings.h"
#include "widgets/on_screen.h"

namespace spellwick {

namespace {

// Minimum size, 8340 by 5655 twips; a larger font makes the dialog larger.
constexpr QSize kLeastSize(556, 377);
// Not known before the dialog is shown.
constexpr QSize kFrame(16, 40);

}  // namespace

// Tabs and panels scroll where the screen is smaller than the dialog.
void FormSettings::MakeScroll() {
    m_scroll = new QScrollArea(this);
    m_scroll->setObjectName(QStringLiteral("ScrollSettings"));
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    auto* content = new QWidget;
    m_content = new QVBoxLayout(content);
    m_content->setContentsMargins(0, 0, 0, 0);
    m_content->setSpacing(0);
    m_scroll->setWidget(content);
    static_cast<QVBoxLayout*>(layout())->addWidget(m_scroll, 1);
}

// Where a list's name is its text, screen readers take the name from its label.
void FormSettings::NameLists() {
    for (ChoiceBox* list : findChildren<ChoiceBox*>()) {
        auto* label = new QLabel(list->accessibleName(), list->parentWidget());
        label->setObjectName(QStringLiteral("NameOf") + list->objectName());
        label->setBuddy(list);
        label->hide();
    }
}

void FormSettings::LightenBoxes() {
    auto* rim = new BoxRim;
    rim->setParent(this);
    for (QCheckBox* box : findChildren<QCheckBox*>()) {
        box->setStyle(rim);
    }
}

void FormSettings::FitSize() {
    m_content->activate();
    m_scroll->setMinimumSize(m_content->totalMinimumSize());
    layout()->activate();
    const QSize whole = layout()->totalMinimumSize().expandedTo(kLeastSize);
    const QSize room = screen()->availableGeometry().size() - kFrame;
    if (room.width() >= whole.width() && room.height() >= whole.height()) {
        setFixedSize(whole);
        return;
    }
    // What does not fit one way takes a bar from the other.
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    m_scroll->setMinimumSize(0, 0);
    setFixedSize((whole + QSize(bar, bar)).boundedTo(room));
}

QRect FormSettings::GameArea() const {
    return m_services.gameArea ? m_services.gameArea() : QRect();
}

// As long as the player has never moved the dialog, it keeps clear of the main window and, where
// there is room, of the game.
QPoint FormSettings::PlaceToOpen() {
    const QPoint place = OnScreens(pos(), *this);
    const bool isMoved = m_place.top != 0.0F || m_place.left != 0.0F;
    if (isMoved || parentWidget() == nullptr) {
        return place;
    }
    std::vector<QRect> others{parentWidget()->frameGeometry()};
    if (const QRect game = GameArea(); !game.isEmpty()) {
        others.push_back(game);
    }
    m_aside = ClearOf(place, size() + kFrame, others);
    return m_aside;
}

}  // namespace spellwick
