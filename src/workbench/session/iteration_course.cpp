#include "workbench/session/iteration_course.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace tiepoint::workbench {

namespace {

/// The settings stand before everything that is named by users, so the first place is the right one.
constexpr std::wstring_view settings = L"<p>Registration settings</p>";

/// Takes one piece after the other from the front of a text.
class Reader {
 public:
  explicit Reader(std::wstring_view text_) : text(text_) {}

  bool take(std::wstring_view words) {
    if (text.substr(0, words.size()) != words) return false;
    text.remove_prefix(words.size());
    return true;
  }

  /// A number that reaches to the next blank or tag.
  template <class Number>
  bool readNumber(Number& number) {
    const std::wstring_view wide = text.substr(0, text.find_first_of(L" <"));
    if (!std::all_of(wide.begin(), wide.end(), [](wchar_t c) { return c > L' ' && c <= L'~'; })) return false;
    const std::string digits(wide.begin(), wide.end());
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    text.remove_prefix(wide.size());
    return error == std::errc{} && stop == end;
  }

 private:
  std::wstring_view text;
};

}  // namespace

std::optional<IterationCourse> iterationCourse(const std::wstring& resultsReport) {
  const std::size_t begin = resultsReport.find(settings);
  if (begin == std::wstring::npos) return std::nullopt;
  Reader reader(std::wstring_view(resultsReport).substr(begin + settings.size()));
  IterationCourse course;
  const bool read = reader.take(L"<p>actual/preset number iterations: ") && reader.readNumber(course.iterations) &&
                    reader.take(L" / ") && reader.readNumber(course.limit) && reader.take(L"</p>") &&
                    reader.take(L"<p>actual/preset maximum discrepancy: ") && reader.readNumber(course.movement) &&
                    reader.take(L" / ") && reader.readNumber(course.criterion) && reader.take(L"</p>");
  return read ? std::optional(course) : std::nullopt;
}

}  // namespace tiepoint::workbench
