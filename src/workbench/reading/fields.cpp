#include "workbench/reading/fields.h"

namespace tiepoint::workbench {

namespace {

constexpr char quote = '"';

bool isSeparator(char c, Separator separator) {
  switch (separator) {
    case Separator::semicolon:
      return c == ';';
    case Separator::comma:
      return c == ',';
    case Separator::tab:
      return c == '\t';
    case Separator::blank:
      return isWhite(c);
    case Separator::mixed:
      return isWhite(c) || c == ',' || c == ';';
  }
  return false;
}

bool isRun(Separator separator) { return separator == Separator::blank || separator == Separator::mixed; }

/// White space that isn't the separator itself.
bool isPadding(char c, Separator separator) { return isWhite(c) && !isSeparator(c, separator); }

class Splitter {
 public:
  Splitter(std::string_view line_, Separator separator_, FieldList& fields_)
      : line(line_), separator(separator_), fields(fields_) {}

  QuoteTrouble split() {
    fields.clear();
    skipEnds();
    if (isRun(separator) && at == line.size()) return QuoteTrouble::none;
    while (true) {
      while (at < line.size() && isPadding(line[at], separator)) ++at;
      LineField& field = fields.add();
      const QuoteTrouble trouble = at < line.size() && line[at] == quote ? takeQuoted(field) : takePlain(field);
      if (trouble != QuoteTrouble::none) return trouble;
      if (at == line.size()) return QuoteTrouble::none;
      passSeparator();
    }
  }

 private:
  /// White space at both ends belongs to no field, be it a separator or not, but for tabs that
  /// divide.
  void skipEnds() {
    const auto isEnd = [&](char c) { return isWhite(c) && (isRun(separator) || isPadding(c, separator)); };
    while (at < line.size() && isEnd(line[at])) ++at;
    while (line.size() > at && isEnd(line.back())) line.remove_suffix(1);
  }

  /// A run of a mixture holds one comma or semicolon: a second one has an empty field before it.
  void passSeparator() {
    bool hasMark = !isWhite(line[at++]);
    if (!isRun(separator)) return;
    while (at < line.size() && isSeparator(line[at], separator) && (isWhite(line[at]) || !hasMark)) {
      hasMark = hasMark || !isWhite(line[at]);
      ++at;
    }
  }

  QuoteTrouble takePlain(LineField& field) {
    const std::size_t start = at;
    while (at < line.size() && !isSeparator(line[at], separator)) ++at;
    std::size_t end = at;
    while (end > start && isWhite(line[end - 1])) --end;
    field.text.assign(line, start, end - start);
    return QuoteTrouble::none;
  }

  QuoteTrouble takeQuoted(LineField& field) {
    field.isQuoted = true;
    for (++at; at < line.size(); ++at) {
      if (line[at] != quote) {
        field.text += line[at];
      } else if (at + 1 < line.size() && line[at + 1] == quote) {
        field.text += line[at++];
      } else {
        return passClosingQuote();
      }
    }
    return QuoteTrouble::openQuote;
  }

  QuoteTrouble passClosingQuote() {
    ++at;
    while (at < line.size() && isPadding(line[at], separator)) ++at;
    return at == line.size() || isSeparator(line[at], separator) ? QuoteTrouble::none : QuoteTrouble::textAfterQuote;
  }

  std::string_view line;
  Separator separator;
  FieldList& fields;
  std::size_t at = 0;
};

}  // namespace

LineField& FieldList::add() {
  if (count == fields.size()) fields.emplace_back();
  LineField& field = fields[count++];
  field.text.clear();
  field.isQuoted = false;
  return field;
}

std::size_t FieldList::sizeWithoutEmptyEnd() const {
  std::size_t size = count;
  while (size > 0 && fields[size - 1].text.empty()) --size;
  return size;
}

QuoteTrouble splitFields(std::string_view line, Separator separator, FieldList& fields) {
  return Splitter(line, separator, fields).split();
}

}  // namespace tiepoint::workbench
