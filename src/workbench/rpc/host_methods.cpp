// The host itself: what it is, its commands, its profile.
#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <variant>

#include "workbench/io/text_encoding.h"
#include "workbench/rpc/methods.h"

namespace tiepoint::workbench {

namespace {

// --- host.info

OrderedJson commandJson(const RegisteredCommand& command) {
  OrderedJson object = OrderedJson::object();
  addMember(object, "group", toJson(command.group));
  addMember(object, "globalName", toJson(command.globalName));
  addMember(object, "localName", toJson(command.localName));
  addMember(object, "flags", command.flags);
  return object;
}

OrderedJson info(RpcContext& context, const Parameters&) {
  OrderedJson commands = OrderedJson::array();
  for (const RegisteredCommand& command : context.workbench.commands()) commands.push_back(commandJson(command));
  OrderedJson result = OrderedJson::object();
  addMember(result, "apiVersion", context.workbench.apiVersion());
  addMember(result, "module", context.workbench.modulePath());
  addMember(result, "commands", std::move(commands));
  addMember(result, "version", TIEPOINT_VERSION);
  return result;
}

// --- command.run

std::vector<std::string> pathsFromJson(const Json& value) {
  if (!value.is_array()) throw BadValue("must be an array of paths");
  std::vector<std::string> paths;
  for (const Json& element : value) paths.push_back(pathFromJson(element));
  return paths;
}

DialogAnswer dialogAnswer(const Parameters& parameters) {
  DialogAnswer answer;
  answer.cancel = parameters.has("cancel") && parameters.flag("cancel");
  if (!answer.cancel) {
    answer.layout = parameters.read("layout", layoutFromJson);
    answer.paths = parameters.read("paths", pathsFromJson);
    return answer;
  }
  for (const char* name : {"layout", "paths"}) {
    if (parameters.has(name)) throw BadParameter(name, "can't be combined with cancel");
  }
  return answer;
}

bool isRegistered(const Workbench& workbench, const std::wstring& globalName) {
  for (const RegisteredCommand& command : workbench.commands()) {
    if (command.globalName == globalName) return true;
  }
  return false;
}

OrderedJson runCommand(RpcContext& context, const Parameters& parameters) {
  const std::wstring name = parameters.wideText("name");
  if (!isRegistered(context.workbench, name)) throw BadParameter("name", "isn't a registered command");
  OrderedJson messages = OrderedJson::array();
  for (const std::wstring& message : context.workbench.runCommand(name, dialogAnswer(parameters))) {
    messages.push_back(toJson(message));
  }
  OrderedJson result = OrderedJson::object();
  addMember(result, "messages", std::move(messages));
  return result;
}

// --- profile.get, profile.set

/// A whole number that has an int becomes one; a zero with a sign keeps it as a double.
ProfileValue profileNumber(double number) {
  const bool whole = std::trunc(number) == number && !(number == 0.0 && std::signbit(number));
  if (whole && number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max()) {
    return static_cast<int>(number);
  }
  return number;
}

std::optional<ProfileValue> profileValueFromJson(const Json& value) {
  if (value.is_null()) return std::nullopt;
  if (value.is_string()) return value.get<std::string>();
  if (value.is_number()) return profileNumber(value.get<double>());
  throw BadValue("must be a number, a string or null");
}

struct ProfileValueJson {
  OrderedJson operator()(int value) const { return value; }
  OrderedJson operator()(double value) const { return toJson(value); }
  OrderedJson operator()(const std::string& value) const { return value; }
};

OrderedJson profileResult(const Profile& profile, const std::string& key) {
  const std::optional<ProfileValue> value = profile.get(registrationSection, key);
  OrderedJson result = OrderedJson::object();
  addMember(result, "value", value ? std::visit(ProfileValueJson{}, *value) : OrderedJson(nullptr));
  return result;
}

OrderedJson getProfile(RpcContext& context, const Parameters& parameters) {
  return profileResult(context.workbench.profile(), parameters.text("key"));
}

OrderedJson setProfile(RpcContext& context, const Parameters& parameters) {
  const std::string key = parameters.text("key");
  const std::optional<ProfileValue> value = parameters.read("value", profileValueFromJson);
  Profile& profile = context.workbench.profile();
  if (value) {
    profile.set(registrationSection, key, *value);
  } else {
    profile.remove(registrationSection, key);
  }
  return profileResult(profile, key);
}

}  // namespace

void addHostMethods(Methods& methods) {
  methods["host.info"] = {{}, info};
  methods["command.run"] = {{"name", "layout", "paths", "cancel"}, runCommand};
  methods["profile.get"] = {{"key"}, getProfile};
  methods["profile.set"] = {{"key", "value"}, setProfile};
}

}  // namespace tiepoint::workbench
