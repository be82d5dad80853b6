#include "file_dialog.h"

#include <algorithm>

namespace foreign {

namespace {

constexpr unsigned expectedFlags = 0x206;
const std::vector<std::wstring> expectedLabels = {L"NXYZ", L"XYZ", L"XYZW", L"NXYZW"};

}  // namespace

HostFileDialogAnswer FileDialog::open(const HostFileDialogRequest& request) {
  const auto choose = [&] {
    check(request);
    fillBuffer(request);
    if (whileOpen) whileOpen();
    return HostFileDialogAnswer{true, paths, filterIndex};
  };
  const auto chooseNone = [&] { return HostFileDialogAnswer{true, {}, filterIndex}; };
  return answer("FileDialog::open", choose, chooseNone);
}

void FileDialog::check(const HostFileDialogRequest& request) {
  if (request.title != L"Import reference points") board.complain("the dialog has another title");
  if (request.flags != expectedFlags) board.complain("the dialog has other flags");
  if (!std::equal(request.filters.begin(), request.filters.end(), expectedLabels.begin(), expectedLabels.end(),
                  [](const HostFileFilter& filter, const std::wstring& label) { return filter.label == label; })) {
    board.complain("the dialog has other filters");
  }
}

/// The names one behind the other, each with a null behind it, as many as there is room for.
void FileDialog::fillBuffer(const HostFileDialogRequest& request) const {
  wchar_t* free = request.buffer;
  const wchar_t* const end = request.buffer + request.bufferLength;
  for (const std::wstring& path : paths) {
    if (static_cast<std::size_t>(end - free) <= path.size()) return;
    free = std::copy(path.begin(), path.end(), free);
    *free++ = L'\0';
  }
}

}  // namespace foreign
