// The drawing SDK's colour of an entity.
#pragma once

#include <cstdint>

#include "drawing_sdk_export.h"

class DRAWING_SDK_EXPORT OdCmEntityColor {
 public:
  enum ColorMethod : std::uint8_t { kByLayer = 192, kByBlock = 193, kByColor = 194, kByACI = 195 };

  OdCmEntityColor() = default;

  void setColorMethod(ColorMethod method);
  ColorMethod colorMethod() const;
  void setColor(std::uint32_t value) { packed = value; }
  std::uint32_t color() const { return packed; }

 private:
  /// The method stands in the highest byte, red, green and blue or the index below it.
  std::uint32_t packed = 0;
};
