#include "workbench/rpc/rpc_error.h"

#include <boost/core/demangle.hpp>
#include <boost/math/policies/error_handling.hpp>
#include <new>
#include <typeinfo>

#include "platform/sdk/od_error.h"
#include "workbench/host/document_manager.h"
#include "workbench/report/refusal_text.h"
#include "workbench/rpc/sessions.h"

namespace tiepoint::workbench {

namespace {

OrderedJson errorMember(RpcErrorCode code, const std::string& message, const OrderedJson& data) {
  OrderedJson error = OrderedJson::object();
  addMember(error, "code", static_cast<int>(code));
  addMember(error, "message", message);
  if (!data.is_null()) addMember(error, "data", data);
  return error;
}

OrderedJson thrown(const std::string& type, const std::string& message) {
  OrderedJson data = OrderedJson::object();
  addMember(data, "type", type);
  return errorMember(exceptionCode, message, data);
}

/// By the names that parameters have.
OrderedJson refusalMember(const Refusal& refusal) {
  OrderedJson data = OrderedJson::object();
  addMember(data, "type", "refusal");
  addMember(data, "kind", refusalKey(refusal.kind));
  addMember(data, "field", refusal.field == Field::none ? OrderedJson() : OrderedJson(fieldKey(refusal.field)));
  return errorMember(exceptionCode, refusalText(refusal, fieldKey), data);
}

}  // namespace

BadParameter::BadParameter(const std::string& name, const std::string& reason)
    : RpcError(badParameterCode, "Invalid params: " + name + " " + reason, name), text(name + " " + reason) {}

OrderedJson describeCurrentException() {
  try {
    throw;
  } catch (const RpcError& error) {
    return errorMember(error.code(), error.what(), error.data());
  } catch (const Refused& refused) {
    return refusalMember(refused.refusal());
  } catch (const NoDocument& error) {
    return errorMember(noSuchObjectCode, error.what(), nullptr);
  } catch (const NoSession& error) {
    return errorMember(noSuchObjectCode, error.what(), nullptr);
  } catch (const OdError_NotThatKindOfClass& error) {
    return thrown("OdError_NotThatKindOfClass", error.what());
  } catch (const OdError& error) {
    return thrown("OdError", error.what());
  } catch (const boost::math::rounding_error& error) {
    return thrown("boost::math::rounding_error", error.what());
  } catch (const std::bad_alloc& error) {
    return thrown("std::bad_alloc", error.what());
  } catch (const std::exception& error) {
    return thrown(boost::core::demangle(typeid(error).name()), error.what());
  } catch (...) {
    return thrown("unknown", "an exception without a message");
  }
}

}  // namespace tiepoint::workbench
