#include "main_window/wait_notice.h"

#include <QCoreApplication>

namespace spellwick {

void WaitNotice::ShowWait() {
    if (m_window == nullptr) {
        m_window = std::make_unique<FormWait>();
    }
    m_window->show();
}

void WaitNotice::ShowPercent(i32 percent) {
    if (m_window != nullptr) {
        m_window->ShowPercent(percent);
    }
}

void WaitNotice::CloseWait() {
    m_window.reset();
}

void WaitNotice::ServeEvents() {
    QCoreApplication::processEvents();
}

}  // namespace spellwick
