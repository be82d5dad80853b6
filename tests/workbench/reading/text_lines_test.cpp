#include "workbench/reading/text_lines.h"

#include <gmock/gmock.h>

#include <vector>

#include "workbench/reading/byte_sources.h"

namespace {

using namespace tiepoint::workbench;
using testing::ElementsAre;
using testing::IsEmpty;
using tiepoint::testing::bytesInPieces;
using tiepoint::testing::wideBytes;
using Lines = std::vector<std::string>;

Lines linesOf(const std::string& bytes, std::size_t piece = 1u << 16) {
  TextLines lines(bytesInPieces(bytes, piece), std::nullopt);
  Lines all;
  for (std::string line; lines.next(line);) all.push_back(line);
  return all;
}

TEST(TextLines, EndAtEveryLineEndInAnyMixture) {
  for (const std::size_t piece : {1u, 2u, 3u, 100u}) {
    EXPECT_THAT(linesOf("a\nb\r\nc\rd", piece), ElementsAre("a", "b", "c", "d")) << piece;
    EXPECT_THAT(linesOf("a\r\r\nb\n\nc\n", piece), ElementsAre("a", "", "b", "", "c")) << piece;
  }
}

TEST(TextLines, AreCountedFromOne) {
  TextLines lines(bytesInPieces("a\r\n\r\nb"), std::nullopt);
  std::string line;
  ASSERT_TRUE(lines.next(line));
  EXPECT_EQ(lines.number(), 1u);
  ASSERT_TRUE(lines.next(line));
  ASSERT_TRUE(lines.next(line));
  EXPECT_EQ(line, "b");
  EXPECT_EQ(lines.number(), 3u);
  EXPECT_FALSE(lines.next(line));
  EXPECT_EQ(lines.number(), 3u);
}

TEST(TextLines, TakeTheMarkOff) {
  TextLines lines(bytesInPieces("\xEF\xBB\xBF"
                                "a"),
                  std::nullopt);
  std::string line;
  ASSERT_TRUE(lines.next(line));
  EXPECT_EQ(line, "a");
  EXPECT_TRUE(lines.hasMark());
  EXPECT_EQ(lines.encoding(), TextEncoding::utf8);
}

TEST(TextLines, AreUtf8OfUtf16) {
  const std::string little = "\xFF\xFE" + wideBytes("P1 ") + std::string("\x22\x04\x3D\xD8\x00\xDE\n\0", 8);
  EXPECT_THAT(linesOf(little, 1), ElementsAre("P1 Т\xF0\x9F\x98\x80"));
  EXPECT_THAT(linesOf("\xFE\xFF" + wideBytes("P1\r\nP2\r\n", true)), ElementsAre("P1", "P2"));
}

TEST(TextLines, SeeUtf16WithoutAMark) {
  TextLines little(bytesInPieces(wideBytes("P1 1 2 3\n")), std::nullopt);
  std::string line;
  ASSERT_TRUE(little.next(line));
  EXPECT_EQ(line, "P1 1 2 3");
  EXPECT_EQ(little.encoding(), TextEncoding::utf16LittleEndian);
  TextLines big(bytesInPieces(wideBytes("P1 1 2 3\n", true)), std::nullopt);
  ASSERT_TRUE(big.next(line));
  EXPECT_EQ(line, "P1 1 2 3");
  EXPECT_EQ(big.encoding(), TextEncoding::utf16BigEndian);
}

TEST(TextLines, AreNoUtf16ForOneZeroByte) {
  TextLines lines(bytesInPieces(std::string("P1 1 2\0 3\n", 10)), std::nullopt);
  std::string line;
  ASSERT_TRUE(lines.next(line));
  EXPECT_EQ(line, std::string("P1 1 2\0 3", 9));
  EXPECT_EQ(lines.encoding(), std::nullopt);
}

TEST(TextLines, HoldAByteThatIsNoTextForHalfACharacter) {
  const std::string lone = std::string("\xFF\xFE\x00\xD8", 4) + wideBytes("a");
  EXPECT_THAT(linesOf(lone), ElementsAre("\xFF"
                                         "a"));
  EXPECT_THAT(linesOf(std::string("\xFF\xFE\x00\xDC", 4)), ElementsAre("\xFF"));
  EXPECT_THAT(linesOf("\xFF\xFE" + wideBytes("a") + "b"), ElementsAre("a\xFF"));
}

TEST(TextLines, LeaveOutTheEndOfFileOfDos) {
  EXPECT_THAT(linesOf("a\r\n\x1A"), ElementsAre("a"));
  EXPECT_THAT(linesOf("a\x1A"), ElementsAre("a"));
  EXPECT_THAT(linesOf("a\x1A\nb"), ElementsAre("a\x1A", "b"));
}

TEST(TextLines, OfAnEmptyFileAreNone) {
  TextLines lines(bytesInPieces(""), std::nullopt);
  std::string line;
  EXPECT_FALSE(lines.next(line));
  EXPECT_TRUE(lines.isEmpty());
  EXPECT_THAT(linesOf("\xEF\xBB\xBF"), IsEmpty());
}

TEST(TextLines, MayBeALongestLineLong) {
  EXPECT_EQ(linesOf(std::string(longestLine, 'a') + "\nb").size(), 2u);
  TextLines lines(bytesInPieces("a\n" + std::string(longestLine + 1, 'a') + "\nb"), std::nullopt);
  std::string line;
  ASSERT_TRUE(lines.next(line));
  EXPECT_FALSE(lines.next(line));
  EXPECT_TRUE(lines.isTooLong());
  EXPECT_EQ(lines.number(), 2u);
  EXPECT_FALSE(lines.next(line));
}

// A gigabyte without a line end, of which no more than the longest line is ever read or kept.
TEST(TextLines, StopReadingAFileWithoutLineEnds) {
  std::size_t given = 0;
  const ByteSource endless = [&](char* into, std::size_t size) {
    const std::size_t count = std::min(size, (std::size_t{1} << 30) - given);
    std::fill(into, into + count, '1');
    given += count;
    return count;
  };
  TextLines lines(endless, std::nullopt);
  std::string line;
  EXPECT_FALSE(lines.next(line));
  EXPECT_TRUE(lines.isTooLong());
  EXPECT_LT(given, 2 * longestLine);
  EXPECT_LT(line.capacity(), 4 * longestLine);
}

TEST(TextLines, SayWhenTheMarkContradictsTheUser) {
  TextLines lines(bytesInPieces("\xEF\xBB\xBF"
                                "a"),
                  TextEncoding::windows1251);
  std::string line;
  lines.next(line);
  EXPECT_TRUE(lines.contradictsMark());
}

}  // namespace
