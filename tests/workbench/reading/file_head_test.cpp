#include "workbench/reading/file_head.h"

#include <gtest/gtest.h>

#include "workbench/reading/byte_sources.h"

namespace {

using namespace tiepoint::workbench;
using tiepoint::testing::bytesInPieces;

LookedAt look(const std::string& bytes) {
  TextLines lines(bytesInPieces(bytes), std::nullopt);
  return lookAtHead(lines);
}

std::string linesText(const LookedAt& seen) {
  std::string text;
  for (const NumberedLine& line : seen.head.lines) text += std::to_string(line.number) + ":" + line.text + "|";
  return text;
}

std::string repeated(const std::string& line, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += line;
  return text;
}

TEST(FileHead, KeepsTheLinesThatMayBeDataWithTheirNumbers) {
  const LookedAt seen = look("# a\n\nName X Y Z\n;;\n// b\n; c\n A 1 2 3\n");
  EXPECT_EQ(linesText(seen), "3:Name X Y Z|6:; c|7: A 1 2 3|");
  EXPECT_EQ(seen.commentCount, 2u);
  EXPECT_EQ(seen.blankCount, 2u);
}

TEST(FileHead, KeepsTheLastCommentAboveTheData) {
  const auto comment = [](const std::string& bytes) {
    const auto kept = look(bytes).head.comment;
    return kept ? std::to_string(kept->number) + ":" + kept->text : "none";
  };
  EXPECT_EQ(comment("A 1 2 3\n# a\n"), "none");
  EXPECT_EQ(comment("# a\n# b\n\nA 1 2 3\n# c\n"), "2:# b");
  EXPECT_EQ(comment("# a\n; b\n% c\nA 1 2 3\n# d\n"), "3:% c");
  EXPECT_EQ(comment("; a\n"), "none");
}

TEST(FileHead, TakesTheSeparatorFromTheFirstLineAlone) {
  EXPECT_EQ(look("sep=;\nA;1;2;3\n").head.saidSeparator, Separator::semicolon);
  EXPECT_EQ(look("sep=,\r\nA,1,2,3\n").head.saidSeparator, Separator::comma);
  EXPECT_EQ(look("sep=\t\n").head.saidSeparator, Separator::tab);
  EXPECT_EQ(look("\"sep=;\"\n").head.saidSeparator, Separator::semicolon);
  EXPECT_EQ(look("\xEF\xBB\xBFsep=;\n").head.saidSeparator, Separator::semicolon);
  EXPECT_EQ(look("\nsep=;\n").head.saidSeparator, std::nullopt);
  EXPECT_EQ(look("sep=|\n").head.saidSeparator, std::nullopt);
  EXPECT_EQ(linesText(look("sep=;\nA;1;2;3\n")), "2:A;1;2;3|");
  EXPECT_EQ(linesText(look("A;1;2;3\nsep=;\n")), "1:A;1;2;3|2:sep=;|");
}

TEST(FileHead, EndsAfterAThousandLinesThatMayBeData) {
  TextLines lines(bytesInPieces("# a\n" + repeated("A 1 2 3\n", 1000) + "B 1 2 3\n"), std::nullopt);
  EXPECT_EQ(lookAtHead(lines).head.lines.back().number, 1001u);
  std::string next;
  ASSERT_TRUE(lines.next(next)) << "the rest is left to the reader";
  EXPECT_EQ(next, "B 1 2 3");
}

TEST(FileHead, EndsAfterAQuarterOfAMebibyte) {
  const std::string kibibyte = std::string(1024, 'a') + "\n";
  EXPECT_EQ(look(repeated(kibibyte, 300)).head.lines.size(), 256u);
  EXPECT_EQ(look(repeated("#" + kibibyte, 300)).commentCount, 300u) << "comments don't count";
}

}  // namespace
