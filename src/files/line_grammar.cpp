// The library's own assertions stay out of this source, in every kind of build: one of them fails on
// a number with some 600 zeros behind its point, and no line of a file may end the host.
#ifndef BOOST_DISABLE_ASSERTS
#define BOOST_DISABLE_ASSERTS
#endif

#include "files/line_grammar.h"

#include <algorithm>
#include <boost/spirit/include/qi.hpp>

namespace ZOR::reg {
namespace {

namespace qi = boost::spirit::qi;

using Iterator = std::string::const_iterator;

// The classic locale's white space. The library's `standard` encoding asks the process's locale
// instead, in which a host may count bytes above 0x7F as blanks; here they belong to names.
const auto& space = boost::spirit::ascii::space;

/// The library's standard number, whose exponent can't run over when the number's digits are counted
/// in. An exponent this far out leaves every line of less than a thousand million digits where it
/// was: out of range, or 0.
struct NumberPolicies : qi::real_policies<double> {
  static constexpr int farthestExponent = 1'000'000'000;

  static bool parse_exp_n(Iterator& first, const Iterator& last, int& exponent) {
    if (!qi::real_policies<double>::parse_exp_n(first, last, exponent)) return false;
    exponent = std::clamp(exponent, -farthestExponent, farthestExponent);
    return true;
  }
};

const qi::real_parser<double, NumberPolicies> number;

/// The elements between which a line is divided, built once.
struct Elements {
  qi::rule<Iterator> separator;
  qi::rule<Iterator, std::string()> name;

  Elements() {
    separator = qi::omit[+(space | qi::char_(",;"))];
    name = +(qi::char_ - (space | qi::char_(",;")));
  }
};

const Elements& elements() {
  static const Elements instance;
  return instance;
}

/// True when the whole line is `fields` with nothing but white space around them.
template <class Fields, class... Values>
bool matchesWholeLine(const std::string& line, const Fields& fields, Values&... values) {
  Iterator first = line.begin();
  return qi::parse(first, line.end(), qi::omit[*space] >> fields >> qi::omit[*space] >> qi::eoi, values...);
}

}  // namespace

bool parseLineNXYZ(const std::string& line, ParsedPoint& point) {
  const auto& [separator, name] = elements();
  point.name.clear();
  if (!matchesWholeLine(line, name >> separator >> number >> separator >> number >> separator >> number, point.name,
                        point.x, point.y, point.z)) {
    return false;
  }
  point.w = 1.0;
  return true;
}

bool parseLineXYZ(const std::string& line, ParsedPoint& point) {
  const auto& separator = elements().separator;
  point.name.clear();
  if (!matchesWholeLine(line, number >> separator >> number >> separator >> number, point.x, point.y, point.z)) {
    return false;
  }
  point.name = "?";
  point.w = 1.0;
  return true;
}

bool parseLineXYZW(const std::string& line, ParsedPoint& point) {
  const auto& separator = elements().separator;
  point.name.clear();
  if (!matchesWholeLine(line, number >> separator >> number >> separator >> number >> separator >> number, point.x,
                        point.y, point.z, point.w)) {
    return false;
  }
  point.name = "?";
  return true;
}

bool parseLineNXYZW(const std::string& line, ParsedPoint& point) {
  const auto& [separator, name] = elements();
  point.name.clear();
  return matchesWholeLine(
      line, name >> separator >> number >> separator >> number >> separator >> number >> separator >> number,
      point.name, point.x, point.y, point.z, point.w);
}

}  // namespace ZOR::reg
