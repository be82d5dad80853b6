// A library with an export of its own and a dependency with another.
extern "C" int lookupDependencyValue();
extern "C" int lookupUserValue();
int lookupUserValue() { return lookupDependencyValue() - 1; }
