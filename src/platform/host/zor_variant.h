// A value of the host's profile.
#pragma once

#include <cmath>
#include <cstdlib>
#include <cwchar>
#include <limits>
#include <string>
#include <variant>

/// Thrown by the casts of CZorVariant for a value that can't be converted.
struct CZorVariantBadCast {};

/// Nothing, a number, or a text. The casts convert between numbers, and from a text that is a
/// number as a whole; whole-number casts cut towards zero and refuse what is out of range.
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

  static double parse(const std::wstring& text) {
    const wchar_t* begin = text.c_str();
    wchar_t* end = nullptr;
    const double value = std::wcstod(begin, &end);
    if (end == begin || end != begin + text.size()) throw CZorVariantBadCast{};
    return value;
  }

  std::variant<std::monostate, int, double, std::wstring> content;
};
