#include "tests/store/store_test_tools.h"

#include <initializer_list>

#include <gtest/gtest.h>

#include "store/catalogue.h"
#include "store/settings_io.h"
#include "store/text_forms.h"

namespace spellwick {

namespace {

class Draw {
  public:
    explicit Draw(unsigned seed) : m_random(seed) {}

    i32 Between(i32 low, i32 high) {
        return std::uniform_int_distribution<i32>(low, high)(m_random);
    }
    i16 Cell(i32 low, i32 high) { return static_cast<i16>(Between(low, high)); }
    i16 AnyCell() { return Cell(-32768, 32767); }
    bool Flag() { return Between(0, 1) == 1; }
    std::string Text() {
        static const std::vector<std::string> kPieces{"Rel Por",
                                                      "'",
                                                      "\"",
                                                      "%",
                                                      "\n",
                                                      "\xF0\x9F\x94\xA5",
                                                      "\xC3\xA4\xC3\x9F",
                                                      " ",
                                                      "\xFF\xFE",
                                                      std::string(1, '\0'),
                                                      "DROP TABLE setting;",
                                                      "=",
                                                      "/",
                                                      "\\",
                                                      "7",
                                                      "\xD7\xA9\xD7\x9C"};
        std::string text;
        for (i32 count = Between(0, 4); count > 0; --count) {
            text +=
                kPieces[static_cast<std::size_t>(Between(0, static_cast<i32>(kPieces.size()) - 1))];
        }
        return text;
    }

  private:
    std::mt19937 m_random;
};

class Comparison {
  public:
    template <typename Value>
    void Compare(const std::string& name, const Value& left, const Value& right) {
        if (!(left == right)) {
            m_differences += name + " ";
        }
    }
    std::string Take() { return m_differences; }

  private:
    std::string m_differences;
};

}  // namespace

void FillPlayer(SharedState& state, unsigned seed) {
    Draw draw(seed);
    for (i32 bag = 0; bag < kBagCount; ++bag) {
        state.BagName(bag) = draw.Text();
        for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
            state.ReagentStock(reagent, bag) = draw.AnyCell();
        }
    }
    state.CurrentTithing = draw.Between(-2147483647, 2147483647);
    state.CurrentReagentBag = draw.Cell(-1, 12);
    state.LeftReagentBag = draw.Cell(0, 9);
    state.RightReagentBag = draw.Cell(0, 9);
    for (i32 cell = 0; cell < 16; ++cell) {
        state.UserSpells(cell) = draw.Cell(0, 96);
    }
    for (i32 row = 0; row <= kLastRow; ++row) {
        state.Spellbook(row) = draw.Cell(0, 1);
    }
    for (i16 SharedState::*cell : std::initializer_list<i16 SharedState::*>{
             &SharedState::EvalInt, &SharedState::Magery, &SharedState::TargetResist,
             &SharedState::Necro, &SharedState::Chivalry, &SharedState::SpiritSpeak,
             &SharedState::Intelligence, &SharedState::Dexterity, &SharedState::TargetInt,
             &SharedState::SendSpellText, &SharedState::SendSpellSuffix}) {
        state.*cell = draw.AnyCell();
    }
    state.SpellTextSuffix = draw.Text();
    for (i32 row = 0; row <= kLastPagedRow; ++row) {
        state.Spells(row).SpellText = draw.Text();
    }
}

void FillGlobals(SharedState& state, unsigned seed) {
    Draw draw(seed ^ 0x5EEDU);
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        state.RegPrice(reagent) = draw.Cell(0, 20);
    }
    state.RegPrice(kTithes) = 1;
    for (i32 row = 0; row <= kLastRow; ++row) {
        for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
            state.Spells(row).Reagents(reagent) = static_cast<unsigned char>(draw.Between(0, 9));
        }
        const i32 tithes = draw.Between(9, 99);
        state.Spells(row).Reagents(kTithes) = static_cast<unsigned char>(tithes == 9 ? 0 : tithes);
        state.Spells(row).InTown = static_cast<unsigned char>(draw.Between(0, 1));
    }
    for (i32 number = kMeditationMacro; number <= kLastMacro; ++number) {
        SetMacro(state, number, {draw.Flag(), draw.Flag(), draw.Flag(), "{F" + draw.Text() + "}"});
    }
    for (bool SharedState::*cell : std::initializer_list<bool SharedState::*>{
             &SharedState::DisableCasting, &SharedState::DisplayVertical, &SharedState::AlwaysOnTop,
             &SharedState::ShowNecroRegs, &SharedState::Meditate, &SharedState::CheckFront,
             &SharedState::EnterOpensChat, &SharedState::FindWineTools, &SharedState::KeysOnIcons,
             &SharedState::SecondsOnIcons}) {
        state.*cell = draw.Flag();
    }
    for (const PaceKey& key : kPaceKeys) {
        state.*key.cell = draw.Cell(kShortestPace, kLongestPace);
    }
    state.MeditateLevel = draw.AnyCell();
    state.RegYellow = draw.AnyCell();
    state.ColorWarn = draw.Between(-2147483647, 2147483647);
    state.SpellTimerMode = draw.Between(0, 3);
}

