// The window "Please wait", made when the conversion of old data needs it.
#pragma once

#include <memory>

#include "main_window/form_wait.h"
#include "store/conversion.h"

namespace spellwick {

class WaitNotice : public WaitWindow {
  public:
    void ShowWait() override;
    void ShowPercent(i32 percent) override;
    void CloseWait() override;
    void ServeEvents() override;

  private:
    std::unique_ptr<FormWait> m_window;
};

}  // namespace spellwick
