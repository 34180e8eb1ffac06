// Owns a settings' folder by a mutex named after it. The owner's window carries the same name as a
// property.
#pragma once

#include <string>

#include <windows.h>

#include "platform/settings_owner.h"

namespace spellwick {

class MutexOwner final : public SettingsOwner {
  public:
    // The mutex is owned by this process.
    MutexOwner(HANDLE mutex, std::wstring name) : m_mutex(mutex), m_name(std::move(name)) {}
    ~MutexOwner() override;
    MutexOwner(const MutexOwner&) = delete;
    MutexOwner& operator=(const MutexOwner&) = delete;
    MutexOwner(MutexOwner&&) = delete;
    MutexOwner& operator=(MutexOwner&&) = delete;

    void SetWindow(WindowHandle window) override;

  private:
    HANDLE m_mutex;
    std::wstring m_name;
};

// `folder` in any spelling of its letters.
Ownership OwnByMutex(const std::wstring& folder);

// Brings the window of the program that has the folder to the front; false when there is none.
bool RaiseOwner(const std::wstring& folder);

}  // namespace spellwick
