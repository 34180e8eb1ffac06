#include "store/conversion.h"

#include <array>

#include "model/failure_guard.h"
#include "store/catalogue.h"
#include "store/section_name.h"
#include "store/text_forms.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

constexpr std::string_view kSlots = "Done 2.3";      // one player has become ten slots
constexpr std::string_view kTestName = "Done 4.0";   // the test name is cleared
constexpr std::string_view kSwapped = "Done 4.4";    // two spells have changed places
constexpr std::string_view kTitles = "Done 5.0";     // players go by their titles
constexpr std::string_view kUpToDate = "Done 7.13";  // the spell table tells the reagents

constexpr i32 kPlayerSlots = 10;
constexpr i32 kOldRows = 64;
constexpr i32 kOldPages = 8;
constexpr i32 kFirstSwapped = 13;
constexpr i32 kSecondSwapped = 14;
constexpr double kNoOldData = 99.0;

constexpr std::string_view kQuestion =
    "This version of the Spellwick can manage settings for multiple players. \n"
    "Each player will have a personal spellbook, reagent bags, amount of reagents, user spells, "
    "spell texts, INT stat and magery skill. \n"
    "To make this possible a conversion of previously saved data is needed. \n"
    "If you want to copy the old data to all 10 player slots click on YES. \n"
    "If you want to copy the old data to player slot 1 and initialize the other 9 slots click on "
    "NO. \n"
    "No matter what option you choose, no previously entered data will be lost. All global "
    "settings like reagent price, player names and macro setup will stay the same.\n";

std::string SlotKey(i32 slot) {
    return "Player" + StandardText(slot);
}

}  // namespace

void Conversion::ConvertOldData() {
    m_progress.Converting = false;
    m_ignoring = false;
    const std::string mark = Read(kGlobalSection, kConversionKey, "");
    if (mark.empty() || mark == kUpToDate) {
        return;
    }
    constexpr std::array<std::string_view, 4> kMarks{kSlots, kTestName, kSwapped, kTitles};
    std::size_t step = 0;
    for (std::size_t i = 0; i < kMarks.size(); ++i) {
        if (mark == kMarks[i]) {
            step = i + 1;
        }
    }
    if (step == 0 && !SplitIntoSlots()) {
        return;
    }
    if (step <= 1) {
        ClearTestName();
    }
    if (step <= 2) {
        SwapSpells();
    }
    if (step <= 3) {
        NameSectionsByTitle();
    }
    LetFileSpeak();
}

bool Conversion::SplitIntoSlots() {
    // ODDITY(conversion-second-start): if there is nothing to copy, the chain stops at a mark in
    // its middle, and the last step follows at the next start; kept because each completed step is
    // marked on its own.
    if (RequiredNumber(Read(kGlobalSection, "CurrentReagentBag", "99")) == kNoOldData) {
        WriteMark(kTitles);
        return false;
    }
    const BoxAnswer answer = m_parts.boxes.Show({.text = std::string(kQuestion),
                                                 .icon = BoxIcon::kQuestion,
                                                 .buttons = BoxButtons::kYesNo});
    m_progress.Converting = true;
    m_progress.ConvertToAllSlots = answer == BoxAnswer::kYes;
    m_parts.wait.ShowWait();
    m_parts.wait.ServeEvents();
    CopyToSlots();
    m_progress.Converting = false;
    m_ignoring = true;
    RemoveOldKeys();
    Do([&] { m_parts.wait.CloseWait(); });
    Do([&] { WriteMark(kSlots); });
    return true;
}

void Conversion::CopyToSlots() {
    // ODDITY(conversion-first-step): data without slots are never copied: the question comes at
    // each start, the window "Please wait" stays open, and players are read from the old data or as
    // new; kept because the spell table is read after the conversion, and loading a player stops at
    // its spell texts.
    // ODDITY(conversion-answer-no): answering No resets all ten slots, including slot 1; kept
    // because the load looks at the counter of a later step.
    for (i32 slot = 1; slot <= kPlayerSlots; ++slot) {
        m_parts.io.LoadPlayerSettings(PlainText(slot));
        const StoreResult saved = m_parts.io.SavePlayerSettings(PlainText(slot));
        if (!saved.ok) {
            throw RuntimeFailure(FailureKind::kFile, saved.trouble);
        }
        m_parts.wait.ShowPercent(slot * 10);
        m_parts.wait.ServeEvents();
    }
}

void Conversion::RemoveOldKeys() {
    std::vector<std::string> keys{"CurrentReagentBag", "Magery", "Intelligence", "Dexterity",
                                  "TargetInt"};
    for (i32 bag = 0; bag < kBagCount; ++bag) {
        for (const char* key : {"Bag", "MR", "SA", "BM", "SS", "GA", "BP", "NI", "GI"}) {
            keys.push_back(key + StandardText(bag));
        }
    }
    for (i32 cell = 0; cell < kUserCells; ++cell) {
        keys.push_back(UserSpellKey(cell));
    }
    for (i32 row = 0; row < kOldRows; ++row) {
        keys.push_back(SpellbookKey(row));
    }
    for (i32 row = 0; row < kOldPages * kSlotCount; ++row) {
        keys.push_back(SpellTextKey(row));
    }
    std::vector<SettingChange> changes;
    changes.reserve(keys.size());
    for (const std::string& key : keys) {
        changes.push_back({std::string(kGlobalSection), key, std::nullopt});
    }
    Do([&] { Apply(changes); });
}

