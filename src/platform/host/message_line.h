// The host's command line, as far as a command writes on it.
#pragma once

class HostMessageLine {
 public:
  virtual ~HostMessageLine() = default;

  /// Prints one message, formatted as by the standard library's wide printf; "%s" takes wide text
  /// on the host's platform and so does here.
  virtual void print(const wchar_t* format, ...) = 0;
};
