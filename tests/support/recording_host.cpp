#include "support/recording_host.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cwchar>
#include <utility>

#include "host_access/held.h"
#include "host_access/registration_settings.h"
#include "platform/host/exports.h"
#include "platform/host/message_line.h"
#include "platform/os/loaded_modules.h"
#include "platform/sdk/od_gi_drawable.h"

#if defined(_WIN32)
#define TEST_HOST_EXPORT extern "C" __declspec(dllexport)
#else
#define TEST_HOST_EXPORT extern "C" [[gnu::visibility("default")]]
#endif

namespace tiepoint::testing {

using ZOR::reg::Held;

namespace {

RecordingHost* standing = nullptr;

/// The host's "%s" takes wide text, the standard library's takes narrow text.
std::wstring standardFormat(std::wstring format) {
  for (std::size_t at = 0; (at = format.find(L"%s", at)) != std::wstring::npos; at += 3) format.replace(at, 2, L"%ls");
  return format;
}

const char* spelledProjection(HostProjection projection) {
  return projection == HostProjection::parallel ? "parallel" : "perspective";
}

bool isSame(const HostInterfaceId& a, const HostInterfaceId& b) {
  return a.data1 == b.data1 && a.data2 == b.data2 && a.data3 == b.data3 &&
         std::equal(std::begin(a.data4), std::end(a.data4), std::begin(b.data4));
}

}  // namespace

/// The active view of a document's service, whichever that is.
class RecordingHost::ViewFace : public HostView {
 public:
  ViewFace(RecordingHost& owner, TestDocument& shown, const std::string& where)
      : host(owner), document(shown), prefix(where) {}

  OdGeMatrix3d viewingMatrix() const override { return ask("view.viewingMatrix", view().viewingMatrix()); }
  OdGePoint3d position() const override { return ask("view.position", view().position()); }
  OdGePoint3d target() const override { return ask("view.target", view().target()); }
  OdGeVector3d upVector() const override { return ask("view.upVector", view().upVector()); }
  double fieldWidth() const override { return ask("view.fieldWidth", view().fieldWidth()); }
  double fieldHeight() const override { return ask("view.fieldHeight", view().fieldHeight()); }
  void set(const OdGePoint3d& position, const OdGePoint3d& target, const OdGeVector3d& upVector, double width,
           double height, HostProjection projection) override {
    host.calls.arrivesAt(prefix, "view.set", position, target, upVector, width, height, spelledProjection(projection));
    view().set(position, target, upVector, width, height, projection);
  }

 private:
  workbench::View& view() const { return document.view(); }

  template <class Value>
  Value ask(const char* name, const Value& value) const {
    return host.calls.arrivesAt(prefix, name) ? value : Value();
  }

  RecordingHost& host;
  TestDocument& document;
  const std::string& prefix;
};

class RecordingHost::Service : public HostTransientService {
 public:
  Service(RecordingHost& owner, TestDocument& shown, const std::string& where)
      : host(owner), document(shown), prefix(where), face(owner, shown, where) {}

  void addTransient(OdGiDrawable* drawable, int mode, int subMode, int viewGroup, int flags) override {
    host.calls.arrivesAt(prefix, "addTransient", mode, subMode, viewGroup, flags);
    document.transientViews().addTransient(drawable, mode, subMode, viewGroup, flags);
    if (host.drawsAtOnce) host.drawAll(document);
  }
  void removeTransient(OdGiDrawable* drawable) override {
    host.calls.arrivesAt(prefix, "removeTransient");
    if (host.drawsAtOnce) host.drawAll(document);
    document.transientViews().removeTransient(drawable);
  }
  HostView* activeView() override {
    if (!host.calls.arrivesAt(prefix, "activeView")) return nullptr;
    return document.transientViews().activeView() ? &face : nullptr;
  }
  void applyView(HostView* view, int flags) override {
    host.calls.arrivesAt(prefix, "applyView", view == &face ? "view" : "another view", flags);
    if (view == &face) document.transientViews().applyView(&document.view(), flags);
  }

 private:
  RecordingHost& host;
  TestDocument& document;
  const std::string& prefix;
  ViewFace face;
};

class RecordingHost::Document : public HostDocument {
 public:
  Document(RecordingHost& owner, int number)
      : host(owner),
        prefix(number == 1 ? std::string() : "document " + std::to_string(number) + ": "),
        service(owner, part, prefix) {}

  OdDbDatabasePtr database() override {
    return host.calls.arrivesAt(prefix, "document.database") ? part.database() : OdDbDatabasePtr();
  }
  HostTransientService* transientService() override {
    return host.calls.arrivesAt(prefix, "document.transientService") ? &service : nullptr;
  }
  bool isReady() const override { return host.calls.arrivesAt(prefix, "document.isReady") && host.documentsAreReady; }

