// What lookup_user links.
extern "C" int lookupDependencyValue();
int lookupDependencyValue() { return 43; }
