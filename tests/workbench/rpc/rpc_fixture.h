// A server on a workbench with a module, asked in text and answering in text.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "workbench/host/workbench.h"
#include "workbench/rpc/rpc_server.h"

namespace tiepoint::workbench {

/// The value of the last member of a response, as text: what stands between `start` and the
/// closing brace; the whole response when it doesn't begin so.
inline std::string after(const std::string& start, const std::string& response) {
  if (response.compare(0, start.size(), start) != 0) return response;
  return response.substr(start.size(), response.size() - start.size() - 1);
}

/// With an active document, and no session yet.
class RpcTestOn : public ::testing::Test {
 protected:
  explicit RpcTestOn(const std::string& module) : workbench({{}, module}), server(workbench) {
    workbench.openTemporaryDocument();
  }

  /// The whole response to a call with id 1; the parameters are JSON.
  std::string respond(const std::string& method, const std::string& params = "{}") {
    return server.answer(R"({"jsonrpc":"2.0","id":1,"method":")" + method + R"(","params":)" + params + "}");
  }
  /// The result alone, or the whole response when it is none.
  std::string result(const std::string& method, const std::string& params = "{}") {
    return after(R"({"jsonrpc":"2.0","id":1,"result":)", respond(method, params));
  }
  /// The error alone, or the whole response when it is none.
  std::string error(const std::string& method, const std::string& params = "{}") {
    return after(R"({"jsonrpc":"2.0","id":1,"error":)", respond(method, params));
  }
  /// What is wrong with which parameter: the error's code and data, or the whole response.
  std::string refusal(const std::string& method, const std::string& params) {
    std::string text = error(method, params);
    const std::size_t message = text.find(",\"message\"");
    const std::size_t data = text.find(",\"data\":");
    if (message == std::string::npos || data == std::string::npos) return text;
    return text.substr(0, message) + text.substr(data);
  }

  Workbench workbench;
  RpcServer server;
};

class RpcTest : public RpcTestOn {
 protected:
  RpcTest() : RpcTestOn(FAKE_MODULE) {}
};

}  // namespace tiepoint::workbench
