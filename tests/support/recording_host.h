// A host inside a test program that writes down what the module asks of it and fails on demand.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/host/application.h"
#include "platform/host/command_factory.h"
#include "platform/host/file_dialog.h"
#include "support/host_calls.h"
#include "support/test_document.h"
#include "workbench/profile/profile.h"
#include "workbench/view/recording_draw.h"

namespace tiepoint::testing {

/// A command that was added through the host's factory.
struct AddedCommand {
  std::wstring group;
  std::wstring globalName;
  std::wstring localName;
  int flags = 0;
  HostCommandBody body = nullptr;
};

/// While it stands, the exports of the test program answer with it: GetMainDllInstance,
/// GetMainDllNameW, get_host_funcptr, new_ICmdFactory and GetApp. The parts behind them are real: a
/// drawing in memory, views, a profile.
///
/// Every call that the module makes arrives at `calls` before it takes effect: look-ups, the
/// operations of all objects given out, and their release. What the test itself asks, it asks the
/// parts, and none of that is a call.
///
/// A call that is to give nothing gives null, 0, false, an empty database, a point at the origin, the
/// identity, or an unaccepted answer; one without a result does its work as ever. A release that
/// throws leaves its object living.
///
/// The module keeps the address of "GetApp" once it is found; it is found before the first call is
/// heard, so that every settings object is opened by the same calls.
class RecordingHost {
 public:
  /// With one open document.
  RecordingHost();
  ~RecordingHost();
  RecordingHost(const RecordingHost&) = delete;
  RecordingHost& operator=(const RecordingHost&) = delete;

  HostCalls calls;

  /// The active document, which there must be.
  TestDocument& document();
  /// Opens a further document, which becomes active; the reactors are told. The calls of the n-th
  /// document that was ever opened, from the second on, begin with "document n: ".
  TestDocument& openDocument();
  /// Closes the active document; the reactors are told, and the one before it becomes active.
  void closeDocument();
  std::size_t documentCount() const { return documents.size(); }

  workbench::Profile& profile() { return values; }
  /// What every document says of its readiness.
  bool documentsAreReady = true;
  HostFileDialogAnswer dialogAnswer;
  /// As the dialog was asked last.
  HostFileDialogRequest dialogRequest;

  /// A host that draws at once: all that a document shows is drawn within each addTransient, behind
  /// the addition, and within each removeTransient, before the removal.
  bool drawsAtOnce = false;
  /// A host whose refresh draws: all that the active document shows, in its active view.
  bool drawsAtRefresh = false;
  /// A host whose views are drawn at every call: all that the active document shows.
  void drawAtEveryCall();
  /// What was drawn, one for each drawable and time.
  std::vector<workbench::RecordingDraw> draws;

  // What is left with the host.

  const std::vector<HostApDocManagerReactor*>& reactors() const { return listeners; }
  /// Of all open documents.
  std::vector<OdGiDrawable*> drawables() const;
  /// Application services, profiles, sections and factories that were given out and not released.
  std::size_t livingObjects() const { return given.size(); }
  const std::vector<AddedCommand>& commands() const { return added; }

  /// An object that was given out. The host owns it, so that one that is never released isn't lost.
  class Given {
   public:
    virtual ~Given() = default;
  };

  /// The host that stands, or null; for the exports.
  static RecordingHost* current();
  HostApplication& application();
  HostAppService* newAppService();
  ICmdFactory* newCommandFactory();
  void refresh();

 private:
  class Application;
  class Document;
  class Service;
  class ViewFace;
  class MessageLine;
  class Dialog;
  class AppServiceFace;
  class ProfileFace;
  class SectionFace;
  class Factory;

  template <class Object, class... Arguments>
  Object* give(Arguments&&... arguments);
  void takeBack(const Given* object);
  void drawAll(TestDocument& shown);

  workbench::Profile values;
  std::unique_ptr<Application> app;
  std::vector<std::unique_ptr<Document>> documents;
  int documentsOpened = 0;
  std::vector<HostApDocManagerReactor*> listeners;
  std::vector<AddedCommand> added;
  std::vector<std::unique_ptr<Given>> given;
};

}  // namespace tiepoint::testing
