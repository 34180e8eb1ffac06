// The order in which the window goes through the changes on the screen.
#include <QComboBox>
#include <QLayout>
#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/assist_messages.h"
#include "tests/support/main_window_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

// A layout that lays nothing out, but tells when a control asks for another size, as a label does
// at each new text.
class SizeRequests : public QLayout {
  public:
    SizeRequests(QWidget* form, std::function<void()> requested)
        : QLayout(form), m_requested(std::move(requested)) {
        setSizeConstraint(SetNoConstraint);
    }
    void invalidate() override {
        QLayout::invalidate();
        m_requested();
    }
    QSize sizeHint() const override { return {}; }
    void addItem(QLayoutItem* /*item*/) override {}
    int count() const override { return 0; }
    QLayoutItem* itemAt(int /*index*/) const override { return nullptr; }
    QLayoutItem* takeAt(int /*index*/) override { return nullptr; }

  private:
    std::function<void()> m_requested;
};

class Events : public QObject {
  public:
    explicit Events(std::function<void(const QObject*, QEvent::Type)> note)
        : m_note(std::move(note)) {}
    bool eventFilter(QObject* watched, QEvent* event) override {
        m_note(watched, event->type());
        return false;
    }

  private:
    std::function<void(const QObject*, QEvent::Type)> m_note;
};

// Notes what is drawn by the events and signals of the controls.
class DrawingOrderTest : public MainWindowFixture {
  protected:
    void TearDown() override {
        m_events.reset();
        MainWindowFixture::TearDown();
    }

    // Keeps the changes from the window until Draw.
    void Show(const Changes& changes) override {
        if (!m_held) {
            MainWindowFixture::Show(changes);
        }
    }
    void Hold() { m_held = true; }
    void Draw(const Changes& changes) {
        WatchEvents();
        WatchSignals();
        WatchLabels();
        m_iconName = IconName();
        m_held = false;
        Form().Show(changes);
    }

    // Without repetitions.
    std::vector<std::string> Notes() const {
        std::vector<std::string> notes = m_notes;
        notes.erase(std::unique(notes.begin(), notes.end()), notes.end());
        return notes;
    }

  private:
    void Note(const std::string& what) {
        // Icons and timers change silently, so check them before each note.
        if (std::exchange(m_iconName, IconName()) != m_iconName) {
            m_notes.emplace_back("icons");
        }
        if (Form().Timer1(2).isActive() && !std::exchange(m_meditates, true)) {
            m_notes.emplace_back("meditation");
        }
        m_notes.push_back(what);
    }
    QString IconName() { return Named("SpellIcon", 0).accessibleName(); }

    void WatchEvents() {
        using Key = std::pair<const QObject*, QEvent::Type>;
        std::map<Key, const char*> names{
            {{&Form(), QEvent::WindowTitleChange}, "caption"},
            {{&Form(), QEvent::Resize}, "layout"},
            {{&Named(QStringLiteral("LabelTithes")), QEvent::PaletteChange}, "tithesGround"},
            {{&Named(QStringLiteral("TxtTithes")), QEvent::Show}, "tithesEditing"},
            {{&Named("Command", 3), QEvent::EnabledChange}, "countButton"}};
        for (int reagent = 1; reagent <= kReagentCount; ++reagent) {
            names[{&Reagent(reagent), QEvent::PaletteChange}] = "counterGrounds";
        }
        m_events = std::make_unique<Events>(
            [this, names = std::move(names)](const QObject* watched, QEvent::Type type) {
                if (const auto found = names.find({watched, type}); found != names.end()) {
                    Note(found->second);
                }
            });
        QCoreApplication::instance()->installEventFilter(m_events.get());
    }

    void WatchSignals() {
        for (int button = 0; button < kPageButtonCount; ++button) {
            QObject::connect(&Named<QAbstractButton>("CheckCircle", button),
                             &QAbstractButton::toggled, [this] { Note("page"); });
        }
        for (int reagent = 1; reagent <= kReagentCount; ++reagent) {
            QObject::connect(&Reagent(reagent), &QLineEdit::textChanged,
                             [this] { Note("counters"); });
        }
        QObject::connect(Named<QComboBox>(QStringLiteral("ComboReagent")).model(),
                         &QAbstractItemModel::rowsInserted, [this] { Note("bags"); });
        QObject::connect(&Named<QLineEdit>(QStringLiteral("TxtTithes")), &QLineEdit::textChanged,
                         [this] { Note("tithes"); });
    }

    void WatchLabels() {
        std::map<QLabel*, const char*> names;
        for (int slot = 0; slot < kSlotCount; ++slot) {
            names[&LabelChance(slot)] = "chances";
            names[&LabelAmount(slot)] = "amounts";
        }
        for (const char* line : {"LabelName", "LabelWords", "LabelMana", "LabelCost"}) {
            names[&Named<QLabel>(QLatin1String(line))] = "spellLines";
        }
        names[&Named<QLabel>(QStringLiteral("LabelCurrentMana"))] = "currentMana";
        std::map<QLabel*, QString> texts;
        for (const auto& [label, name] : names) {
            texts[label] = label->text();
        }
        new SizeRequests(&Form(), [this, names = std::move(names), texts]() mutable {
            for (auto& [label, text] : texts) {
                if (std::exchange(text, label->text()) != text) {
                    Note(names.at(label));
                }
            }
        });
    }

    bool m_held = false;
    bool m_meditates = false;
    QString m_iconName;
    std::vector<std::string> m_notes;
    std::unique_ptr<Events> m_events;
};

// All that the main window shows; the other windows show the rest.
Changes AllOfTheMainWindow() {
    Changes all{.caption = true,
                .layout = true,
                .page = true,
                .icons = true,
                .spellLines = true,
                .currentMana = true,
                .counters = {},
                .counterGrounds = true,
                .bags = true,
                .tithes = true,
                .tithesGround = true,
                .tithesEditing = true,
                .countButton = true,
                .meditation = true,
                .chances = true,
                .amounts = true};
    all.counters.Fill(true);
    return all;
}

TEST_F(DrawingOrderTest, Show_GoesThroughTheChangesInTheirOrder) {
    StartWithMira();
    SavePlayer(kBran);
    SetSaved(kBran, "Bag 0", "Sack");
    SetSaved(kBran, "MR 0", "9");
    SetSaved(kBran, "CurrentTithing", " 7");
    Hold();
    OpenClient(kBran);
    Program().WatchTick();
    State().DisplayVertical = !State().DisplayVertical;
    State().Meditate = true;
    State().MeditateLevel = 25;
    Program().Reports().OnMessage({kAssistStats, 100, 20});
    Program().Reports().OnMessage({kAssistStats, 100, 10});
    Program().ChoosePage(5);
    State().Spells(24).Reagents(kTithes) = 10;
    State().Magery = 50;
    Program().UpdateChances();
    Program().HoverSlot(0);
    Program().EditTithes();
    Program().EnableCount(false);
    Draw(AllOfTheMainWindow());
    EXPECT_THAT(Notes(),
                ElementsAre("caption", "layout", "page", "icons", "spellLines", "currentMana",
                            "counters", "counterGrounds", "bags", "tithes", "tithesGround",
                            "tithesEditing", "countButton", "meditation", "chances", "amounts"));
}

}  // namespace
}  // namespace spellwick