  TestDocument part;

 private:
  RecordingHost& host;
  std::string prefix;
  Service service;
};

class RecordingHost::MessageLine : public HostMessageLine {
 public:
  explicit MessageLine(RecordingHost& owner) : host(owner) {}

  void print(const wchar_t* format, ...) override {
    std::array<wchar_t, 1024> text{};
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vswprintf(text.data(), text.size(), standardFormat(format).c_str(), arguments);
    va_end(arguments);
    host.calls.arrives("messageLine.print", length < 0 ? L"can't be formatted" : text.data());
  }

 private:
  RecordingHost& host;
};

class RecordingHost::Dialog : public HostFileDialog {
 public:
  explicit Dialog(RecordingHost& owner) : host(owner) {}

  HostFileDialogAnswer open(const HostFileDialogRequest& request) override {
    if (!host.calls.arrives("dialog.open")) return {};
    host.dialogRequest = request;
    return host.dialogAnswer;
  }

 private:
  RecordingHost& host;
};

class RecordingHost::Application : public HostApplication {
 public:
  explicit Application(RecordingHost& owner) : host(owner), line(owner), dialog(owner) {}

  HostDocument* activeDocument() override {
    if (!host.calls.arrives("activeDocument")) return nullptr;
    return host.documents.empty() ? nullptr : host.documents.back().get();
  }
  void addReactor(HostApDocManagerReactor* reactor) override {
    host.calls.arrives("addReactor");
    host.listeners.push_back(reactor);
  }
  void removeReactor(HostApDocManagerReactor* reactor) override {
    host.calls.arrives("removeReactor");
    auto& all = host.listeners;
    all.erase(std::remove(all.begin(), all.end(), reactor), all.end());
  }
  HostMessageLine* messageLine() override { return host.calls.arrives("messageLine") ? &line : nullptr; }
  HostFileDialog* fileDialog() override { return host.calls.arrives("fileDialog") ? &dialog : nullptr; }

 private:
  RecordingHost& host;
  MessageLine line;
  Dialog dialog;
};

class RecordingHost::SectionFace final : public HostProfileSection, public Given {
 public:
  SectionFace(RecordingHost& owner, Held<HostProfileSection> section) : host(owner), part(std::move(section)) {}

  int readValue(const wchar_t* key, CZorVariant& value) override {
    return host.calls.arrives("section.readValue", key) ? part->readValue(key, value) : 0;
  }
  void release() override {
    host.calls.arrives("section.release");
    host.takeBack(this);
  }

 private:
  RecordingHost& host;
  Held<HostProfileSection> part;
};

class RecordingHost::ProfileFace final : public HostProfile, public Given {
 public:
  ProfileFace(RecordingHost& owner, Held<HostProfile> profile) : host(owner), part(std::move(profile)) {}

  HostProfileSection* openSection(const wchar_t* path, int createWhenMissing) override {
    if (!host.calls.arrives("openSection", path, createWhenMissing)) return nullptr;
    Held<HostProfileSection> section(part->openSection(path, createWhenMissing));
    return section ? host.give<SectionFace>(std::move(section)) : nullptr;
  }
  void release() override {
    host.calls.arrives("profile.release");
    host.takeBack(this);
  }

 private:
  RecordingHost& host;
  Held<HostProfile> part;
};

class RecordingHost::AppServiceFace final : public HostAppService, public Given {
 public:
  AppServiceFace(RecordingHost& owner, Held<HostAppService> service) : host(owner), part(std::move(service)) {}

  HostProfile* queryProfile(const HostInterfaceId& id) override {
    const char* wanted = isSame(id, iidHostProfile) ? "profile" : "another interface";
    if (!host.calls.arrives("queryProfile", wanted)) return nullptr;
    Held<HostProfile> profile(part->queryProfile(id));
    return profile ? host.give<ProfileFace>(std::move(profile)) : nullptr;
  }
  void release() override {
    host.calls.arrives("service.release");
    host.takeBack(this);
  }

 private:
  RecordingHost& host;
  Held<HostAppService> part;
};

class RecordingHost::Factory final : public ICmdFactory, public Given {
 public:
  explicit Factory(RecordingHost& owner) : host(owner) {}

  void addCommand(const wchar_t* group, const wchar_t* globalName, const wchar_t* localName, int flags,
                  HostCommandBody body) override {
    host.calls.arrives("addCommand", group, globalName, localName, flags, body ? "body" : "no body");
    host.added.push_back({group, globalName, localName, flags, body});
  }
  void release() override {
    host.calls.arrives("factory.release");
    host.takeBack(this);
  }

