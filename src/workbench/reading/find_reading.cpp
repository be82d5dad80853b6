#include "workbench/reading/find_reading.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "workbench/reading/header_columns.h"
#include "workbench/reading/header_line.h"
#include "workbench/reading/numbers.h"
#include "workbench/reading/point_line.h"

namespace tiepoint::workbench {

namespace {

constexpr std::size_t fewestColumns = 3;
constexpr std::size_t mostColumns = 5;

using Separators = std::vector<Separator>;

/// A single separator may stand beside blanks inside names, so it is the stronger one; a mixture is
/// the weakest.
std::vector<Separators> tiers(const FileHead& head, const ReadingRequest& request) {
  if (head.saidSeparator) return {{*head.saidSeparator}};
  const Separators single{Separator::semicolon, Separator::tab, Separator::comma};
  if (!request.columns || request.columns->places.empty()) return {single, {Separator::blank}, {Separator::mixed}};
  // Where further fields may follow, a lost one isn't missed: no run of tabs may hide an empty field.
  const auto hasTab = [](const NumberedLine& line) { return line.text.find('\t') != std::string::npos; };
  if (std::any_of(head.lines.begin(), head.lines.end(), hasTab)) return {single};
  return {single, {Separator::blank}};
}

std::vector<DecimalMark> decimals(const ReadingRequest& request) {
  if (request.decimal) return {*request.decimal};
  return {DecimalMark::point, DecimalMark::comma};
}

/// A comment needn't be divided as the points below it are.
constexpr std::array<Separator, 5> headingDividers{Separator::semicolon, Separator::tab, Separator::comma,
                                                   Separator::blank, Separator::mixed};

std::string withoutMark(const std::string& comment) {
  const auto isMark = [](char c) { return isWhite(c) || c == '#' || c == '/' || c == '%' || c == '!' || c == ';'; };
  return std::string(std::find_if_not(comment.begin(), comment.end(), isMark), comment.end());
}

/// A number sign that begins a line is the word above the names where a mark of its own divides it
/// from the next, or where the field below it can be nothing but a name.
bool mayStandAbove(const std::string& word, Separator divider, const FieldList& fields) {
  if (word != "#") return false;
  if (divider != Separator::blank && divider != Separator::mixed) return true;
  const std::string& below = fields[0].text;
  return !readNumber(below, DecimalMark::point).isNumber && !readNumber(below, DecimalMark::comma).isNumber;
}

/// One way of reading, and what came of it.
struct Trial {
  CandidateReading candidate;
  /// The columns are known from a header or from the request.
  bool isKnown = false;
  std::vector<SurveyPoint> points;
  std::size_t lines = 0;
  /// Lines with the right number of fields, whatever they hold.
  std::size_t rightCounts = 0;
  /// A line is divided, and lacks fields that the columns need.
  bool lacksFields = false;
  /// Points have empty fields behind them.
  bool hasEmptyEnd = false;
  std::optional<ReadingFault> firstFault;

  bool readsAll() const { return lines > 0 && points.size() == lines; }
};

bool isSame(const SurveyPoint& a, const SurveyPoint& b) {
  return a.name == b.name && a.x == b.x && a.y == b.y && a.z == b.z && a.w == b.w;
}

bool isSame(const Trial& a, const Trial& b) {
  return std::equal(a.points.begin(), a.points.end(), b.points.begin(), b.points.end(),
                    [](const SurveyPoint& p, const SurveyPoint& q) { return isSame(p, q); });
}

/// Where the data begins, and what stands above it.
struct Heading {
  std::size_t firstData = 0;
  std::optional<HeaderLine> line;
  bool isComment = false;
};

class Finder {
 public:
  Finder(const FileHead& head_, const ReadingRequest& request_) : head(head_), request(request_) {}

