#include "settings_dialog/game_tab.h"

#include <QVBoxLayout>

#include "model/updating_scope.h"
#include "store/catalogue.h"
#include "store/text_forms.h"

namespace spellwick {

GameTab::GameTab(const SettingsServices& services, QWidget* parent)
    : SettingsTab(services, parent),
      CheckFront(Named(new QCheckBox(QStringLiteral("Type only while the game is in front"), this),
                       QStringLiteral("CheckFront"))),
      Typing(new TypingOptions(services, this)) {
    m_events.On(CheckFront, &QCheckBox::clicked, "changing an option", [this] { ClickFront(); });
    auto* all = new QVBoxLayout(this);
    all->addWidget(CheckFront);
    all->addWidget(Typing);
    all->addStretch();
}

void GameTab::Load() {
    const UpdatingScope updating(m_state);
    CheckFront->setChecked(m_state.CheckFront);
    Typing->Load();
}

void GameTab::ClickFront() {
    m_state.CheckFront = CheckFront->isChecked();
    m_services.companion.SaveOption(kCheckFrontKey.key, BoolText(m_state.CheckFront));
}

}  // namespace spellwick
