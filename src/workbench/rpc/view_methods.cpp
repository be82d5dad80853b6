// The view of the active document, and what is drawn in it.
#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

#include "workbench/rpc/methods.h"
#include "workbench/view/recording_draw.h"

namespace tiepoint::workbench {

namespace {

View& activeView(RpcContext& context) { return context.workbench.requireActiveDocument().transient().view(); }

OrderedJson viewJson(const ViewState& state) {
  OrderedJson result = OrderedJson::object();
  addMember(result, "position", toJson(state.position));
  addMember(result, "target", toJson(state.target));
  addMember(result, "up", toJson(state.up));
  addMember(result, "width", toJson(state.width));
  addMember(result, "height", toJson(state.height));
  addMember(result, "pixels", OrderedJson::array({state.pixelWidth, state.pixelHeight}));
  return result;
}

// --- Reading parts of a view's state.

double finiteFromJson(const Json& value) {
  const double number = doubleFromJson(value);
  if (!std::isfinite(number)) throw BadValue("must be finite");
  return number;
}

template <class Triple>
Triple tripleFromJson(const Json& value) {
  const std::vector<double> numbers = doublesFromJson(value, 3);
  for (double number : numbers) finiteFromJson(number);
  return {numbers[0], numbers[1], numbers[2]};
}

double sizeFromJson(const Json& value) {
  const double size = finiteFromJson(value);
  if (!(size > 0.0)) throw BadValue("must be greater than 0");
  return size;
}

int pixelCountFromJson(const Json& value) {
  const std::uint64_t count = wholeFromJson(value);
  if (count < 1 || count > static_cast<std::uint64_t>(std::numeric_limits<int>::max())) {
    throw BadValue("must be two pixel counts, each at least 1");
  }
  return static_cast<int>(count);
}

std::pair<int, int> pixelsFromJson(const Json& value) {
  if (!value.is_array() || value.size() != 2) throw BadValue("must be an array of 2 pixel counts");
  return {pixelCountFromJson(value[0]), pixelCountFromJson(value[1])};
}

/// The state that the request's parameters make of `before`, apart from the one named `left`.
ViewState stateFrom(const Parameters& parameters, const ViewState& before, const std::string& left = {}) {
  ViewState state = before;
  const auto take = [&](const char* name, auto& part, auto convert) {
    if (name != left && parameters.has(name)) part = parameters.read(name, convert);
  };
  take("position", state.position, tripleFromJson<OdGePoint3d>);
  take("target", state.target, tripleFromJson<OdGePoint3d>);
  take("up", state.up, tripleFromJson<OdGeVector3d>);
  take("width", state.width, sizeFromJson);
  take("height", state.height, sizeFromJson);
  std::pair<int, int> pixels{state.pixelWidth, state.pixelHeight};
  take("pixels", pixels, pixelsFromJson);
  std::tie(state.pixelWidth, state.pixelHeight) = pixels;
  return state;
}

bool givesAView(const ViewState& state) {
  try {
    View().setState(state);
    return true;
  } catch (const std::invalid_argument&) {
    return false;
  }
}

const std::vector<std::string> viewParameters{"position", "target", "up", "width", "height", "pixels"};

/// The parameter to blame for a state that gives no view: the first without which there would be
/// one, else the first that is given.
std::string culprit(const Parameters& parameters, const ViewState& before) {
  std::string firstGiven;
  for (const std::string& name : viewParameters) {
    if (!parameters.has(name)) continue;
    if (givesAView(stateFrom(parameters, before, name))) return name;
    if (firstGiven.empty()) firstGiven = name;
  }
  return firstGiven;
}

// --- Methods.

OrderedJson getView(RpcContext& context, const Parameters&) { return viewJson(activeView(context).state()); }

OrderedJson setView(RpcContext& context, const Parameters& parameters) {
  View& view = activeView(context);
  const ViewState before = view.state();
  const ViewState after = stateFrom(parameters, before);
  try {
    view.setState(after);
  } catch (const std::invalid_argument& error) {
    throw BadParameter(culprit(parameters, before), std::string("gives no view: ") + error.what());
  }
  return viewJson(view.state());
}

OrderedJson lineJson(const DrawnLine& line) {
  OrderedJson object = OrderedJson::object();
  addMember(object, "color", line.color);
  addMember(object, "from", toJson(line.from));
  addMember(object, "to", toJson(line.to));
  return object;
}

OrderedJson textJson(const DrawnText& text) {
  OrderedJson object = OrderedJson::object();
  addMember(object, "color", text.color);
  addMember(object, "position", toJson(text.position));
  addMember(object, "normal", toJson(text.normal));
  addMember(object, "direction", toJson(text.direction));
  addMember(object, "height", toJson(text.height));
  addMember(object, "text", toJson(text.text.wideText()));
  return object;
}

OrderedJson drawView(RpcContext& context, const Parameters&) {
  TransientService& transients = context.workbench.requireActiveDocument().transient();
  RecordingDraw draw(transients.view());
  for (const TransientEntry& entry : transients.drawables()) draw.draw(*entry.drawable);
  OrderedJson lines = OrderedJson::array();
  for (const DrawnLine& line : draw.lines()) lines.push_back(lineJson(line));
  OrderedJson texts = OrderedJson::array();
  for (const DrawnText& text : draw.texts()) texts.push_back(textJson(text));
  OrderedJson result = OrderedJson::object();
  addMember(result, "lines", std::move(lines));
  addMember(result, "texts", std::move(texts));
  addMember(result, "pixelSize", toJson(draw.pixelSize()));
  return result;
}

OrderedJson countRedraws(RpcContext& context, const Parameters&) {
  OrderedJson result = OrderedJson::object();
  addMember(result, "count", context.workbench.redrawCount());
  return result;
}

}  // namespace

void addViewMethods(Methods& methods) {
  methods["view.get"] = {{}, getView};
  methods["view.set"] = {viewParameters, setView};
  methods["view.draw"] = {{}, drawView};
  methods["view.redraws"] = {{}, countRedraws};
}

}  // namespace tiepoint::workbench
