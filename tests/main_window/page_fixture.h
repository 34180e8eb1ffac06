// Fixture for tests of the page of eight spells.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <vector>

#include "tests/support/main_window_fixture.h"
#include "widgets/ground.h"

namespace spellwick {

inline constexpr Colour kWarn = 0x00FFFF;

class PageTest : public MainWindowFixture {
  protected:
    std::vector<int> PressedButtons() {
        std::vector<int> pressed;
        for (int button = 0; button < 14; ++button) {
            if (Named<QAbstractButton>("CheckCircle", button).isChecked()) {
                pressed.push_back(button);
            }
        }
        return pressed;
    }
    std::vector<i32> Rows() {
        std::vector<i32> rows;
        rows.reserve(8);
        for (int slot = 0; slot < 8; ++slot) {
            rows.push_back(Program().SpellAtSlot(slot));
        }
        return rows;
    }
    // A row's picture in colour and a slot's as drawn, both without the rim.
    static QImage Picture(i32 row) {
        static const QImage kStrip(
            QStringLiteral(SPELLWICK_SOURCE_FOLDER "/data/pictures/spells_colour.png"));
        return kStrip.copy(row % 8 * 42 + 4, row / 8 * 42 + 4, 34, 34)
            .convertToFormat(QImage::Format_RGB32);
    }
    QImage ShownIcon(int slot) {
        return Icon(slot).grab().toImage().copy(4, 4, 34, 34).convertToFormat(QImage::Format_RGB32);
    }
    // Equal but for the painter's rounding.
    static bool Alike(const QImage& one, const QImage& other) {
        int worst = 0;
        for (int y = 0; y < one.height(); ++y) {
            for (int x = 0; x < one.width(); ++x) {
                const QColor a = one.pixelColor(x, y);
                const QColor b = other.pixelColor(x, y);
                worst = std::max({worst, std::abs(a.red() - b.red()),
                                  std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
            }
        }
        return worst <= 8;
    }
    SpellIcon& Icon(int slot) { return Named<SpellIcon>("SpellIcon", slot); }
    void Hover(int slot) { MoveTo(Named("SpellIcon", slot)); }
    Colour Ground(const QString& name) { return GroundOf(Named(name), kButtonFace); }
    Colour CounterGround(int reagent) {
        return GroundOf(Named("Reagent", reagent), kWindowBackground);
    }
    // A spot of the form that no control covers.
    QPoint BareForm() {
        for (int y = 1; y < Form().height(); ++y) {
            for (int x = 1; x < Form().width(); ++x) {
                if (Form().childAt(x, y) == nullptr) {
                    return {x, y};
                }
            }
        }
        throw std::logic_error("no bare spot");
    }
};

}  // namespace spellwick
