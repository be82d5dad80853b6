#include "workbench/reading/header_words.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace tiepoint::workbench;
using Meaning = HeaderMeaning;

struct Row {
  Meaning meaning;
  std::vector<const char*> words;
};

void expectAll(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    for (const char* word : row.words) EXPECT_EQ(meaningOfHeaderWord(word), row.meaning) << word;
  }
}

TEST(HeaderWords, AreEnglish) {
  expectAll({
      {Meaning::name, {"Name", "Point", "Pt", "P", "ID", "No", "Number", "Target", "Label", "#"}},
      {Meaning::x, {"X"}},
      {Meaning::y, {"Y"}},
      {Meaning::z, {"Z"}},
      {Meaning::east, {"E", "East", "Easting"}},
      {Meaning::north, {"North", "Northing"}},
      {Meaning::height, {"Height", "Elevation", "Elev", "Altitude", "RL"}},
      {Meaning::weight, {"W", "Weight"}},
      {Meaning::other, {"Code", "Description", "Remark", "Date", "sd", "sx", "std", "rms"}},
  });
}

TEST(HeaderWords, AreGerman) {
  expectAll({
      {Meaning::name, {"Punkt", "Punktnummer", "Punktname", "PktNr", "Nr", "Nummer", "Bezeichnung"}},
      {Meaning::east, {"Rechtswert", "RW", "Ostwert", "Ost"}},
      {Meaning::north, {"Hochwert", "HW", "Nordwert", "Nord"}},
      {Meaning::height, {"Höhe", "Hoehe", "HÖHE"}},
      {Meaning::weight, {"Gewicht"}},
      {Meaning::other, {"Bemerkung", "Beschreibung"}},
  });
}

TEST(HeaderWords, AreRussian) {
  expectAll({
      {Meaning::name, {"Имя", "Номер", "№", "Точка", "Название", "Пункт", "Марка", "ПУНКТ"}},
      {Meaning::east, {"Восток"}},
      {Meaning::x, {"Х", "х"}},
      {Meaning::north, {"Север"}},
      {Meaning::y, {"У", "у"}},
      {Meaning::height, {"Высота", "Отметка", "Н", "н"}},
      {Meaning::weight, {"Вес"}},
      {Meaning::other, {"Код", "Примечание", "Описание", "СКО"}},
  });
}

TEST(HeaderWords, OfOneLetterWaitForTheWordsAroundThem) {
  expectAll({{Meaning::letterN, {"N", "n"}}, {Meaning::letterH, {"H", "h"}}, {Meaning::letterR, {"R", "r"}}});
}

TEST(HeaderWords, AreKnownWithoutCaseBlanksPointsDashesAndUnderlines) {
  expectAll({
      {Meaning::name, {"POINT", "point id", "Point_ID", "Point-No.", " Pt. ", "Pt\xC2\xA0No", "Pt#", "№ точки"}},
      {Meaning::east, {"EASTING", "E.", "_E_", "E:", "E*"}},
      {Meaning::unknown, {"", "-", ".", "Eas ting2", "X1", "Rechts", "X north"}},
  });
}

TEST(HeaderWords, AreKnownWithoutTheirUnits) {
  expectAll({
      {Meaning::x, {"X [m]", "X(m)", "X (mm)", "X [ft]", "(X)", "[X]"}},
      {Meaning::north, {"Northing (m)", "Nord [mm]"}},
      {Meaning::unknown, {"(m)", "[mm]"}},
  });
}

TEST(HeaderWords, ContradictWhatTheirBracketsSay) {
  expectAll({
      {Meaning::contradiction, {"Northing (X)", "Easting [Y]", "X (North)", "Z (E)", "Name (X)", "H (Y)", "N (X)"}},
      {Meaning::north, {"Northing (Y)", "North (N)"}},
      {Meaning::east, {"East (X)"}},
      {Meaning::x, {"X (East)", "Whatever (X)"}},
      {Meaning::height, {"Height (Z)", "Höhe (H)"}},
  });
}

TEST(HeaderWords, AreUnknownWhereTheyAreNoText) {
  EXPECT_EQ(meaningOfHeaderWord("H\xF6he"), Meaning::unknown);
  EXPECT_EQ(meaningOfHeaderWord("X\xC3"), Meaning::unknown);
  EXPECT_EQ(meaningOfHeaderWord("\xEF\xBB\xBFX"), Meaning::unknown) << "a mark isn't a blank";
}

TEST(PlainHeaderWords, AreWhatColumnsAreComparedBy) {
  EXPECT_EQ(plainHeaderWord("Point No. [-]"), "pointno");
  EXPECT_EQ(plainHeaderWord("ВЫСОТА, м"), "высота,м");
  EXPECT_EQ(plainHeaderWord("ЁЛКА"), "ёлка");
  EXPECT_EQ(plainHeaderWord("HÖHE"), "höhe");
  EXPECT_EQ(plainHeaderWord("[Ziel]"), "ziel");
  EXPECT_EQ(plainHeaderWord("×"), "×");
}

}  // namespace
