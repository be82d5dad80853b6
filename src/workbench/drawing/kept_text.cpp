#include "workbench/drawing/kept_text.h"

#include <cstdint>

#include "platform/sdk/od_error.h"

namespace tiepoint::workbench {
namespace {

constexpr std::uint32_t lastCodePoint = 0x10ffff;
constexpr std::uint32_t firstBeyond16Bits = 0x10000;
constexpr bool unitsHave16Bits = sizeof(wchar_t) == 2;

bool isHighSurrogate(std::uint32_t unit) { return unit >= 0xd800 && unit <= 0xdbff; }
bool isLowSurrogate(std::uint32_t unit) { return unit >= 0xdc00 && unit <= 0xdfff; }

std::uint32_t unitAt(std::wstring_view text, std::size_t i) {
  return static_cast<std::uint32_t>(static_cast<std::make_unsigned_t<wchar_t>>(text[i]));
}

/// Takes one character off the text: two units where a pair of surrogates stands for one.
std::uint32_t decodeCodePoint(std::wstring_view text, std::size_t& i) {
  const std::uint32_t first = unitAt(text, i++);
  if (!unitsHave16Bits || !isHighSurrogate(first) || i == text.size()) return first;
  const std::uint32_t second = unitAt(text, i);
  if (!isLowSurrogate(second)) return first;
  ++i;
  return firstBeyond16Bits + ((first - 0xd800) << 10) + (second - 0xdc00);
}

void append(std::string& bytes, std::uint32_t byte) { bytes.push_back(static_cast<char>(byte)); }

void appendTail(std::string& bytes, std::uint32_t codePoint, int count) {
  for (int shift = 6 * (count - 1); shift >= 0; shift -= 6) append(bytes, 0x80 | ((codePoint >> shift) & 0x3f));
}

void appendBytes(std::string& bytes, std::uint32_t codePoint) {
  if (codePoint > lastCodePoint) throw OdError(eInvalidInput, "a text to be stored has a character beyond Unicode");
  if (codePoint < 0x80) {
    append(bytes, codePoint);
  } else if (codePoint < 0x800) {
    append(bytes, 0xc0 | (codePoint >> 6));
    appendTail(bytes, codePoint, 1);
  } else if (codePoint < firstBeyond16Bits) {
    append(bytes, 0xe0 | (codePoint >> 12));
    appendTail(bytes, codePoint, 2);
  } else {
    append(bytes, 0xf0 | (codePoint >> 18));
    appendTail(bytes, codePoint, 3);
  }
}

void appendUnits(std::wstring& text, std::uint32_t codePoint) {
  if (unitsHave16Bits && codePoint >= firstBeyond16Bits) {
    text.push_back(static_cast<wchar_t>(0xd800 + ((codePoint - firstBeyond16Bits) >> 10)));
    text.push_back(static_cast<wchar_t>(0xdc00 + ((codePoint - firstBeyond16Bits) & 0x3ff)));
  } else {
    text.push_back(static_cast<wchar_t>(codePoint));
  }
}

/// How a sequence begins: how many bytes follow, what the first one brings, and the least number
/// that may be written so.
struct Lead {
  int tail;
  std::uint32_t bits;
  std::uint32_t least;
};

std::optional<Lead> leadOf(std::uint32_t byte) {
  if (byte < 0x80) return Lead{0, byte, 0};
  if (byte >= 0xc0 && byte < 0xe0) return Lead{1, byte & 0x1f, 0x80};
  if (byte >= 0xe0 && byte < 0xf0) return Lead{2, byte & 0x0f, 0x800};
  if (byte >= 0xf0 && byte < 0xf8) return Lead{3, byte & 0x07, firstBeyond16Bits};
  return std::nullopt;
}

std::optional<std::uint32_t> decodeSequence(std::string_view bytes, std::size_t& i) {
  const auto byteAt = [&](std::size_t k) { return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[k])); };
  const std::optional<Lead> lead = leadOf(byteAt(i++));
  if (!lead) return std::nullopt;
  std::uint32_t codePoint = lead->bits;
  for (int k = 0; k < lead->tail; ++k, ++i) {
    if (i == bytes.size() || (byteAt(i) & 0xc0) != 0x80) return std::nullopt;
    codePoint = (codePoint << 6) | (byteAt(i) & 0x3f);
  }
  if (codePoint < lead->least || codePoint > lastCodePoint) return std::nullopt;
  return codePoint;
}

}  // namespace

std::string keptFormOf(std::wstring_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size();) appendBytes(bytes, decodeCodePoint(text, i));
  return bytes;
}

std::optional<std::wstring> textFromKeptForm(std::string_view kept) {
  std::wstring text;
  for (std::size_t i = 0; i < kept.size();) {
    const std::optional<std::uint32_t> codePoint = decodeSequence(kept, i);
    if (!codePoint) return std::nullopt;
    appendUnits(text, *codePoint);
  }
  return text;
}

}  // namespace tiepoint::workbench
