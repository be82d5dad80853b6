#include "workbench/reading/header_columns.h"

#include <algorithm>
#include <charconv>
#include <map>

#include "workbench/reading/header_words.h"

namespace tiepoint::workbench {

namespace {

using Meanings = std::vector<HeaderMeaning>;

bool has(const Meanings& meanings, HeaderMeaning wanted) {
  return std::find(meanings.begin(), meanings.end(), wanted) != meanings.end();
}

void replaceAll(Meanings& meanings, HeaderMeaning from, HeaderMeaning to) {
  std::replace(meanings.begin(), meanings.end(), from, to);
}

/// R and H are Rechtswert and Hochwert beside a further height, and else R is nothing, H the height.
void settleRechtsHoch(Meanings& meanings) {
  const bool hasOtherHeight = has(meanings, HeaderMeaning::z) || has(meanings, HeaderMeaning::height);
  const bool hasNorth = has(meanings, HeaderMeaning::north);
  const bool arePlane =
      has(meanings, HeaderMeaning::letterR) && has(meanings, HeaderMeaning::letterH) && hasOtherHeight && !hasNorth;
  const bool isEast = arePlane || (hasNorth && !has(meanings, HeaderMeaning::east));
  replaceAll(meanings, HeaderMeaning::letterR, isEast ? HeaderMeaning::east : HeaderMeaning::unknown);
  replaceAll(meanings, HeaderMeaning::letterH, arePlane ? HeaderMeaning::north : HeaderMeaning::height);
}

/// N is north beside E, unless north is there already; beside X and Y it is a number.
void settleN(Meanings& meanings) {
  const bool isNorth = has(meanings, HeaderMeaning::east) && !has(meanings, HeaderMeaning::north);
  const bool isNumber = !isNorth && !has(meanings, HeaderMeaning::name);
  replaceAll(meanings, HeaderMeaning::letterN,
             isNorth ? HeaderMeaning::north : (isNumber ? HeaderMeaning::name : HeaderMeaning::unknown));
}

ColumnRole roleOf(HeaderMeaning meaning) {
  switch (meaning) {
    case HeaderMeaning::name:
      return ColumnRole::name;
    case HeaderMeaning::x:
    case HeaderMeaning::east:
      return ColumnRole::x;
    case HeaderMeaning::y:
    case HeaderMeaning::north:
      return ColumnRole::y;
    case HeaderMeaning::z:
    case HeaderMeaning::height:
      return ColumnRole::z;
    case HeaderMeaning::weight:
      return ColumnRole::weight;
    default:
      return ColumnRole::skipped;
  }
}

Meanings meaningsOf(const std::vector<std::string>& words) {
  Meanings meanings;
  for (const std::string& word : words) meanings.push_back(meaningOfHeaderWord(word));
  settleRechtsHoch(meanings);
  settleN(meanings);
  return meanings;
}

/// A role that two columns have, or a coordinate that none has.
std::optional<ColumnsFault> faultOfRoles(const Columns& columns, const std::vector<std::string>& words) {
  std::map<ColumnRole, std::size_t> first;
  for (std::size_t i = 0; i < columns.roles.size(); ++i) {
    if (columns.roles[i] == ColumnRole::skipped) continue;
    const auto [known, isNew] = first.emplace(columns.roles[i], i);
    if (!isNew) return ColumnsFault{ColumnsTrouble::doubled, {words[known->second], words[i]}};
  }
  if (first.count(ColumnRole::x) == 0) return ColumnsFault{ColumnsTrouble::missingX, words};
  if (first.count(ColumnRole::y) == 0) return ColumnsFault{ColumnsTrouble::missingY, words};
  if (first.count(ColumnRole::z) == 0) return ColumnsFault{ColumnsTrouble::missingZ, words};
  return std::nullopt;
}

std::vector<std::string> itemsOf(const std::string& text, char separator) {
  std::vector<std::string> items(1);
  for (const char c : text) {
    if (c == separator) {
      items.emplace_back();
    } else {
      items.back() += c;
    }
  }
  return items;
}

bool isSkip(const std::string& word) { return word == "-" || word == "skip"; }

/// A column of what a user asks for that can be had.
bool isAskedRole(HeaderMeaning meaning) { return roleOf(meaning) != ColumnRole::skipped; }

std::optional<ColumnsFault> faultOfWords(const std::vector<std::string>& words, const Meanings& meanings) {
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (!isSkip(words[i]) && !isAskedRole(meanings[i])) return ColumnsFault{ColumnsTrouble::unknownWord, {words[i]}};
  }
  return std::nullopt;
}

/// A column's number from 1 on; 0 for text that isn't all digits.
std::size_t numberOf(const std::string& text) {
  constexpr std::size_t mostColumns = 1000;
  std::size_t number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isNumber = result.ec == std::errc() && result.ptr == text.data() + text.size();
  return isNumber && number <= mostColumns ? number : 0;
}

bool isAllDigits(const std::string& text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::variant<ColumnRequest, ColumnsFault> requestOfPlaces(const std::vector<std::string>& items) {
  std::vector<std::string> words;
  ColumnRequest request;
  for (const std::string& item : items) {
    const std::size_t sign = item.find('=');
    if (sign == std::string::npos) return ColumnsFault{ColumnsTrouble::unknownWord, {item}};
    words.push_back(item.substr(0, sign));
    const std::string place = item.substr(sign + 1);
    const std::size_t number = numberOf(place);
    const bool isUsed = std::any_of(request.places.begin(), request.places.end(), [&](const ColumnRequest::Place& p) {
      return number > 0 ? p.number == number : p.word == place;
    });
    if (place.empty() || isUsed || (isAllDigits(place) && number == 0)) {
      return ColumnsFault{ColumnsTrouble::badNumber, {item}};
    }
    request.places.push_back({ColumnRole::skipped, number, number > 0 ? "" : place});
  }
  const Meanings meanings = meaningsOf(words);
  Columns columns;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (!isAskedRole(meanings[i])) return ColumnsFault{ColumnsTrouble::unknownWord, {words[i]}};
    request.places[i].role = roleOf(meanings[i]);
    columns.roles.push_back(request.places[i].role);
  }
  if (const auto fault = faultOfRoles(columns, words)) return *fault;
  return request;
}

/// False when the column has a role already.
bool place(Columns& columns, std::size_t number, ColumnRole role) {
  if (columns.roles.size() < number) columns.roles.resize(number, ColumnRole::skipped);
  if (columns.roles[number - 1] != ColumnRole::skipped) return false;
  columns.roles[number - 1] = role;
  return true;
}

/// The number of the one column under that word, from 1.
std::variant<std::size_t, ColumnsFault> columnUnder(const std::string& word, const std::vector<std::string>& header) {
  const std::string plainWord = plainHeaderWord(word);
  const auto isIt = [&](const std::string& other) { return plainHeaderWord(other) == plainWord; };
  const auto found = std::find_if(header.begin(), header.end(), isIt);
  if (found == header.end()) return ColumnsFault{ColumnsTrouble::wordNotInHeader, {word}};
  const auto second = std::find_if(found + 1, header.end(), isIt);
  if (second != header.end()) return ColumnsFault{ColumnsTrouble::doubled, {*found, *second}};
  return static_cast<std::size_t>(found - header.begin()) + 1;
}

}  // namespace

