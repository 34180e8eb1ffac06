// Renders the tabs of the settings dialog.
#include "tests/support/render.h"

#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

class Render : public SettingsFixture {
  public:
    explicit Render(const RenderTarget& target) : m_target(target) {}

    void TestBody() override {
        SetSaved("Settings", "CurrentPlayerName", kMira);
        SetSaved("Settings", "Pictures", "1");
        m_game.LoadTable();
        m_clients.windows = {
            {.handle = 8, .windowClass = "ClassicUO", .title = "Bran (x) - My Shard 2 - 100/100"},
            {.handle = 9, .windowClass = "Firefox", .title = "A page - Firefox"},
            {.handle = 10, .windowClass = "XTerm", .title = "a shell"}};
        Open();
        for (int tab = 0; tab < kTabCount; ++tab) {
            ShowTab(tab);
            QCoreApplication::processEvents();
            m_target.Save(Form(), QStringLiteral("tab_%1").arg(tab));
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
