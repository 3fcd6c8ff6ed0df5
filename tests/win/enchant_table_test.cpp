// The enchant table's built-in copy, read out of the settings editor that sits beside the program.

#include "panels/enchant_table.h"

#include <gtest/gtest.h>

namespace {

TEST(EnchantTableSources, TheEditorBesideTheProgramCarriesTheBuiltInCopy) {
    vrl::EnchantTables tables;
    vrl::LoadEnchantTables(1, tables);
    EXPECT_EQ(vrl::EnchantTables::Text(tables.category, 10000), u"属性");
    EXPECT_EQ(tables.InvokeEffect(5), 30);
    EXPECT_FALSE(tables.effect.empty());
}

}  // namespace
