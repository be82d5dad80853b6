// The module's section of the host's profile.
#pragma once

#include <cstdint>

#include "host_access/held.h"
#include "platform/host/profile.h"

namespace ZOR::reg {

/// The section "PointClouds\\Registration". It is only read; a host without a profile, a missing
/// key, and a value that can't be converted give the default.
class RegistrationSettings {
 public:
  /// Opens the section. Throws what the host throws; nothing of the host's is kept then.
  RegistrationSettings();

  /// Preset number of iterations; 100.
  std::int32_t maxIterations() const;
  /// Preset movement, in drawing units, at which the iteration stops; 0.001.
  double convergenceCriteria() const;
  /// Half length of a marker's lines, pixels; 10.
  std::int32_t sizeLabel() const;
  /// Height of a label's text, pixels; 10.
  std::int32_t heightLabelText() const;
  /// Whether labels are drawn; true.
  bool isVisibleLabelText() const;

 private:
  Held<HostProfileSection> section;
};

}  // namespace ZOR::reg
