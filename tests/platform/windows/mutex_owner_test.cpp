#include "platform/windows/mutex_owner.h"

#include <gtest/gtest.h>

#include "platform/windows/folder_name.h"
#include "platform/windows/wide_text.h"

namespace spellwick {
namespace {

const std::wstring kFolder = L"C:\\Spellwick tests\\data";

TEST(MutexOwner, FolderThatHasAnOwner_IsRefusedUntilItIsGone) {
    {
        const Ownership first = OwnByMutex(kFolder);
        ASSERT_NE(first.owner, nullptr);
        EXPECT_FALSE(first.another);
        const Ownership second = OwnByMutex(kFolder);
        EXPECT_TRUE(second.another);
        EXPECT_EQ(second.owner, nullptr);
        EXPECT_TRUE(OwnByMutex(L"c:\\spellwick TESTS\\DATA").another) << "the same folder";
        EXPECT_FALSE(OwnByMutex(L"C:\\Spellwick tests\\other").another);
    }
    EXPECT_FALSE(OwnByMutex(kFolder).another);
}

// As of a program that runs as administrator, for one that does not.
TEST(MutexOwner, MutexThatMayNotBeOpened_IsAnOwner) {
    SECURITY_DESCRIPTOR nobody{};
    ASSERT_TRUE(InitializeSecurityDescriptor(&nobody, SECURITY_DESCRIPTOR_REVISION));
    ACL empty{};
    ASSERT_TRUE(InitializeAcl(&empty, sizeof empty, ACL_REVISION));
    ASSERT_TRUE(SetSecurityDescriptorDacl(&nobody, TRUE, &empty, FALSE));
    SECURITY_ATTRIBUTES attributes{sizeof attributes, &nobody, FALSE};
    const std::wstring name = L"Local\\Spellwick-" + FolderName(kFolder);
    const HANDLE mutex = CreateMutexW(&attributes, TRUE, name.c_str());
    ASSERT_NE(mutex, nullptr);
    const Ownership refused = OwnByMutex(kFolder);
    EXPECT_TRUE(refused.another);
    EXPECT_EQ(refused.owner, nullptr);
    CloseHandle(mutex);
    EXPECT_FALSE(OwnByMutex(kFolder).another);
}

TEST(MutexOwner, WindowOfTheOwner_ComesToTheFront) {
    const Ownership first = OwnByMutex(kFolder);
    ASSERT_NE(first.owner, nullptr);
    EXPECT_FALSE(RaiseOwner(kFolder)) << "it has no window yet";
    const auto make = [](const wchar_t* title) {
        return CreateWindowExW(0, L"Static", title, WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200,
                               100, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    };
    const HWND own = make(L"own");
    const HWND other = make(L"other");
    ASSERT_TRUE(own != nullptr && other != nullptr);
    first.owner->SetWindow(HandleOf(own));
    SetForegroundWindow(other);
    EXPECT_TRUE(RaiseOwner(kFolder));
    EXPECT_EQ(GetForegroundWindow(), own);
    ShowWindow(own, SW_MINIMIZE);
    EXPECT_TRUE(RaiseOwner(kFolder));
    EXPECT_FALSE(IsIconic(own));
    DestroyWindow(own);
    DestroyWindow(other);
}

}  // namespace
}  // namespace spellwick
