// Whole pictures beside those that were found good.
#include <gtest/gtest.h>

#include <random>

#include "workbench/picture/marked_points.h"
#include "workbench/picture/picture.h"
#include "workbench/picture/picture_comparison.h"

namespace tiepoint::workbench::picture {
namespace {

using namespace tiepoint::testing;

struct Survey {
  std::vector<MarkedPoint> points;
  Content content;
};

/// `perGroup` points in each of the groups, in a hall of 60 x 40 x 8.
Survey surveyOf(std::size_t groups, std::size_t perGroup) {
  std::mt19937 random(3);
  const auto number = [&](double size) { return size * (static_cast<double>(random()) / 4294967296.0); };
  Survey survey;
  survey.content.title = "hall.tiepoint";
  survey.content.subtitle = "Registered pairwise with base S1; all points in use; RMS 1.365 mm";
  survey.content.lengthUnit = "m";
  survey.content.residualUnit = "mm";
  survey.content.residualUnitsPerLength = 1000.0;
  survey.content.residualHead = "RMS, mm";
  survey.content.remarks = {"Stands out: T1 in S1, 43.634 mm, 22.8 times the median."};
  for (std::size_t g = 0; g < groups; ++g) {
    const auto color = static_cast<std::uint16_t>(g < 6 ? g + 1 : 10 * (g % 24 + 1));
    survey.content.groups.push_back({"S" + std::to_string(g + 1), color, perGroup, "1.365"});
    if (g < 6) survey.content.stations.push_back({"S" + std::to_string(g + 1), color, {number(60), number(40), 2}});
    for (std::size_t i = 0; i < perGroup; ++i) {
      const OdGePoint3d place{number(60), number(40), number(8)};
      const std::string name = "T" + std::to_string(survey.points.size() + 1);
      const bool isBad = survey.points.empty();
      const OdGeVector3d residual =
          isBad ? OdGeVector3d{0.035, 0.026, 0} : OdGeVector3d{number(0.004) - 0.002, number(0.004) - 0.002, 0};
      survey.content.residuals.push_back({place, place + residual, color, name, isBad ? "T1 in S1: 43.634 mm" : ""});
      survey.points.push_back({place, name, color});
    }
  }
  return survey;
}

std::string pngOf(const Survey& survey, const Size& size, Direction direction) {
  const TestDrawable drawable(drawingOf(survey.points, survey.points.size() > 1000 ? 2.0 : 10.0));
  return drawPicture({Format::png, size, direction}, survey.content, {&drawable}).bytes;
}

TEST(ExpectedPictures, OfThreePoints) {
  const Survey survey = surveyOf(1, 3);
  EXPECT_TRUE(looksAsExpected(pngOf(survey, {640, 480}, Direction::top), "three_640x480.png", 2));
  EXPECT_TRUE(looksAsExpected(pngOf(survey, {1920, 1080}, Direction::top), "three_1920x1080.png", 4));
}

TEST(ExpectedPictures, OfFiveThousandPoints) {
  const Survey survey = surveyOf(50, 100);
  EXPECT_TRUE(looksAsExpected(pngOf(survey, {640, 480}, Direction::top), "many_640x480.png", 3));
  EXPECT_TRUE(looksAsExpected(pngOf(survey, {1920, 1080}, Direction::top), "many_1920x1080.png", 6));
}

TEST(ExpectedPictures, FromEveryDirection) {
  const Survey survey = surveyOf(4, 8);
  EXPECT_TRUE(looksAsExpected(pngOf(survey, {640, 480}, Direction::front), "front_640x480.png", 2));
  EXPECT_TRUE(looksAsExpected(pngOf(survey, {640, 480}, Direction::side), "side_640x480.png", 2));
  EXPECT_TRUE(looksAsExpected(pngOf(survey, {640, 480}, Direction::iso), "iso_640x480.png", 2));
  EXPECT_TRUE(looksAsExpected(pngOf(survey, {640, 480}, Direction::fit), "fit_640x480.png", 2));
}

/// How much of a reduced picture differs when something about its survey does.
double visibleShare(const Survey& one, const Survey& other, const Size& size, int factor) {
  return differenceOf(reduced(pixelsOf(pngOf(one, size, Direction::top)), factor),
                      reduced(pixelsOf(pngOf(other, size, Direction::top)), factor))
      .visibleShare;
}

TEST(ExpectedPictures, AreToldFromThoseThatLackOneCross) {
  const Survey whole = surveyOf(1, 3);
  Survey lacking = whole;
  lacking.points.erase(lacking.points.begin() + 1);
  EXPECT_GT(visibleShare(whole, lacking, {640, 480}, 2), 0.0002);
  EXPECT_GT(visibleShare(whole, lacking, {1920, 1080}, 4), 0.0002);
}

TEST(ExpectedPictures, AreToldFromThoseOfAnotherColour) {
  Survey survey = surveyOf(1, 3);
  for (MarkedPoint& point : survey.points) point.color = 5;
  EXPECT_GT(visibleShare(survey, surveyOf(1, 3), {640, 480}, 2), 0.0002);
  EXPECT_GT(visibleShare(survey, surveyOf(1, 3), {1920, 1080}, 4), 0.0002);
}

TEST(ExpectedPictures, AreTheSameAsThemselves) {
  const Pixels pixels = pixelsOf(pngOf(surveyOf(1, 3), {640, 480}, Direction::top));
  EXPECT_EQ(pixels.width, 640);
  EXPECT_EQ(pixels.height, 480);
  EXPECT_EQ(differenceOf(pixels, pixels).mean, 0.0);
  EXPECT_EQ(differenceOf(pixels, pixels).visibleShare, 0.0);
}

}  // namespace
}  // namespace tiepoint::workbench::picture
