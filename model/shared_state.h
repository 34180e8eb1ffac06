// The state that the whole program shares. Made once by the composition root and handed down by
// reference.
#pragma once

#include <string>

#include "model/fixed_table.h"
#include "model/reagents.h"
#include "model/spell_record.h"
#include "text/number_types.h"

namespace spellwick {

extern const char* const kVersion;  // the project's in CMakeLists.txt
inline constexpr const char* kApplicationName = "Spellwick";
inline constexpr const char* kSpellDataFile = "SpellData.txt";

inline constexpr i32 kMeditationMacro = -1;  // macro number of the Meditation skill
inline constexpr i32 kLastMacro = 96;        // macro number of a spell is its row + 1

// The stock of thirteen reagents in ten bags.
class StockTable {
  public:
    // Reagent 1 to 13, bag 0 to 9; RuntimeFailure (subscript) outside.
    i16& operator()(i32 reagent, i32 bag) { return m_reagents(reagent)(bag); }
    i16 operator()(i32 reagent, i32 bag) const { return m_reagents(reagent)(bag); }

    bool operator==(const StockTable&) const = default;

  private:
    FixedTable<FixedTable<i16, 0, kBagCount - 1>, 1, kReagentCount> m_reagents;
};

struct SpellTables {
    SpellTable Spells;
    i32 SpellCount = 0;

    FixedTable<i16, 0, kLastRow> Spellbook;    // 0 = in the book, 1 = not
    FixedTable<i16, 0, 16> UserSpells;         // rows; 0 to 7 are page U1, 8 to 15 page U2
    FixedTable<i16, 0, kLastRow> Chance;       // percent, 0 to 99
    FixedTable<i16, 0, kLastRow> SkillChance;  // the same before the rule on current mana
};

struct MacroTables {
    FixedTable<std::string, kMeditationMacro, kLastMacro> MacroAlt;    // "%" or ""
    FixedTable<std::string, kMeditationMacro, kLastMacro> MacroCtrl;   // "^" or ""
    FixedTable<std::string, kMeditationMacro, kLastMacro> MacroShift;  // "+" or ""
    FixedTable<std::string, kMeditationMacro, kLastMacro> MacroKey;
};

// What is true of a reagent, whoever owns it.
struct ReagentTables {
    FixedTable<std::string, 1, kTithes> ReagentName;
    FixedTable<std::string, 1, kTithes> ReagentCode;
    FixedTable<i16, 1, kTithes> RegPrice;  // gold; cell 14 is 1
};

// What the character owns.
struct PurseContents {
    StockTable ReagentStock;
    FixedTable<std::string, 0, kBagCount - 1> BagName;
    i16 CurrentReagentBag = 0;
    i16 LeftReagentBag = 0;
    i16 RightReagentBag = 0;
    i32 CurrentTithing = 0;
};

// The character's skills and stats, and those of an assumed target.
struct CasterSkills {
    i16 CurrentMana = 0;
    i16 EvalInt = 0;
    i16 Magery = 0;
    i16 Necro = 0;
    i16 Chivalry = 0;
    i16 SpiritSpeak = 0;
    i16 Intelligence = 0;
    i16 Dexterity = 0;
    i16 TargetResist = 0;
    i16 TargetInt = 0;
};

// What a cast says besides its macro key.
struct SpokenOptions {
    i16 SendSpellText = 0;    // 1 = on
    i16 SendSpellSuffix = 0;  // 1 = on
    std::string SpellTextSuffix;
};

// Options that hold for all players.
struct GlobalOptions {
    bool AlwaysOnTop = false;
    bool ShowNecroRegs = false;
    bool DisableCasting = false;
    bool DisplayVertical = false;
    bool Meditate = false;
    bool CheckFront = true;       // type only while the game is in front
    bool EnterOpensChat = false;  // where Enter behind a macro key is left out
    bool FindWineTools = false;
    bool KeysOnIcons = false;     // the bound key in the corner of a spell's icon
    bool SecondsOnIcons = false;  // the seconds left on the icon of a running timer
    i16 TextHold = 0;             // how long a key of a text is down, milliseconds
    i16 TextGap = 0;              // from there to the next key, milliseconds
    i16 MeditateLevel = 0;        // mana points
    i16 RegYellow = 0;            // highest castable amount that still warns
    i32 ColorWarn = 0;            // 0x00BBGGRR
    i32 SpellTimerMode = 0;
};

struct ClientLinkState {
    WindowHandle ClientWindow = 0;
    std::string ClientTitle;
    std::string CharacterName;
    std::string ServerName;
};

struct AssistLinkState {
    bool AssistLinked = false;
    bool AssistRegistered = false;
    WindowHandle MainWindowHandle = 0;
};

// The spell that was cast last, or shown in the information window since.
struct CastState {
    i16 CurrentSpell = 0;
};

// A function that needs one group alone takes that group.
struct SharedState : SpellTables,
                     MacroTables,
                     ReagentTables,
                     PurseContents,
                     CasterSkills,
                     SpokenOptions,
                     GlobalOptions,
                     ClientLinkState,
                     AssistLinkState,
                     CastState {
    std::string CurrentPlayerName;
    bool Updating = false;  // the program itself is filling controls
};

// Fills ReagentName and ReagentCode.
void InitReagentTables(ReagentTables& tables);

}  // namespace spellwick