std::variant<Columns, ColumnsFault> columnsOfHeader(const std::vector<std::string>& words) {
  const Meanings meanings = meaningsOf(words);
  const auto isUnknown = [](HeaderMeaning m) { return m == HeaderMeaning::unknown; };
  if (std::all_of(meanings.begin(), meanings.end(), isUnknown))
    return ColumnsFault{ColumnsTrouble::unknownWords, words};
  Columns columns;
  std::vector<std::string> unknown;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (meanings[i] == HeaderMeaning::contradiction) return ColumnsFault{ColumnsTrouble::doubled, {words[i]}};
    columns.roles.push_back(roleOf(meanings[i]));
    if (isUnknown(meanings[i])) unknown.push_back(words[i]);
  }
  if (const auto fault = faultOfRoles(columns, words)) return *fault;
  if (!hasColumn(columns, ColumnRole::name) && !unknown.empty()) {
    return ColumnsFault{ColumnsTrouble::nameUnclear, unknown};
  }
  return columns;
}

std::variant<ColumnRequest, ColumnsFault> columnRequestOf(const std::string& text) {
  const std::vector<std::string> items = itemsOf(text, ',');
  if (text.find('=') != std::string::npos) return requestOfPlaces(items);
  const Meanings meanings = meaningsOf(items);
  if (const auto fault = faultOfWords(items, meanings)) return *fault;
  ColumnRequest request;
  for (const HeaderMeaning meaning : meanings) request.columns.roles.push_back(roleOf(meaning));
  if (const auto fault = faultOfRoles(request.columns, items)) return *fault;
  return request;
}

std::variant<Columns, ColumnsFault> requestedColumns(const ColumnRequest& request,
                                                     const std::vector<std::string>& header) {
  if (request.places.empty()) return request.columns;
  Columns columns;
  columns.openEnded = true;
  for (const ColumnRequest::Place& wanted : request.places) {
    std::size_t number = wanted.number;
    if (number == 0) {
      const auto found = columnUnder(wanted.word, header);
      if (const auto* fault = std::get_if<ColumnsFault>(&found)) return *fault;
      number = std::get<std::size_t>(found);
    }
    if (!place(columns, number, wanted.role)) {
      return ColumnsFault{ColumnsTrouble::doubled, {wanted.word.empty() ? std::to_string(number) : wanted.word}};
    }
  }
  return columns;
}

}  // namespace tiepoint::workbench
