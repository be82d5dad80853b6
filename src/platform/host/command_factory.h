// The host's factory of commands.
#pragma once

/// The body of a command: no arguments, no result.
using HostCommandBody = void (*)();

class ICmdFactory {
 public:
  /// Adds a command; the texts are copied.
  virtual void addCommand(const wchar_t* group, const wchar_t* globalName, const wchar_t* localName, int flags,
                          HostCommandBody body) = 0;
  /// Gives the factory back; it isn't to be used afterwards.
  virtual void release() = 0;

 protected:
  ~ICmdFactory() = default;
};
