#include "workbench/host/file_dialog.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

HostFileDialogRequest requestWith(std::vector<wchar_t>& buffer) {
  HostFileDialogRequest request;
  request.buffer = buffer.data();
  request.bufferLength = static_cast<unsigned>(buffer.size());
  return request;
}

TEST(PreparedFileDialog, IsCancelledWhenNothingWasPrepared) {
  PreparedFileDialog dialog;
  const HostFileDialogAnswer answer = dialog.open({});
  EXPECT_FALSE(answer.accepted);
  EXPECT_THAT(answer.paths, IsEmpty());
}

TEST(PreparedFileDialog, GivesThePathsInTheirOrderAndTheRowOfTheLayout) {
  PreparedFileDialog dialog;
  dialog.prepare({false, Layout::nxyzw, {"b.txt", "/a/\xD0\x96.txt", "b.txt"}});
  const HostFileDialogAnswer answer = dialog.open({});
  EXPECT_TRUE(answer.accepted);
  EXPECT_EQ(answer.filterIndex, 4);
  EXPECT_THAT(answer.paths, ElementsAre(L"b.txt", L"/a/\u0416.txt", L"b.txt"));
}

TEST(PreparedFileDialog, CountsTheLayoutsFromOne) {
  const std::vector<std::pair<Layout, int>> rows{
      {Layout::nxyz, 1}, {Layout::xyz, 2}, {Layout::xyzw, 3}, {Layout::nxyzw, 4}};
  for (const auto& [layout, row] : rows) {
    PreparedFileDialog dialog;
    dialog.prepare({false, layout, {}});
    EXPECT_EQ(dialog.open({}).filterIndex, row);
  }
}

TEST(PreparedFileDialog, CancelsWhenToldTo) {
  PreparedFileDialog dialog;
  dialog.prepare({true, Layout::xyz, {"a.txt"}});
  const HostFileDialogAnswer answer = dialog.open({});
  EXPECT_FALSE(answer.accepted);
  EXPECT_THAT(answer.paths, IsEmpty());
}

TEST(PreparedFileDialog, ForgetsItsAnswer) {
  PreparedFileDialog dialog;
  dialog.prepare({false, Layout::xyz, {"a.txt"}});
  dialog.forget();
  EXPECT_FALSE(dialog.open({}).accepted);
}

TEST(PreparedFileDialog, PutsThePathsIntoTheBufferBetweenZeros) {
  PreparedFileDialog dialog;
  dialog.prepare({false, Layout::xyz, {"a", "bc"}});
  std::vector<wchar_t> buffer(8, L'#');
  dialog.open(requestWith(buffer));
  EXPECT_EQ(std::wstring(buffer.data(), buffer.size()), std::wstring(L"a\0bc\0\0##", 8));
}

TEST(PreparedFileDialog, GivesAllPathsWhereTheBufferHasRoomForSome) {
  PreparedFileDialog dialog;
  dialog.prepare({false, Layout::xyz, {"a", "bcd"}});
  std::vector<wchar_t> buffer(6, L'#');
  const HostFileDialogAnswer answer = dialog.open(requestWith(buffer));
  EXPECT_THAT(answer.paths, ElementsAre(L"a", L"bcd"));
  EXPECT_EQ(std::wstring(buffer.data(), buffer.size()), std::wstring(L"a\0\0###", 6));
}

TEST(PreparedFileDialog, FillsABufferToItsLastCharacter) {
  PreparedFileDialog dialog;
  dialog.prepare({false, Layout::xyz, {"a", "bcd"}});
  std::vector<wchar_t> buffer(7, L'#');
  dialog.open(requestWith(buffer));
  EXPECT_EQ(std::wstring(buffer.data(), buffer.size()), std::wstring(L"a\0bcd\0\0", 7));
}

TEST(PreparedFileDialog, RefusesPathsThatAreNotUtf8) {
  PreparedFileDialog dialog;
  EXPECT_THROW(dialog.prepare({false, Layout::xyz, {"\xFF"}}), EncodingError);
}

}  // namespace
}  // namespace tiepoint::workbench
