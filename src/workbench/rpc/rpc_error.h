// What a request can be answered with when it isn't carried out.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "workbench/rpc/json_types.h"

namespace tiepoint::workbench {

/// Codes of JSON-RPC 2.0, and two of this program.
enum RpcErrorCode : int {
  notJsonCode = -32700,
  notARequestCode = -32600,
  unknownMethodCode = -32601,
  badParameterCode = -32602,
  noSuchObjectCode = -32001,
  exceptionCode = -32000
};

/// An error with its code; `data` is null when it has none.
class RpcError : public std::runtime_error {
 public:
  RpcError(RpcErrorCode code, const std::string& message, OrderedJson data = nullptr)
      : std::runtime_error(message), errorCode(code), errorData(std::move(data)) {}

  RpcErrorCode code() const { return errorCode; }
  const OrderedJson& data() const { return errorData; }

 private:
  RpcErrorCode errorCode;
  OrderedJson errorData;
};

/// A parameter is missing, unknown, of the wrong type or out of range; `data` is its name.
class BadParameter : public RpcError {
 public:
  /// `reason` goes on from the name: "is missing".
  BadParameter(const std::string& name, const std::string& reason);

  /// The name and the reason.
  const std::string& complaint() const { return text; }

 private:
  std::string text;
};

/// The "error" member for the exception that is being handled; to be called in a handler. Whatever
/// left the module or the host keeps its text as the message and its type as `data.type`.
OrderedJson describeCurrentException();

}  // namespace tiepoint::workbench