  FoundReadings find() {
    if (head.lines.empty()) return {};
    if (const auto binary = binaryLine()) return *binary;
    for (const Separators& tier : tiers(head, request)) {
      std::vector<Trial> full;
      for (const Separator separator : tier) {
        for (Trial& trial : trialsOf(separator)) (trial.readsAll() ? full : partial).push_back(std::move(trial));
      }
      if (!full.empty()) return different(std::move(full));
      // Another separator would tear the words of such a header apart, and read something else.
      if (contradictoryHeader) return *contradictoryHeader;
      if (std::any_of(partial.begin(), partial.end(), settlesSeparator)) break;
    }
    return bestPartial();
  }

 private:
  /// Where a single separator divides the lines under columns that are known, runs of blanks would hide
  /// a coordinate that isn't there: `P 1;10;20;` isn't the point P at 1, 10, 20.
  static bool settlesSeparator(const Trial& trial) {
    const Separator separator = trial.candidate.lines.separator;
    return trial.isKnown && trial.lacksFields && separator != Separator::blank && separator != Separator::mixed;
  }

  std::optional<FoundReadings> binaryLine() const {
    for (const NumberedLine& line : head.lines) {
      if (line.text.find('\0') == std::string::npos) continue;
      FoundReadings found;
      found.none.kind = NoReading::Kind::binary;
      found.none.line = line.number;
      return found;
    }
    return std::nullopt;
  }

  bool isText(std::size_t i, Separator separator) const {
    return kindOfLine(head.lines[i].text, separator) == LineKind::text;
  }

  Heading headingOf(Separator separator) const {
    Heading heading;
    while (heading.firstData < head.lines.size() && !isText(heading.firstData, separator)) ++heading.firstData;
    if (heading.firstData == head.lines.size()) return heading;
    heading.line = headerLine(head.lines[heading.firstData].text, separator, request.encoding);
    if (heading.line) {
      ++heading.firstData;
    } else if (const NumberedLine* comment = commentAbove(heading.firstData)) {
      heading.line = commentHeading(comment->text, head.lines[heading.firstData].text, separator);
      heading.isComment = heading.line.has_value();
    }
    return heading;
  }

  /// The comment directly above the data: all of the head's lines before those are comments, too.
  const NumberedLine* commentAbove(std::size_t firstData) const {
    const NumberedLine* above = firstData > 0 ? &head.lines[firstData - 1] : nullptr;
    if (!head.comment || head.comment->number > head.lines[firstData].number) return above;
    return above && above->number > head.comment->number ? above : &*head.comment;
  }

  /// A comment is a header only when it names all that is needed, one word for each field below it.
  std::optional<HeaderLine> commentHeading(const std::string& comment, const std::string& data,
                                           Separator separator) const {
    FieldList fields;
    if (splitFields(data, separator, fields) != QuoteTrouble::none) return std::nullopt;
    for (const std::string& text : {withoutMark(comment), comment}) {
      for (const Separator divider : headingDividers) {
        const auto line = headerLine(text, divider, request.encoding);
        if (!line || line->words.size() != fields.size()) continue;
        if (!std::holds_alternative<Columns>(columnsOfHeader(line->words))) continue;
        if (text != comment || mayStandAbove(line->words.front(), divider, fields)) return line;
      }
    }
    return std::nullopt;
  }

  std::vector<Trial> trialsOf(Separator separator) {
    const Heading heading = headingOf(separator);
    const std::vector<std::string> words = heading.line ? heading.line->words : std::vector<std::string>();
    if (!request.columns && !heading.line) return plainTrials(separator, heading);
    const auto columns = request.columns ? requestedColumns(*request.columns, words) : columnsOfHeader(words);
    if (const auto* fault = std::get_if<ColumnsFault>(&columns)) {
      noteColumnsFault(*fault, heading);
      return {};
    }
    if (heading.line && heading.firstData == head.lines.size()) noteLoneHeader(heading);
    return trialsWith(separator, heading, std::get<Columns>(columns), true);
  }

  void noteLoneHeader(const Heading& heading) {
    loneHeader = NoReading();
    loneHeader->line = head.lines[heading.firstData - 1].number;
  }

