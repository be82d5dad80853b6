#include "workbench/survey/file_survey.h"

#include <gmock/gmock.h>
#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "workbench/report/refusal_text.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

class FileSurveyTest : public testing::Test {
 protected:
  std::string fileOf(const std::string& bytes) {
    std::string path = folder.file("points.txt");
    writeBytes(path, bytes);
    return path;
  }
  /// The error of a survey that must fail.
  static std::string complaint(const std::string& path) {
    try {
      surveyFile(path);
    } catch (const Refused& refused) {
      EXPECT_EQ(refusalClass(refused.refusal().kind), RefusalClass::file);
      return refusalText(refused.refusal());
    }
    return "nothing";
  }

  TemporaryFolder folder;
};

TEST_F(FileSurveyTest, LinesAreCountedAsGetlineDoes) {
  EXPECT_EQ(surveyFile(fileOf("a\nb\n")).lines, 2u);
  EXPECT_EQ(surveyFile(fileOf("a\nb")).lines, 2u);
  EXPECT_EQ(surveyFile(fileOf("a\n\n")).lines, 2u);
  EXPECT_EQ(surveyFile(fileOf("\n")).lines, 1u);
}

TEST_F(FileSurveyTest, ACommentStandsFirstInItsLine) {
  for (const char* bytes : {"#", "P1 1 2 3\n \t# away\n", "P1 1 2 3\r#P2 4 5 6\r"}) {
    EXPECT_TRUE(surveyFile(fileOf(bytes)).hasComments) << bytes;
  }
  for (const char* bytes : {"P#1 1 2 3\n", "P1 1 2 3 # away\n"})
    EXPECT_FALSE(surveyFile(fileOf(bytes)).hasComments) << bytes;
}

TEST_F(FileSurveyTest, ACommaBetweenDigitsMayBeADecimalOneBesideOtherSeparators) {
  for (const char* bytes : {"1;2;3,5\n", "1,5 2 3\n", "1\t2,5\t3\n", "P1,1,2,3\nP2 1 2 3\n"}) {
    EXPECT_TRUE(surveyFile(fileOf(bytes)).mayHoldDecimalCommas) << bytes;
  }
  for (const char* bytes : {"P1,1,2,3\n", " P1,1,2,3 \r\n", "1, 2, 3, 4\n", "1 ,2 ,3\n", "P1;1;2;3\n"}) {
    EXPECT_FALSE(surveyFile(fileOf(bytes)).mayHoldDecimalCommas) << bytes;
  }
}

TEST_F(FileSurveyTest, AnEmptyFieldStandsBetweenTwoMarks) {
  for (const char* bytes : {"P1,1,,2\n", "P1; ;1;2\n", "P1,;1 2 3\n"}) {
    EXPECT_TRUE(surveyFile(fileOf(bytes)).mayHoldEmptyFields) << bytes;
  }
  for (const char* bytes : {"P1,1,\n,2\n", "P1  1\t\t2 3\n"}) {
    EXPECT_FALSE(surveyFile(fileOf(bytes)).mayHoldEmptyFields) << bytes;
  }
}

TEST_F(FileSurveyTest, QuotesAreSeenAnywhere) {
  EXPECT_TRUE(surveyFile(fileOf("P1 1 2 3\n\"P 2\" 1 2 3")).hasQuotes);
  EXPECT_FALSE(surveyFile(fileOf("P'1 1 2 3\n")).hasQuotes);
}

TEST_F(FileSurveyTest, TheLastLineWithTextIsFoundBehindBlankOnes) {
  EXPECT_EQ(surveyFile(fileOf("a\n \t\r\nb\n\n  \n")).lastLineWithText, 3u);
  EXPECT_EQ(surveyFile(fileOf("\n \n")).lastLineWithText, 0u);
}

TEST_F(FileSurveyTest, ByteOrderMarksAreSeen) {
  EXPECT_EQ(surveyFile(fileOf("\xEF\xBB\xBFP1 0 0 0\n")).mark, ByteOrderMark::utf8);
  EXPECT_EQ(surveyFile(fileOf("\xFF\xFEP")).mark, ByteOrderMark::utf16);
  EXPECT_EQ(surveyFile(fileOf("P1 0 0 0\n")).mark, ByteOrderMark::none);
}

TEST_F(FileSurveyTest, Utf8IsToldFromOneBytePerCharacter) {
  EXPECT_TRUE(surveyFile(fileOf("\xD0\x9F"
                                "1 0 0 0\n"))
                  .isUtf8BeyondAscii);
  EXPECT_FALSE(surveyFile(fileOf("\xCF"
                                 "1 0 0 0\n"))
                   .isUtf8BeyondAscii)
      << "windows-1251";
  EXPECT_FALSE(surveyFile(fileOf("P1 0 0 0\n")).isUtf8BeyondAscii) << "ASCII";
  EXPECT_FALSE(surveyFile(fileOf("P1 0 0 0\n\xD0")).isUtf8BeyondAscii) << "cut short";
}

TEST_F(FileSurveyTest, ALineIsFoundByItsNumber) {
  const std::string path = fileOf("first\nsecond\r\nthird");
  EXPECT_EQ(lineOfFile(path, 1), "first");
  EXPECT_EQ(lineOfFile(path, 2), "second\r");
  EXPECT_EQ(lineOfFile(path, 3), "third");
  EXPECT_EQ(lineOfFile(path, 4), "");
}

TEST_F(FileSurveyTest, OfAnEndlessLineOnlyTheBeginningIsKept) {
  EXPECT_EQ(lineOfFile(fileOf(std::string(1000000, 'x')), 1).size(), 4096u);
}

TEST_F(FileSurveyTest, WhatCantBeReadIsNamed) {
  EXPECT_EQ(complaint(folder.file("none.txt")), folder.file("none.txt") + ": there is no such file");
  EXPECT_EQ(complaint(folder.file("")), folder.file("") + ": this is a folder; name the files in it");
  EXPECT_EQ(complaint(fileOf("")), folder.file("points.txt") + ": the file is empty");
  EXPECT_EQ(complaint("bad\xFF.txt"), "bad?.txt: the file's name isn't UTF-8 text; rename the file");
}

// Windows keeps no pipes among its files.
#ifndef _WIN32
TEST_F(FileSurveyTest, APipeIsNoPlainFile) {
  const std::string pipe = folder.file("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(complaint(pipe), pipe + ": this isn't a plain file; save the points to one");
}
#endif

}  // namespace
}  // namespace tiepoint::workbench
