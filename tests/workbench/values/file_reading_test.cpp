#include "workbench/values/file_reading.h"

#include <gtest/gtest.h>

namespace {

using namespace tiepoint::workbench;

TEST(NamesOfEncodings, AreShownInOneWay) {
  EXPECT_STREQ(encodingName(TextEncoding::ascii), "ASCII");
  EXPECT_STREQ(encodingName(TextEncoding::utf8), "UTF-8");
  EXPECT_STREQ(encodingName(TextEncoding::utf16LittleEndian), "UTF-16LE");
  EXPECT_STREQ(encodingName(TextEncoding::utf16BigEndian), "UTF-16BE");
  EXPECT_STREQ(encodingName(TextEncoding::windows1251), "windows-1251");
  EXPECT_STREQ(encodingName(TextEncoding::windows1252), "windows-1252");
}

TEST(NamesOfEncodings, AreTakenInSeveral) {
  const struct {
    const char* name;
    TextEncoding encoding;
  } rows[] = {{"utf-8", TextEncoding::utf8},
              {"UTF8", TextEncoding::utf8},
              {"utf-16le", TextEncoding::utf16LittleEndian},
              {"utf16LE", TextEncoding::utf16LittleEndian},
              {"UTF-16BE", TextEncoding::utf16BigEndian},
              {"utf16be", TextEncoding::utf16BigEndian},
              {"Windows-1251", TextEncoding::windows1251},
              {"CP1251", TextEncoding::windows1251},
              {"windows-1252", TextEncoding::windows1252},
              {"cp1252", TextEncoding::windows1252},
              {"Latin1", TextEncoding::windows1252},
              {"latin-1", TextEncoding::windows1252},
              {"ISO-8859-1", TextEncoding::windows1252}};
  for (const auto& row : rows) EXPECT_EQ(encodingByName(row.name), row.encoding) << row.name;
}

// ASCII is what a file turns out to be; asked for, it would refuse the first name beyond it.
TEST(NamesOfEncodings, AreNoOthers) {
  for (const char* name : {"", "ascii", "ASCII", "utf", "utf-16", "utf-8 ", "windows1251", "1251", "cp866", "koi8-r"}) {
    EXPECT_EQ(encodingByName(name), std::nullopt) << name;
  }
}

TEST(NamesOfUnits, AreShortAndTakenAsTheyAreShown) {
  const struct {
    const char* name;
    LengthUnit unit;
  } rows[] = {{"m", LengthUnit::metre},
              {"mm", LengthUnit::millimetre},
              {"ft", LengthUnit::foot},
              {"usft", LengthUnit::usSurveyFoot}};
  for (const auto& row : rows) {
    EXPECT_EQ(lengthUnitByName(row.name), row.unit) << row.name;
    EXPECT_STREQ(lengthUnitName(row.unit), row.name);
  }
}

TEST(NamesOfUnits, AreNoOthers) {
  for (const char* name : {"", "M", "MM", "cm", "km", "in", "feet", "us-ft", "m "}) {
    EXPECT_EQ(lengthUnitByName(name), std::nullopt) << name;
  }
}

TEST(Columns, AreTheSameByTheirRolesAndWhetherFurtherOnesMayFollow) {
  const Columns columns{{ColumnRole::x, ColumnRole::y, ColumnRole::z}, false};
  EXPECT_TRUE(columns == (Columns{{ColumnRole::x, ColumnRole::y, ColumnRole::z}, false}));
  EXPECT_FALSE(columns == (Columns{{ColumnRole::y, ColumnRole::x, ColumnRole::z}, false}));
  EXPECT_FALSE(columns == (Columns{{ColumnRole::x, ColumnRole::y, ColumnRole::z}, true}));
}

TEST(Columns, HaveTheRolesThatStandInThem) {
  const Columns columns{{ColumnRole::x, ColumnRole::skipped}, true};
  EXPECT_TRUE(hasColumn(columns, ColumnRole::x));
  EXPECT_TRUE(hasColumn(columns, ColumnRole::skipped));
  EXPECT_FALSE(hasColumn(columns, ColumnRole::weight));
  EXPECT_FALSE(hasColumn(Columns(), ColumnRole::name));
}

}  // namespace
