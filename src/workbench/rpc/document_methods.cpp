// Opening, closing and choosing documents.
#include <limits>

#include "workbench/rpc/methods.h"

namespace tiepoint::workbench {

namespace {

int documentNumber(const Parameters& parameters) {
  const std::uint64_t number = parameters.whole("document");
  if (number > static_cast<std::uint64_t>(std::numeric_limits<int>::max())) {
    throw NoDocument("there is no document " + std::to_string(number));
  }
  return static_cast<int>(number);
}

OrderedJson openDocument(RpcContext& context, const Parameters& parameters) {
  OrderedJson result = OrderedJson::object();
  addMember(result, "document", context.workbench.openDocument(parameters.path("path")).number());
  return result;
}

OrderedJson closeDocument(RpcContext& context, const Parameters& parameters) {
  Workbench& workbench = context.workbench;
  workbench.closeDocument(parameters.has("document") ? documentNumber(parameters)
                                                     : workbench.requireActiveDocument().number());
  return OrderedJson::object();
}

OrderedJson activateDocument(RpcContext& context, const Parameters& parameters) {
  context.workbench.activateDocument(documentNumber(parameters));
  return OrderedJson::object();
}

OrderedJson documentJson(const Document& document, bool active) {
  OrderedJson object = OrderedJson::object();
  addMember(object, "document", document.number());
  addMember(object, "path", document.path());
  addMember(object, "active", active);
  return object;
}

OrderedJson listDocuments(RpcContext& context, const Parameters&) {
  const HostDocument* const active = context.workbench.activeDocument();
  OrderedJson documents = OrderedJson::array();
  for (const Document* document : context.workbench.documents()) {
    documents.push_back(documentJson(*document, document == active));
  }
  OrderedJson result = OrderedJson::object();
  addMember(result, "documents", std::move(documents));
  return result;
}

}  // namespace

void addDocumentMethods(Methods& methods) {
  methods["document.open"] = {{"path"}, openDocument};
  methods["document.close"] = {{"document"}, closeDocument};
  methods["document.activate"] = {{"document"}, activateDocument};
  methods["document.list"] = {{}, listDocuments};
}

}  // namespace tiepoint::workbench
