#include "files/string_table.h"

#include <array>
#include <cstddef>

namespace ZOR::reg {
namespace {

// The words stay as the table's readers know them, misspellings included: reports are compared by
// their text.

constexpr int firstReportString = 1;
constexpr std::array<const wchar_t*, 28> reportStrings{
    L"Reference points information",
    L"Name",
    L"Group name",
    L"Coordinates",
    L"Discrepancy",
    L"Before registration",
    L"After registration",
    L"Groups reference points",
    L"Name",
    L"Reference point name",
    L"Method of registration",
    L"Complite",
    L"Complite with base",
    L"Pairwise",
    L"Pairwise with base",
    L"Iterative",
    L"Iterative with base",
    L"Registration settings",
    L"actual/preset number iterations",
    L"actual/preset maximum discrepancy",
    L"Common reference points",
    L"Name",
    L"Coordinates",
    L"Weights",
    L"Not registered",
    L"Rotation angles, degrees",
    L"Shift",
    L"Transformation matrix",
};

constexpr int firstImportString = 101;
constexpr std::array<const wchar_t*, 9> importStrings{
    L"Import reference points",
    L"Reference points files (*.txt)|*.txt|All files (*.*)|*.*||",
    L"Choose folder with reference points",
    L"Found %d files",
    L"Warning: don't open file %s",
    L"Warning: line %d from file %s don't parsed",
    L"Warning: reference points are not found in the file %s",
    L"Warning: dont't create repository in document",
    L"Command complite. %d groups of reference points loaded in document",
};

/// The text under `number` in a run of strings that begins at `first`, or null.
template <std::size_t Size>
const wchar_t* textOf(const std::array<const wchar_t*, Size>& strings, int first, int number) {
  if (number < first || number - first >= static_cast<int>(Size)) return nullptr;
  return strings[static_cast<std::size_t>(number - first)];
}

}  // namespace

const wchar_t* resourceString(int number) {
  if (number < firstImportString) {
    const wchar_t* text = textOf(reportStrings, firstReportString, number);
    return text ? text : L"";
  }
  const wchar_t* text = textOf(importStrings, firstImportString, number);
  return text ? text : L"";
}

}  // namespace ZOR::reg
