#include "widgets/on_screen.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cstdint>
#include <optional>

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

std::vector<QRect> ScreensOfTheMoment() {
    std::vector<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        screens.push_back(screen->availableGeometry());
    }
    return screens;
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
    return OnScreens(place, window.size(), ScreensOfTheMoment());
}

QPoint ClearOf(QPoint place, QSize size, std::vector<QRect> others,
               const std::vector<QRect>& screens) {
    const auto isFree = [&](const QRect& window) {
        return std::ranges::any_of(screens,
                                   [&](const QRect& screen) { return screen.contains(window); }) &&
               std::ranges::none_of(others,
                                    [&](const QRect& other) { return other.intersects(window); });
    };
    for (; !others.empty(); others.pop_back()) {
        // A nearest place touches what is in its way, or keeps a coordinate.
        std::vector<int> lefts{place.x()};
        std::vector<int> tops{place.y()};
        for (const QRect& other : others) {
            lefts.insert(lefts.end(), {other.right() + 1, other.left() - size.width()});
            tops.insert(tops.end(), {other.bottom() + 1, other.top() - size.height()});
        }
        for (const QRect& screen : screens) {
            lefts.insert(lefts.end(), {screen.left(), screen.right() + 1 - size.width()});
            tops.insert(tops.end(), {screen.top(), screen.bottom() + 1 - size.height()});
        }
        std::optional<QPoint> best;
        for (const int left : lefts) {
            for (const int top : tops) {
                const QPoint way = QPoint(left, top) - place;
                if (isFree(QRect(QPoint(left, top), size)) &&
                    (!best || way.manhattanLength() < (*best - place).manhattanLength())) {
                    best = QPoint(left, top);
                }
            }
        }
        if (best) {
            return *best;
        }
    }
    return place;
}

QPoint ClearOf(QPoint place, QSize size, const std::vector<QRect>& others) {
    return ClearOf(place, size, others, ScreensOfTheMoment());
}

}  // namespace spellwick
