// Beginning and ending sessions.
#include "workbench/rpc/methods.h"

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

}  // namespace

void addSessionMethods(Methods& methods) {
  methods["session.begin"] = {{}, beginSession};
  methods["session.end"] = {{"session"}, endSession};
}

}  // namespace tiepoint::workbench
