// The program's message boxes, shown by the toolkit.
#pragma once

#include <QPointer>
#include <QWidget>

#include "platform/message_boxes.h"

namespace spellwick {

class QtMessageBoxes : public MessageBoxes {
  public:
    // From now on, message boxes belong to this window, so that they stay in front of it.
    void SetOwner(QWidget* owner) { m_owner = owner; }

    BoxAnswer Show(const Box& box) override;

  private:
    QPointer<QWidget> m_owner;
};

}  // namespace spellwick
