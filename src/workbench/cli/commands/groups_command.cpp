#include "workbench/cli/commands/groups_command.h"

#include <fmt/format.h>

#include "records/ref_point.h"
#include "workbench/cli/output.h"
#include "workbench/cli/start_workbench.h"
#include "workbench/io/stand_in_names.h"
#include "workbench/io/text_encoding.h"
#include "workbench/report/json_parts.h"
#include "workbench/report/plain_text.h"
#include "workbench/session/stored_groups.h"

namespace tiepoint::workbench::cli {

namespace {

using Groups = std::vector<StoredGroup>;

std::string shown(const std::wstring& stored) { return nameOfStandIn(utf8FromWide(stored)); }

std::size_t unnamedPoints(const StoredGroup& group) {
  std::size_t count = 0;
  for (const ZOR::_StoredPoint& point : group.points()) {
    count += point.name == OdString(ZOR::reg::unidentifiedName) ? 1 : 0;
  }
  return count;
}

std::string pointLines(const StoredGroup& group) {
  constexpr auto right = TextTable::Side::right;
  TextTable table({TextTable::Side::left, right, right, right, right});
  for (const ZOR::_StoredPoint& p : group.points()) {
    table.add({"  " + printable(shown(p.name.wideText())), fmt::format("{}", p.x), fmt::format("{}", p.y),
               fmt::format("{}", p.z), fmt::format("{}", p.w)});
  }
  return table.text();
}

std::string groupsText(const Groups& groups, bool withPoints) {
  if (groups.empty()) return "The drawing holds no reference points.\n";
  constexpr auto right = TextTable::Side::right;
  if (withPoints) {
    std::string text;
    for (const StoredGroup& group : groups) {
      text += fmt::format("{} ({} points: name x y z weight)\n", printable(shown(group.name)), group.points().size()) +
              pointLines(group);
    }
    return text;
  }
  TextTable table({TextTable::Side::left, right, right});
  table.add({"group", "points", "unnamed"});
  for (const StoredGroup& group : groups) {
    table.add(
        {printable(shown(group.name)), std::to_string(group.points().size()), std::to_string(unnamedPoints(group))});
  }
  return table.text();
}

OrderedJson groupsJson(const Groups& groups, bool withPoints) {
  OrderedJson all = OrderedJson::array();
  for (const StoredGroup& group : groups) {
    OrderedJson entry{
        {"name", shown(group.name)}, {"pointCount", group.points().size()}, {"unnamedCount", unnamedPoints(group)}};
    if (withPoints) {
      entry["points"] = OrderedJson::array();
      for (const ZOR::_StoredPoint& p : group.points()) {
        entry["points"].push_back({{"name", shown(p.name.wideText())},
                                   {"x", jsonNumber(p.x)},
                                   {"y", jsonNumber(p.y)},
                                   {"z", jsonNumber(p.z)},
                                   {"w", jsonNumber(p.w)}});
      }
    }
    all.push_back(std::move(entry));
  }
  return {{"groups", std::move(all)}};
}

}  // namespace

ExitStatus runGroups(const GroupsOptions& options) {
  const std::unique_ptr<Workbench> host = startWorkbench(options.host);
  Workbench& workbench = *host;
  const OdDbDatabasePtr database = workbench.openDocument(options.host.document, false).database();
  const Groups groups = storedGroups(*database);
  writeOut(options.json ? jsonText(groupsJson(groups, options.points)) : groupsText(groups, options.points));
  return ExitStatus::done;
}

}  // namespace tiepoint::workbench::cli
