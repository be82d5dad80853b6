#include "workbench/picture/surface.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <new>
#include <stdexcept>
#include <utility>

namespace tiepoint::workbench::picture {

namespace {

/// A pixel is 1/96 of an inch on paper, a point 1/72.
constexpr double pointsPerPixel = 0.75;

cairo_status_t append(void* bytes, const unsigned char* data, unsigned int length) {
  try {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
  } catch (...) {
    return CAIRO_STATUS_NO_MEMORY;
  }
}

/// The library numbers the sheets of a process, and an SVG names its own.
void forgetSheetNumber(std::string& svg) {
  static const std::string begin = "id=\"surface";
  const std::size_t found = svg.find(begin);
  if (found == std::string::npos) return;
  const std::size_t digits = found + begin.size();
  svg.erase(digits, svg.find('"', digits) - digits);
}

cairo_surface_t* newSvg(std::string& bytes, const Size& size) {
  cairo_surface_t* sheet = cairo_svg_surface_create_for_stream(append, &bytes, size.width, size.height);
  cairo_svg_surface_set_document_unit(sheet, CAIRO_SVG_UNIT_PX);
  return sheet;
}

cairo_surface_t* newPdf(std::string& bytes, const Size& size) {
  cairo_surface_t* sheet =
      cairo_pdf_surface_create_for_stream(append, &bytes, size.width * pointsPerPixel, size.height * pointsPerPixel);
  // The date of now would stand there otherwise.
  cairo_pdf_surface_set_metadata(sheet, CAIRO_PDF_METADATA_CREATE_DATE, "");
  cairo_pdf_surface_set_metadata(sheet, CAIRO_PDF_METADATA_CREATOR, "tiepoint");
  return sheet;
}

cairo_surface_t* newSheet(Format format, std::string& bytes, const Size& size) {
  if (format == Format::svg) return newSvg(bytes, size);
  if (format == Format::pdf) return newPdf(bytes, size);
  return cairo_image_surface_create(CAIRO_FORMAT_RGB24, size.width, size.height);
}

}  // namespace

Surface::Surface(Format format_, const Size& size)
    : format(format_), sheet(newSheet(format_, bytes, size)), pen(cairo_create(sheet)) {
  if (cairo_status(pen) != CAIRO_STATUS_SUCCESS) {
    cairo_destroy(pen);
    cairo_surface_destroy(sheet);
    throw std::bad_alloc();
  }
  if (format == Format::pdf) cairo_scale(pen, pointsPerPixel, pointsPerPixel);
}

Surface::~Surface() {
  cairo_destroy(pen);
  cairo_surface_destroy(sheet);
}

std::string Surface::finish() {
  cairo_status_t status = cairo_status(pen);
  if (status == CAIRO_STATUS_SUCCESS && format == Format::png) {
    status = cairo_surface_write_to_png_stream(sheet, append, &bytes);
  }
  cairo_surface_finish(sheet);
  if (status == CAIRO_STATUS_SUCCESS) status = cairo_surface_status(sheet);
  if (status != CAIRO_STATUS_SUCCESS) {
    throw std::runtime_error(std::string("the picture can't be drawn: ") + cairo_status_to_string(status));
  }
  if (format == Format::svg) forgetSheetNumber(bytes);
  return std::move(bytes);
}

}  // namespace tiepoint::workbench::picture
