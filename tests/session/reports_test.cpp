#include <gtest/gtest.h>

#include "support/platform.h"
#include "support/session_builder.h"
#include "support/temporary_folder.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

TEST(Reports, OneFormatIsOfferedAsAFilter) {
  Session session;
  std::map<std::uint64_t, std::string> formats{{9, "gone"}};
  session->getReportFormats(formats);
  EXPECT_EQ(formats, (std::map<std::uint64_t, std::string>{{1, "HTML document (*.html)|*.html"}}));
}

TEST(Reports, TheLastDocumentIsSavedAsUtf8WithoutAMark) {
  TemporaryFolder folder;
  Session session({{"\xC0", {{"T1", 1, 2, 3}}}});
  session->getResultsReport();
  session->getGroupsReport({0});
  EXPECT_TRUE(session->saveReport((folder.path() / "report.html").string(), 1));
  const std::string text = folder.textOf("report.html");
  EXPECT_EQ(text.substr(0, 15), "<!DOCTYPE html>");
  EXPECT_NE(text.find("<td>\xD0\x90</td><td>T1<br></td>"), std::string::npos) << text;
  const std::string end = inTextMode("</html>\n");
  EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

// windows-1251 leaves this byte free; in names it is the control character of its number.
TEST(Reports, TheFreeByteOfTheCodePageIsKeptAsItsControlCharacter) {
  TemporaryFolder folder;
  Session session({{"\x98\xC0\x98\x98", {{"T\x98\x31", 1, 2, 3}}}});
  session->getGroupsReport({0});
  EXPECT_TRUE(session->saveReport((folder.path() / "report.html").string(), 1));
  const std::string text = folder.textOf("report.html");
  EXPECT_NE(text.find("<td>\xC2\x98\xD0\x90\xC2\x98\xC2\x98</td><td>T\xC2\x98\x31<br></td>"), std::string::npos)
      << text;
}

TEST(Reports, AnotherFormatIsRefusedAndLeavesNoFile) {
  TemporaryFolder folder;
  Session session;
  EXPECT_FALSE(session->saveReport((folder.path() / "report.html").string(), 0));
  EXPECT_FALSE(session->saveReport((folder.path() / "report.html").string(), 2));
  EXPECT_EQ(folder.fileNames(), std::set<std::string>{});
}

TEST(Reports, BeforeAnyDocumentAnEmptyFileIsWritten) {
  TemporaryFolder folder;
  Session session;
  EXPECT_TRUE(session->saveReport((folder.path() / "report.html").string(), 1));
  EXPECT_EQ(folder.fileNames(), std::set<std::string>{"report.html"});
  EXPECT_EQ(folder.textOf("report.html"), "");
}

TEST(Reports, AFileThatCannotBeOpenedIsNoRefusal) {
  TemporaryFolder folder;
  Session session;
  EXPECT_TRUE(session->saveReport((folder.path() / "missing" / "report.html").string(), 1));
  EXPECT_EQ(folder.fileNames(), std::set<std::string>{});
}

TEST(Reports, ABaseThatTakesNoPartIsBoldAndItalicThroughout) {
  Session session({{"A", {{"T1", 1, 2, 3}}}});
  Outputs out;
  session->setBaseGroups({0}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_NE(session->getPointsReport({0}).find(
                L"<tr><td><b><i>T1</i></b></td><td><b><i>A</i></b></td><td><b><i>1</i></b></td>"
                L"<td><b><i>2</i></b></td><td><b><i>3</i></b></td><td><b><i>-</i></b></td><td><b><i>-</i></b></td>"
                L"<td><b><i>-</i></b></td><td><b><i>-</i></b></td></tr>"),
            std::wstring::npos);
}

TEST(Reports, AnIterativeSolveShowsItsPasses) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3")}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerIterative(50, 0.25, discrepancies));
  const std::wstring report = session->getResultsReport();
  EXPECT_NE(report.find(L"<p>Iterative</p><hr><p>Registration settings</p>"
                        L"<p>actual/preset number iterations: 1 / 50</p>"
                        L"<p>actual/preset maximum discrepancy: "),
            std::wstring::npos);
  EXPECT_NE(report.find(L" / 0.25</p>"), std::wstring::npos);
}

}  // namespace
