#include "workbench/reading/text_lines.h"

#include <algorithm>
#include <array>
#include <boost/locale/utf.hpp>
#include <string_view>
#include <utility>

namespace tiepoint::workbench {

namespace {

constexpr std::size_t pieceSize = 1u << 16;
/// The bytes whose pattern of zeros tells UTF-16 without a mark.
constexpr std::size_t patternSize = 4096;
constexpr char noCharacter = '\xFF';
constexpr char endOfDosFile = '\x1A';

struct Mark {
  std::string_view bytes;
  TextEncoding encoding;
};
constexpr std::array<Mark, 3> marks{{{"\xEF\xBB\xBF", TextEncoding::utf8},
                                     {"\xFF\xFE", TextEncoding::utf16LittleEndian},
                                     {"\xFE\xFF", TextEncoding::utf16BigEndian}}};

bool isWide(std::optional<TextEncoding> encoding) {
  return encoding == TextEncoding::utf16LittleEndian || encoding == TextEncoding::utf16BigEndian;
}

/// UTF-16 of lines of numbers: digits and separators are most of the text, so that two bytes in five
/// at least are zeros on one side of the units, and hardly one on the other.
std::optional<TextEncoding> wideByPattern(std::string_view head) {
  const std::size_t units = std::min(head.size(), patternSize) / 2;
  std::array<std::size_t, 2> zeros{};
  for (std::size_t i = 0; i < 2 * units; ++i) zeros[i % 2] += head[i] == '\0';
  const auto isSide = [&](std::size_t side) { return 5 * zeros[side] >= 2 * units && 10 * zeros[1 - side] < units; };
  if (units == 0 || (zeros[0] == 0 && zeros[1] == 0)) return std::nullopt;
  if (isSide(1)) return TextEncoding::utf16LittleEndian;
  if (isSide(0)) return TextEncoding::utf16BigEndian;
  return std::nullopt;
}

bool isHigh(unsigned unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLow(unsigned unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

TextLines::TextLines(ByteSource source_, std::optional<TextEncoding> said) : source(std::move(source_)), known(said) {}

/// Takes the mark off, and settles whether the text is UTF-16.
void TextLines::beginFile() {
  begun = true;
  std::string head(patternSize, '\0');
  std::size_t size = 0;
  while (size < patternSize) {
    const std::size_t count = source(head.data() + size, patternSize - size);
    if (count == 0) break;
    size += count;
  }
  head.resize(size);
  empty = head.empty();
  std::string_view rest = head;
  for (const Mark& mark : marks) {
    if (rest.substr(0, mark.bytes.size()) != mark.bytes) continue;
    contradiction = known && *known != mark.encoding;
    known = mark.encoding;
    markFound = true;
    rest.remove_prefix(mark.bytes.size());
    break;
  }
  if (!known) known = wideByPattern(rest);
  takePiece(rest.data(), rest.size());
}

void TextLines::takePiece(const char* bytes, std::size_t size) {
  if (!isWide(known)) {
    text.append(bytes, size);
    return;
  }
  const bool bigEndian = known == TextEncoding::utf16BigEndian;
  for (std::size_t i = 0; i < size; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if (!halfUnit) {
      halfUnit = byte;
      continue;
    }
    takeUnit(bigEndian ? *halfUnit * 256u + byte : byte * 256u + *halfUnit);
    halfUnit.reset();
  }
}

void TextLines::takeUnit(unsigned unit) {
  using Utf8 = boost::locale::utf::utf_traits<char>;
  if (highSurrogate != 0 && isLow(unit)) {
    Utf8::encode(0x10000 + ((highSurrogate - 0xD800) << 10) + (unit - 0xDC00), std::back_inserter(text));
    highSurrogate = 0;
    return;
  }
  if (highSurrogate != 0) text += noCharacter;
  highSurrogate = isHigh(unit) ? unit : 0;
  if (isHigh(unit)) return;
  if (isLow(unit)) {
    text += noCharacter;
  } else {
    Utf8::encode(unit, std::back_inserter(text));
  }
}

/// What began and never ended is no character.
void TextLines::endOfUnits() {
  if (halfUnit || highSurrogate != 0) text += noCharacter;
  halfUnit.reset();
  highSurrogate = 0;
}

bool TextLines::refill() {
  if (ended) return false;
  text.erase(0, at);
  at = 0;
  std::array<char, pieceSize> piece;
  const std::size_t count = source(piece.data(), piece.size());
  if (count == 0) {
    ended = true;
    endOfUnits();
    return !text.empty();
  }
  takePiece(piece.data(), count);
  return true;
}

void TextLines::finishLast(std::string& line) {
  if (!line.empty() && line.back() == endOfDosFile) line.pop_back();
}

bool TextLines::next(std::string& line) {
  line.clear();
  if (!begun) beginFile();
  if (tooLong) return false;
  while (true) {
    if (at == text.size() && !refill()) {
      finishLast(line);
      if (!line.empty()) ++lineNumber;
      return !line.empty();
    }
    if (std::exchange(afterCarriageReturn, false) && at < text.size() && text[at] == '\n') {
      ++at;
      continue;
    }
    const std::size_t end = std::min(text.find_first_of("\r\n", at), text.size());
    line.append(text, at, end - at);
    at = end;
    if (line.size() > longestLine) {
      tooLong = true;
      ++lineNumber;
      return false;
    }
    if (at == text.size()) continue;
    afterCarriageReturn = text[at++] == '\r';
    ++lineNumber;
    return true;
  }
}

}  // namespace tiepoint::workbench
