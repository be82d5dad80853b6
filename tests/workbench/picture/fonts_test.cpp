#include "workbench/picture/fonts.h"

#include <gtest/gtest.h>

#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench::picture {
namespace {

/// The number of the text's first glyph; 0 stands for a letter that the font lacks.
unsigned long firstGlyph(const std::string& text, bool isBold) {
  cairo_matrix_t identity;
  cairo_matrix_init_identity(&identity);
  cairo_font_options_t* options = plainFontOptions();
  cairo_scaled_font_t* font = cairo_scaled_font_create(Fonts::installed().face(isBold), &identity, &identity, options);
  cairo_glyph_t* glyphs = nullptr;
  int count = 0;
  cairo_scaled_font_text_to_glyphs(font, 0, 0, text.c_str(), -1, &glyphs, &count, nullptr, nullptr, nullptr);
  const unsigned long index = count > 0 ? glyphs[0].index : 0;
  cairo_glyph_free(glyphs);
  cairo_scaled_font_destroy(font);
  cairo_font_options_destroy(options);
  return index;
}

TEST(Fonts, HoldEveryLetterThatANameCanHave) {
  for (int byte = 0x21; byte <= 0xFF; ++byte) {
    // A deletion, a code without a letter, and a soft hyphen aren't seen.
    if (byte == 0x7F || byte == 0x98 || byte == 0xAD) continue;
    const std::string letter = utf8FromName(std::string(1, static_cast<char>(byte)));
    EXPECT_NE(firstGlyph(letter, false), 0u) << byte;
    EXPECT_NE(firstGlyph(letter, true), 0u) << byte;
  }
}

TEST(Fonts, MeasureTexts) {
  const Fonts& fonts = Fonts::installed();
  EXPECT_EQ(fonts.widthOf("", false), 0.0);
  EXPECT_NEAR(fonts.widthOf("T13", false), 1.883, 0.001);
  EXPECT_GT(fonts.widthOf("T13", true), fonts.widthOf("T13", false));
  EXPECT_NEAR(fonts.widthOf("T13T13", false), 2.0 * fonts.widthOf("T13", false), 1e-3);
}

}  // namespace
}  // namespace tiepoint::workbench::picture