 private:
  RecordingHost& host;
};

RecordingHost::RecordingHost() : app(std::make_unique<Application>(*this)) {
  standing = this;
  openDocument();
  calls.hear(false);
  { const ZOR::reg::RegistrationSettings findsGetApp; }
  calls.hear(true);
}

RecordingHost::~RecordingHost() { standing = nullptr; }

TestDocument& RecordingHost::document() { return documents.back()->part; }

TestDocument& RecordingHost::openDocument() {
  documents.push_back(std::make_unique<Document>(*this, ++documentsOpened));
  const std::vector<HostApDocManagerReactor*> told = listeners;
  for (HostApDocManagerReactor* reactor : told) reactor->documentAdded(documents.back().get());
  return document();
}

void RecordingHost::closeDocument() {
  const std::vector<HostApDocManagerReactor*> told = listeners;
  for (HostApDocManagerReactor* reactor : told) reactor->documentToBeRemoved(documents.back().get());
  documents.pop_back();
}

std::vector<OdGiDrawable*> RecordingHost::drawables() const {
  std::vector<OdGiDrawable*> all;
  for (const auto& open : documents) {
    for (const workbench::TransientEntry& entry : open->part.drawables()) all.push_back(entry.drawable);
  }
  return all;
}

RecordingHost* RecordingHost::current() { return standing; }

HostApplication& RecordingHost::application() { return *app; }

HostAppService* RecordingHost::newAppService() {
  return give<AppServiceFace>(Held<HostAppService>(values.newAppService()));
}

ICmdFactory* RecordingHost::newCommandFactory() { return give<Factory>(); }

void RecordingHost::drawAtEveryCall() {
  calls.atEachCall = [this] {
    if (!documents.empty()) drawAll(document());
  };
}

void RecordingHost::refresh() {
  if (drawsAtRefresh && !documents.empty()) drawAll(document());
}

template <class Object, class... Arguments>
Object* RecordingHost::give(Arguments&&... arguments) {
  auto object = std::make_unique<Object>(*this, std::forward<Arguments>(arguments)...);
  Object* const result = object.get();
  given.push_back(std::move(object));
  return result;
}

void RecordingHost::takeBack(const Given* object) {
  const auto place = std::find_if(given.begin(), given.end(), [&](const auto& own) { return own.get() == object; });
  if (place != given.end()) given.erase(place);
}

void RecordingHost::drawAll(TestDocument& shown) {
  if (!shown.transientViews().activeView()) return;
  for (const workbench::TransientEntry& entry : shown.drawables()) {
    draws.emplace_back(shown.view()).draw(*entry.drawable);
  }
}

namespace {

HostApplication* application() {
  RecordingHost* const host = RecordingHost::current();
  return host && host->calls.arrives("application") ? &host->application() : nullptr;
}

void refresh(unsigned char argument) {
  RecordingHost* const host = RecordingHost::current();
  if (!host) return;
  host->calls.arrives("refresh", static_cast<int>(argument));
  host->refresh();
}

os::ModuleHandle program() { return os::loadedModule(static_cast<const wchar_t*>(nullptr)); }

}  // namespace

}  // namespace tiepoint::testing

using tiepoint::testing::RecordingHost;

TEST_HOST_EXPORT void* GetMainDllInstance() {
  RecordingHost* const host = RecordingHost::current();
  return !host || host->calls.arrives("GetMainDllInstance") ? tiepoint::testing::program() : nullptr;
}

TEST_HOST_EXPORT const wchar_t* GetMainDllNameW() {
  static std::wstring name;
  RecordingHost* const host = RecordingHost::current();
  if (host && !host->calls.arrives("GetMainDllNameW")) return nullptr;
  const std::wstring path = tiepoint::os::moduleFileName(tiepoint::testing::program());
  name = path.substr(path.find_last_of(L"/\\") + 1);
  return name.c_str();
}

TEST_HOST_EXPORT void* get_host_funcptr(int index) {
  RecordingHost* const host = RecordingHost::current();
  if (!host || !host->calls.arrives("get_host_funcptr", index)) return nullptr;
  if (index == hostApplicationEntry) return reinterpret_cast<void*>(&tiepoint::testing::application);
  if (index == hostRefreshEntry) return reinterpret_cast<void*>(&tiepoint::testing::refresh);
  return nullptr;
}

TEST_HOST_EXPORT void new_ICmdFactory(ICmdFactory** factory) {
  RecordingHost* const host = RecordingHost::current();
  *factory = host && host->calls.arrives("new_ICmdFactory") ? host->newCommandFactory() : nullptr;
}

TEST_HOST_EXPORT HostAppService* GetApp() {
  RecordingHost* const host = RecordingHost::current();
  return host && host->calls.arrives("GetApp") ? host->newAppService() : nullptr;
}
