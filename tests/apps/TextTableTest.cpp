#include "apps/marnockctl/TextTable.h"

#include <gtest/gtest.h>

namespace {

using KT::TextTable;

TEST(TextTable, WithoutColumnsIsEmpty) { EXPECT_EQ(TextTable().Text(), ""); }

TEST(TextTable, AlignsColumnsToEitherSide) {
  TextTable table;
  table.AddColumn({"name", "a"});
  table.AddColumn({"1", "100"}, TextTable::Align::Right);
  table.AddColumn({"end", "e"});
  EXPECT_EQ(table.Text(),
            "name    1  end\n"
            "a     100  e");
}

TEST(TextTable, CountsCharactersAndNotBytes) {
  TextTable table;
  table.AddColumn({"\xc3\xa9", "ab"});
  table.AddColumn({"x", "y"});
  EXPECT_EQ(table.Text(), "\xc3\xa9   x\nab  y");
}

TEST(TextTable, KeepsLinesThatAreBlank) {
  TextTable table;
  table.AddColumn({"", "a", ""});
  table.AddColumn({"", "b", ""});
  EXPECT_EQ(table.Text(), "\na  b\n");
}

}  // namespace
