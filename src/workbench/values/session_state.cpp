#include "workbench/values/session_state.h"

#include <algorithm>
#include <stdexcept>

#include "platform/sdk/od_code_page.h"
#include "workbench/io/stand_in_names.h"
#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {

const SessionGroup& SessionState::group(ZOR::reg::GroupId id) const {
  const auto found = std::lower_bound(groups.begin(), groups.end(), id,
                                      [](const SessionGroup& g, ZOR::reg::GroupId wanted) { return g.id < wanted; });
  if (found == groups.end() || found->id != id) throw std::out_of_range("no group of that id in the session");
  return *found;
}

std::string sessionName(const std::string& utf8) { return sessionNameOfStored(wideFromUtf8(standInGroupName(utf8))); }

std::string sessionNameOfStored(const std::wstring& stored) { return nameOfModule(odToNarrow(stored)); }

}  // namespace tiepoint::workbench
