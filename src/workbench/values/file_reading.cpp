#include "workbench/values/file_reading.h"

#include <algorithm>
#include <array>

namespace tiepoint::workbench {

namespace {

struct NamedEncoding {
  const char* name;
  TextEncoding encoding;
};
/// The first name of each is the one that is shown.
constexpr std::array<NamedEncoding, 14> names{{{"ASCII", TextEncoding::ascii},
                                               {"UTF-8", TextEncoding::utf8},
                                               {"UTF-16LE", TextEncoding::utf16LittleEndian},
                                               {"UTF-16BE", TextEncoding::utf16BigEndian},
                                               {"windows-1251", TextEncoding::windows1251},
                                               {"windows-1252", TextEncoding::windows1252},
                                               {"utf8", TextEncoding::utf8},
                                               {"utf16le", TextEncoding::utf16LittleEndian},
                                               {"utf16be", TextEncoding::utf16BigEndian},
                                               {"cp1251", TextEncoding::windows1251},
                                               {"cp1252", TextEncoding::windows1252},
                                               {"latin1", TextEncoding::windows1252},
                                               {"latin-1", TextEncoding::windows1252},
                                               {"iso-8859-1", TextEncoding::windows1252}}};

std::string lowerCase(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

struct NamedUnit {
  const char* name;
  LengthUnit unit;
};
constexpr std::array<NamedUnit, 4> units{{{"m", LengthUnit::metre},
                                          {"mm", LengthUnit::millimetre},
                                          {"ft", LengthUnit::foot},
                                          {"usft", LengthUnit::usSurveyFoot}}};

}  // namespace

bool hasColumn(const Columns& columns, ColumnRole role) {
  return std::find(columns.roles.begin(), columns.roles.end(), role) != columns.roles.end();
}

std::optional<TextEncoding> encodingByName(const std::string& name) {
  for (const NamedEncoding& known : names) {
    if (known.encoding != TextEncoding::ascii && lowerCase(known.name) == lowerCase(name)) return known.encoding;
  }
  return std::nullopt;
}

const char* encodingName(TextEncoding encoding) {
  return std::find_if(names.begin(), names.end(), [&](const NamedEncoding& n) { return n.encoding == encoding; })->name;
}

std::optional<LengthUnit> lengthUnitByName(const std::string& name) {
  for (const NamedUnit& known : units) {
    if (name == known.name) return known.unit;
  }
  return std::nullopt;
}

const char* lengthUnitName(LengthUnit unit) {
  return std::find_if(units.begin(), units.end(), [&](const NamedUnit& known) { return known.unit == unit; })->name;
}

}  // namespace tiepoint::workbench
