// The host's profile, as far as a module reads it. Objects are counted in the manner of COM: who
// is given one releases it.
#pragma once

#include "platform/host/zor_variant.h"

/// Names an interface.
struct HostInterfaceId {
  unsigned data1;
  unsigned short data2;
  unsigned short data3;
  unsigned char data4[8];
};

/// The application service as a class of "CreateObjectC".
inline constexpr HostInterfaceId iidHostAppService{
    0x5a1c3f02, 0x7b44, 0x4c19, {0x9e, 0x20, 0x31, 0x5d, 0x88, 0x0a, 0x6f, 0x01}};
/// The profile of the application service.
inline constexpr HostInterfaceId iidHostProfile{
    0x5a1c3f03, 0x7b44, 0x4c19, {0x9e, 0x20, 0x31, 0x5d, 0x88, 0x0a, 0x6f, 0x01}};

class HostProfileSection {
 public:
  /// Non-zero when the key holds a value, which then stands in `value`.
  virtual int readValue(const wchar_t* key, CZorVariant& value) = 0;
  virtual void release() = 0;

 protected:
  ~HostProfileSection() = default;
};

class HostProfile {
 public:
  /// The section at `path`, or null; `createWhenMissing` is 0 or 1.
  virtual HostProfileSection* openSection(const wchar_t* path, int createWhenMissing) = 0;
  virtual void release() = 0;

 protected:
  ~HostProfile() = default;
};

class HostAppService {
 public:
  /// The profile under an interface identifier, or null.
  virtual HostProfile* queryProfile(const HostInterfaceId& interfaceId) = 0;
  virtual void release() = 0;

 protected:
  ~HostAppService() = default;
};
