// A library with an export of its own and a dependency with another.
#include "fake_host/exported.h"

extern "C" int lookupDependencyValue();
FAKE_HOST_EXPORT int lookupUserValue();
int lookupUserValue() { return lookupDependencyValue() - 1; }
