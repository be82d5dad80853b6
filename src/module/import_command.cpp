#include "module/import_command.h"

#include <memory>
#include <string>
#include <vector>

#include "files/string_table.h"
#include "host_access/host_objects.h"
#include "host_access/raised_to_writing.h"
#include "module/point_file.h"
#include "module/wide_path.h"
#include "platform/host/file_dialog.h"
#include "platform/host/message_line.h"
#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_dictionary.h"

namespace ZOR::reg {
namespace {

/// Numbers of the command's strings.
enum StringNumber : int {
  dialogTitle = 101,
  filesFound = 104,
  fileNotOpened = 105,
  noPointsInFile = 107,
  noRepository = 108,
  groupsLoaded = 109
};

/// Wide characters; room for a long selection of several files.
constexpr unsigned nameBufferLength = 26101;

/// The host's message line; prints nothing on a host without one.
class Messages {
 public:
  explicit Messages(HostMessageLine* messageLine) : line(messageLine) {}

  template <class... Arguments>
  void print(StringNumber number, Arguments... arguments) {
    if (line) line->print(resourceString(number), arguments...);
  }

 private:
  HostMessageLine* line;
};

/// The dialog's buffer for the chosen names, or null when there is no memory.
std::unique_ptr<wchar_t[]> newNameBuffer() {
  try {
    return std::make_unique<wchar_t[]>(nameBufferLength);
  } catch (...) {
    return nullptr;
  }
}

HostFileDialogRequest dialogRequest(wchar_t* nameBuffer) {
  HostFileDialogRequest request;
  request.title = resourceString(dialogTitle);
  request.flags = hideReadOnly | overwritePrompt;
  request.flags |= allowMultiSelect;
  // The row tells the layout of the files; nothing in a file does.
  request.filters = {{L"NXYZ", L"*.txt"}, {L"XYZ", L"*.txt"}, {L"XYZW", L"*.txt"}, {L"NXYZW", L"*.txt"}};
  request.buffer = nameBuffer;
  request.bufferLength = nameBufferLength;
  return request;
}

/// The chosen files and their layout; not accepted when there is no dialog or it couldn't be shown.
HostFileDialogAnswer askForFiles() {
  HostApplication* application = hostApplication();
  HostFileDialog* dialog = application ? application->fileDialog() : nullptr;
  if (!dialog) return {};
  const std::unique_ptr<wchar_t[]> nameBuffer = newNameBuffer();
  if (!nameBuffer) return {};
  return dialog->open(dialogRequest(nameBuffer.get()));
}

/// The database of the active document; null without one, and while the document isn't ready.
OdDbDatabasePtr readyDatabase(HostApplication& application) {
  HostDocument* document = application.activeDocument();
  if (!document) return {};
  OdDbDatabasePtr database = document->database();
  if (database.isNull() || !document->isReady()) return {};
  return database;
}

/// The drawing's dictionary of groups, open for reading; null when it can't be made or opened.
OdDbDictionaryPtr openGroups(OdDbDatabase& database) {
  const OdDbObjectId id = RegistrationObjectPointsRepository::createRegistrationPointsDictionary(database);
  if (id.isNull()) return {};
  return id.safeOpenObject(OdDb::kForRead);
}

RegistrationObjectPointsRepositoryPtr newRepository() {
  const OdRxClass* repositoryClass = RegistrationObjectPointsRepository::desc();
  if (!repositoryClass) throw OdError(eNullClass);
  return repositoryClass->create();
}

/// True when the file became a group of the dictionary.
bool importFile(const std::wstring& path, int layout, OdDbDictionary& groups, Messages& messages) {
  const std::wstring stem = stemOf(path);
  StoredPointArray points;
  if (!readPointFile(path, layout, points)) {
    messages.print(fileNotOpened, stem.c_str());
    return false;
  }
  if (points.isEmpty()) {
    messages.print(noPointsInFile, stem.c_str());
    return false;
  }
  const OdString groupName(stem);
  if (!groups.getAt(groupName).isNull()) return false;
  const RegistrationObjectPointsRepositoryPtr repository = newRepository();
  if (repository.isNull()) {
    messages.print(noRepository);
    return false;
  }
  {
    const RaisedToWriting access(groups);
    groups.setAt(groupName, repository.get());
  }
  repository->setData(points);
  return true;
}

void importFiles(const HostFileDialogAnswer& chosen, OdDbDictionary* groups, Messages messages) {
  messages.print(filesFound, static_cast<int>(chosen.paths.size()));
  int stored = 0;
  for (const std::wstring& path : chosen.paths) {
    if (importFile(path, chosen.filterIndex, *groups, messages)) ++stored;
  }
  messages.print(groupsLoaded, stored);
}

}  // namespace

void importReferencePoints() {
  const HostFileDialogAnswer chosen = askForFiles();
  if (!chosen.accepted) return;
  // The host goes on behind its modal dialog, so what was there before may be gone.
  HostApplication* application = hostApplication();
  if (!application) return;
  const OdDbDatabasePtr database = readyDatabase(*application);
  if (database.isNull()) return;
  OdDbDictionaryPtr groups;
  if (!chosen.paths.empty()) {
    groups = openGroups(*database);
    if (groups.isNull()) return;
  }
  importFiles(chosen, groups.get(), Messages(application->messageLine()));
}

}  // namespace ZOR::reg
