// A drawing against a plain model of it, through random scripts.
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

#include "workbench/drawing/drawing.h"
#include "workbench/drawing/drawing_state.h"
#include "workbench/drawing/test_vfs.h"
#include "workbench/temporary_folder.h"

using namespace tiepoint::workbench;

namespace {

enum class Step {
  begin,
  commit,
  abort,
  reopen,
  storeGroup,
  replacePoints,
  removeGroup,
  addCloud,
  moveCloud,
  removeCloud
};

/// A few names, so that they meet again and again.
OdString anyName() { return OdString(*rc::gen::element<std::wstring>(L"S1", L"S2", L"\u0416", L"", L"?")); }

double anyNumber() {
  const double infinity = std::numeric_limits<double>::infinity();
  return *rc::gen::oneOf(rc::gen::arbitrary<double>(),
                         rc::gen::element(0.0, -0.0, 1.0, infinity, -infinity, std::nan(""), std::nan("7"),
                                          std::numeric_limits<double>::denorm_min()));
}

ZOR::StoredPointArray anyPoints() {
  ZOR::StoredPointArray points;
  const int count = *rc::gen::inRange(0, 5);
  for (int i = 0; i < count; ++i) {
    points.append(pointAt(anyName(), anyNumber(), anyNumber(), anyNumber(), anyNumber()));
  }
  return points;
}

GroupState groupOf(const OdString& name, const ZOR::StoredPointArray& points) {
  GroupState group{name.wideText(), {}};
  for (const auto& point : points) group.points.push_back(stateOf(point));
  return group;
}

template <class Item>
Item* find(std::vector<Item>& items, const OdString& name) {
  for (Item& item : items) {
    if (item.name == name.wideText()) return &item;
  }
  return nullptr;
}

template <class Item>
bool remove(std::vector<Item>& items, const OdString& name) {
  Item* item = find(items, name);
  if (item) items.erase(items.begin() + (item - items.data()));
  return item != nullptr;
}

/// The same steps on a drawing and on the model.
class Script {
 public:
  Script() { open(); }

  void run(Step step) {
    switch (step) {
      case Step::begin:
        return begin();
      case Step::commit:
        return commit();
      case Step::abort:
        return abort();
      case Step::reopen:
        return reopen();
      default:
        if (!isOpenForChanges()) begin();
        change(step);
    }
  }
  void reopen() {
    if (isOpenForChanges()) abort();
    drawing.reset();
    open();
  }
  void check() const { RC_ASSERT(stateOf(database()) == model); }

 private:
  void open() { drawing = Drawing::open(folder.file("a.tie"), true); }
  OdDbDatabase& database() const { return *drawing->database(); }
  bool isOpenForChanges() const { return database().hasActiveTransaction(); }

  void begin() {
    if (isOpenForChanges()) return;
    database().startTransaction();
    kept = model;
  }
  void commit() {
    if (isOpenForChanges()) database().endTransaction();
  }
  void abort() {
    if (!isOpenForChanges()) return;
    database().abortTransaction();
    model = kept;
  }
  void change(Step step);
  void store();
  void replace();
  void move();
  void add();

  TestFileSystem fileSystem;
  TemporaryFolder folder;
  std::unique_ptr<Drawing> drawing;
  DrawingState model;
  DrawingState kept;
};

void Script::change(Step step) {
  const OdString name = anyName();
  if (step == Step::storeGroup) store();
  if (step == Step::replacePoints) replace();
  if (step == Step::addCloud) add();
  if (step == Step::moveCloud) move();
  if (step == Step::removeGroup) RC_ASSERT(removeGroup(database(), name) == remove(model.groups, name));
  if (step == Step::removeCloud) RC_ASSERT(removeCloud(database(), name) == remove(model.clouds, name));
}

void Script::store() {
  const OdString name = anyName();
  const ZOR::StoredPointArray points = anyPoints();
  storeGroup(database(), name, points);
  if (GroupState* group = find(model.groups, name)) {
    *group = groupOf(name, points);
  } else {
    model.groups.push_back(groupOf(name, points));
  }
}

void Script::replace() {
  if (model.groups.empty()) return;
  GroupState& group = model.groups[*rc::gen::inRange<std::size_t>(0, model.groups.size())];
  const ZOR::StoredPointArray points = anyPoints();
  replacePoints(database(), group.name, points);
  group = groupOf(group.name, points);
}

void Script::add() {
  const OdString name = anyName();
  const OdString source = anyName();
  const CloudState cloud{name.wideText(), source.wideText(), bitsOf(OdGeMatrix3d())};
  addCloud(database(), name, source);
  if (CloudState* present = find(model.clouds, name)) {
    *present = cloud;
  } else {
    model.clouds.push_back(cloud);
  }
}

void Script::move() {
  if (model.clouds.empty()) return;
  CloudState& cloud = model.clouds[*rc::gen::inRange<std::size_t>(0, model.clouds.size())];
  // Whole shifts add up exactly, so that the model needs no matrix product.
  const double distance = *rc::gen::inRange(-100, 101);
  double gathered = 0.0;
  while (cloud.bits != bitsOf(shiftAlongX(gathered))) gathered = gathered > 0.0 ? -gathered : 1.0 - gathered;
  moveCloud(database(), cloud.name, shiftAlongX(distance));
  cloud.bits = bitsOf(shiftAlongX(distance + gathered));
}

}  // namespace

RC_GTEST_PROP(Drawing, SurvivesReopeningAsAPlainModelDoes, ()) {
  const auto anyStep = rc::gen::weightedElement<Step>({{1, Step::begin},
                                                       {3, Step::commit},
                                                       {1, Step::abort},
                                                       {1, Step::reopen},
                                                       {4, Step::storeGroup},
                                                       {2, Step::replacePoints},
                                                       {2, Step::removeGroup},
                                                       {2, Step::addCloud},
                                                       {3, Step::moveCloud},
                                                       {1, Step::removeCloud}});
  Script script;
  for (const Step step : *rc::gen::container<std::vector<Step>>(anyStep)) {
    script.run(step);
    script.check();
  }
  script.run(Step::commit);
  script.reopen();
  script.check();
}