  void noteColumnsFault(const ColumnsFault& fault, const Heading& heading) {
    if (fault.trouble == ColumnsTrouble::doubled && heading.line && !heading.isComment && !contradictoryHeader) {
      contradictoryHeader.emplace();
      contradictoryHeader->none.kind = NoReading::Kind::columns;
      contradictoryHeader->none.columns = fault;
      contradictoryHeader->none.line = head.lines[heading.firstData - 1].number;
    }
    if (columnsFault && columnsFault->columns.trouble != ColumnsTrouble::wordNotInHeader) return;
    columnsFault = NoReading();
    columnsFault->kind = NoReading::Kind::columns;
    columnsFault->columns = fault;
    if (heading.line && !heading.isComment) columnsFault->line = head.lines[heading.firstData - 1].number;
  }

  /// Without a header: each number of fields that a line has, as far as it tells what they hold.
  std::vector<Trial> plainTrials(Separator separator, const Heading& heading) {
    std::set<std::size_t> counts;
    FieldList fields;
    for (std::size_t i = heading.firstData; i < head.lines.size(); ++i) {
      if (!isText(i, separator) || splitFields(head.lines[i].text, separator, fields) != QuoteTrouble::none) continue;
      counts.insert(fields.sizeWithoutEmptyEnd());
      noteCount(i, fields.sizeWithoutEmptyEnd());
    }
    std::vector<Trial> trials;
    for (const std::size_t count : counts) {
      for (const std::vector<ColumnRole>& roles : plainColumns(count)) {
        for (Trial& trial : trialsWith(separator, heading, {roles, false}, false)) trials.push_back(std::move(trial));
      }
    }
    return trials;
  }

  static std::vector<std::vector<ColumnRole>> plainColumns(std::size_t count) {
    constexpr auto name = ColumnRole::name;
    constexpr auto x = ColumnRole::x;
    constexpr auto y = ColumnRole::y;
    constexpr auto z = ColumnRole::z;
    constexpr auto weight = ColumnRole::weight;
    switch (count) {
      case 3:
        return {{x, y, z}};
      case 4:
        return {{name, x, y, z}, {x, y, z, weight}};
      case 5:
        return {{name, x, y, z, weight}};
      default:
        return {};
    }
  }

  /// The first line under the first separator that divides it at all says how many fields there are.
  void noteCount(std::size_t line, std::size_t count) {
    if (firstCount.count >= 2 || (firstCount.count == 1 && count < 2)) return;
    firstCount.count = count;
    firstCount.line = head.lines[line].number;
  }

  std::vector<Trial> trialsWith(Separator separator, const Heading& heading, const Columns& columns, bool isKnown) {
    std::vector<Trial> trials;
    for (const DecimalMark decimal : decimals(request)) {
      Trial trial;
      trial.isKnown = isKnown;
      trial.candidate.lines = {separator, decimal, columns};
      trial.candidate.firstData = heading.isComment ? 0 : heading.firstData;
      if (heading.line) {
        trial.candidate.header = heading.line->words;
        trial.candidate.headerEncoding = heading.line->encoding;
        trial.candidate.headerIsComment = heading.isComment;
      }
      carryOut(trial);
      trials.push_back(std::move(trial));
    }
    return trials;
  }

  void carryOut(Trial& trial) const {
    PointLine reader(trial.candidate.lines);
    for (std::size_t i = trial.candidate.firstData; i < head.lines.size(); ++i) {
      if (!isText(i, trial.candidate.lines.separator)) continue;
      ++trial.lines;
      SurveyPoint point;
      auto fault = reader.read(head.lines[i].text, point);
      trial.lacksFields = trial.lacksFields || (fault && lacksFields(trial, reader, *fault));
      trial.hasEmptyEnd =
          trial.hasEmptyEnd || (!fault && reader.fieldCount() > trial.candidate.lines.columns.roles.size());
      trial.rightCounts += !fault || fault->kind != ReadingFaultKind::fieldCount;
      if (!fault) {
        trial.points.push_back(std::move(point));
      } else if (!trial.firstFault) {
        fault->line = head.lines[i].number;
        trial.firstFault = std::move(fault);
      }
    }
  }

