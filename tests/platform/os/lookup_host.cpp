// A library with one export.
#include "fake_host/exported.h"

FAKE_HOST_EXPORT int lookupHostValue();
int lookupHostValue() { return 41; }
