#include "model/updating_scope.h"

#include <gtest/gtest.h>

namespace spellwick {
namespace {

TEST(UpdatingScope, NestedScopes_RestoreWhatTheyFound) {
    SharedState state;
    {
        const UpdatingScope outer(state);
        EXPECT_TRUE(state.Updating);
        {
            const UpdatingScope inner(state);
            EXPECT_TRUE(state.Updating);
        }
        EXPECT_TRUE(state.Updating) << "the outer one still fills controls";
    }
    EXPECT_FALSE(state.Updating);
}

}  // namespace
}  // namespace spellwick