  /// Too few of them, where a header of as many words is divided alike; or an empty one.
  static bool lacksFields(const Trial& trial, const PointLine& reader, const ReadingFault& fault) {
    if (fault.kind == ReadingFaultKind::notANumber) return fault.found.empty();
    if (fault.kind != ReadingFaultKind::fieldCount || trial.candidate.header.empty()) return false;
    return reader.fieldCount() > 1 && reader.fieldCount() < trial.candidate.lines.columns.roles.size();
  }

  static FoundReadings different(std::vector<Trial> trials) {
    FoundReadings found;
    std::vector<const Trial*> kept;
    for (const Trial& trial : trials) {
      if (std::any_of(kept.begin(), kept.end(), [&](const Trial* other) { return isSame(*other, trial); })) continue;
      kept.push_back(&trial);
      found.candidates.push_back(trial.candidate);
      if (!trial.isKnown && hasColumn(trial.candidate.lines.columns, ColumnRole::weight)) {
        found.candidates.push_back(withoutWeight(trial.candidate));
      }
      if (!trial.isKnown && trial.hasEmptyEnd && trial.candidate.lines.columns.roles.size() == fewestColumns) {
        found.candidates.push_back(withName(trial.candidate));
      }
    }
    return found;
  }

  /// What nobody calls a weight may as well be a standard deviation.
  static CandidateReading withoutWeight(CandidateReading candidate) {
    std::vector<ColumnRole>& roles = candidate.lines.columns.roles;
    std::replace(roles.begin(), roles.end(), ColumnRole::weight, ColumnRole::skipped);
    return candidate;
  }

  /// Three numbers and an empty field may as well be numbers of points without a height.
  static CandidateReading withName(CandidateReading candidate) {
    std::vector<ColumnRole>& roles = candidate.lines.columns.roles;
    roles.insert(roles.begin(), ColumnRole::name);
    return candidate;
  }

  FoundReadings bestPartial() const {
    const auto isWorse = [](const Trial& a, const Trial& b) {
      return std::pair(a.points.size(), a.rightCounts) < std::pair(b.points.size(), b.rightCounts);
    };
    // The first of the best, in the order of the tiers.
    const auto best = std::max_element(partial.begin(), partial.end(), isWorse);
    FoundReadings found;
    if (best != partial.end() && best->lines > 0) {
      const bool isLikely = best->isKnown || (!best->points.empty() && 2 * best->points.size() >= best->lines);
      if (isLikely) {
        found.candidates.push_back(best->candidate);
        return found;
      }
    }
    found.none = whyNone(best == partial.end() ? nullptr : &*best);
    return found;
  }

  NoReading whyNone(const Trial* best) const {
    if (columnsFault) return *columnsFault;
    if (loneHeader) return *loneHeader;
    NoReading none = firstCount;
    if (none.count == 0) return NoReading();
    none.kind = none.count < fewestColumns ? NoReading::Kind::tooFewFields : NoReading::Kind::tooManyFields;
    if (none.count < fewestColumns || none.count > mostColumns || !best || !best->firstFault) return none;
    none.kind = NoReading::Kind::nothingFits;
    none.fault = *best->firstFault;
    none.line = none.fault.line;
    none.count = 0;
    return none;
  }

  const FileHead& head;
  const ReadingRequest& request;
  std::vector<Trial> partial;
  std::optional<NoReading> columnsFault;
  /// Two of its words claim to be the same column.
  std::optional<FoundReadings> contradictoryHeader;
  std::optional<NoReading> loneHeader;
  NoReading firstCount;
};

}  // namespace

FoundReadings findReadings(const FileHead& head, const ReadingRequest& request) { return Finder(head, request).find(); }

}  // namespace tiepoint::workbench
