#include "platform/windows/folder_name.h"

#include <windows.h>

#include "text/fnv.h"

namespace spellwick {

std::wstring FolderName(std::wstring folder) {
    CharLowerBuffW(folder.data(), static_cast<DWORD>(folder.size()));
    return FnvDigits(std::wstring_view(folder));
}

}  // namespace spellwick