void SaveAll(SharedState& state, SettingsStore& store, RecordingView& view) {
    SettingsIo io(state, store, view);
    ASSERT_TRUE(io.SaveGlobalSettings({}).ok);
    ASSERT_TRUE(io.SaveMacros({}).ok);
    ASSERT_TRUE(io.SaveOption("DisableCasting", BoolText(state.DisableCasting)).ok);
    ASSERT_TRUE(io.SaveOption("DisplayVertical", BoolText(state.DisplayVertical)).ok);
    ASSERT_TRUE(io.SaveOption("AlwaysOnTop", BoolText(state.AlwaysOnTop)).ok);
    ASSERT_TRUE(io.SaveOption("ShowNecroRegs", BoolText(state.ShowNecroRegs)).ok);
    ASSERT_TRUE(io.SaveOption("Meditate", BoolText(state.Meditate)).ok);
    ASSERT_TRUE(io.SaveOption("TypeOnlyInFront", BoolText(state.CheckFront)).ok);
    ASSERT_TRUE(io.SaveOption("EnterOpensChat", BoolText(state.EnterOpensChat)).ok);
    ASSERT_TRUE(io.SaveOption("FindWineTools", BoolText(state.FindWineTools)).ok);
    ASSERT_TRUE(io.SaveOption("KeysOnIcons", BoolText(state.KeysOnIcons)).ok);
    ASSERT_TRUE(io.SaveOption("SecondsOnIcons", BoolText(state.SecondsOnIcons)).ok);
    ASSERT_TRUE(io.SaveOption("TextHold", std::to_string(state.TextHold)).ok);
    ASSERT_TRUE(io.SaveOption("TextGap", std::to_string(state.TextGap)).ok);
    ASSERT_TRUE(io.SaveOption("SpellTimerMode", std::to_string(state.SpellTimerMode)).ok);
}

std::string PlayerDifferences(const SharedState& left, const SharedState& right) {
    Comparison all;
    all.Compare("BagName", left.BagName, right.BagName);
    all.Compare("ReagentStock", left.ReagentStock, right.ReagentStock);
    all.Compare("CurrentTithing", left.CurrentTithing, right.CurrentTithing);
    all.Compare("CurrentReagentBag", left.CurrentReagentBag, right.CurrentReagentBag);
    all.Compare("LeftReagentBag", left.LeftReagentBag, right.LeftReagentBag);
    all.Compare("RightReagentBag", left.RightReagentBag, right.RightReagentBag);
    all.Compare("UserSpells", left.UserSpells, right.UserSpells);
    all.Compare("Spellbook", left.Spellbook, right.Spellbook);
    all.Compare("EvalInt", left.EvalInt, right.EvalInt);
    all.Compare("Magery", left.Magery, right.Magery);
    all.Compare("TargetResist", left.TargetResist, right.TargetResist);
    all.Compare("Necro", left.Necro, right.Necro);
    all.Compare("Chivalry", left.Chivalry, right.Chivalry);
    all.Compare("SpiritSpeak", left.SpiritSpeak, right.SpiritSpeak);
    all.Compare("Intelligence", left.Intelligence, right.Intelligence);
    all.Compare("Dexterity", left.Dexterity, right.Dexterity);
    all.Compare("TargetInt", left.TargetInt, right.TargetInt);
    all.Compare("SendSpellText", left.SendSpellText, right.SendSpellText);
    all.Compare("SendSpellSuffix", left.SendSpellSuffix, right.SendSpellSuffix);
    all.Compare("SpellTextSuffix", left.SpellTextSuffix, right.SpellTextSuffix);
    for (i32 row = 0; row <= kLastPagedRow; ++row) {
        all.Compare("SpellText", left.Spells(row).SpellText, right.Spells(row).SpellText);
    }
    return all.Take();
}

std::string GlobalDifferences(const SharedState& left, const SharedState& right) {
    Comparison all;
    all.Compare("RegPrice", left.RegPrice, right.RegPrice);
    for (i32 row = 0; row <= kLastRow; ++row) {
        // The digits of row 96 are read and never written.
        if (row <= kLastPagedRow) {
            all.Compare("Reagents", left.Spells(row).Reagents, right.Spells(row).Reagents);
        }
        all.Compare("InTown", left.Spells(row).InTown, right.Spells(row).InTown);
    }
    for (i32 number = kMeditationMacro; number <= kLastMacro; ++number) {
        if (number != 0) {
            all.Compare("Macro", MacroOf(left, number), MacroOf(right, number));
        }
    }
    all.Compare("DisableCasting", left.DisableCasting, right.DisableCasting);
    all.Compare("DisplayVertical", left.DisplayVertical, right.DisplayVertical);
    all.Compare("AlwaysOnTop", left.AlwaysOnTop, right.AlwaysOnTop);
    all.Compare("ShowNecroRegs", left.ShowNecroRegs, right.ShowNecroRegs);
    all.Compare("Meditate", left.Meditate, right.Meditate);
    all.Compare("CheckFront", left.CheckFront, right.CheckFront);
    all.Compare("EnterOpensChat", left.EnterOpensChat, right.EnterOpensChat);
    all.Compare("FindWineTools", left.FindWineTools, right.FindWineTools);
    all.Compare("KeysOnIcons", left.KeysOnIcons, right.KeysOnIcons);
    all.Compare("SecondsOnIcons", left.SecondsOnIcons, right.SecondsOnIcons);
    all.Compare("TextHold", left.TextHold, right.TextHold);
    all.Compare("TextGap", left.TextGap, right.TextGap);
    all.Compare("MeditateLevel", left.MeditateLevel, right.MeditateLevel);
    all.Compare("RegYellow", left.RegYellow, right.RegYellow);
    all.Compare("ColorWarn", left.ColorWarn, right.ColorWarn);
    all.Compare("SpellTimerMode", left.SpellTimerMode, right.SpellTimerMode);
    all.Compare("CurrentPlayerName", left.CurrentPlayerName, right.CurrentPlayerName);
    return all.Take();
}

}  // namespace spellwick
