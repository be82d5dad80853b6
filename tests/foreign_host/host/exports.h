// The doors of this host. A module looks for its host's main module and finds none that the
// executable names, but one that is called "mainview"; the profile it finds by "ZorApp".
#pragma once

#ifdef _WIN32
#define FOREIGN_HOST_EXPORT extern "C" __declspec(dllexport)
#else
#define FOREIGN_HOST_EXPORT extern "C" [[gnu::visibility("default")]]
#endif

class HostAppService;

/// The program's work; its exit status.
FOREIGN_HOST_EXPORT int runForeignHost(int argumentCount, char** arguments);

/// What "ZorApp" gives away.
FOREIGN_HOST_EXPORT HostAppService* newForeignAppService();
