#include "workbench/reading/header_words.h"

#include <algorithm>
#include <boost/locale/utf.hpp>
#include <iterator>
#include <string_view>
#include <unordered_map>

namespace tiepoint::workbench {

namespace {

using Utf8 = boost::locale::utf::utf_traits<char>;
using boost::locale::utf::code_point;
using Words = std::unordered_map<std::string_view, HeaderMeaning>;

struct WordRow {
  HeaderMeaning meaning;
  /// Between blanks, as by plainHeaderWord.
  std::string_view words;
};

constexpr WordRow rows[] = {
    {HeaderMeaning::name,
     "name nam point pointname pointid pointno pointnr pointnum pointnumber pt ptid ptname ptno ptnr ptnum "
     "pnt pntid pntname pntno p id no nr num number target targetid targetname targetno label mark "
     "punkt punktname punktnummer punktnr punktid punktbezeichnung bezeichnung pktnr pktname pnr nummer zielmarke "
     "имя имяточки точка названиеточки название наименование номер номерточки марка пункт № №точки"},
    {HeaderMeaning::x, "x xcoord xcoordinate coordx xkoordinate koordx х коордх координатах xm"},
    {HeaderMeaning::y, "y ycoord ycoordinate coordy ykoordinate koordy у коорду координатау ym"},
    {HeaderMeaning::z, "z zcoord zcoordinate coordz zkoordinate koordz zm"},
    {HeaderMeaning::height,
     "height elevation elev el altitude alt rl höhe hoehe höhen zhöhe hm "
     "высота отметка абсотметка высотнаяотметка н"},
    {HeaderMeaning::east, "e east easting eastings ost ostwert rechtswert rw восток em"},
    {HeaderMeaning::north, "north northing northings nord nordwert hochwert hw север nm"},
    {HeaderMeaning::weight, "w weight wt gewicht вес"},
    {HeaderMeaning::letterN, "n"},
    {HeaderMeaning::letterH, "h"},
    {HeaderMeaning::letterR, "r"},
    {HeaderMeaning::other,
     "code codes featurecode d desc description descriptor remark remarks comment comments note notes layer "
     "sd sde sdn sdh sdx sdy sdz sx sy sz se sn sh mx my mz mp std stdx stdy stdz stddev sigma sigmax sigmay sigmaz "
     "rms quality date time "
     "bemerkung bemerkungen beschreibung genauigkeit standardabweichung zeit "
     "код описание примечание комментарий ско скох скоу скоz слой дата время ппп пп №пп"},
};

Words makeWords() {
  Words words;
  for (const WordRow& row : rows) {
    for (std::size_t at = 0; at < row.words.size();) {
      const std::size_t end = std::min(row.words.find(' ', at), row.words.size());
      words.emplace(row.words.substr(at, end - at), row.meaning);
      at = end + 1;
    }
  }
  return words;
}

code_point lowerCase(code_point c) {
  const bool isCapital = (c >= 'A' && c <= 'Z') || (c >= 0x410 && c <= 0x42F) || (c >= 0xC0 && c <= 0xDE && c != 0xD7);
  if (c == 0x401) return 0x451;
  return isCapital ? c + 0x20 : c;
}

/// Blanks and marks between the words of one heading.
bool isJoint(code_point c) {
  return c <= 0x20 || c == '.' || c == '_' || c == '-' || c == ':' || c == '/' || c == '#' || c == '*' || c == 0xA0;
}

struct Parts {
  std::string outside;
  std::string inside;
};

/// The text, and what stands in brackets in it.
Parts partsOf(const std::string& word) {
  Parts parts;
  bool isInside = false;
  for (const char c : word) {
    if (c == '(' || c == '[') {
      isInside = true;
    } else if (c == ')' || c == ']') {
      isInside = false;
    } else {
      (isInside ? parts.inside : parts.outside) += c;
    }
  }
  return parts;
}

std::string plain(const std::string& text) {
  std::string result;
  for (auto at = text.begin(); at != text.end();) {
    const code_point c = Utf8::decode(at, text.end());
    if (c == boost::locale::utf::illegal || c == boost::locale::utf::incomplete) return {};
    if (!isJoint(c)) Utf8::encode(lowerCase(c), std::back_inserter(result));
  }
  return result;
}

HeaderMeaning lookUp(const std::string& plainWord) {
  static const Words words = makeWords();
  const auto found = words.find(plainWord);
  return found == words.end() ? HeaderMeaning::unknown : found->second;
}

/// East is x, and so on.
HeaderMeaning axisOf(HeaderMeaning meaning) {
  switch (meaning) {
    case HeaderMeaning::east:
    case HeaderMeaning::letterR:
      return HeaderMeaning::x;
    case HeaderMeaning::north:
    case HeaderMeaning::letterN:
      return HeaderMeaning::y;
    case HeaderMeaning::height:
    case HeaderMeaning::letterH:
      return HeaderMeaning::z;
    default:
      return meaning;
  }
}

bool isAxis(HeaderMeaning meaning) {
  const HeaderMeaning axis = axisOf(meaning);
  return axis == HeaderMeaning::x || axis == HeaderMeaning::y || axis == HeaderMeaning::z;
}

/// "m" in brackets is a unit, and so is "mm"; only an axis can contradict.
HeaderMeaning together(HeaderMeaning outside, HeaderMeaning inside) {
  if (!isAxis(inside)) return outside;
  if (outside == HeaderMeaning::unknown) return inside;
  return axisOf(outside) == axisOf(inside) ? outside : HeaderMeaning::contradiction;
}

}  // namespace

std::string plainHeaderWord(const std::string& word) {
  const Parts parts = partsOf(word);
  return plain(parts.outside.empty() ? parts.inside : parts.outside);
}

HeaderMeaning meaningOfHeaderWord(const std::string& word) {
  const Parts parts = partsOf(word);
  // "№" alone, or "#".
  const std::string outside = plain(parts.outside);
  if (outside.empty() && parts.outside.find('#') != std::string::npos) return HeaderMeaning::name;
  return together(lookUp(outside), lookUp(plain(parts.inside)));
}

}  // namespace tiepoint::workbench
