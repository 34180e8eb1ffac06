// The meaning of the assist tool's numbers of reagents, and of its spell numbers above 100.
#pragma once

#include "text/number_types.h"

namespace spellwick {

struct ReagentRow {
    i32 wParam;
    i32 reagent;
    const char* name;
};

inline constexpr ReagentRow kReagentRows[] = {
    {1, 3, "Bloodmoss"},       {2, 6, "Black Pearl"},   {3, 5, "Garlic"},
    {4, 8, "Ginseng"},         {5, 1, "Mandrake Root"}, {6, 7, "Nightshade"},
    {7, 2, "Sulphurous Ash"},  {8, 4, "Spider Silk"},   {100, 9, "Bat Wing"},
    {101, 11, "Daemon Blood"}, {102, 10, "Grave Dust"}, {103, 12, "Nox Crystal"},
    {104, 13, "Pig Iron"},
};

struct SpellRow {
    i32 tool;
    i32 ours;
};

inline constexpr SpellRow kSpellRows[] = {
    {101, 72}, {102, 68}, {103, 66}, {104, 64}, {105, 67}, {106, 71}, {107, 77},
    {108, 70}, {109, 65}, {110, 73}, {111, 74}, {112, 75}, {113, 79}, {114, 78},
    {115, 76}, {116, 69}, {117, 95}, {201, 80}, {202, 81}, {203, 83}, {204, 86},
    {205, 85}, {206, 87}, {207, 88}, {208, 89}, {209, 82}, {210, 84},
};

}  // namespace spellwick
