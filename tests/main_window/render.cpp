// Renders the main window in both arrangements, with all counters and without.
#include "tests/support/render.h"

#include "link/assist_messages.h"
#include "tests/support/main_window_fixture.h"

namespace spellwick {
namespace {

class Render : public MainWindowFixture {
  public:
    explicit Render(const RenderTarget& target) : m_target(target) {}

    void TestBody() override {
        struct Row {
            const char* name;
            bool vertical;
            bool necro;
        };
        for (const Row& row :
             {Row{"vertical", true, true}, Row{"vertical_plain", true, false},
              Row{"horizontal", false, true}, Row{"horizontal_plain", false, false}}) {
            m_state = SharedState();
            SetSaved("Settings", "DisplayVertical", row.vertical ? "True" : "False");
            SetSaved("Settings", "ShowNecroRegs", row.necro ? "True" : "False");
            StartWithMira();
            State().Spellbook(28) = 1;
            ShowPage(5);
            MoveTo(Named("SpellIcon", 5));
            Reagent(2).setText(QStringLiteral("999"));
            Reagent(5).setText(QStringLiteral("1234"));
            Reagent(6).setText(QStringLiteral("12345"));
            Reagent(12).setText(QStringLiteral("-3"));
            Program().Reports().OnMessage({kAssistStats, 100, 100});
            QCoreApplication::processEvents();
            m_target.Save(Form(), QLatin1String(row.name));
        }
    }

  private:
    const RenderTarget& m_target;
};

}  // namespace

void RenderForms(const RenderTarget& target) {
    Render(target).TestBody();
}

}  // namespace spellwick
