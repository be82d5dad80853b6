#include "files/string_table.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

namespace ZOR::reg {
namespace {

TEST(StringTable, HoldsItsStringsToTheLetter) {
  const std::pair<int, const wchar_t*> strings[] = {
      {1, L"Reference points information"},
      {2, L"Name"},
      {3, L"Group name"},
      {4, L"Coordinates"},
      {5, L"Discrepancy"},
      {6, L"Before registration"},
      {7, L"After registration"},
      {8, L"Groups reference points"},
      {9, L"Name"},
      {10, L"Reference point name"},
      {11, L"Method of registration"},
      {12, L"Complite"},
      {13, L"Complite with base"},
      {14, L"Pairwise"},
      {15, L"Pairwise with base"},
      {16, L"Iterative"},
      {17, L"Iterative with base"},
      {18, L"Registration settings"},
      {19, L"actual/preset number iterations"},
      {20, L"actual/preset maximum discrepancy"},
      {21, L"Common reference points"},
      {22, L"Name"},
      {23, L"Coordinates"},
      {24, L"Weights"},
      {25, L"Not registered"},
      {26, L"Rotation angles, degrees"},
      {27, L"Shift"},
      {28, L"Transformation matrix"},
      {101, L"Import reference points"},
      {102, L"Reference points files (*.txt)|*.txt|All files (*.*)|*.*||"},
      {103, L"Choose folder with reference points"},
      {104, L"Found %d files"},
      {105, L"Warning: don't open file %s"},
      {106, L"Warning: line %d from file %s don't parsed"},
      {107, L"Warning: reference points are not found in the file %s"},
      {108, L"Warning: dont't create repository in document"},
      {109, L"Command complite. %d groups of reference points loaded in document"},
  };
  for (const auto& [number, text] : strings) {
    EXPECT_EQ(std::wstring(resourceString(number)), text) << number;
  }
}

TEST(StringTable, GivesAnEmptyTextForANumberThatItLacks) {
  for (const int number : {std::numeric_limits<int>::min(), -1, 0, 29, 30, 100, 110, std::numeric_limits<int>::max()}) {
    EXPECT_EQ(std::wstring(resourceString(number)), L"") << number;
  }
}

}  // namespace
}  // namespace ZOR::reg
