#include "workbench/rpc/session_state_json.h"

#include "workbench/io/stand_in_names.h"
#include "workbench/rpc/json_values.h"

namespace tiepoint::workbench {

namespace {

/// More than objects have as a rule.
constexpr std::size_t stateMembers = 15;

template <class List, class Form>
OrderedJson listJson(const List& list, Form form) {
  OrderedJson array = OrderedJson::array();
  for (const auto& element : list) array.push_back(form(element));
  return array;
}

/// The name is UTF-8 already.
OrderedJson entryJson(std::uint64_t id, const std::string& name) {
  OrderedJson object = OrderedJson::object();
  addMember(object, "id", toJson(id));
  addMember(object, "name", OrderedJson(name));
  return object;
}

OrderedJson groupJson(const SessionGroup& group) {
  OrderedJson object = entryJson(group.id, group.name);
  addMember(object, "inSession", toJson(group.inSession));
  addMember(object, "inBase", toJson(group.inBase));
  return object;
}

OrderedJson pointJson(const SessionPoint& point) {
  OrderedJson object = toJson(point.record);
  addMember(object, "name", OrderedJson(point.name));
  return object;
}

const char* wordFor(LastReport report) {
  switch (report) {
    case LastReport::points:
      return "points";
    case LastReport::groups:
      return "groups";
    case LastReport::results:
      return "results";
    case LastReport::none:
      break;
  }
  return "none";
}

}  // namespace

OrderedJson toJson(const SessionState& state) {
  OrderedJson object = OrderedJson::object();
  object.get_ref<OrderedJson::object_t&>().reserve(stateMembers);
  addMember(object, "groups", listJson(state.groups, groupJson));
  addMember(object, "points", listJson(state.points, pointJson));
  addMember(object, "names", listJson(state.names.entries(), [](const PointName& entry) {
              return entryJson(entry.id, nameOfStandIn(entry.name));
            }));
  addMember(object, "unsureNames", toJson(state.unsureNames));
  addMember(object, "visibleGroups", toJson(state.visibleGroups));
  addMember(object, "registeredGroups", toJson(state.registeredGroups));
  addMember(object, "discrepancies", toJson(state.discrepancies));
  addMember(object, "clusters", toJson(state.clusters));
  addMember(object, "maxIterations", toJson(state.maxIterations));
  addMember(object, "convergenceCriteria", toJson(state.convergenceCriteria));
  addMember(object, "tolerance", toJson(state.matchDistanceTolerance));
  addMember(object, "sideTolerance", toJson(state.triangleSideTolerance));
  addMember(object, "minSideDifference", toJson(state.triangleMinSideDifference));
  addMember(object, "clouds",
            listJson(state.clouds, [](const SessionCloud& cloud) { return entryJson(cloud.number, cloud.name); }));
  addMember(object, "lastReport", OrderedJson(wordFor(state.lastReport)));
  return object;
}

}  // namespace tiepoint::workbench
