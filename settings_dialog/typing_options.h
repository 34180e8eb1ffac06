// The options of typing: the pace of texts, and what Enter does in the game.
#pragma once

#include <QCheckBox>
#include <QSpinBox>

#include "settings_dialog/services.h"
#include "store/catalogue.h"
#include "widgets/guarded_events.h"

namespace spellwick {

// A number of milliseconds. It ignores the mouse wheel, as lists do.
class TimeBox : public QSpinBox {
    Q_OBJECT

  public:
    explicit TimeBox(QWidget* parent);

  protected:
    void wheelEvent(QWheelEvent* event) override;
};

class TypingOptions : public QWidget {
    Q_OBJECT

  public:
    // `services` outlives it.
    TypingOptions(const SettingsServices& services, QWidget* parent);

    // Shows the shared state.
    void Load();

    void ClickEnter();

  private:
    TimeBox* MakeTime(const char* name, const char* accessibleName, const PaceKey& key);
    void ChangeTime(const PaceKey& key, int time);

    const SettingsServices& m_services;
    const GuardedEvents m_events;

  public:
    QCheckBox* CheckEnter;
    TimeBox* SpinHold;
    TimeBox* SpinGap;
};

}  // namespace spellwick
