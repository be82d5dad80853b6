// A library with one export.
extern "C" int lookupHostValue();
int lookupHostValue() { return 41; }
