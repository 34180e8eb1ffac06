// What arrives of chords, in every layout of the players.
#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/platform/x11_typing_fixture.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using testing_support::WitnessedKey;

constexpr unsigned kShift = 1;
constexpr unsigned kControl = 4;
constexpr unsigned kAlt = 8;
constexpr std::string_view kKeys = "1234567890abcdefghijklmnopqrstuvwxyz";

struct Layout {
    const char* layout = "";
    const char* variant = "";
};

constexpr Layout kLayouts[] = {{"us"}, {"gb"}, {"de"},           {"fr"},           {"be"},
                               {"cz"}, {"hu"}, {"it"},           {"es"},           {"pt"},
                               {"br"}, {"tr"}, {"ru"},           {"ua"},           {"bg"},
                               {"gr"}, {"il"}, {"us", "dvorak"}, {"us", "colemak"}};

struct MarkRow {
    const char* marks;
    unsigned state;
};

constexpr MarkRow kMarks[] = {{"%", kAlt}, {"+", kShift}, {"%^+", kAlt | kControl | kShift}};

std::vector<WitnessedKey> PressedKeys(const std::vector<WitnessedKey>& keys) {
    std::vector<WitnessedKey> pressed;
    std::ranges::copy_if(keys, std::back_inserter(pressed), [](const WitnessedKey& key) {
        return key.down && !key.name.ends_with("_L") && !key.name.ends_with("_R");
    });
    return pressed;
}

// Empty, or what is wrong with the key that arrived for the chord.
std::string Fault(const WitnessedKey& arrived, char key, unsigned state, const Keymap& keymap) {
    std::ostringstream fault;
    if (arrived.state != state) {
        fault << "modifiers " << arrived.state << " and not " << state << "; ";
    }
    const Symbol symbol = CharacterSymbol(static_cast<char32_t>(key));
    const auto gives = [symbol](const Key& each) {
        return std::ranges::find(each.levels, symbol, &KeyLevel::symbol) != each.levels.end();
    };
    const auto found = std::ranges::find(keymap.keys, arrived.keycode, &Key::code);
    const bool isTheKey = found != keymap.keys.end() && gives(*found);
    // A letter that the layout lacks comes from a borrowed code.
    const bool isBorrowed = std::ranges::none_of(keymap.keys, gives) &&
                            arrived.keysym == static_cast<unsigned char>(key);
    if (!isTheKey && !isBorrowed) {
        fault << "key " << arrived.keycode << " (" << arrived.name << ")";
    }
    return fault.str();
}

class X11Chords : public X11Typing {
  protected:
    std::vector<WitnessedKey> WaitForRelease() {
        std::vector<WitnessedKey> keys;
        testing_support::WaitUntil([&] {
            keys = witness->Keys();
            const auto presses = std::ranges::count(keys, true, &WitnessedKey::down);
            return PressedKeys(keys).size() >= kKeys.size() &&
                   static_cast<std::size_t>(presses) * 2 == keys.size();
        });
        return keys;
    }
};

TEST_F(X11Chords, Chords_AreTheKeyAndTheMarkedModifiersInEveryLayout) {
    for (const Layout& layout : kLayouts) {
        SCOPED_TRACE(std::string(layout.layout) + " " + layout.variant);
        ASSERT_TRUE(session->SetLayout(layout.layout, layout.variant));
        const testing_support::KeyboardState before = session->Keyboard();
        const std::optional<Keymap> keymap = keyboard->ReadKeymap();
        ASSERT_TRUE(keymap);
        for (const MarkRow& row : kMarks) {
            SCOPED_TRACE(row.marks);
            std::string chords;
            for (const char key : kKeys) {
                chords.append(row.marks).push_back(key);
            }
            witness->ForgetKeys();
            KeystrokeSender sender(*keyboard, {1ms, 1ms}, 300ms);
            const SendResult result = sender.SendKeys(chords, true, anywhere);
            ASSERT_TRUE(result.Ok()) << result.error;
            // The last key is among them when its modifiers are released.
            const std::vector<WitnessedKey> arrived = PressedKeys(WaitForRelease());
            ASSERT_EQ(arrived.size(), kKeys.size());
            for (std::size_t index = 0; index < kKeys.size(); ++index) {
                EXPECT_EQ(Fault(arrived[index], kKeys[index], row.state, *keymap), "")
                    << kKeys[index];
            }
        }
        ExpectAsBefore(before);
    }
}

}  // namespace
}  // namespace spellwick
