// The values of the character and of an assumed target that determine a spell's figures.
#pragma once

#include "model/shared_state.h"

namespace spellwick {

// Points of skills and stats, as set by the user.
struct CasterValues {
    i16 magery = 0;
    i16 evalInt = 0;
    i16 intelligence = 0;
    i16 spiritSpeak = 0;
    i16 targetResist = 0;
};

inline CasterValues CasterOf(const CasterSkills& skills) {
    return {.magery = skills.Magery,
            .evalInt = skills.EvalInt,
            .intelligence = skills.Intelligence,
            .spiritSpeak = skills.SpiritSpeak,
            .targetResist = skills.TargetResist};
}

}  // namespace spellwick
