#include "workbench/picture/fonts.h"

#include <cairo-ft.h>
#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

namespace tiepoint::workbench::picture {

namespace {

constexpr const char* family = "DejaVu Sans";
/// Widths are measured at this size and divided by it.
constexpr double rulerSize = 1000.0;

const FcChar8* fcText(const char* text) { return reinterpret_cast<const FcChar8*>(text); }

/// What is installed, for as long as the fonts are looked for.
using FontConfig = std::unique_ptr<FcConfig, decltype(&FcConfigDestroy)>;

/// The files that hold the style, in the order of their names.
std::vector<std::string> filesOf(const char* style, const FontConfig& config) {
  const std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)> pattern(FcPatternCreate(), FcPatternDestroy);
  FcPatternAddString(pattern.get(), FC_FAMILY, fcText(family));
  FcPatternAddString(pattern.get(), FC_STYLE, fcText(style));
  const std::unique_ptr<FcObjectSet, decltype(&FcObjectSetDestroy)> wanted(FcObjectSetBuild(FC_FILE, nullptr),
                                                                           FcObjectSetDestroy);
  const std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)> found(
      FcFontList(config.get(), pattern.get(), wanted.get()), FcFontSetDestroy);
  std::vector<std::string> files;
  for (int i = 0; found && i < found->nfont; ++i) {
    FcChar8* file = nullptr;
    if (FcPatternGetString(found->fonts[i], FC_FILE, 0, &file) != FcResultMatch) continue;
    files.emplace_back(reinterpret_cast<const char*>(file));
  }
  std::sort(files.begin(), files.end());
  return files;
}

cairo_font_face_t* loadedFace(FT_Library library, const char* style, const FontConfig& config) {
  for (const std::string& file : filesOf(style, config)) {
    FT_Face face = nullptr;
    if (FT_New_Face(library, file.c_str(), 0, &face) != 0) continue;
    return cairo_ft_font_face_create_for_ft_face(face, FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP);
  }
  throw std::runtime_error(std::string("the font ") + family +
                           ", which pictures need, isn't installed (Debian: fonts-dejavu-core)");
}

cairo_scaled_font_t* rulerOf(cairo_font_face_t* face) {
  cairo_matrix_t size, page;
  cairo_matrix_init_scale(&size, rulerSize, rulerSize);
  cairo_matrix_init_identity(&page);
  cairo_font_options_t* options = plainFontOptions();
  cairo_scaled_font_t* ruler = cairo_scaled_font_create(face, &size, &page, options);
  cairo_font_options_destroy(options);
  return ruler;
}

FT_Library newLibrary() {
  FT_Library library = nullptr;
  if (FT_Init_FreeType(&library) != 0) throw std::runtime_error("the font library can't be initialised");
  return library;
}

}  // namespace

cairo_font_options_t* plainFontOptions() {
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  return options;
}

Fonts::Fonts() {
  const FT_Library library = newLibrary();
  const FontConfig config(FcInitLoadConfigAndFonts(), FcConfigDestroy);
  regular = loadedFace(library, "Book", config);
  bold = loadedFace(library, "Bold", config);
  regularRuler = rulerOf(regular);
  boldRuler = rulerOf(bold);
}

const Fonts& Fonts::installed() {
  // Never taken down: the faces are kept by caches that last as long as the process.
  static const Fonts* const fonts = new Fonts();
  return *fonts;
}

double Fonts::widthOf(const std::string& text, bool isBold) const {
  cairo_text_extents_t extents;
  cairo_scaled_font_text_extents(isBold ? boldRuler : regularRuler, text.c_str(), &extents);
  return extents.x_advance / rulerSize;
}

}  // namespace tiepoint::workbench::picture
