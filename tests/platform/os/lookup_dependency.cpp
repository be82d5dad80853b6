// What lookup_user links.
#include "fake_host/exported.h"

FAKE_HOST_EXPORT int lookupDependencyValue();
int lookupDependencyValue() { return 43; }
