// An open document of the host.
#pragma once

#include "platform/sdk/od_db_database.h"

class HostTransientService;

class HostDocument {
 public:
  virtual ~HostDocument() = default;

  /// The document's drawing, one reference more for the caller.
  virtual OdDbDatabasePtr database() = 0;
  virtual HostTransientService* transientService() = 0;
  /// False while the document can't take a command.
  virtual bool isReady() const = 0;
};
