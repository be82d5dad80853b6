// The methods that requests can name.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "workbench/host/workbench.h"
#include "workbench/rpc/parameters.h"
#include "workbench/rpc/sessions.h"

namespace tiepoint::workbench {

/// What all requests share.
struct RpcContext {
  Workbench& workbench;
  Sessions sessions;
};

/// The session that a request means: the one of its parameter "session", or the newest.
inline MirroredSession& sessionOf(RpcContext& context, const Parameters& parameters) {
  return context.sessions.require(parameters.has("session") ? parameters.whole("session") : context.sessions.newest());
}

/// A method: the names of its parameters, and what it does; the result is an object.
struct Method {
  std::vector<std::string> parameters;
  std::function<OrderedJson(RpcContext&, const Parameters&)> run;
};

using Methods = std::map<std::string, Method>;

// Each adds the methods of one concern.
void addSessionMethods(Methods& methods);
void addRegistratorMethods(Methods& methods);
void addDocumentMethods(Methods& methods);
void addDrawingMethods(Methods& methods);
void addViewMethods(Methods& methods);
void addHostMethods(Methods& methods);
void addSurveyMethods(Methods& methods);

}  // namespace tiepoint::workbench
