// JSON-RPC 2.0 over lines of text.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>

namespace tiepoint::workbench {

class Workbench;

/// Answers requests on one workbench. Sessions begun over it live in it.
class RpcServer {
 public:
  explicit RpcServer(Workbench& workbench);
  ~RpcServer();

  /// The response to one text (a request or a batch), without a line feed; empty when none is due.
  /// Never throws for what a request says or does.
  std::string answer(const std::string& text);

  /// Reads a request per line until the end of `in`, and writes a response per line to `out`,
  /// flushed after each.
  void serve(std::istream& in, std::ostream& out);

 private:
  class State;
  std::unique_ptr<State> state;
};

}  // namespace tiepoint::workbench
