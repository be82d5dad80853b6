// A sheet that becomes the bytes of a picture's file.
#pragma once

#include <cairo.h>

#include <string>

#include "workbench/picture/picture_request.h"

namespace tiepoint::workbench::picture {

/// The same drawing gives the same bytes: no file holds a date.
class Surface {
 public:
  /// Throws std::bad_alloc when there is no memory for the sheet.
  Surface(Format format, const Size& size);
  ~Surface();
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;

  /// Its unit is a pixel, its origin the upper left corner.
  cairo_t* context() const { return pen; }

  /// The file's bytes; nothing can be drawn afterwards. Throws std::runtime_error with one line.
  std::string finish();

 private:
  Format format;
  std::string bytes;
  cairo_surface_t* sheet;
  cairo_t* pen;
};

}  // namespace tiepoint::workbench::picture
