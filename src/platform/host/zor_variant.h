// A value of the host's profile.
#pragma once

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>
#include <utility>
#include <variant>

/// Thrown by the casts of CZorVariant for a value that can't be converted.
struct CZorVariantBadCast {};

/// Nothing, a number, or a text. The casts convert between numbers, and from a text that is a number
/// as a whole (digits, a minus, a point, an exponent; "nan", "inf" and "infinity" in any case);
/// whole-number casts cut towards zero and refuse what is out of range.
class CZorVariant {
 public:
  CZorVariant() = default;

  void set(int value) { content = value; }
  void set(double value) { content = value; }
  void set(std::wstring value) { content = std::move(value); }
  void clear() { content = std::monostate{}; }
  bool isEmpty() const { return std::holds_alternative<std::monostate>(content); }

  operator double() const {
    if (const int* whole = std::get_if<int>(&content)) return *whole;
    if (const double* real = std::get_if<double>(&content)) return *real;
    if (const std::wstring* text = std::get_if<std::wstring>(&content)) return parse(*text);
    throw CZorVariantBadCast{};
  }
  operator int() const { return whole<int>(); }
  operator unsigned int() const { return whole<unsigned int>(); }

 private:
  template <class Whole>
  Whole whole() const {
    const double cut = std::trunc(static_cast<double>(*this));
    if (!(cut >= static_cast<double>(std::numeric_limits<Whole>::min()) &&
          cut <= static_cast<double>(std::numeric_limits<Whole>::max()))) {
      throw CZorVariantBadCast{};
    }
    return static_cast<Whole>(cut);
  }

  /// The decimal point is a point whatever the locale.
  static double parse(const std::wstring& text) {
    std::string digits;
    for (const wchar_t character : text) {
      if (character <= 0x20 || character >= 0x7F) throw CZorVariantBadCast{};
      digits.push_back(static_cast<char>(character));
    }
    double value = 0.0;
    const char* const end = digits.data() + digits.size();
    const std::from_chars_result result = std::from_chars(digits.data(), end, value);
    if (result.ec != std::errc{} || result.ptr != end) throw CZorVariantBadCast{};
    return value;
  }

  std::variant<std::monostate, int, double, std::wstring> content;
};
