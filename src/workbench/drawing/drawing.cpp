#include "workbench/drawing/drawing.h"

#include "workbench/drawing/drawing_file.h"
#include "workbench/drawing/drawing_loader.h"
#include "workbench/drawing/sqlite_store.h"

namespace tiepoint::workbench {

class Drawing::File {
 public:
  File() : database(new OdDbDatabase) {}
  ~File();
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  void open(const std::string& fileName, bool createWhenMissing);

  std::string path;
  OdDbDatabasePtr database;

 private:
  std::unique_ptr<SqliteConnection> connection;
  std::unique_ptr<SqliteStore> store;
};

void Drawing::File::open(const std::string& fileName, bool createWhenMissing) {
  path = fileName;
  connection = openDrawingFile(path, createWhenMissing);
  loadDrawing(*connection, *database);
  if (connection->isReadOnly()) {
    database->setReadOnly(true);
  } else {
    store = std::make_unique<SqliteStore>(*connection);
    database->setStore(store.get());
  }
}

/// Whoever still holds the database finds it as it was last kept, and for reading only.
Drawing::File::~File() {
  if (database->hasActiveTransaction()) database->abortTransaction();
  if (store) store->settle(*database);
  database->setStore(nullptr);
  database->setReadOnly(true);
}

std::unique_ptr<Drawing> Drawing::open(const std::string& path, bool createWhenMissing) {
  auto file = std::make_unique<File>();
  file->open(path, createWhenMissing);
  return std::unique_ptr<Drawing>(new Drawing(std::move(file)));
}

std::unique_ptr<Drawing> Drawing::temporary() {
  return std::unique_ptr<Drawing>(new Drawing(std::make_unique<File>()));
}

Drawing::Drawing(std::unique_ptr<File> opened) : file(std::move(opened)) {}

Drawing::~Drawing() = default;

const std::string& Drawing::path() const { return file->path; }

const OdDbDatabasePtr& Drawing::database() const { return file->database; }

}  // namespace tiepoint::workbench
