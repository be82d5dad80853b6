#include "workbench/picture/palette.h"

#include <gtest/gtest.h>

#include <vector>

namespace tiepoint::workbench::picture {

std::ostream& operator<<(std::ostream& stream, const Rgb& color) {
  return stream << int(color.red) << ' ' << int(color.green) << ' ' << int(color.blue);
}

namespace {

TEST(Palette, BeginsWithTheFullHuesWhiteAndTwoGreys) {
  const std::vector<Rgb> expected{{255, 0, 0},   {255, 255, 0},   {0, 255, 0},     {0, 255, 255},  {0, 0, 255},
                                  {255, 0, 255}, {255, 255, 255}, {128, 128, 128}, {192, 192, 192}};
  for (std::uint16_t i = 1; i <= 9; ++i) EXPECT_EQ(paletteColor(i), expected[i - 1u]) << i;
}

TEST(Palette, GoesRoundTheHuesInStepsOfFifteenDegrees) {
  EXPECT_EQ(paletteColor(10), (Rgb{255, 0, 0}));
  EXPECT_EQ(paletteColor(20), (Rgb{255, 63, 0}));
  EXPECT_EQ(paletteColor(30), (Rgb{255, 127, 0}));
  EXPECT_EQ(paletteColor(40), (Rgb{255, 191, 0}));
  EXPECT_EQ(paletteColor(50), (Rgb{255, 255, 0}));
  EXPECT_EQ(paletteColor(60), (Rgb{191, 255, 0}));
  EXPECT_EQ(paletteColor(90), (Rgb{0, 255, 0}));
  EXPECT_EQ(paletteColor(110), (Rgb{0, 255, 127}));
  EXPECT_EQ(paletteColor(130), (Rgb{0, 255, 255}));
  EXPECT_EQ(paletteColor(170), (Rgb{0, 0, 255}));
  EXPECT_EQ(paletteColor(190), (Rgb{127, 0, 255}));
  EXPECT_EQ(paletteColor(210), (Rgb{255, 0, 255}));
  EXPECT_EQ(paletteColor(240), (Rgb{255, 0, 63}));
}

TEST(Palette, DarkensAHueInFiveStepsWithAPalerColourBesideEach) {
  const std::vector<Rgb> expected{{255, 0, 0},   {255, 127, 127}, {165, 0, 0},  {165, 82, 82}, {127, 0, 0},
                                  {127, 63, 63}, {76, 0, 0},      {76, 38, 38}, {38, 0, 0},    {38, 19, 19}};
  for (std::uint16_t i = 0; i < 10; ++i) EXPECT_EQ(paletteColor(static_cast<std::uint16_t>(10 + i)), expected[i]) << i;
  EXPECT_EQ(paletteColor(21), (Rgb{255, 159, 127}));
  EXPECT_EQ(paletteColor(94), (Rgb{0, 127, 0}));
}

TEST(Palette, EndsWithGreysUpToWhite) {
  EXPECT_EQ(paletteColor(250), (Rgb{51, 51, 51}));
  EXPECT_EQ(paletteColor(251), (Rgb{91, 91, 91}));
  EXPECT_EQ(paletteColor(254), (Rgb{214, 214, 214}));
  EXPECT_EQ(paletteColor(255), (Rgb{255, 255, 255}));
}

TEST(Palette, TakesSevenForAnIndexThatItLacks) {
  EXPECT_EQ(paletteColor(0), paletteColor(7));
  EXPECT_EQ(paletteColor(256), paletteColor(7));
  EXPECT_EQ(paletteColor(65535), paletteColor(7));
}

TEST(Palette, TurnsWhiteToBlackOnPaperAndNothingElse) {
  EXPECT_EQ(inkColor(7), (Rgb{0, 0, 0}));
  EXPECT_EQ(inkColor(255), (Rgb{0, 0, 0}));
  for (std::uint16_t i = 1; i < 255; ++i) {
    if (i == 7) continue;
    EXPECT_EQ(inkColor(i), paletteColor(i)) << i;
  }
}

TEST(Palette, KnowsYellowForBrightAndBlueForDark) {
  EXPECT_DOUBLE_EQ(brightness({255, 255, 255}), 1.0);
  EXPECT_DOUBLE_EQ(brightness({0, 0, 0}), 0.0);
  EXPECT_DOUBLE_EQ(brightness({255, 255, 0}), 0.886);
  EXPECT_DOUBLE_EQ(brightness({0, 0, 255}), 0.114);
}

}  // namespace
}  // namespace tiepoint::workbench::picture
