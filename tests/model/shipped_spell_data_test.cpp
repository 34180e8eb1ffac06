// The spell table as it is delivered, fact by fact.
#include <algorithm>
#include <map>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "model/spell_data.h"
#include "model/spell_lookup.h"

namespace spellwick {
namespace {

struct ShippedRow {
    i32 row;
    const char* name;
    i32 school;
    i16 mana;
    i16 minimum;
    i16 maximum;
    const char* reagents;  // codes of the reagents of which a cast takes one
    int tithes;
    const char* words;
    int inTown;
    i16 rule;
    const char* damage;
    const char* duration;
    const char* extra;
    const char* resisting;
};

// clang-format off
constexpr ShippedRow kRows[] = {
    {0, "Clumsy", kMagery, 4, 0, 40, "BM NI", 0, "Uus Jux", 0, 1,
     "none", "120% of #Formula24; seconds",
     "Lowers Dexterity by about #Formula20; points", "#Formula31"},
    {1, "Create Food", kMagery, 4, 0, 40, "MR GL GS", 0, "In Mani Ylem", 1, 0,
     "none", "permanent",
     "Makes one piece of food in the pack", "none"},
    {2, "Feeblemind", kMagery, 4, 0, 40, "NI GS", 0, "Rel Wis", 0, 1,
     "none", "120% of #Formula24; seconds",
     "Lowers Intelligence by about #Formula20; points", "#Formula31"},
    {3, "Heal", kMagery, 4, 0, 40, "SS GL GS", 0, "In Mani", 1, 0,
     "none", "instant",
     "Heals #Formula20; plus 1 to 5 points", "none"},
    {4, "Magic Arrow", kMagery, 4, 0, 40, "SA", 0, "In Por Ylem", 0, 0,
     "#Formula02; to #Formula03; points", "instant",
     "Fire damage", "#Formula31; of less damage"},
    {5, "Night Sight", kMagery, 4, 0, 40, "SA SS", 0, "In Lor", 1, 15,
     "none", "15 minutes or more",
     "Lights the dark for the target", "none"},
    {6, "Reactive Armor", kMagery, 4, 0, 40, "SA SS GL", 0, "Flam Sanct", 1, 0,
     "none", "until it is used up",
     "Takes up melee damage: a third of Magery plus Meditation plus Inscription; at most 75", "none"},
    {7, "Weaken", kMagery, 4, 0, 40, "GL NI", 0, "Des Mani", 0, 1,
     "none", "120% of #Formula24; seconds",
     "Lowers Strength by about #Formula20; points", "#Formula31"},
    {8, "Agility", kMagery, 6, 0, 50, "MR BM", 0, "Ex Uus", 1, 1,
     "none", "120% of #Formula24; seconds",
     "Raises Dexterity by about #Formula20; points", "none"},
    {9, "Cunning", kMagery, 6, 0, 50, "MR NI", 0, "Uus Wis", 1, 1,
     "none", "120% of #Formula24; seconds",
     "Raises Intelligence by about #Formula20; points", "none"},
    {10, "Cure", kMagery, 6, 0, 50, "GL GS", 0, "An Nox", 1, 0,
     "none", "instant",
     "The chance rises with Magery and falls with the strength of the poison", "none"},
    {11, "Harm", kMagery, 6, 0, 50, "SS NI", 0, "An Mani", 0, 0,
     "#Formula05; to #Formula06; points", "instant",
     "Half damage at two tiles and a quarter farther off", "#Formula31; of less damage"},
    {12, "Magic Trap", kMagery, 6, 0, 50, "SA SS GL", 0, "In Jux", 1, 0,
     "10 to 50 points to the one who opens it", "until opened or disarmed",
     "Traps a container", "none"},
    {13, "Magic Untrap", kMagery, 6, 0, 50, "SA BM", 0, "An Jux", 1, 0,
     "none", "permanent",
     "Disarms a magic trap", "none"},
    {14, "Protection", kMagery, 6, 0, 50, "SA GL GS", 0, "Uus Sanct", 1, 3,
     "none", "200% of #Formula24; seconds; 15 to 240",
     "Casting is disturbed less often", "none"},
    {15, "Strength", kMagery, 6, 0, 50, "MR NI", 0, "Uus Mani", 1, 1,
     "none", "120% of #Formula24; seconds",
     "Raises Strength by about #Formula20; points", "none"},
    {16, "Bless", kMagery, 9, 16, 60, "MR GL", 0, "Rel Sanct", 1, 1,
     "none", "120% of #Formula24; seconds",
     "Raises all three stats by about #Formula20; points", "none"},
    {17, "Fireball", kMagery, 9, 16, 60, "BP", 0, "Vas Flam", 0, 0,
     "#Formula08; to #Formula09; points", "instant",
     "Fire damage", "#Formula31; of less damage"},
    {18, "Magic Lock", kMagery, 9, 16, 60, "SA BM GL", 0, "An Por", 1, 0,
     "none", "until unlocked",
     "Locks a container", "none"},
    {19, "Poison", kMagery, 9, 16, 60, "NI", 0, "In Nox", 0, 0,
     "by the level of the poison", "until cured or worn off",
     "The level rises with Magery plus Poisoning", "#Formula31; of no effect"},
    {20, "Telekinesis", kMagery, 9, 16, 60, "MR BM", 0, "Ort Por Ylem", 1, 0,
     "none", "instant",
     "Opens or uses a thing out of reach", "none"},
    {21, "Teleport", kMagery, 9, 16, 60, "MR BM", 0, "Rel Por", 1, 0,
     "none", "instant",
     "Up to 11 tiles in sight", "none"},
    {22, "Unlock", kMagery, 9, 16, 60, "SA BM", 0, "Ex Por", 1, 0,
     "none", "permanent",
     "Opens magic locks and simple locks", "none"},
    {23, "Wall of Stone", kMagery, 9, 16, 60, "BM GL", 0, "In Sanct Ylem", 0, 11,
     "none", "10 seconds",
     "Three stones in a row", "none"},
    {24, "Arch Cure", kMagery, 11, 26, 70, "MR GL GS", 0, "Vas An Nox", 1, 0,
     "none", "instant",
     "Cures all within two tiles of the target", "none"},
    {25, "Arch Protection", kMagery, 11, 26, 70, "MR SA GL GS", 0, "Vas Uus Sanct", 1, 2,
     "none", "120% of #Formula24; seconds; at most 144",
     "Protection for the party within two tiles", "none"},
    {26, "Curse", kMagery, 11, 26, 70, "SA GL NI", 0, "Des Sanct", 0, 1,
     "none", "120% of #Formula24; seconds",
     "Lowers all three stats by about #Formula20; points", "#Formula31"},
    {27, "Fire Field", kMagery, 11, 26, 70, "SA SS BP", 0, "In Flam Grav", 0, 6,
     "2 points a second", "4 seconds plus half of #Formula24;",
     "Burns all who stand in it", "#Formula31; of less damage"},
    {28, "Greater Heal", kMagery, 11, 26, 70, "MR SS GL GS", 0, "In Vas Mani", 1, 0,
     "none", "instant",
     "Heals 40% of #Formula24; plus 1 to 10 points", "none"},
    {29, "Lightning", kMagery, 11, 26, 70, "MR SA", 0, "Por Ort Grav", 0, 0,
     "#Formula11; to #Formula12; points", "instant",
     "Energy damage", "#Formula31; of less damage"},
    {30, "Mana Drain", kMagery, 11, 26, 70, "MR SS BP", 0, "Ort Rel", 0, 0,
     "none", "instant",
     "Takes mana from the target", "#Formula31; of no effect"},
    {31, "Recall", kMagery, 11, 26, 70, "MR BM BP", 0, "Kal Ort Por", 1, 0,
     "none", "instant",
     "Takes you to the place of a marked rune", "none"},
    {32, "Blade Spirits", kMagery, 14, 36, 80, "MR BP NI", 0, "In Jux Hur Ylem", 0, 14,
     "by the hits of the blades", "120 seconds",
     "Attacks the nearest strong fighter; friend or foe", "none"},
    {33, "Dispel Field", kMagery, 14, 36, 80, "SA SS GL BP", 0, "An Grav", 1, 0,
     "none", "instant",
     "Removes one tile of a field", "none"},
    {34, "Incognito", kMagery, 14, 36, 80, "BM GL NI", 0, "Kal In Ex", 1, 2,
     "none", "120% of #Formula24; seconds; at most 144",
     "Changes your name and looks", "none"},
    {35, "Magic Reflection", kMagery, 14, 36, 80, "MR SS GL", 0, "In Jux Sanct", 1, 0,
     "none", "until it is used up",
     "Throws spells back at the caster", "none"},
    {36, "Mind Blast", kMagery, 14, 36, 80, "MR SA BP NI", 0, "Por Corp Wis", 0, 0,
     "at most about #Formula21; points", "instant",
     "Rises with your Intelligence", "#Formula31; of less damage"},
    {37, "Paralyze", kMagery, 14, 36, 80, "MR SS GL", 0, "An Ex Por", 0, 7,
     "none", "7 seconds plus a fifth of #Formula24;",
     "Ends when the target is hurt", "#Formula31; of a shorter time"},
    {38, "Poison Field", kMagery, 14, 36, 80, "SS BP NI", 0, "In Nox Grav", 0, 8,
     "by the level of the poison", "3 seconds plus 40% of #Formula24;",
     "Poisons all who stand in it", "none"},
    {39, "Summon Creature", kMagery, 14, 36, 80, "MR BM SS", 0, "Kal Xen", 0, 5,
     "by the creature", "#Formula23; seconds",
     "Calls an animal that obeys you", "none"},
    {40, "Dispel", kMagery, 20, 51, 90, "MR SA GL", 0, "An Ort", 1, 0,
     "none", "instant",
     "Sends one summoned creature away", "depends on the creature"},
    {41, "Energy Bolt", kMagery, 20, 51, 90, "BP NI", 0, "Corp Por", 0, 0,
     "#Formula14; to #Formula15; points", "instant",
     "Energy damage", "#Formula31; of less damage"},
    {42, "Explosion", kMagery, 20, 51, 90, "MR BM", 0, "Vas Ort Flam", 0, 0,
     "#Formula14; to #Formula15; points", "strikes after 2 to 3 seconds",
     "Fire damage", "#Formula31; of less damage"},
    {43, "Invisibility", kMagery, 20, 51, 90, "BM NI", 0, "An Lor Xen", 1, 1,
     "none", "120% of #Formula24; seconds",
     "Ends when you act or move", "none"},
    {44, "Mark", kMagery, 20, 51, 90, "MR BM BP", 0, "Kal Por Ylem", 1, 0,
     "none", "permanent",
     "Binds a rune to this place", "none"},
    {45, "Mass Curse", kMagery, 20, 51, 90, "MR SA GL NI", 0, "Vas Des Sanct", 0, 1,
     "none", "120% of #Formula24; seconds",
     "Curses all within two tiles of the target by about #Formula20; points", "#Formula31"},
    {46, "Paralyze Field", kMagery, 20, 51, 90, "SS BP GS", 0, "In Ex Grav", 0, 9,
     "none", "3 seconds plus a third of #Formula24;",
     "Holds all who step in it", "#Formula31; of a shorter time"},
    {47, "Reveal", kMagery, 20, 51, 90, "SA BM", 0, "Wis Quas", 1, 0,
     "none", "instant",
     "Shows the hidden within 1 tile plus one more per 20 Magery", "none"},
    {48, "Chain Lightning", kMagery, 40, 66, 100, "MR SA BM BP", 0, "Vas Ort Grav", 0, 0,
     "#Formula16; to #Formula17; points", "instant",
     "Twice the damage shared among several targets", "#Formula31; of less damage"},
    {49, "Energy Field", kMagery, 40, 66, 100, "MR SA SS BP", 0, "In Sanct Grav", 0, 10,
     "none", "2 seconds plus 28% of #Formula24;",
     "A wall that nobody can pass", "none"},
    {50, "Flamestrike", kMagery, 40, 66, 100, "SA SS", 0, "Kal Vas Flam", 0, 0,
     "#Formula16; to #Formula17; points", "instant",
     "Fire damage", "#Formula31; of less damage"},
    {51, "Gate Travel", kMagery, 40, 66, 100, "MR SA BP", 0, "Vas Rel Por", 1, 12,
     "none", "30 seconds",
     "Opens a gate to the place of a marked rune", "none"},
    {52, "Mana Vampire", kMagery, 40, 66, 100, "MR BM SS BP", 0, "Ort Sanct", 0, 0,
     "none", "instant",
     "Gives you the mana of the target; up to your own #Formula19; points", "#Formula31; of no effect"},
    {53, "Mass Dispel", kMagery, 40, 66, 100, "MR SA GL BP", 0, "Vas An Ort", 1, 0,
     "none", "instant",
     "Sends away the summoned creatures within 8 tiles of the target", "depends on the creature"},
    {54, "Meteor Swarm", kMagery, 40, 66, 100, "MR SA BM SS", 0, "Flam Kal Des Ylem", 0, 0,
     "#Formula16; to #Formula17; points", "instant",
     "Twice the damage shared among several targets", "#Formula31; of less damage"},
    {55, "Polymorph", kMagery, 40, 66, 100, "MR BM SS", 0, "Vas Ylem Rel", 1, 4,
     "none", "#Formula18; seconds",
     "Takes the shape of a creature", "none"},
    {56, "Earthquake", kMagery, 50, 80, 100, "MR SA BM GS", 0, "In Vas Por", 0, 0,
     "6 tenths of the hit points of each; 10 to 75", "instant",
     "All foes within 1 tile plus one more per 15 Magery", "none"},
    {57, "Energy Vortex", kMagery, 50, 80, 100, "MR BM BP NI", 0, "Vas Corp Por", 0, 13,
     "by the hits of the vortex", "90 seconds",
     "Attacks the nearest; friend or foe", "none"},
    {58, "Resurrection", kMagery, 50, 80, 100, "BM GL GS", 0, "An Corp", 1, 0,
     "none", "permanent",
     "Raises a ghost beside you", "none"},
    {59, "Summon Air Elemental", kMagery, 50, 80, 100, "MR BM SS", 0, "Kal Vas Xen Hur", 0, 5,
     "by the elemental", "#Formula23; seconds",
     "Takes 2 follower slots", "none"},
    {60, "Summon Daemon", kMagery, 50, 80, 100, "MR SA BM SS", 0, "Kal Vas Xen Corp", 0, 5,
     "by the daemon", "#Formula23; seconds",
     "Takes 4 or 5 follower slots and costs karma", "none"},
    {61, "Summon Earth Elemental", kMagery, 50, 80, 100, "MR BM SS", 0, "Kal Vas Xen Ylem", 0, 5,
     "by the elemental", "#Formula23; seconds",
     "Takes 2 follower slots", "none"},
    {62, "Summon Fire Elemental", kMagery, 50, 80, 100, "MR SA BM SS", 0, "Kal Vas Xen Flam", 0, 5,
     "by the elemental", "#Formula23; seconds",
     "Takes 4 follower slots", "none"},
    {63, "Summon Water Elemental", kMagery, 50, 80, 100, "MR BM SS", 0, "Kal Vas Xen An Flam", 0, 5,
     "by the elemental", "#Formula23; seconds",
     "Takes 3 follower slots", "none"},
    {64, "Curse Weapon", kNecromancer, 7, 0, 40, "PI", 0, "An Sanct Gra Char", 1, 16,
     "none", "#Formula25; seconds by the old table",
     "Today 1 second plus Spirit Speak / 3.4. Half the damage of your weapon heals you", "none"},
    {65, "Pain Spike", kNecromancer, 5, 20, 60, "GD PI", 0, "In Sar", 0, 11,
     "#Formula32; points by the old table", "10 seconds and then it heals back",
     "Today 30 plus a tenth of Spirit Speak less resist; 18 against players", "lowered by the target resist"},
    {66, "Corpse Skin", kNecromancer, 11, 20, 60, "BW GD", 0, "In Agle Corp Ylem", 0, 17,
     "none", "#Formula26; seconds by the old table",
     "Today 40 seconds plus 40% of Spirit Speak less resist. Fire and poison hurt more; cold and blows less", "lowered by the target resist"},
    {67, "Evil Omen", kNecromancer, 11, 20, 60, "BW NC", 0, "Pas Tym An Sanct", 0, 0,
     "a quarter more from the next hit", "until the next harmful act",
     "Also a stronger poison or half the resist; once", "none"},
    {68, "Blood Oath", kNecromancer, 13, 20, 60, "DB", 0, "In Jux Mani Xen", 0, 18,
     "gives back the hurt done to you", "#Formula27; seconds by the old table",
     "Today 8 seconds plus an eighth of Spirit Speak less resist", "lowered by the target resist"},
    {69, "Wraith Form", kNecromancer, 17, 20, 60, "NC PI", 0, "Rel Xen Um", 1, 0,
     "none", "until cast again",
     "Blows drain mana; hard to hurt by blows", "none"},
    {70, "Mind Rot", kNecromancer, 17, 30, 70, "BW DB PI", 0, "Wis An Ben", 0, 19,
     "none", "#Formula28; seconds by the old table",
     "Today 20 seconds plus a fifth of Spirit Speak less resist. Spells cost the target a quarter more mana", "lowered by the target resist"},
    {71, "Horrific Beast", kNecromancer, 11, 40, 80, "BW DB", 0, "Rel Xen Vas Bal", 1, 0,
     "none", "until cast again",
     "Stronger blows and faster healing", "none"},
    {72, "Animate Dead", kNecromancer, 23, 40, 80, "GD DB", 0, "Uus Corp", 0, 0,
     "by the creature", "until it falls apart",
     "Raises a corpse; better with Necromancy and Spirit Speak", "none"},
    {73, "Poison Strike", kNecromancer, 17, 50, 90, "NC", 0, "In Vas Nox", 0, 0,
     "32 to 40 points at 77 Spirit Speak; more with more", "instant",
     "A half to those 1 tile off and a third at 2 tiles", "none"},
    {74, "Strangle", kNecromancer, 29, 65, 105, "DB NC", 0, "In Bal Nox", 0, 20,
     "#Formula29; a round", "#Formula33",
     "More as the target tires: times 1 to times 3", "none"},
    {75, "Summon Familiar", kNecromancer, 17, 30, 70, "BW GD DB", 0, "Kal Xen Bal", 0, 0,
     "by the familiar", "until it dies",
     "Necromancy and Spirit Speak decide which one", "none"},
    {76, "Wither", kNecromancer, 23, 60, 100, "GD NC PI", 0, "Kal Vas An Flam", 0, 0,
     "30 to 35 points at 70 Spirit Speak; more with more", "instant",
     "All foes within 4 tiles", "none"},
    {77, "Lich Form", kNecromancer, 23, 70, 110, "GD DB NC", 0, "Rel Xen Corp Ort", 1, 0,
     "none", "until cast again",
     "Mana comes back faster; hit points go down", "none"},
    {78, "Vengeful Spirit", kNecromancer, 41, 80, 120, "BW GD PI", 0, "Kal Xen Bal Beh", 0, 21,
     "by the spirit", "#Formula30; seconds by the old table",
     "Today 10 seconds plus two thirds of Spirit Speak. Hunts one target", "none"},
    {79, "Vampiric Embrace", kNecromancer, 23, 99, 120, "BW NC PI", 0, "Rel Xen An Sanct", 1, 0,
     "a fifth of the damage of your blows heals you", "until cast again",
     "Weak against fire; hurt by garlic", "none"},
    {80, "Cleanse by Fire", kChivalry, 10, 5, 55, "", 10, "Expor Flamus", 1, 0,
     "burns you a little", "instant",
     "Cures poison; more with Karma", "none"},
    {81, "Close Wounds", kChivalry, 10, 0, 50, "", 10, "Obsu Vulni", 1, 0,
     "none", "instant",
     "Heals 7 to 39 points; more with Karma", "none"},
    {82, "Remove Curse", kChivalry, 20, 5, 55, "", 10, "Extermo Vomica", 1, 0,
     "none", "instant",
     "Lifts curses; the chance rises with Karma", "none"},
    {83, "Consecrate Weapon", kChivalry, 10, 15, 65, "", 10, "Consecrus Arma", 1, 22,
     "your blows find the weakest resist", "5 to 11 seconds; more with Karma",
     "Needs a weapon in hand", "none"},
    {84, "Sacred Journey", kChivalry, 10, 15, 65, "", 15, "Sanctum Viatas", 1, 0,
     "none", "instant",
     "Takes you to the place of a marked rune", "none"},
    {85, "Divine Fury", kChivalry, 15, 25, 75, "", 10, "Divinum Furis", 1, 23,
     "a tenth more from your blows", "7 to 24 seconds; more with Karma",
     "Fills stamina; faster and surer blows; weaker defence", "none"},
    {86, "Dispel Evil", kChivalry, 10, 35, 85, "", 10, "Dispiro Malas", 1, 0,
     "none", "instant",
     "Sends summoned and evil creatures away or makes them flee", "none"},
    {87, "Enemy of One", kChivalry, 20, 45, 95, "", 10, "Forul Solum", 1, 24,
     "half more against one kind of monster", "67 to 228 seconds; more with Karma",
     "All others hurt you more", "none"},
    {88, "Holy Light", kChivalry, 10, 55, 105, "", 10, "Augus Luminos", 0, 0,
     "8 to 24 points; more with Karma", "instant",
     "All foes within 3 tiles", "none"},
    {89, "Noble Sacrifice", kChivalry, 20, 65, 115, "", 30, "Dium Prostra", 1, 0,
     "none", "instant",
     "Raises; cures and heals those around you; leaves you at 1 hit point", "none"},
    {90, "", kNoSchool, 0, 0, 0, "", 0, "none", 1, 0,
     "none", "none",
     "none", "none"},
    {91, "", kNoSchool, 0, 0, 0, "", 0, "none", 1, 0,
     "none", "none",
     "none", "none"},
    {92, "", kNoSchool, 0, 0, 0, "", 0, "none", 1, 0,
     "none", "none",
     "none", "none"},
    {93, "", kNoSchool, 0, 0, 0, "", 0, "none", 1, 0,
     "none", "none",
     "none", "none"},
    {94, "", kNoSchool, 0, 0, 0, "", 0, "none", 1, 0,
     "none", "none",
     "none", "none"},
    {95, "Exorcism", kNecromancer, 40, 80, 120, "GD NC", 0, "Ort Corp Grav", 0, 0,
     "none", "instant",
     "Only in champion spawn areas and with 100 Spirit Speak", "none"},
};
// clang-format on

const SharedState& Shipped() {
    static const SharedState kState = [] {
        SharedState state;
        EXPECT_TRUE(LoadSpellData(state, std::filesystem::path(SPELLWICK_SPELL_DATA)));
        return state;
    }();
    return kState;
}

std::string ReagentsOf(const SpellRecord& spell) {
    std::string codes;
    for (i32 reagent = 1; reagent <= 13; ++reagent) {
        for (int left = spell.Reagents(reagent); left > 0; --left) {
            codes += (codes.empty() ? "" : " ") + std::string(FactsOfReagent(reagent).code);
        }
    }
    return codes;
}

TEST(ShippedSpells, Count_Is96AndTheTableReaches104) {
    EXPECT_EQ(Shipped().SpellCount, 96);
    EXPECT_EQ(Shipped().Spells.Last(), 104);
    EXPECT_EQ(std::size(kRows), 96U);
    for (i32 row = 96; row <= 104; ++row) {
        EXPECT_EQ(Shipped().Spells(row).Name, "");
    }
}

TEST(ShippedSpells, EveryRow_HoldsItsFacts) {
    i32 at = 0;
    for (const ShippedRow& row : kRows) {
        SCOPED_TRACE(std::to_string(row.row) + " " + row.name);
        const SpellRecord& spell = Shipped().Spells(row.row);
        EXPECT_EQ(row.row, at++);
        EXPECT_EQ(spell.Number, row.row + 1);
        EXPECT_EQ(spell.Name, row.name);
        EXPECT_EQ(spell.School, row.school);
        EXPECT_EQ(spell.Mana, row.mana);
        EXPECT_EQ(spell.MinimumSkill, row.minimum);
        EXPECT_EQ(spell.MaximumSkill, row.maximum);
        EXPECT_EQ(ReagentsOf(spell), row.reagents);
        EXPECT_EQ(spell.Reagents(14), row.tithes);
        EXPECT_EQ(spell.Words, row.words);
        EXPECT_EQ(spell.InTown, row.inTown);
        EXPECT_EQ(spell.File5, row.rule);
        EXPECT_EQ(spell.DamageText, row.damage);
        EXPECT_EQ(spell.DurationText, row.duration);
        EXPECT_EQ(spell.ExtraText1, row.extra);
        EXPECT_EQ(spell.ExtraText2, row.resisting);
        EXPECT_EQ(spell.SecondSkill, row.school) << "each school has its second skill";
        EXPECT_EQ(spell.File1, 0);
        EXPECT_EQ(spell.File2, 0);
        EXPECT_EQ(spell.File3, 0);
        EXPECT_EQ(spell.File4, "none");
        for (i32 reagent = 1; reagent <= 14; ++reagent) {
            EXPECT_EQ(spell.ReagentInput(reagent), spell.Reagents(reagent));
        }
    }
}

TEST(ShippedSpells, Pages_HoldTheirSchools) {
    const struct {
        i32 first;
        i32 last;
        i32 school;
    } ranges[] = {{0, 63, kMagery},
                  {64, 79, kNecromancer},
                  {80, 89, kChivalry},
                  {90, 94, kNoSchool},
                  {95, 95, kNecromancer}};
    for (const auto& range : ranges) {
        for (i32 row = range.first; row <= range.last; ++row) {
            EXPECT_EQ(Shipped().Spells(row).School, range.school) << row;
        }
    }
}

TEST(ShippedSpells, Gaps_HaveNoNameAndNoAmounts) {
    for (i32 row = 90; row <= 94; ++row) {
        const SpellRecord& gap = Shipped().Spells(row);
        EXPECT_EQ(gap.Name, "") << row;
        EXPECT_EQ(gap.School, kNoSchool) << row;
        EXPECT_EQ(gap.Mana + gap.MinimumSkill + gap.MaximumSkill, 0) << row;
        for (i32 reagent = 1; reagent <= 14; ++reagent) {
            EXPECT_EQ(gap.Reagents(reagent), 0) << row;
        }
    }
}

// A cast costs reagents on the pages that count in reagents, and tithes on those that count so.
TEST(ShippedSpells, Costs_FitTheirPages) {
    for (i32 row = 0; row <= 95; ++row) {
        const SpellRecord& spell = Shipped().Spells(row);
        if (spell.Name.empty()) {
            continue;
        }
        const bool tithes = row >= 80 && row != 95;
        EXPECT_EQ(spell.Reagents(14) > 0, tithes) << spell.Name;
        EXPECT_EQ(ReagentsOf(spell).empty(), tithes) << spell.Name;
    }
}

TEST(ShippedSpells, Names_AreTheirOwn) {
    std::set<std::string> names;
    for (i32 row = 0; row <= 95; ++row) {
        const std::string& name = Shipped().Spells(row).Name;
        EXPECT_TRUE(name.empty() || names.insert(name).second) << name;
    }
    EXPECT_EQ(names.size(), 91U);
}

// Rule, and the rows that it holds for.
TEST(ShippedSpells, DurationRules_HoldForTheirRows) {
    const std::map<i16, std::vector<i32>> expected = {
        {1, {0, 2, 7, 8, 9, 15, 16, 26, 43, 45}},
        {2, {25, 34}},
        {3, {14}},
        {4, {55}},
        {5, {39, 59, 60, 61, 62, 63}},
        {6, {27}},
        {7, {37}},
        {8, {38}},
        {9, {46}},
        {10, {49}},
        {11, {23, 65}},
        {12, {51}},
        {13, {57}},
        {14, {32}},
        {15, {5}},
        {16, {64}},
        {17, {66}},
        {18, {68}},
        {19, {70}},
        {20, {74}},
        {21, {78}},
        {22, {83}},
        {23, {85}},
        {24, {87}},
    };
    std::map<i16, std::vector<i32>> found;
    for (i32 row = 0; row <= 95; ++row) {
        if (const i16 rule = Shipped().Spells(row).File5; rule != 0) {
            found[rule].push_back(row);
        }
    }
    EXPECT_EQ(found, expected);
}

// A marker takes two digits and one more character; only established entries are used.
TEST(ShippedSpells, FormulaMarkers_AreWellFormed) {
    const std::string mark = "#Formula";
    const std::set<std::string> open = {"01", "04", "07", "10", "13", "22"};
    std::set<std::string> used;
    for (i32 row = 0; row <= 95; ++row) {
        const SpellRecord& spell = Shipped().Spells(row);
        for (const std::string& text :
             {spell.DamageText, spell.DurationText, spell.ExtraText1, spell.ExtraText2}) {
            for (std::size_t at = text.find(mark); at != std::string::npos;
                 at = text.find(mark, at + 1)) {
                const std::string number = text.substr(at + mark.size(), 2);
                ASSERT_EQ(number.size(), 2U) << text;
                EXPECT_TRUE(number >= "01" && number <= "33") << text;
                EXPECT_FALSE(open.contains(number)) << text;
                EXPECT_TRUE(number != "31" || spell.School == kMagery) << spell.Name;
                const std::string swallowed = text.substr(at + mark.size() + 2, 1);
                EXPECT_TRUE(swallowed.empty() || swallowed == ";") << text;
                used.insert(number);
            }
        }
    }
    EXPECT_EQ(used.size(), 33U - open.size());
}

TEST(ShippedSpells, File_IsPlainTextThatSurvivesAnyEditor) {
    std::ifstream file(SPELLWICK_SPELL_DATA, std::ios::binary);
    std::stringstream bytes;
    bytes << file.rdbuf();
    const std::string text = bytes.str();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 97) << "a title and one line for a row";
    EXPECT_TRUE(std::all_of(text.begin(), text.end(),
                            [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); }));
    EXPECT_EQ(text.find(" \n"), std::string::npos) << "a blank at the end of a line";
}

}  // namespace
}  // namespace spellwick
