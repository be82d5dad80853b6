// The library "ZorApp": a host that has a profile has it loaded.
#include "exports.h"

FOREIGN_HOST_EXPORT HostAppService* GetApp() { return newForeignAppService(); }