void Conversion::ClearTestName() {
    // ODDITY(conversion-test-name): a store with this mark is never converted further; kept because
    // players' names are compared as numbers, and no name is a number.
    for (i32 slot = 1; slot <= kPlayerSlots; ++slot) {
        Do([&] {
            const double name = RequiredNumber(Read(kGlobalSection, SlotKey(slot), ""));
            if (name == RequiredNumber("Ultima Online - Mira Talon (Atlantic)")) {
                Write(kGlobalSection, SlotKey(slot), "");
            }
        });
    }
    Do([&] { WriteMark(kTestName); });
}

void Conversion::SwapSpells() {
    // ODDITY(conversion-swap): on a store with this mark the macros of two spells trade places at
    // each start; kept because the step stops at the first use of the spell table, which is read
    // after the conversion, and so is never marked as done.
    Do([&] { Write(kGlobalSection, SpellRegsKey(kFirstSwapped), "011000000000000"); });
    Do([&] { Write(kGlobalSection, SpellRegsKey(kSecondSwapped), "010010010000000"); });
    Do([&] {
        Cross(kGlobalSection, MacroCodeKey(kFirstSwapped + 1), MacroCodeKey(kSecondSwapped + 1),
              "---AA");
    });
    const auto readTown = [this](i32 to, i32 from) {
        Do([&] {
            SpellRecord& spell = m_state.Spells(to);
            spell.InTown = ReadByte(Read(kGlobalSection, InTownKey(from), "0"));
        });
    };
    const auto writeTown = [this](i32 row) {
        Do([&] {
            Write(kGlobalSection, InTownKey(row), PlainText(i32{m_state.Spells(row).InTown}));
        });
    };
    readTown(kFirstSwapped, kSecondSwapped);
    readTown(kSecondSwapped, kFirstSwapped);
    writeTown(kFirstSwapped);
    writeTown(kSecondSwapped);
    for (m_progress.ConvertPlayer = 1; m_progress.ConvertPlayer <= kPlayerSlots;
         ++m_progress.ConvertPlayer) {
        SwapSpellsOfPlayer();
    }
    Do([&] { WriteMark(kSwapped); });
}

void Conversion::SwapSpellsOfPlayer() {
    const std::string section = SlotKey(m_progress.ConvertPlayer);
    Do([&] { Cross(section, SpellTextKey(kFirstSwapped), SpellTextKey(kSecondSwapped), ""); });
    for (i32 cell = 0; cell < kUserCells; ++cell) {
        Do([&] {
            const i16 row = ReadI16(Read(section, UserSpellKey(cell), "0"));
            m_state.UserSpells(cell) = row;
            if (row == kFirstSwapped || row == kSecondSwapped) {
                Write(section, UserSpellKey(cell),
                      PlainText(kFirstSwapped + kSecondSwapped - i32{row}));
            }
        });
    }
    const auto readBook = [&](i32 to, i32 from) {
        Do([&] { m_state.Spellbook(to) = ReadI16(Read(section, SpellbookKey(from), "0")); });
    };
    readBook(kFirstSwapped, kSecondSwapped);
    readBook(kSecondSwapped, kFirstSwapped);
    for (const i32 row : {kFirstSwapped, kSecondSwapped}) {
        Do([&] { Write(section, SpellbookKey(row), PlainText(i32{m_state.Spellbook(row)})); });
    }
}

void Conversion::NameSectionsByTitle() {
    // ODDITY(conversion-titles): the slots of a store with this mark keep their numbers, and their
    // data are out of reach; kept because loading a slot stops at its spell texts while there is no
    // spell table.
    for (i32 slot = 1; slot <= kPlayerSlots; ++slot) {
        const std::string key = SlotKey(slot);
        const std::string name = Read(kGlobalSection, key, "");
        Do([&] { m_parts.io.LoadPlayerSettings(key); });
        Do([&] {
            const StoreResult saved = m_parts.io.SavePlayerSettings(name);
            if (!saved.ok) {
                throw RuntimeFailure(FailureKind::kFile, saved.trouble);
            }
        });
        if (!m_parts.store.RemoveSection(key).ok) {
            m_parts.boxes.Show({.text = "Can't open key " + key});
        }
        Do([&] { Write(kGlobalSection, key, ""); });
    }
    Do([&] { WriteMark(kTitles); });
}

void Conversion::LetFileSpeak() {
    std::vector<SettingChange> changes;
    changes.reserve(kOldRows);
    for (i32 row = 0; row < kOldRows; ++row) {
        changes.push_back({std::string(kGlobalSection), SpellRegsKey(row), std::nullopt});
    }
    Do([&] { Apply(changes); });
    Do([&] { WriteMark(kUpToDate); });
}

void Conversion::Do(const std::function<void()>& statement) const {
    if (m_ignoring) {
        IgnoreFailure(statement);
    } else {
        statement();
    }
}

std::string Conversion::Read(std::string_view section, std::string_view key,
                             std::string_view fallback) const {
    return m_parts.store.Read(section, key).value_or(std::string(fallback));
}

void Conversion::Write(std::string_view section, std::string_view key, std::string value) const {
    Apply({{std::string(section), std::string(key), std::move(value)}});
}

void Conversion::Apply(const std::vector<SettingChange>& changes) const {
    const StoreResult result = m_parts.store.Apply(changes);
    if (!result.ok) {
        throw RuntimeFailure(FailureKind::kFile, result.trouble);
    }
}

void Conversion::WriteMark(std::string_view mark) const {
    Write(kGlobalSection, kConversionKey, std::string(mark));
}

void Conversion::Cross(std::string_view section, const std::string& first,
                       const std::string& second, std::string_view fallback) const {
    const std::string one = Read(section, first, fallback);
    const std::string two = Read(section, second, fallback);
    Apply({{std::string(section), first, two}, {std::string(section), second, one}});
}

}  // namespace spellwick
