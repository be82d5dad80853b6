// An open document of the workbench.
#pragma once

#include <memory>
#include <string>

#include "platform/host/document.h"
#include "workbench/drawing/drawing.h"
#include "workbench/view/transient_service.h"

namespace tiepoint::workbench {

class Document : public HostDocument {
 public:
  Document(int number, std::unique_ptr<Drawing> drawing);

  OdDbDatabasePtr database() override { return file->database(); }
  HostTransientService* transientService() override { return &transients; }
  bool isReady() const override { return true; }

  /// Counted from 1, never used twice.
  int number() const { return documentNumber; }
  const std::string& path() const { return file->path(); }
  TransientService& transient() { return transients; }

 private:
  int documentNumber;
  std::unique_ptr<Drawing> file;
  TransientService transients;
};

}  // namespace tiepoint::workbench
