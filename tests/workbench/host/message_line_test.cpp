#include "workbench/host/message_line.h"

#include <gmock/gmock.h>

#include <string>

#include "support/platform.h"

namespace tiepoint::workbench {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(MessageLine, FormatsWholeNumbers) {
  MessageLine line;
  line.print(L"Found %d files", 3);
  EXPECT_THAT(line.take(), ElementsAre(L"Found 3 files"));
}

TEST(MessageLine, TakesWideTextForPercentS) {
  MessageLine line;
  line.print(L"file %s, %s", L"\u0416\u20AC", L"b");
  EXPECT_THAT(line.take(), ElementsAre(L"file \u0416\u20AC, b"));
}

TEST(MessageLine, TakesWideTextForPercentSWithWidthAndPrecision) {
  MessageLine line;
  line.print(L"[%5s][%-5s][%.2s][%*s]", L"ab", L"cd", L"xyz", 4, L"ef");
  EXPECT_THAT(line.take(), ElementsAre(L"[   ab][cd   ][xy][  ef]"));
}

TEST(MessageLine, LeavesADoubledPercentSignAlone) {
  MessageLine line;
  line.print(L"100%%s %d%%", 7);
  EXPECT_THAT(line.take(), ElementsAre(L"100%s 7%"));
}

TEST(MessageLine, LeavesConversionsThatNameTheirLengthAlone) {
  MessageLine line;
  line.print(L"%ls %ld %hd", L"wide", 70000L, 12);
  EXPECT_THAT(line.take(), ElementsAre(L"wide 70000 12"));
}

TEST(MessageLine, TurnsPercentSIntoTheFormThatIsWideEverywhere) {
  EXPECT_EQ(portableWideFormat(L"%s %-8.3s %%s %%%s %ls %d %"), L"%ls %-8.3ls %%s %%%ls %ls %d %");
}

TEST(MessageLine, HasRoomForLongMessages) {
  for (std::size_t length : {254u, 255u, 256u, 257u, 100000u}) {
    const std::wstring text(length, L'x');
    MessageLine line;
    line.print(L"%s", text.c_str());
    EXPECT_THAT(line.take(), ElementsAre(text)) << length;
  }
}

TEST(MessageLine, KeepsAnEmptyMessage) {
  MessageLine line;
  line.print(L"");
  EXPECT_THAT(line.take(), ElementsAre(L""));
}

TEST(MessageLine, ShowsTheFormatWhereAnArgumentHasNoText) {
  if (tiepoint::testing::onWindows) GTEST_SKIP() << "every byte has a wide character there";
  MessageLine line;
  line.print(L"<%hs>", "\xFF");
  EXPECT_THAT(line.take(), ElementsAre(L"<%hs>"));
}

TEST(MessageLine, GivesMessagesInOrderAndOnlyOnce) {
  MessageLine line;
  line.print(L"one");
  line.print(L"two\n");
  EXPECT_THAT(line.take(), ElementsAre(L"one", L"two\n"));
  EXPECT_THAT(line.take(), IsEmpty());
}

TEST(MessageLine, TakesANullFormatForNothing) {
  MessageLine line;
  line.print(nullptr);
  EXPECT_THAT(line.take(), IsEmpty());
}

}  // namespace
}  // namespace tiepoint::workbench
