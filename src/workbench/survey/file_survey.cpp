#include "workbench/survey/file_survey.h"

#include <array>
#include <boost/filesystem.hpp>
#include <boost/filesystem/fstream.hpp>
#include <cerrno>
#include <cstring>
#include <memory>

#include "workbench/io/text_encoding.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

namespace fs = boost::filesystem;

namespace {

constexpr std::size_t pieceSize = 1u << 16;
constexpr std::size_t longestExcerpt = 4096;
/// In UTF-16 a line has twice the bytes.
constexpr std::size_t longestByteLine = 2 * longestLine;

[[noreturn]] void refuse(RefusalKind kind, const std::string& path, const std::string& cause = {}) {
  Refusal refusal{kind, Field::files, path};
  refusal.cause = cause;
  throw Refused(std::move(refusal));
}

[[noreturn]] void refuseLongLine(const std::string& path, std::uint64_t line) {
  Refusal refusal{RefusalKind::lineTooLong, Field::files, path};
  refusal.count = line;
  throw Refused(std::move(refusal));
}

fs::path nativePath(const std::string& path) {
  try {
    return fs::path(wideFromUtf8(path));
  } catch (const EncodingError&) {
    refuse(RefusalKind::pathNotUtf8, path);
  }
}

/// Follows the bytes of a file and keeps what they tell. White space is that of the classic locale.
class Surveyor {
 public:
  void take(unsigned char byte) {
    if (!lineIsOpen) {
      ++found.lines;
      lineIsOpen = true;
    }
    if (byte == '\n') {
      lineIsOpen = false;
    } else if (!(byte == ' ' || (byte >= '\t' && byte <= '\r'))) {
      found.lastLineWithText = found.lines;
    }
    if (byte >= 0x80 || pendingBytes > 0) takeUtf8(byte);
    found.mayHoldStandIns = found.mayHoldStandIns || (previous == '_' && byte == 'x');
    takeSeparators(byte);
    previous = byte;
    lineLength = byte == '\n' || byte == '\r' ? 0 : lineLength + 1;
    tooLong = tooLong || lineLength > longestByteLine;
  }

  /// A line that nobody is to keep in memory has begun.
  bool isTooLong() const { return tooLong; }

  FileSurvey result() const {
    FileSurvey survey = found;
    survey.isBeyondAscii = beyondAscii;
    survey.mayHoldDecimalCommas = commaBetweenDigits && otherSeparator;
    survey.isUtf8BeyondAscii = beyondAscii && utf8 && pendingBytes == 0;
    return survey;
  }

 private:
  static bool isDigit(unsigned char byte) { return byte >= '0' && byte <= '9'; }

  void takeSeparators(unsigned char byte) {
    const bool isBlank = byte == ' ' || byte == '\t';
    const bool isMark = byte == ',' || byte == ';';
    found.hasQuotes = found.hasQuotes || byte == '"';
    found.hasComments = found.hasComments || (byte == '#' && lastInLine == 0);
    found.mayHoldEmptyFields = found.mayHoldEmptyFields || (isMark && (lastInLine == ',' || lastInLine == ';'));
    commaBetweenDigits = commaBetweenDigits || (isDigit(byte) && previous == ',' && isDigit(beforePrevious));
    // Blanks separate when something follows them that isn't a mark.
    const bool afterBlanks = !isBlank && !isMark && (previous == ' ' || previous == '\t') && lastInLine != 0 &&
                             lastInLine != ',' && lastInLine != ';' && byte != '\n' && byte != '\r';
    otherSeparator = otherSeparator || byte == ';' || afterBlanks;
    beforePrevious = previous;
    if (byte == '\n' || byte == '\r') {
      lastInLine = 0;
    } else if (!isBlank) {
      lastInLine = byte;
    }
  }

  void takeUtf8(unsigned char byte) {
    beyondAscii = true;
    if (pendingBytes > 0) {
      if ((byte & 0xC0u) == 0x80u) {
        --pendingBytes;
      } else {
        utf8 = false;
        pendingBytes = 0;
      }
    } else if (byte >= 0xC2 && byte <= 0xF4) {
      pendingBytes = byte >= 0xF0 ? 3 : (byte >= 0xE0 ? 2 : 1);
    } else {
      utf8 = false;
    }
  }

