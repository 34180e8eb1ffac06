#include "platform/background_journal_file.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <gtest/gtest.h>

#include "tests/support/memory_journal_file.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;

// A file on a disk that takes as long for a sync as the test says.
class HeldFile : public MemoryJournalFile {
  public:
    bool Sync() override {
        std::unique_lock lock(m_mutex);
        ++m_begun;
        m_changed.notify_all();
        m_released = m_changed.wait_for(lock, 10s, [this] { return !m_held; }) && m_released;
        ++syncs;
        return m_works;
    }

    void Hold() { Set(m_held, true); }
    void Release() { Set(m_held, false); }
    void Work(bool works) { Set(m_works, works); }
    // Whether so many syncs have begun, at the latest after ten seconds.
    bool WaitBegun(int count) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, 10s, [&] { return m_begun >= count; });
    }
    int Begun() {
        const std::scoped_lock lock(m_mutex);
        return m_begun;
    }
    // False after a sync that nobody has released.
    bool Released() {
        const std::scoped_lock lock(m_mutex);
        return m_released;
    }

  private:
    void Set(bool& value, bool to) {
        const std::scoped_lock lock(m_mutex);
        value = to;
        m_changed.notify_all();
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_held = false;
    bool m_works = true;
    bool m_released = true;
    int m_begun = 0;
};

class BackgroundJournalFileTest : public testing::Test {
  protected:
    BackgroundJournalFileTest() {
        auto disk = std::make_unique<HeldFile>();
        m_disk = disk.get();
        m_file = std::make_unique<BackgroundJournalFile>(std::move(disk));
    }
    // Asks until all is on the disk, at most for ten seconds.
    bool WaitSynced() {
        const auto end = std::chrono::steady_clock::now() + 10s;
        while (!m_file->SyncByAndBy()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            std::this_thread::sleep_for(1ms);
        }
        return true;
    }

    HeldFile* m_disk = nullptr;
    std::unique_ptr<BackgroundJournalFile> m_file;
};

TEST_F(BackgroundJournalFileTest, SlowDisk_DelaysNeitherTheCallNorTheNextLine) {
    m_disk->Hold();
    ASSERT_TRUE(m_file->Append("one\n"));
    EXPECT_FALSE(m_file->SyncByAndBy());
    ASSERT_TRUE(m_disk->WaitBegun(1));
    EXPECT_TRUE(m_file->Append("two\n"));
    EXPECT_EQ(m_file->Read(), "one\ntwo\n");
    EXPECT_FALSE(m_file->SyncByAndBy()) << "the first is under way";
    EXPECT_EQ(m_disk->Begun(), 1);
    m_disk->Release();
    EXPECT_TRUE(WaitSynced());
    EXPECT_EQ(m_disk->Begun(), 2) << "the second line came after the first sync had begun";
    EXPECT_TRUE(m_file->SyncByAndBy());
    EXPECT_EQ(m_disk->Begun(), 2) << "nothing new";
    EXPECT_TRUE(m_disk->Released());
}

TEST_F(BackgroundJournalFileTest, NothingWritten_SyncsNothing) {
    EXPECT_EQ(m_file->Read(), "");
    EXPECT_TRUE(m_file->SyncByAndBy());
    EXPECT_EQ(m_disk->Begun(), 0);
}

TEST_F(BackgroundJournalFileTest, SyncThatFailed_IsTriedAgain) {
    m_disk->Work(false);
    ASSERT_TRUE(m_file->Append("one\n"));
    EXPECT_FALSE(m_file->SyncByAndBy());
    ASSERT_TRUE(m_disk->WaitBegun(1));
    m_disk->Work(true);
    EXPECT_TRUE(WaitSynced());
    EXPECT_EQ(m_disk->Begun(), 2);
}

TEST_F(BackgroundJournalFileTest, Sync_WaitsAndSaysWhetherItWorked) {
    ASSERT_TRUE(m_file->Append("one\n"));
    m_disk->Work(false);
    EXPECT_FALSE(m_file->Sync());
    m_disk->Work(true);
    EXPECT_TRUE(m_file->Sync());
    EXPECT_EQ(m_disk->syncs, 2);
    EXPECT_TRUE(m_file->SyncByAndBy());
    EXPECT_EQ(m_disk->syncs, 2);
}

TEST_F(BackgroundJournalFileTest, ReplacedOrSyncedWhileASyncIsUnderWay_WaitsForIt) {
    for (const bool replaced : {true, false}) {
        m_disk->Hold();
        ASSERT_TRUE(m_file->Append("one\n"));
        const int begun = m_disk->Begun();
        EXPECT_FALSE(m_file->SyncByAndBy());
        ASSERT_TRUE(m_disk->WaitBegun(begun + 1));
        std::thread later([this] {
            std::this_thread::sleep_for(50ms);
            m_disk->Release();
        });
        EXPECT_TRUE(replaced ? m_file->Replace("two\n") : m_file->Sync());
        EXPECT_EQ(m_disk->syncs, m_disk->Begun()) << "none is under way";
        later.join();
        EXPECT_TRUE(WaitSynced());
        EXPECT_TRUE(m_disk->Released());
    }
}

TEST_F(BackgroundJournalFileTest, EndWhileASyncIsUnderWay_WaitsForIt) {
    m_disk->Hold();
    ASSERT_TRUE(m_file->Append("one\n"));
    EXPECT_FALSE(m_file->SyncByAndBy());
    ASSERT_TRUE(m_disk->WaitBegun(1));
    const auto begun = std::chrono::steady_clock::now();
    std::thread later([this] {
        std::this_thread::sleep_for(50ms);
        m_disk->Release();
    });
    m_file.reset();
    EXPECT_GE(std::chrono::steady_clock::now() - begun, 50ms);
    later.join();
}

}  // namespace
}  // namespace spellwick
