// The way of the fake module to its host.
#pragma once

#include <string>

#include "platform/host/application.h"
#include "platform/host/document.h"

/// The application object of the host that loaded the module; null without one.
HostApplication* fakeHostApplication();

/// Asks the host to draw its views anew.
void fakeRefresh();

/// Stores a group of one point "T" at the origin in the active drawing.
void fakeStoreGroup(const std::string& name);