  FileSurvey found;
  bool lineIsOpen = false;
  bool beyondAscii = false;
  bool utf8 = true;
  int pendingBytes = 0;
  unsigned char previous = 0;
  unsigned char beforePrevious = 0;
  /// Of its line, blanks left out; 0 before the first.
  unsigned char lastInLine = 0;
  bool commaBetweenDigits = false;
  bool otherSeparator = false;
  std::size_t lineLength = 0;
  bool tooLong = false;
};

ByteOrderMark markOf(const std::string& head) {
  if (head.compare(0, 3, "\xEF\xBB\xBF") == 0) return ByteOrderMark::utf8;
  if (head.compare(0, 2, "\xFF\xFE") == 0 || head.compare(0, 2, "\xFE\xFF") == 0) return ByteOrderMark::utf16;
  return ByteOrderMark::none;
}

/// Calls `take` with each piece of the file in turn until it gives false.
template <class Take>
void readPieces(const fs::path& file, const std::string& path, Take take) {
  errno = 0;
  fs::ifstream in(file, std::ios::binary);
  if (!in) refuse(RefusalKind::fileUnreadable, path, errno == 0 ? "" : std::strerror(errno));
  std::array<char, pieceSize> piece;
  do {
    in.read(piece.data(), static_cast<std::streamsize>(piece.size()));
    if (in.bad()) refuse(RefusalKind::fileCutShort, path);
  } while (in.gcount() > 0 && take(std::string_view(piece.data(), static_cast<std::size_t>(in.gcount()))));
}

/// The path of a plain file, or refuses.
fs::path plainFile(const std::string& path) {
  fs::path file = nativePath(path);
  boost::system::error_code error;
  const fs::file_status status = fs::status(file, error);
  if (status.type() == fs::file_not_found) refuse(RefusalKind::fileMissing, path);
  if (status.type() == fs::directory_file) refuse(RefusalKind::fileIsFolder, path);
  if (status.type() == fs::status_error) refuse(RefusalKind::fileUnreadable, path, error.message());
  if (status.type() != fs::regular_file) refuse(RefusalKind::fileNotPlain, path);
  return file;
}

}  // namespace

void requirePlainFile(const std::string& path) { plainFile(path); }

FileSurvey surveyFile(const std::string& path) {
  const fs::path file = plainFile(path);
  Surveyor surveyor;
  std::string head;
  readPieces(file, path, [&](std::string_view piece) {
    if (head.empty()) head = piece.substr(0, 3);
    for (const char c : piece) surveyor.take(static_cast<unsigned char>(c));
    return !surveyor.isTooLong();
  });
  if (head.empty()) refuse(RefusalKind::fileEmpty, path);
  FileSurvey survey = surveyor.result();
  if (surveyor.isTooLong()) refuseLongLine(path, survey.lines);
  survey.mark = markOf(head);
  return survey;
}

ByteSource bytesOfFile(const std::string& path) {
  const fs::path file = plainFile(path);
  errno = 0;
  const auto in = std::make_shared<fs::ifstream>(file, std::ios::binary);
  if (!*in) refuse(RefusalKind::fileUnreadable, path, errno == 0 ? "" : std::strerror(errno));
  return [in, path](char* into, std::size_t size) {
    in->read(into, static_cast<std::streamsize>(size));
    if (in->bad()) refuse(RefusalKind::fileCutShort, path);
    return static_cast<std::size_t>(in->gcount());
  };
}

std::string lineOfFile(const std::string& path, std::uint64_t number) {
  std::string line;
  std::uint64_t current = 1;
  readPieces(plainFile(path), path, [&](std::string_view piece) {
    for (const char c : piece) {
      if (c == '\n') {
        if (current++ == number) return false;
      } else if (current == number && line.size() < longestExcerpt) {
        line += c;
      }
    }
    return current <= number;
  });
  return line;
}

}  // namespace tiepoint::workbench
