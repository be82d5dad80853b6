#include "workbench/host/file_dialog.h"

#include <algorithm>
#include <utility>

#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {

namespace {

void fillBuffer(const std::vector<std::wstring>& paths, const HostFileDialogRequest& request) {
  if (!request.buffer || request.bufferLength == 0) return;
  wchar_t* at = request.buffer;
  const wchar_t* const last = request.buffer + request.bufferLength - 1;
  for (const std::wstring& path : paths) {
    if (path.size() + 1 > static_cast<std::size_t>(last - at)) break;
    at = std::copy(path.begin(), path.end(), at);
    *at++ = L'\0';
  }
  *at = L'\0';
}

}  // namespace

void PreparedFileDialog::prepare(const DialogAnswer& answer) {
  HostFileDialogAnswer next;
  next.accepted = !answer.cancel;
  if (next.accepted) {
    next.filterIndex = static_cast<int>(answer.layout);
    for (const std::string& path : answer.paths) next.paths.push_back(wideFromUtf8(path));
  }
  prepared = std::move(next);
}

HostFileDialogAnswer PreparedFileDialog::open(const HostFileDialogRequest& request) {
  if (!prepared) return {};
  fillBuffer(prepared->paths, request);
  return *prepared;
}

}  // namespace tiepoint::workbench
