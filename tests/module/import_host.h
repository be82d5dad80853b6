// The host of the import command's tests, which is the test program itself: a dialog that answers
// as it is told, a message line that remembers, a real drawing in memory, and real files.
#pragma once

#include <gtest/gtest.h>

#include <boost/filesystem/path.hpp>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "platform/host/application.h"
#include "platform/host/document.h"
#include "platform/host/file_dialog.h"
#include "platform/host/message_line.h"

namespace tiepoint::testing {

class DialogOfTest final : public HostFileDialog {
 public:
  HostFileDialogAnswer open(const HostFileDialogRequest& request) override;

  HostFileDialogAnswer answer;
  /// Called while the user chooses, when set.
  std::function<void()> whileOpen;
  int asked = 0;
  HostFileDialogRequest lastRequest;
  /// The buffer as it came in.
  std::wstring lastBuffer;
};

class MessageLineOfTest final : public HostMessageLine {
 public:
  void print(const wchar_t* format, ...) override;

  std::vector<std::wstring> messages;
  /// Called at each message, when set.
  std::function<void()> onPrint;
};

class DocumentOfTest final : public HostDocument {
 public:
  OdDbDatabasePtr database() override { return drawing; }
  HostTransientService* transientService() override { return nullptr; }
  bool isReady() const override { return ready; }

  OdDbDatabasePtr drawing = OdDbDatabasePtr(new OdDbDatabase);
  bool ready = true;
};

class ApplicationOfTest final : public HostApplication {
 public:
  HostDocument* activeDocument() override { return document; }
  void addReactor(HostApDocManagerReactor*) override {}
  void removeReactor(HostApDocManagerReactor*) override {}
  HostMessageLine* messageLine() override { return line; }
  HostFileDialog* fileDialog() override {
    if (onDialogWanted) onDialogWanted();
    return dialog;
  }

  HostDocument* document = nullptr;
  HostMessageLine* line = nullptr;
  HostFileDialog* dialog = nullptr;
  std::function<void()> onDialogWanted;
};

struct ImportedPoint {
  std::wstring name;
  double x, y, z, w;

  friend bool operator==(const ImportedPoint& a, const ImportedPoint& b) {
    return a.name == b.name && a.x == b.x && a.y == b.y && a.z == b.z && a.w == b.w;
  }
  friend std::ostream& operator<<(std::ostream& stream, const ImportedPoint& point);
};

/// A folder that goes with the object.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// Writes a file, with the folders on its way, byte by byte; gives its path.
  std::wstring write(const std::wstring& name, const std::string& bytes) const;
  std::wstring path(const std::wstring& name) const;
  std::wstring makeFolder(const std::wstring& name) const;

 private:
  boost::filesystem::path folder;
};

/// One host for one test.
class ImportTest : public ::testing::Test {
 protected:
  ImportTest();
  ~ImportTest() override;

  /// Runs the command, the user choosing these files and leaving that row of the filter list.
  void import(const std::vector<std::wstring>& paths, int filterIndex = 1);

  /// The groups of the drawing in the order of entry; none when it has no dictionary of them.
  std::vector<std::wstring> groups() const;
  std::vector<ImportedPoint> points(const std::wstring& group) const;

  std::vector<std::wstring>& messages() { return line.messages; }

  TemporaryFolder files;
  DialogOfTest dialog;
  MessageLineOfTest line;
  DocumentOfTest document;
  ApplicationOfTest application;
};

/// The application object that the program's exports give; null for a host without one.
void setApplication(HostApplication* application);

}  // namespace tiepoint::testing
