// Any text as a line of JSON-RPC, on a workbench with the real module and a drawing in memory.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>

#include "workbench/host/workbench.h"
#include "workbench/rpc/rpc_server.h"

namespace {

using nlohmann::json;
using tiepoint::workbench::RpcServer;
using tiepoint::workbench::Workbench;

void require(bool rule) {
  if (!rule) std::abort();
}

/// Methods that read or write files of whatever path the input makes up.
bool touchesFiles(const json& request) {
  static const std::string methods[] = {"command.run",       "document.open",   "saveCommonPointsFile",
                                        "saveGroupMatrices", "saveAllMatrices", "saveReport"};
  if (!request.is_object() || !request.contains("method") || !request["method"].is_string()) return false;
  return std::count(std::begin(methods), std::end(methods), request["method"].get<std::string>()) > 0;
}

bool isHarmless(const std::string& text) {
  const json value = json::parse(text, nullptr, false);
  if (value.is_array()) return std::none_of(value.begin(), value.end(), touchesFiles);
  return !touchesFiles(value);
}

bool isResponse(const json& value) {
  return value.is_object() && value.value("jsonrpc", "") == "2.0" && value.contains("id") &&
         value.contains("result") != value.contains("error");
}

void requireResponses(const std::string& answer) {
  if (answer.empty()) return;
  require(answer.find('\n') == std::string::npos);
  const json value = json::parse(answer, nullptr, false);
  require(value.is_array() ? !value.empty() && std::all_of(value.begin(), value.end(), isResponse) : isResponse(value));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Workbench workbench{Workbench::Options{}};
  const std::string text(reinterpret_cast<const char*>(data), size);
  if (!isHarmless(text)) return 0;
  workbench.openTemporaryDocument();
  {
    RpcServer server(workbench);
    requireResponses(server.answer(text));
  }
  while (!workbench.documents().empty()) workbench.closeDocument(workbench.documents().back()->number());
  return 0;
}
