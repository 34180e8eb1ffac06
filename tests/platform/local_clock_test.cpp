// The time of day in the system's time zone.
#include "platform/linux/local_clock.h"

#include <chrono>
#include <cmath>
#include <ctime>
#include <optional>
#include <set>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <stdlib.h>

namespace spellwick {
namespace {

constexpr int kDay = 86400;

// Sets the time zone of the process and restores it at the end.
class Zone {
  public:
    explicit Zone(const char* name) {
        if (const char* before = std::getenv("TZ")) {
            m_before = before;
        }
        setenv("TZ", name, 1);
        tzset();
    }
    ~Zone() {
        if (m_before) {
            setenv("TZ", m_before->c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }
    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;
    Zone(Zone&&) = delete;
    Zone& operator=(Zone&&) = delete;

  private:
    std::optional<std::string> m_before;
};

double SecondsOfTheDay(int secondsEastOfGreenwich) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::fmod(std::chrono::duration<double>(now).count() + secondsEastOfGreenwich, kDay);
}

TEST(LocalClock, EachZone_TellsItsOwnTimeOfDay) {
    struct Row {
        const char* zone;
        int east;
    };
    for (const Row& row : {Row{"UTC0", 0}, Row{"AAA-5:30", 19800}, Row{"BBB8", -28800 + kDay}}) {
        const Zone zone(row.zone);
        const double now = SecondsOfTheDay(row.east);
        const double told = LocalClock().SecondsSinceMidnight();
        EXPECT_GE(told, 0.0);
        EXPECT_LE(told, kDay);
        // Midnight may fall between the two readings.
        const double apart = std::fabs(told - now);
        EXPECT_LT(std::min(apart, kDay - apart), 5.0) << row.zone;
    }
}

TEST(LocalClock, FractionsOfASecond_AreTold) {
    const LocalClock clock;
    std::set<float> fractions;
    for (int i = 0; i < 8; ++i) {
        const float now = clock.SecondsSinceMidnight();
        fractions.insert(now - std::floor(now));
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_GE(fractions.size(), 4U);
}

}  // namespace
}  // namespace spellwick
