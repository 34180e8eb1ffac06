// Message boxes, shown as QMessageBox.
#pragma once

#include <QPointer>
#include <QWidget>

#include "platform/message_boxes.h"

namespace spellwick {

class QtMessageBoxes : public MessageBoxes {
  public:
    // Sets the parent of later message boxes, which then stay in front of it.
    void SetOwner(QWidget* owner) { m_owner = owner; }

    // While silent, each box counts as closed without an answer and is not shown.
    void SetSilent(bool silent) { m_silent = silent; }

    BoxAnswer Show(const Box& box) override;

  private:
    QPointer<QWidget> m_owner;
    bool m_silent = false;
};

}  // namespace spellwick
