// Shortcuts to the host's objects behind its table of functions.
#pragma once

#include "platform/host/application.h"
#include "platform/host/document.h"
#include "platform/host/transient_service.h"

namespace ZOR::reg {

/// The application object, or null for a host without one.
HostApplication* hostApplication();

/// The active document, or null.
HostDocument* activeDocument();

/// The database of the active document, or null.
OdDbDatabasePtr activeDatabase();

/// Asks the host to draw its views anew; nothing happens when it has no such entry.
void refreshViews();

}  // namespace ZOR::reg
