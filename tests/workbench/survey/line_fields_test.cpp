#include "workbench/survey/line_fields.h"

#include <gmock/gmock.h>

#include "workbench/survey/refusal_of.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::Optional;

std::optional<std::vector<std::string>> fields(const std::string& line) { return fieldsOfLine(line, 1); }

TEST(NumberOfText, IsTheWholeOfAFiniteNumber) {
  EXPECT_EQ(numberOfText("-0.5"), -0.5);
  EXPECT_EQ(numberOfText("+0.5"), 0.5);
  EXPECT_EQ(numberOfText("1e-9"), 1e-9);
  EXPECT_EQ(numberOfText(".5"), 0.5);
  for (const char* text : {"", "+", "+-1", "++1", " 1", "1 ", "1x", "0,5", "nan", "inf", "-inf", "1e999", "0x1"}) {
    EXPECT_EQ(numberOfText(text), std::nullopt) << "'" << text << "'";
  }
}

TEST(FieldsOfLine, StandBetweenAnyRunOfSeparators) {
  EXPECT_THAT(fields("T1 1\t2;3"), Optional(ElementsAre("T1", "1", "2", "3")));
  EXPECT_THAT(fields("T1,,;1 ;2\t,3"), Optional(ElementsAre("T1", "1", "2", "3")));
}

TEST(FieldsOfLine, KeepANameInQuotationMarksWhole) {
  EXPECT_THAT(fields("\"plant hall; east\" 1"), Optional(ElementsAre("plant hall; east", "1")));
  EXPECT_THAT(fields("\"the \"\"new\"\" hall\" 1"), Optional(ElementsAre("the \"new\" hall", "1")));
  EXPECT_THAT(fields("\"\" 1"), Optional(ElementsAre("", "1")));
  EXPECT_THAT(fields("5\"x 1"), Optional(ElementsAre("5\"x", "1")));
}

TEST(FieldsOfLine, AreNoneWhereQuotationMarksDontClose) {
  EXPECT_EQ(fields("\"plant hall 1"), std::nullopt);
  EXPECT_EQ(fields("\"plant\"hall 1"), std::nullopt);
}

TEST(FieldsOfLine, AreNoneWhereACommaMayBeADecimalMark) {
  for (const char* line : {"T1 1,5 2 3", "T1;1,5;2,5;3,5", "T1\t1 2,5 3", "T1 1 2 3,5"}) {
    EXPECT_EQ(fields(line), std::nullopt) << line;
  }
}

TEST(FieldsOfLine, MayAllBeDividedByCommas) {
  EXPECT_THAT(fields("T1,1,2,3"), Optional(ElementsAre("T1", "1", "2", "3")));
  EXPECT_THAT(fields("T1, 1, 2, 3"), Optional(ElementsAre("T1", "1", "2", "3")));
  EXPECT_THAT(fields("T1 1,2,3"), Optional(ElementsAre("T1", "1", "2", "3")));
}

TEST(FieldsOfLine, DivideANameAndANumberAsTheyLike) {
  EXPECT_THAT(fields("7,1 2 3"), Optional(ElementsAre("7", "1", "2", "3")));
  EXPECT_THAT(fields("\"7,5\" 1 2 3"), Optional(ElementsAre("7,5", "1", "2", "3")));
  EXPECT_EQ(fieldsOfLine("7,1 2 3", 0), std::nullopt);
}

TEST(CutLastField, LeavesWhatStandsBeforeIt) {
  std::string line = "plant  hall; 0.5 ";
  EXPECT_EQ(cutLastField(line), "0.5");
  EXPECT_EQ(line, "plant  hall");
}

/// A file of its own for one test.
class LinesOfAFile : public testing::Test {
 protected:
  /// "NUMBER:LINE" of each.
  std::vector<std::string> lines(const std::string& bytes, Quotes quotes = Quotes::enclosing) {
    writeBytes(file.path, bytes);
    std::vector<std::string> taken;
    forEachLine(file, quotes, [&](const std::string& line, std::uint64_t number) {
      taken.push_back(std::to_string(number) + ":" + line);
    });
    return taken;
  }

