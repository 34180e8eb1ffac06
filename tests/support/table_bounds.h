// Whether a fixed table has the bounds that are told, and fails outside them.
#pragma once

#include <optional>

#include <gtest/gtest.h>

#include "tests/support/failures.h"

namespace spellwick {

template <typename Table>
void ExpectBounds(const char* name, Table& table, i32 first, i32 last) {
    constexpr auto kSubscript = FailureKind::kSubscript;
    EXPECT_EQ(Table::kFirst, first) << name;
    EXPECT_EQ(Table::kLast, last) << name;
    EXPECT_EQ(FailureOf([&] { table(first); }), std::nullopt) << name;
    EXPECT_EQ(FailureOf([&] { table(last); }), std::nullopt) << name;
    EXPECT_EQ(FailureOf([&] { table(first - 1); }), kSubscript) << name;
    EXPECT_EQ(FailureOf([&] { table(last + 1); }), kSubscript) << name;
    const Table& readOnly = table;
    EXPECT_EQ(FailureOf([&] { readOnly(first); }), std::nullopt) << name;
    EXPECT_EQ(FailureOf([&] { readOnly(last + 1); }), kSubscript) << name;
}

}  // namespace spellwick
