// Beginning and ending sessions, and what they hold.
#include "workbench/rpc/methods.h"
#include "workbench/rpc/session_state_json.h"

namespace tiepoint::workbench {

namespace {

OrderedJson beginSession(RpcContext& context, const Parameters&) {
  OrderedJson result = OrderedJson::object();
  addMember(result, "session", context.sessions.begin(context.workbench.newSession()));
  return result;
}

OrderedJson endSession(RpcContext& context, const Parameters& parameters) {
  context.sessions.end(parameters.has("session") ? parameters.whole("session") : context.sessions.newest());
  return OrderedJson::object();
}

OrderedJson stateOfSession(RpcContext& context, const Parameters& parameters) {
  return toJson(sessionOf(context, parameters).state());
}

}  // namespace

void addSessionMethods(Methods& methods) {
  methods["session.begin"] = {{}, beginSession};
  methods["session.end"] = {{"session"}, endSession};
  methods["session.state"] = {{"session"}, stateOfSession};
}

}  // namespace tiepoint::workbench