  const TemporaryFolder folder;
  const LineFile file{folder.file("lines.txt"), Field::carryFile, RefusalKind::carryLine};
};

TEST_F(LinesOfAFile, AreThoseThatHoldAnything) {
  EXPECT_THAT(lines("# all\n\n a 1 # one\r\n,;\t\n;b 2;\n"), ElementsAre("3:a 1", "5:b 2"));
}

TEST_F(LinesOfAFile, EndAtEveryLineEnd) { EXPECT_THAT(lines("a\r\nb\rc\nd"), ElementsAre("1:a", "2:b", "3:c", "4:d")); }

TEST_F(LinesOfAFile, BeginBehindAByteOrderMark) {
  EXPECT_THAT(lines("\xEF\xBB\xBF"
                    "a 1\n"),
              ElementsAre("1:a 1"));
}

TEST_F(LinesOfAFile, MayBeUtf16) {
  EXPECT_THAT(lines(std::string("\xFF\xFE\x17\x04 \0001\0\n\0", 10)), ElementsAre("1:З 1"));
}

TEST_F(LinesOfAFile, HaveNoCommentWithinQuotationMarks) {
  EXPECT_THAT(lines("\"a # b\" 1 # c\n"), ElementsAre("1:\"a # b\" 1"));
  EXPECT_THAT(lines("\"a\"\"#b\" 1 # c\n"), ElementsAre("1:\"a\"\"#b\" 1"));
  EXPECT_THAT(lines("a\"b 1 # c\"\n"), ElementsAre("1:a\"b 1")) << "a mark within a name encloses nothing";
  EXPECT_THAT(lines("\"a # b\" 1\n", Quotes::ordinary), ElementsAre("1:\"a"));
}

TEST_F(LinesOfAFile, AreUtf8) {
  const Refusal refusal = refusalOf([&] { lines("a 1\n\xE7\xE0\xEB 2\n"); });
  EXPECT_EQ(refusal.kind, RefusalKind::carryLine);
  EXPECT_EQ(refusal.field, Field::carryFile);
  EXPECT_EQ(refusal.given, file.path);
  EXPECT_EQ(refusal.count, 2u);
  EXPECT_EQ(refusal.cause, "the byte 0xE7 at offset 0 isn't UTF-8");
}

TEST_F(LinesOfAFile, HaveTheirCommentsInAnyEncoding) { EXPECT_THAT(lines("a 1 # \xE7\n"), ElementsAre("1:a 1")); }

TEST_F(LinesOfAFile, ThatCantBeReadAreRefusedForItsField) {
  const auto refused = [&](const std::string& path) {
    return refusalOf([&] { forEachLine({path, Field::controlFile, RefusalKind::controlLine}, Quotes::ordinary, {}); });
  };
  EXPECT_EQ(refused(folder.file("none.txt")).kind, RefusalKind::fileMissing);
  EXPECT_EQ(refused(folder.file("none.txt")).field, Field::controlFile);
  EXPECT_EQ(refused(folder.file("")).kind, RefusalKind::fileIsFolder);
  writeBytes(file.path, "");
  EXPECT_EQ(refused(file.path).kind, RefusalKind::fileEmpty);
}

TEST_F(LinesOfAFile, ArentCutShort) {
  const std::string tooLong(3u << 20, 'a');
  const Refusal refusal = refusalOf([&] { lines("a 1\n" + tooLong + "\n"); });
  EXPECT_EQ(refusal.kind, RefusalKind::lineTooLong);
  EXPECT_EQ(refusal.field, Field::carryFile);
  const Refusal shorter = refusalOf([&] { lines("a 1\n" + tooLong.substr(0, (1u << 20) + 1) + "\n"); });
  EXPECT_EQ(shorter.kind, RefusalKind::lineTooLong);
  EXPECT_EQ(shorter.count, 2u);
}

}  // namespace
}  // namespace tiepoint::workbench
