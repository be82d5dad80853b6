#include "module/import_host.h"

#include <array>
#include <boost/filesystem/fstream.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/locale/utf8_codecvt.hpp>
#include <cstdarg>
#include <cwchar>
#include <locale>

#include "fake_host/exported.h"
#include "module/import_command.h"
#include "platform/os/loaded_modules.h"
#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_dictionary.h"

namespace tiepoint::testing {
namespace {

namespace fs = boost::filesystem;

HostApplication* current = nullptr;

HostApplication* giveApplication() { return current; }

/// The host's "%s" takes wide text, the standard library's takes narrow text.
std::wstring standardFormat(std::wstring format) {
  for (std::size_t at = 0; (at = format.find(L"%s", at)) != std::wstring::npos; at += 3) format.replace(at, 2, L"%ls");
  return format;
}

OdDbDictionaryPtr groupsOf(const OdDbDatabase& database) {
  const OdDbObjectId id = ZOR::RegistrationObjectPointsRepository::registrationPointsDictionary(database);
  return id.isNull() ? OdDbDictionaryPtr() : OdDbDictionaryPtr(id.safeOpenObject());
}

}  // namespace

HostFileDialogAnswer DialogOfTest::open(const HostFileDialogRequest& request) {
  ++asked;
  lastRequest = request;
  lastBuffer.assign(request.buffer, request.bufferLength);
  if (whileOpen) whileOpen();
  return answer;
}

void MessageLineOfTest::print(const wchar_t* format, ...) {
  std::array<wchar_t, 1024> text{};
  std::va_list arguments;
  va_start(arguments, format);
  const int length = std::vswprintf(text.data(), text.size(), standardFormat(format).c_str(), arguments);
  va_end(arguments);
  messages.emplace_back(length < 0 ? L"(can't be formatted)" : text.data());
  if (onPrint) onPrint();
}

std::ostream& operator<<(std::ostream& stream, const ImportedPoint& point) {
  return stream << ::testing::PrintToString(point.name) << ' ' << point.x << ' ' << point.y << ' ' << point.z << ' '
                << point.w;
}

TemporaryFolder::TemporaryFolder()
    : folder(fs::temp_directory_path() / fs::unique_path("tiepoint-import-%%%%-%%%%-%%%%")) {
  fs::create_directories(folder);
}

TemporaryFolder::~TemporaryFolder() {
  boost::system::error_code ignored;
  fs::remove_all(folder, ignored);
}

std::wstring TemporaryFolder::path(const std::wstring& name) const { return (folder / name).wstring(); }

std::wstring TemporaryFolder::write(const std::wstring& name, const std::string& bytes) const {
  const fs::path file = folder / name;
  fs::create_directories(file.parent_path());
  fs::ofstream stream(file, std::ios::binary);
  stream << bytes;
  return file.wstring();
}

std::wstring TemporaryFolder::makeFolder(const std::wstring& name) const {
  fs::create_directories(folder / name);
  return path(name);
}

void setApplication(HostApplication* application) { current = application; }

ImportTest::ImportTest() {
  fs::path::imbue(std::locale(std::locale::classic(), new boost::locale::utf8_codecvt<wchar_t>));
  application.document = &document;
  application.line = &line;
  application.dialog = &dialog;
  setApplication(&application);
}

ImportTest::~ImportTest() { setApplication(nullptr); }

void ImportTest::import(const std::vector<std::wstring>& paths, int filterIndex) {
  dialog.answer.accepted = true;
  dialog.answer.paths = paths;
  dialog.answer.filterIndex = filterIndex;
  ZOR::reg::importReferencePoints();
}

std::vector<std::wstring> ImportTest::groups() const {
  std::vector<std::wstring> names;
  const OdDbDictionaryPtr dictionary = groupsOf(*document.drawing);
  if (dictionary.isNull()) return names;
  for (const OdDbDictionaryEntry& entry : dictionary->entries()) names.push_back(entry.name.wideText());
  return names;
}

std::vector<ImportedPoint> ImportTest::points(const std::wstring& group) const {
  std::vector<ImportedPoint> result;
  const OdDbObjectId id = groupsOf(*document.drawing)->getAt(OdString(group));
  if (id.isNull()) return result;
  const ZOR::RegistrationObjectPointsRepositoryPtr repository(id.safeOpenObject());
  for (const ZOR::_StoredPoint& point : repository->storedPoints()) {
    result.push_back({point.name.wideText(), point.x, point.y, point.z, point.w});
  }
  return result;
}

}  // namespace tiepoint::testing

FAKE_HOST_EXPORT void* GetMainDllInstance() { return tiepoint::os::loadedModule(static_cast<const wchar_t*>(nullptr)); }

FAKE_HOST_EXPORT void* get_host_funcptr(int index) {
  return index == 2 ? reinterpret_cast<void*>(&tiepoint::testing::giveApplication) : nullptr;
}
