// Whole registrations, from request to delivery.
#include "workbench/report/finding_text.h"
#include "workbench/report/outputs.h"
#include "workbench/report/summary_json.h"
#include "workbench/rpc/methods.h"
#include "workbench/rpc/survey_requests.h"
#include "workbench/survey/delivery.h"

namespace tiepoint::workbench {

namespace {

/// Of the active document.
RegistrationRequest requestFrom(RpcContext& context, const Parameters& parameters) {
  context.workbench.requireActiveDocument();
  RegistrationRequest request = registrationFromJson(parameters);
  request.changes = changesFromJson(parameters);
  request.outputs = outputsFromJson(parameters);
  return request;
}

/// A dry run: what would be imported, and the warnings.
OrderedJson resolveOnly(RpcContext& context, const Parameters& parameters) {
  Findings findings;
  const ResolvedRequest resolved = resolve(context.workbench, requestFrom(context, parameters), findings);
  OrderedJson warnings = OrderedJson::array();
  for (const Finding& finding : findings.all()) warnings.push_back(findingText(finding));
  OrderedJson result = OrderedJson::object();
  addMember(result, "import", jsonImport(resolved.import));
  addMember(result, "warnings", std::move(warnings));
  return result;
}

OrderedJson registerAndDeliver(RpcContext& context, const Parameters& parameters) {
  const RegistrationRequest request = requestFrom(context, parameters);
  Findings findings;
  Progress progress;
  const ResolvedRequest resolved = resolve(context.workbench, request, findings);
  const auto survey = registerSurvey(context.workbench, resolved, findings, progress);
  deliver(context.workbench, *survey, resolved, outputs(survey->registration, request.outputs, request.unit), progress);
  return summaryJson(survey->registration);
}

std::vector<std::string> allParameters() {
  std::vector<std::string> all = registrationParameters();
  for (const std::string& parameter : deliveryParameters()) all.push_back(parameter);
  return all;
}

}  // namespace

void addSurveyMethods(Methods& methods) {
  methods["survey.resolve"] = {allParameters(), resolveOnly};
  methods["survey.register"] = {allParameters(), registerAndDeliver};
}

}  // namespace tiepoint::workbench
