#include "widgets/on_screen.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cstdint>

namespace spellwick {

namespace {

constexpr int kGrip = 16;  // pixels both ways
// Room for a frame, whose size is not known before the window is shown.
constexpr QSize kFrame(16, 40);
// Farther than any screen, and near enough to be added to.
constexpr int kFarthest = 1 << 20;

bool CanBeGrasped(const QRect& window, const QRect& screen) {
    const QRect seen = window.intersected(screen);
    return seen.width() >= std::min(kGrip, window.width()) &&
           seen.height() >= std::min(kGrip, window.height());
}

std::int64_t Gap(int first, int last, int least, int most) {
    return std::max({0, least - last, first - most});
}

std::int64_t SquaredDistance(const QRect& window, const QRect& screen) {
    const std::int64_t across = Gap(window.left(), window.right(), screen.left(), screen.right());
    const std::int64_t down = Gap(window.top(), window.bottom(), screen.top(), screen.bottom());
    return across * across + down * down;
}

}  // namespace

QPoint OnScreens(QPoint place, QSize size, const std::vector<QRect>& screens) {
    place = {std::clamp(place.x(), -kFarthest, kFarthest),
             std::clamp(place.y(), -kFarthest, kFarthest)};
    const QRect window(place, size);
    const auto grasped = [&](const QRect& screen) { return CanBeGrasped(window, screen); };
    if (screens.empty() || std::ranges::any_of(screens, grasped)) {
        return place;
    }
    const QRect& nearest = *std::ranges::min_element(
        screens, {}, [&](const QRect& screen) { return SquaredDistance(window, screen); });
    // A window larger than the screen keeps its title bar on it.
    const QSize whole = size + kFrame;
    return {std::max(nearest.left(), std::min(place.x(), nearest.right() + 1 - whole.width())),
            std::max(nearest.top(), std::min(place.y(), nearest.bottom() + 1 - whole.height()))};
}

QPoint OnScreens(QPoint place, const QWidget& window) {
    std::vector<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        screens.push_back(screen->availableGeometry());
    }
    return OnScreens(place, window.size(), screens);
}

}  // namespace spellwick
