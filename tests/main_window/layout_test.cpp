// The arrangements on the real controls: nothing overlaps or is cut off, and all can be reached.
#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/assist_messages.h"
#include "tests/support/main_window_fixture.h"
#include "widgets/form_font.h"

namespace spellwick {
namespace {

struct Arrangement {
    const char* name;
    bool vertical;
    bool necro;
};

constexpr std::array kArrangements{Arrangement{"vertical", true, true},
                                   Arrangement{"vertical without Necromancer", true, false},
                                   Arrangement{"horizontal", false, true},
                                   Arrangement{"horizontal without Necromancer", false, false}};

bool IsTold(const QString& one, const QString& other) {
    const auto isPair = [&](const char* upper, const char* lower) {
        return one.startsWith(QLatin1String(upper)) && other.startsWith(QLatin1String(lower));
    };
    return isPair("CheckCircle(1", "Image1(") || isPair("TxtTithes", "LabelTithes") ||
           isPair("TxtTithes", "LabelCost") || isPair("ImageAnkh", "LabelName");
}

class LayoutTest : public MainWindowFixture {
  protected:
    void StartIn(const Arrangement& arrangement) {
        m_form.reset();
        m_state = SharedState();
        SetSaved("Settings", "DisplayVertical", arrangement.vertical ? "True" : "False");
        SetSaved("Settings", "ShowNecroRegs", arrangement.necro ? "True" : "False");
        StartWithMira();
    }
    std::vector<QWidget*> Controls() {
        std::vector<QWidget*> shown;
        for (QObject* child : Form().children()) {
            auto* control = qobject_cast<QWidget*>(child);
            if (control != nullptr && !control->isWindow() && control->isVisible()) {
                shown.push_back(control);
            }
        }
        return shown;
    }
    int TextWidth(QWidget& control, const QString& text) {
        return QFontMetrics(control.font()).horizontalAdvance(text);
    }
};

TEST_F(LayoutTest, Controls_DoNotOverlapButWhereTold) {
    for (const Arrangement& arrangement : kArrangements) {
        SCOPED_TRACE(arrangement.name);
        StartIn(arrangement);
        for (const bool editing : {false, true}) {
            if (editing) {
                Program().EditTithes();
            }
            const std::vector<QWidget*> controls = Controls();
            ASSERT_GT(controls.size(), 70U);
            for (QWidget* one : controls) {
                for (QWidget* other : controls) {
                    if (one != other && one->geometry().intersects(other->geometry())) {
                        EXPECT_TRUE(IsTold(one->objectName(), other->objectName()) ||
                                    IsTold(other->objectName(), one->objectName()))
                            << one->objectName().toStdString() << " over "
                            << other->objectName().toStdString();
                    }
                }
            }
        }
        Leave();
    }
}

TEST_F(LayoutTest, Controls_LieWithinTheWindow) {
    for (const Arrangement& arrangement : kArrangements) {
        SCOPED_TRACE(arrangement.name);
        StartIn(arrangement);
        for (QWidget* control : Controls()) {
            EXPECT_TRUE(Form().rect().contains(control->geometry()))
                << control->objectName().toStdString();
        }
        EXPECT_EQ(Form().minimumSize(), Form().maximumSize());
    }
}

TEST_F(LayoutTest, Controls_AllHaveAnAccessibleName) {
    StartIn(kArrangements[0]);
    Program().EditTithes();
    for (QWidget* control : Controls()) {
        EXPECT_FALSE(control->accessibleName().isEmpty()) << control->objectName().toStdString();
        EXPECT_FALSE(control->objectName().isEmpty());
    }
    Leave();
}

TEST_F(LayoutTest, SpellTexts_FitInTwoLinesEach) {
    for (const Arrangement& arrangement : kArrangements) {
        SCOPED_TRACE(arrangement.name);
        StartIn(arrangement);
        for (int row = 0; row < 96; ++row) {
            const SpellRecord& spell = State().Spells(row);
            for (const auto& [label, text] :
                 {std::pair{"LabelName", spell.Name}, std::pair{"LabelWords", spell.Words}}) {
                QWidget& control = Named(QLatin1String(label));
                const QRect needed =
                    QFontMetrics(control.font())
                        .boundingRect(QRect(0, 0, control.width(), 1000),
                                      Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop,
                                      QString::fromStdString(text));
                EXPECT_LE(needed.width(), control.width()) << text;
                EXPECT_LE(needed.height(), control.height()) << text;
            }
            const auto fits = [&](const char* label, const std::string& text) {
                QWidget& control = Named(QLatin1String(label));
                EXPECT_LE(TextWidth(control, QString::fromStdString(text)), control.width())
                    << text;
            };
            fits("LabelMana", std::to_string(spell.Mana) + " mana");
            fits("LabelCost", std::to_string(spell.Cost) + " gold");
        }
    }
}

TEST_F(LayoutTest, FiguresAndCaptions_Fit) {
    for (const Arrangement& arrangement : kArrangements) {
        SCOPED_TRACE(arrangement.name);
        StartIn(arrangement);
        EXPECT_LE(TextWidth(LabelAmount(0), QStringLiteral("32767")) + 2, LabelAmount(0).width());
        EXPECT_LE(TextWidth(LabelChance(0), QStringLiteral("99")) + 2, LabelChance(0).width());
        for (const auto& [label, text] :
             {std::pair{"LabelTithes", "10000"}, std::pair{"LabelCurrentMana", "(100)"}}) {
            QWidget& control = Named(QLatin1String(label));
            EXPECT_LE(TextWidth(control, QLatin1String(text)), control.width()) << text;
            EXPECT_LE(QFontMetrics(control.font()).height(), control.height());
        }
        for (int button = 0; button < 14; ++button) {
            QWidget& control = Named("CheckCircle", button);
            QFont bold = control.font();
            bold.setBold(true);
            EXPECT_LE(QFontMetrics(bold).horizontalAdvance(
                          Named<QAbstractButton>("CheckCircle", button).text()) +
                          2,
                      control.width());
        }
        Named<QPushButton>("Command", 3).setText(QStringLiteral("Wait.."));
        for (int index = 0; index < 5; ++index) {
            auto& command = Named<QPushButton>("Command", index);
            EXPECT_LE(TextWidth(command, command.text()) + 6, command.width()) << index;
            EXPECT_LE(QFontMetrics(command.font()).height(), command.height()) << index;
        }
        for (const char* number : {"0", "50", "999", "1234", "12345", "32767", "-3"}) {
            QLineEdit& box = Reagent(3);
            box.setText(QLatin1String(number));
            // The frame takes a pixel on either side, and the text keeps one from it.
            EXPECT_LE(TextWidth(box, box.text()), box.width() - 3) << number;
            EXPECT_LE(QFontMetrics(box.font()).ascent(), box.height());
        }
        Reagent(3).setText(QStringLiteral("50"));
    }
}

TEST_F(LayoutTest, BagNames_FitTheList) {
    for (const Arrangement& arrangement : kArrangements) {
        StartIn(arrangement);
        QWidget& list = Named(QStringLiteral("ComboReagent"));
        for (int bag = 0; bag < 10; ++bag) {
            EXPECT_LE(TextWidth(list, QString::fromUtf8(DefaultBagName(bag))) + 32, list.width());
        }
    }
}

TEST_F(LayoutTest, NecroRegs_AreShownOrHiddenWithTheirArrows) {
    for (const Arrangement& arrangement : kArrangements) {
        SCOPED_TRACE(arrangement.name);
        StartIn(arrangement);
        for (int reagent = 1; reagent <= 13; ++reagent) {
            const bool shown = reagent <= 8 || arrangement.necro;
            EXPECT_EQ(Reagent(reagent).isVisible(), shown) << reagent;
            EXPECT_EQ(Named("imgReg", reagent - 1).isVisible(), shown) << reagent;
            EXPECT_EQ(Named("UpDown1", reagent).isVisible(), shown) << reagent;
        }
    }
}

TEST_F(LayoutTest, Switch_WhileItRuns_TakesEffectAtOnce) {
    StartIn(kArrangements[0]);
    const int height = Form().height();
    const int top = Named(QStringLiteral("ComboReagent")).y();
    State().ShowNecroRegs = false;
    Program().LayoutVertical();
    EXPECT_EQ(Form().height(), height - Scaled(60));
    EXPECT_EQ(Named(QStringLiteral("ComboReagent")).y(), top - Scaled(60));
    Program().LayoutHorizontal();
    EXPECT_FALSE(State().DisplayVertical);
    EXPECT_GT(Form().width(), Form().height());
    Program().LayoutVertical();
    EXPECT_TRUE(State().DisplayVertical);
    EXPECT_EQ(Form().height(), height - Scaled(60));
    EXPECT_EQ(Form().width(), Scaled(183));
}

TEST_F(LayoutTest, Horizontal_RightEdgePassesTheScreen_MovesLeft) {
    StartIn(kArrangements[0]);
    const int screen = Form().screen()->virtualGeometry().width();
    Form().move(screen - 200, 40);
    Program().LayoutHorizontal();
    EXPECT_EQ(Form().pos(), QPoint(std::max(0, screen - Form().frameGeometry().width()), 40));
}

TEST_F(LayoutTest, FontOfTheDesktop_CountsAsFarAsTheWindowFitsTheScreen) {
    const QFont before = QApplication::font();
    for (const Arrangement& arrangement : kArrangements) {
        for (const int points : {8, 9, 12, 16, 40}) {
            QFont font = before;
            font.setPointSize(points);
            QApplication::setFont(font);
            StartIn(arrangement);
            const int pixels = Form().font().pixelSize();
            SCOPED_TRACE(std::string(arrangement.name) + " at " + std::to_string(points));
            EXPECT_GE(pixels, kDesignFontPixels);
            EXPECT_LE(pixels, FormFontPixels());
            const QSize room = Form().screen()->availableGeometry().size();
            const bool fits = Form().width() <= room.width() && Form().height() <= room.height();
            EXPECT_TRUE(fits || pixels == kDesignFontPixels);
            if (Form().width() * (pixels + 1) / pixels < room.width() - 30 &&
                Form().height() * (pixels + 1) / pixels < room.height() - 50) {
                EXPECT_EQ(pixels, FormFontPixels()) << "there is room for more";
            }
        }
    }
    QApplication::setFont(before);
}

TEST_F(LayoutTest, Cells_HaveAnOutlineOfOneWidthOnAllSides) {
    StartIn(kArrangements[0]);
    const QImage shown = Form().grab().toImage();
    const double density = shown.devicePixelRatio();
    for (const char* kind : {"LabelAmount", "LabelChance"}) {
        for (int slot = 0; slot < 8; ++slot) {
            QWidget& cell = Named(kind, slot);
            const int left = qRound(cell.x() * density);
            const int top = qRound(cell.y() * density);
            const int right = qRound((cell.x() + cell.width()) * density) - 1;
            const int bottom = qRound((cell.y() + cell.height()) * density) - 1;
            // Beside the figure, where the ground shows.
            const int row = top + (bottom - top) / 2;
            const int column = left + (right - left) / 6;
            const auto width = [&](QPoint from, QPoint step) {
                const QRgb rim = shown.pixel(from);
                int count = 0;
                while (count < 5 && shown.pixel(from + count * step) == rim) {
                    ++count;
                }
                return count;
            };
            const std::vector<int> widths{width({left, row}, {1, 0}), width({right, row}, {-1, 0}),
                                          width({column, top}, {0, 1}),
                                          width({column, bottom}, {0, -1})};
            const int line = std::max(1, static_cast<int>(density));
            EXPECT_EQ(widths, std::vector<int>(4, line)) << kind << slot;
        }
    }
}

TEST_F(LayoutTest, Tithes_OfSixDigits_ShowAllOfThem) {
    for (const Arrangement& arrangement : kArrangements) {
        StartIn(arrangement);
        Program().Reports().OnMessage({kAssistStock, 200, 999999});
        auto& label = Named<QLabel>(QStringLiteral("LabelTithes"));
        ASSERT_EQ(label.text(), QStringLiteral("999999"));
        EXPECT_LE(TextWidth(label, label.text()), label.width());
        Program().EditTithes();
        auto& edit = Named<QLineEdit>(QStringLiteral("TxtTithes"));
        EXPECT_LE(TextWidth(edit, edit.text()), edit.width() - 3);
        Leave();
        Program().Reports().OnMessage({kAssistStock, 200, 5});
        EXPECT_EQ(label.font().pixelSize(), Form().font().pixelSize()) << "room enough";
    }
}

TEST_F(LayoutTest, TabOrder_FollowsTheEye) {
    for (const Arrangement& arrangement : kArrangements) {
        SCOPED_TRACE(arrangement.name);
        StartIn(arrangement);
        std::vector<std::string> order;
        order.reserve(33);
        for (int reagent = 1; reagent <= (arrangement.necro ? 13 : 8); ++reagent) {
            order.push_back("Reagent(" + std::to_string(reagent) + ")");
        }
        order.emplace_back("ComboReagent");
        std::vector<std::string> pages;
        pages.reserve(14);
        for (const int button : arrangement.vertical
                                    ? std::vector{2, 3, 4, 5, 6, 7, 8, 9, 0, 1, 10, 11, 12, 13}
                                    : std::vector{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}) {
            pages.push_back("CheckCircle(" + std::to_string(button) + ")");
        }
        std::vector<std::string> commands;
        commands.reserve(5);
        for (int index = 0; index < 5; ++index) {
            commands.push_back("Command(" + std::to_string(index) + ")");
        }
        // The eight icons are one stop.
        pages.insert(pages.begin(), "SpellIcon(0)");
        for (const auto& part :
             arrangement.vertical ? std::vector{pages, commands} : std::vector{commands, pages}) {
            order.insert(order.end(), part.begin(), part.end());
        }
        order.emplace_back("ImageAnkh");
        Reagent(1).setFocus(Qt::TabFocusReason);
        std::vector<std::string> walked;
        walked.reserve(order.size());
        for (std::size_t step = 0; step < order.size(); ++step) {
            walked.push_back(FocusName());
            Press(Qt::Key_Tab);
        }
        EXPECT_EQ(walked, order);
        EXPECT_EQ(FocusName(), "Reagent(1)") << "round again";
    }
}

TEST_F(LayoutTest, Paint_DrawsTheReagentsShownAndTheAnkh) {
    for (const Arrangement& arrangement : kArrangements) {
        SCOPED_TRACE(arrangement.name);
        StartIn(arrangement);
        const QImage picture = Form().grab().toImage();
        const double density = picture.devicePixelRatio();
        const auto isDrawn = [&](QRect place) {
            const QColor ground = Form().palette().color(QPalette::Window);
            for (int x = place.left(); x <= place.right(); ++x) {
                for (int y = place.top(); y <= place.bottom(); ++y) {
                    if (picture.pixelColor((QPointF(x, y) * density).toPoint()) != ground) {
                        return true;
                    }
                }
            }
            return false;
        };
        for (int k = 0; k < 13; ++k) {
            const QWidget& place = Named("imgReg", k);
            const bool isShown = k < 8 || arrangement.necro;
            // Another control may lie over the place of a hidden picture.
            if (isShown || Form().childAt(place.geometry().center()) == nullptr) {
                EXPECT_EQ(isDrawn(place.geometry().adjusted(4, 4, -4, -4)), isShown) << k;
            }
        }
        // The picture of the ankh begins 8 pixels above its control.
        const QRect ankh = Named(QStringLiteral("ImageAnkh")).geometry();
        EXPECT_TRUE(isDrawn(QRect(ankh.left(), ankh.top() - 6, ankh.width(), 6)));
        EXPECT_TRUE(isDrawn(ankh.adjusted(3, 2, -3, -6)));
    }
}

}  // namespace
}  // namespace spellwick
