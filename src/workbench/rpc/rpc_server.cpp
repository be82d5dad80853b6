#include "workbench/rpc/rpc_server.h"

#include <csignal>
#include <istream>
#include <new>
#include <optional>
#include <ostream>
#include <utility>

#include "workbench/rpc/json_parser.h"
#include "workbench/rpc/json_writer.h"
#include "workbench/rpc/methods.h"

namespace tiepoint::workbench {

namespace {

Methods allMethods() {
  Methods methods;
  addSessionMethods(methods);
  addRegistratorMethods(methods);
  addDocumentMethods(methods);
  addDrawingMethods(methods);
  addViewMethods(methods);
  addHostMethods(methods);
  addSurveyMethods(methods);
  return methods;
}

OrderedJson response(const Json& id, const char* outcome, OrderedJson value) {
  OrderedJson object = OrderedJson::object();
  addMember(object, "jsonrpc", "2.0");
  addMember(object, "id", id);
  addMember(object, outcome, std::move(value));
  return object;
}

OrderedJson errorResponse(const Json& id, const RpcError& error) {
  try {
    throw error;
  } catch (...) {
    return response(id, "error", describeCurrentException());
  }
}

RpcError notARequest(const std::string& reason) { return {notARequestCode, "Invalid Request: " + reason}; }

bool isId(const Json& value) { return value.is_string() || value.is_number() || value.is_null(); }

/// Throws RpcError for what isn't a request, apart from its id.
void requireRequest(const Json& request) {
  const auto version = request.find("jsonrpc");
  if (version == request.end() || *version != "2.0") throw notARequest("\"jsonrpc\" must be \"2.0\"");
  const auto method = request.find("method");
  if (method == request.end() || !method->is_string()) throw notARequest("\"method\" must be a string");
  const auto params = request.find("params");
  if (params != request.end() && !params->is_structured()) {
    throw notARequest("\"params\" must be an object or an array");
  }
}

/// The parameters as an object: missing ones are none, and so is an empty array.
const Json& parametersOf(const Json& request) {
  static const Json none = Json::object();
  const auto params = request.find("params");
  if (params == request.end()) return none;
  if (params->is_object()) return *params;
  if (params->empty()) return none;
  throw BadParameter("params", "must be given by name");
}

/// For an answer that memory doesn't suffice for.
constexpr const char* noMemoryResponse =
    R"({"jsonrpc":"2.0","id":null,"error":{"code":-32000,"message":"std::bad_alloc","data":{"type":"std::bad_alloc"}}})";

bool isBlank(const std::string& line) { return line.find_first_not_of(" \t\r") == std::string::npos; }

#ifdef SIGPIPE
/// A reader that goes away shows as a failed write, not as the end of the process.
class WithoutBrokenPipeSignal {
 public:
  WithoutBrokenPipeSignal() : before(std::signal(SIGPIPE, SIG_IGN)) {}
  ~WithoutBrokenPipeSignal() { std::signal(SIGPIPE, before); }
  WithoutBrokenPipeSignal(const WithoutBrokenPipeSignal&) = delete;
  WithoutBrokenPipeSignal& operator=(const WithoutBrokenPipeSignal&) = delete;

 private:
  void (*before)(int);
};
#else
struct WithoutBrokenPipeSignal {
  WithoutBrokenPipeSignal() {}
};
#endif

}  // namespace

class RpcServer::State {
 public:
  explicit State(Workbench& workbench) : context{workbench, {}}, methods(allMethods()) {}

  /// The response to a request or a batch, if one is due.
  std::optional<OrderedJson> answer(const Json& message) {
    if (!message.is_array()) return answerRequest(message);
    if (message.empty()) return errorResponse(nullptr, notARequest("the batch is empty"));
    OrderedJson responses = OrderedJson::array();
    for (const Json& request : message) {
      if (std::optional<OrderedJson> each = answerRequest(request)) responses.push_back(std::move(*each));
    }
    if (responses.empty()) return std::nullopt;
    return responses;
  }

  void endSessions() { context.sessions.endAll(); }

 private:
  std::optional<OrderedJson> answerRequest(const Json& request) {
    if (!request.is_object()) return errorResponse(nullptr, notARequest("it must be an object"));
    const auto given = request.find("id");
    const bool hasId = given != request.end();
    if (hasId && !isId(*given)) {
      return errorResponse(nullptr, notARequest("\"id\" must be a string, a number or null"));
    }
    const Json id = hasId ? *given : Json(nullptr);
    try {
      requireRequest(request);
    } catch (const RpcError& error) {
      return errorResponse(id, error);
    }
    OrderedJson answered = carryOut(request, id);
    if (!hasId) return std::nullopt;
    return answered;
  }

  OrderedJson carryOut(const Json& request, const Json& id) {
    try {
      return response(id, "result", run(request));
    } catch (...) {
      return response(id, "error", describeCurrentException());
    }
  }

  OrderedJson run(const Json& request) {
    const std::string& name = request.find("method")->get_ref<const std::string&>();
    const auto method = methods.find(name);
    if (method == methods.end()) throw RpcError(unknownMethodCode, "Method not found: " + name);
    const Parameters parameters(parametersOf(request));
    parameters.requireKnown(method->second.parameters);
    return method->second.run(context, parameters);
  }

  RpcContext context;
  const Methods methods;
};

RpcServer::RpcServer(Workbench& workbench) : state(std::make_unique<State>(workbench)) {}

RpcServer::~RpcServer() = default;

std::string RpcServer::answer(const std::string& text) {
  try {
    const std::optional<OrderedJson> answered = state->answer(parseJson(text));
    return answered ? writeJson(*answered) : std::string();
  } catch (const NotJson& error) {
    return writeJson(errorResponse(nullptr, {notJsonCode, std::string("Parse error: ") + error.what()}));
  } catch (const TooDeep& error) {
    return writeJson(errorResponse(nullptr, notARequest(error.what())));
  } catch (const std::bad_alloc&) {
    return noMemoryResponse;
  }
}

void RpcServer::serve(std::istream& in, std::ostream& out) {
  const WithoutBrokenPipeSignal guard;
  std::string line;
  while (out && std::getline(in, line)) {
    if (isBlank(line)) continue;
    const std::string answered = answer(line);
    if (!answered.empty()) out << answered << '\n' << std::flush;
  }
  state->endSessions();
}

}  // namespace tiepoint::workbench
