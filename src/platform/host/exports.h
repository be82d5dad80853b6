// The exports by which a module finds its host at run time.
#pragma once

#include "platform/host/application.h"
#include "platform/host/command_factory.h"
#include "platform/host/profile.h"

/// Entries of the host's table of functions.
enum HostFunctionIndex : int { hostApplicationEntry = 2, hostRefreshEntry = 12 };

/// Entry 2: the application object.
using HostApplicationFunction = HostApplication* (*)();
/// Entry 12: refresh of the views; the argument is 0.
using HostRefreshFunction = void (*)(unsigned char);

/// "GetMainDllInstance" of the main executable and "GetMainDllInstanceEx" of ZorApp: the handle of
/// the host's main module.
using GetMainDllInstanceFunction = void* (*)();
/// "GetMainDllNameW" of the main executable: the name of the host's main module.
using GetMainDllNameFunction = const wchar_t* (*)();
/// "get_host_funcptr" of the main module: an entry of the host's table, or null.
using GetHostFunctionFunction = void* (*)(int index);
/// "new_ICmdFactory" of the main module.
using NewCommandFactoryFunction = void (*)(ICmdFactory** factory);
/// "GetApp" of ZorApp or of the main module.
using GetAppFunction = HostAppService* (*)();
/// "CreateObjectC" of ZorCore.
using CreateObjectFunction = int (*)(const wchar_t* className, int reserved, const HostInterfaceId& interfaceId,
                                     void** result);
