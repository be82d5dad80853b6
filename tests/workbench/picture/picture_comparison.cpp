#include "workbench/picture/picture_comparison.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>

namespace tiepoint::testing {

namespace {

/// Other releases of the drawing library and the font shift the grey of edges by a little.
constexpr double largestMean = 0.3;
constexpr double largestVisibleShare = 0.0002;
constexpr int visibleDifference = 40;

using Sheet = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;

struct Reader {
  const std::string& bytes;
  std::size_t place = 0;
};

cairo_status_t readNext(void* reader, unsigned char* data, unsigned int length) {
  auto& from = *static_cast<Reader*>(reader);
  if (from.bytes.size() - from.place < length) return CAIRO_STATUS_READ_ERROR;
  std::copy_n(from.bytes.begin() + static_cast<std::ptrdiff_t>(from.place), length, data);
  from.place += length;
  return CAIRO_STATUS_SUCCESS;
}

std::string fileContent(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

/// Of a pixel's four bytes in a sheet.
std::ptrdiff_t placeOf(int x, int y, int stride) { return std::ptrdiff_t{y} * stride + std::ptrdiff_t{4} * x; }

void writePng(const Pixels& pixels, const std::string& path) {
  const Sheet sheet(cairo_image_surface_create(CAIRO_FORMAT_RGB24, pixels.width, pixels.height), cairo_surface_destroy);
  const int stride = cairo_image_surface_get_stride(sheet.get());
  unsigned char* data = cairo_image_surface_get_data(sheet.get());
  for (int y = 0; y < pixels.height; ++y) {
    for (int x = 0; x < pixels.width; ++x) {
      const unsigned char* rgb = &pixels.values[static_cast<std::size_t>(3 * (y * pixels.width + x))];
      const std::uint32_t word = (std::uint32_t{rgb[0]} << 16) | (std::uint32_t{rgb[1]} << 8) | rgb[2];
      std::copy_n(reinterpret_cast<const unsigned char*>(&word), 4, data + placeOf(x, y, stride));
    }
  }
  cairo_surface_mark_dirty(sheet.get());
  cairo_surface_write_to_png(sheet.get(), path.c_str());
}

}  // namespace

Pixels pixelsOf(const std::string& png) {
  Reader reader{png};
  const Sheet sheet(cairo_image_surface_create_from_png_stream(readNext, &reader), cairo_surface_destroy);
  if (cairo_surface_status(sheet.get()) != CAIRO_STATUS_SUCCESS) throw std::runtime_error("no PNG");
  Pixels pixels{cairo_image_surface_get_width(sheet.get()), cairo_image_surface_get_height(sheet.get()), {}};
  const int stride = cairo_image_surface_get_stride(sheet.get());
  const unsigned char* data = cairo_image_surface_get_data(sheet.get());
  for (int y = 0; y < pixels.height; ++y) {
    for (int x = 0; x < pixels.width; ++x) {
      std::uint32_t word = 0;
      std::copy_n(data + placeOf(x, y, stride), 4, reinterpret_cast<unsigned char*>(&word));
      for (const int shift : {16, 8, 0}) pixels.values.push_back(static_cast<unsigned char>(word >> shift & 0xFF));
    }
  }
  return pixels;
}

Pixels reduced(const Pixels& pixels, int factor) {
  Pixels small{pixels.width / factor, pixels.height / factor, {}};
  for (int y = 0; y < small.height; ++y) {
    for (int x = 0; x < small.width; ++x) {
      for (int part = 0; part < 3; ++part) {
        int sum = 0;
        for (int i = 0; i < factor * factor; ++i) {
          const int row = y * factor + i / factor;
          const int column = x * factor + i % factor;
          sum += pixels.values[static_cast<std::size_t>(3 * (row * pixels.width + column) + part)];
        }
        small.values.push_back(static_cast<unsigned char>((sum + factor * factor / 2) / (factor * factor)));
      }
    }
  }
  return small;
}

Difference differenceOf(const Pixels& a, const Pixels& b) {
  if (a.width != b.width || a.height != b.height) return {255.0, 1.0};
  double sum = 0.0;
  double visible = 0.0;
  for (std::size_t i = 0; i < a.values.size(); i += 3) {
    int largest = 0;
    for (std::size_t part = i; part < i + 3; ++part) {
      const int apart = std::abs(int{a.values[part]} - int{b.values[part]});
      sum += apart;
      largest = std::max(largest, apart);
    }
    visible += largest > visibleDifference ? 1.0 : 0.0;
  }
  return {sum / static_cast<double>(a.values.size()), visible * 3.0 / static_cast<double>(a.values.size())};
}

::testing::AssertionResult looksAsExpected(const std::string& png, const std::string& name, int factor) {
  const Pixels found = reduced(pixelsOf(png), factor);
  const std::string kept = fileContent(std::string(EXPECTED_PICTURES) + "/" + name);
  const Difference difference = kept.empty() ? Difference{255.0, 1.0} : differenceOf(found, pixelsOf(kept));
  if (difference.mean <= largestMean && difference.visibleShare <= largestVisibleShare) {
    return ::testing::AssertionSuccess();
  }
  writePng(found, std::string(DIFFERING_PICTURES) + "/" + name);
  return ::testing::AssertionFailure() << name << ": mean difference " << difference.mean << ", visible in "
                                       << 100.0 * difference.visibleShare
                                       << " % of the pixels; the new one is left in the test's build folder";
}

}  // namespace tiepoint::testing
