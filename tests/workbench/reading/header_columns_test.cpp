#include "workbench/reading/header_columns.h"

#include <gtest/gtest.h>

#include "workbench/reading/header_words.h"
#include "workbench/reading/outcome_text.h"

namespace {

using namespace tiepoint::workbench;
using tiepoint::testing::columnsText;
using Words = std::vector<std::string>;

const char* troubleText(ColumnsTrouble trouble) {
  const char* const names[] = {"unknown words", "no x",       "no y",
                               "no z",          "doubled",    "name unclear",
                               "unknown word",  "bad number", "word not in header"};
  return names[static_cast<int>(trouble)];
}

std::string textOf(const std::variant<Columns, ColumnsFault>& result) {
  if (const auto* columns = std::get_if<Columns>(&result)) return columnsText(*columns);
  const auto& fault = std::get<ColumnsFault>(result);
  std::string text = troubleText(fault.trouble);
  for (const std::string& word : fault.words) text += " '" + word + "'";
  return text;
}

struct Row {
  Words words;
  const char* columns;
};

TEST(HeaderColumns, AreToldInThreeLanguages) {
  const Row rows[] = {
      {{"Name", "X", "Y", "Z"}, "name,x,y,z"},
      {{"Point", "Northing", "Easting", "Elevation"}, "name,y,x,z"},
      {{"PT_ID", "E", "N", "H"}, "name,x,y,z"},
      {{"P", "N", "E", "Z", "D"}, "name,y,x,z,-"},
      {{"Point No.", "East (m)", "North (m)", "Height [m]", "Code"}, "name,x,y,z,-"},
      {{"Punktnummer", "Rechtswert", "Hochwert", "Höhe"}, "name,x,y,z"},
      {{"PktNr", "Y", "X", "H"}, "name,y,x,z"},
      {{"Nr", "R", "H", "Z"}, "name,x,y,z"},
      {{"Nr", "Ostwert", "Nordwert", "Hoehe", "Gewicht"}, "name,x,y,z,w"},
      {{"Rechtswert (X)", "Hochwert (Y)", "Höhe (Z)"}, "x,y,z"},
      {{"Номер", "Север", "Восток", "Высота"}, "name,y,x,z"},
      {{"ИМЯ", "X", "Y", "H", "Вес"}, "name,x,y,z,w"},
      {{"№ точки", "Х", "У", "Отметка"}, "name,x,y,z"},
      {{"№ п/п", "Название точки", "Координата X", "Координата Y", "Z"},
       "no x '№ п/п' 'Название точки' 'Координата X' 'Координата Y' 'Z'"},
      {{"N", "X", "Y", "Z"}, "name,x,y,z"},
      {{"#", "X", "Y", "Z"}, "name,x,y,z"},
      {{"X", "Y", "Z"}, "x,y,z"},
      {{"X", "Y", "Z", "Weight"}, "x,y,z,w"},
      {{"Name", "X", "Y", "Z", "sX", "sY", "sZ"}, "name,x,y,z,-,-,-"},
      {{"Code", "X", "Y", "Z"}, "-,x,y,z"},
      {{"Name", "X", "Y", "Z", "Whatever"}, "name,x,y,z,-"},
  };
  for (const Row& row : rows) EXPECT_EQ(textOf(columnsOfHeader(row.words)), row.columns) << row.words.front();
}

TEST(HeaderColumns, ArentGuessed) {
  const Row rows[] = {
      {{"a", "b", "c"}, "unknown words 'a' 'b' 'c'"},
      {{"Name", "Lat", "Lon", "Height"}, "no x 'Name' 'Lat' 'Lon' 'Height'"},
      {{"Name", "X", "Y"}, "no z 'Name' 'X' 'Y'"},
      {{"Name", "X", "Z"}, "no y 'Name' 'X' 'Z'"},
      {{"No", "Name", "X", "Y", "Z"}, "doubled 'No' 'Name'"},
      {{"Name", "X", "Y", "Z", "Height"}, "doubled 'Z' 'Height'"},
      {{"Name", "X", "Easting", "Northing", "Z"}, "doubled 'X' 'Easting'"},
      {{"Name", "Northing (X)", "Easting (Y)", "Z"}, "doubled 'Northing (X)'"},
      {{"Foo", "X", "Y", "Z"}, "name unclear 'Foo'"},
      {{"", "X", "Y", "Z"}, "name unclear ''"},
  };
  for (const Row& row : rows) EXPECT_EQ(textOf(columnsOfHeader(row.words)), row.columns) << row.words.front();
}

std::string requestText(const std::string& text, const Words& header = {}) {
  const auto request = columnRequestOf(text);
  if (const auto* fault = std::get_if<ColumnsFault>(&request)) return textOf(*fault);
  return textOf(requestedColumns(std::get<ColumnRequest>(request), header));
}

struct RequestRow {
  const char* text;
  const char* columns;
};

TEST(ColumnRequests, AreListsOfWords) {
  const RequestRow rows[] = {
      {"name,x,y,z", "name,x,y,z"},
      {"name,e,n,h", "name,x,y,z"},
      {"n,e,h", "y,x,z"},
      {"n,x,y,z", "name,x,y,z"},
      {"name,n,e,h,w", "name,y,x,z,w"},
      {"-,name,skip,x,y,z,-", "-,name,-,x,y,z,-"},
      {"Имя,Север,Восток,Высота", "name,y,x,z"},
      {"Punkt,Rechtswert,Hochwert,Höhe", "name,x,y,z"},
      {"X,Y,Z", "x,y,z"},
  };
  for (const RequestRow& row : rows) EXPECT_EQ(requestText(row.text), row.columns) << row.text;
}

TEST(ColumnRequests, AreNumbersOrWordsOfTheHeader) {
  const Words header{"Station", "Ziel", "Nord", "Ost", "Ziel-Höhe"};
  EXPECT_EQ(requestText("name=1,x=3,y=2,z=4"), "name,y,x,z,...");
  EXPECT_EQ(requestText("x=7,y=5,z=9"), "-,-,-,-,y,-,x,-,z,...");
  EXPECT_EQ(requestText("name=Ziel,n=nord,e=4,h=zielhöhe", header), "-,name,y,x,z,...");
}

TEST(ColumnRequests, AreRefusedWithTheWord) {
  const RequestRow rows[] = {
      {"", "unknown word ''"},
      {"name,x,y", "no z 'name' 'x' 'y'"},
      {"name,x,y,z,foo", "unknown word 'foo'"},
      {"name,x,y,z,code", "unknown word 'code'"},
      {"name,x,x,z", "doubled 'x' 'x'"},
      {"x,y,z,", "unknown word ''"},
      {"x=1,y=1,z=2", "bad number 'y=1'"},
      {"x=0,y=1,z=2", "bad number 'x=0'"},
      {"x=,y=1,z=2", "bad number 'x='"},
      {"x=99999999999999999999,y=1,z=2", "bad number 'x=99999999999999999999'"},
      {"x=1,y,z=2", "unknown word 'y'"},
      {"x=1,y=2", "no z 'x' 'y'"},
      {"x=Ost,y=2,z=3", "word not in header 'Ost'"},
  };
  for (const RequestRow& row : rows) EXPECT_EQ(requestText(row.text), row.columns) << row.text;
  EXPECT_EQ(requestText("x=A,y=2,z=3", {"A", "a", "c"}), "doubled 'A' 'a'");
  EXPECT_EQ(requestText("x=A,y=1,z=3", {"A", "b", "c"}), "doubled '1'");
}

}  // namespace
