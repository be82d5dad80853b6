#include "workbench/picture/picture.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <random>

#include "workbench/picture/canvas.h"
#include "workbench/picture/marked_points.h"
#include "workbench/picture/picture_comparison.h"

namespace tiepoint::workbench::picture {
namespace {

using ::testing::Contains;
using ::testing::Not;
using tiepoint::testing::drawingOf;
using tiepoint::testing::MarkedPoint;
using tiepoint::testing::pixelsOf;

std::vector<MarkedPoint> threePoints() { return {{{0, 0, 0}, "T1", 1}, {{10, 0, 0}, "T2", 1}, {{0, 7, 2}, "T3", 2}}; }

std::vector<MarkedPoint> manyPoints() {
  std::mt19937 random(7);
  const auto number = [&](double size) { return size * (static_cast<double>(random()) / 4294967296.0); };
  std::vector<MarkedPoint> points;
  points.reserve(5000);
  for (int i = 0; i < 5000; ++i) {
    points.push_back({{number(200), number(120), number(10)},
                      "P" + std::to_string(i),
                      static_cast<std::uint16_t>(10 * (1 + i / 100 % 24))});
  }
  return points;
}

Content contentOf(std::size_t groups) {
  Content content;
  content.title = "hall.tiepoint";
  content.subtitle = "Registered pairwise with base S1; all points in use; RMS 1.4 mm";
  content.lengthUnit = "m";
  content.residualUnit = "mm";
  content.residualUnitsPerLength = 1000.0;
  content.residualHead = "RMS, mm";
  for (std::size_t i = 0; i < groups; ++i) {
    content.groups.push_back(
        {"Station " + std::to_string(i + 1), static_cast<std::uint16_t>(10 * (1 + i % 24)), 100, "1.365"});
  }
  content.stations = {{"Station 1", 10, {3, 4, 0}}};
  content.residuals = {{{0, 0, 0}, {0.002, 0.001, 0}, 1, "T1", ""},
                       {{10, 0, 0}, {10.03, 0.03, 0}, 2, "T2", "T2 in Station 1: 42.426 mm"}};
  content.remarks = {"Stands out: T2 in Station 1, 42.426 mm, 19.0 times the median."};
  return content;
}

Picture pictureOf(const std::vector<MarkedPoint>& points, const Content& content, const Request& request) {
  const TestDrawable drawable(drawingOf(points, points.size() > 1000 ? 2.0 : 10.0));
  return drawPicture(request, content, {&drawable});
}

std::vector<std::string> textsOf(const Picture& picture) {
  std::vector<std::string> texts;
  texts.reserve(picture.texts.size());
  for (const PaintedText& text : picture.texts) texts.push_back(text.text);
  return texts;
}

/// Pictures that the layout must hold for: both sizes and extreme ones, few and many points.
const std::vector<Picture>& allPictures() {
  static const std::vector<Picture> pictures = [] {
    std::vector<Picture> all;
    for (const Size& size : {Size{640, 480}, Size{1920, 1080}, Size{400, 300}, Size{3000, 300}}) {
      all.push_back(pictureOf(threePoints(), contentOf(2), {Format::png, size, Direction::top}));
      all.push_back(pictureOf(threePoints(), contentOf(2), {Format::png, size, Direction::iso}));
      all.push_back(pictureOf(manyPoints(), contentOf(50), {Format::png, size, Direction::top}));
    }
    return all;
  }();
  return pictures;
}

TEST(Picture, HasNoTextThatIsCutOffAtAnyBorder) {
  for (const Picture& picture : allPictures()) {
    const PageLayout& layout = picture.layout;
    for (const PaintedText& text : picture.texts) {
      const bool isHeld = contains(layout.header, text.box) || contains(layout.drawing, text.box) ||
                          contains(layout.footer, text.box) || contains(layout.column, text.box);
      EXPECT_TRUE(isHeld) << text.text << " in " << layout.page.width() << " x " << layout.page.height();
    }
  }
}

TEST(Picture, HasNoTextUponAnother) {
  for (const Picture& picture : allPictures()) {
    for (std::size_t i = 0; i < picture.texts.size(); ++i) {
      for (std::size_t j = i + 1; j < picture.texts.size(); ++j) {
        EXPECT_FALSE(overlap(picture.texts[i].box, picture.texts[j].box))
            << picture.texts[i].text << " / " << picture.texts[j].text;
      }
    }
  }
}

TEST(Picture, KeepsItsPartsApart) {
  for (const Picture& picture : allPictures()) {
    EXPECT_FALSE(overlap(picture.layout.drawing, picture.layout.column));
    EXPECT_FALSE(overlap(picture.layout.drawing, picture.layout.footer));
    EXPECT_FALSE(overlap(picture.layout.drawing, picture.layout.header));
    EXPECT_FALSE(overlap(picture.layout.footer, picture.layout.column));
  }
}

TEST(Picture, PaintsNothingBetweenTheDrawingAndTheLegend) {
  const Picture picture = pictureOf(manyPoints(), contentOf(50), {Format::png, {640, 480}, Direction::top});
  const auto pixels = pixelsOf(picture.bytes);
  const int left = static_cast<int>(std::ceil(picture.layout.drawing.right)) + 1;
  const int right = static_cast<int>(std::floor(picture.layout.column.left)) - 1;
  ASSERT_LT(left, right);
  for (int y = static_cast<int>(picture.layout.drawing.top); y < picture.layout.drawing.bottom; ++y) {
    for (int x = 3 * (y * pixels.width + left); x < 3 * (y * pixels.width + right); ++x) {
      ASSERT_EQ(pixels.values[static_cast<std::size_t>(x)], 255) << "row " << y;
    }
  }
}

TEST(Picture, ShowsAllLabelsWhereThereIsRoom) {
  const auto texts = textsOf(pictureOf(threePoints(), contentOf(2), {Format::png, {640, 480}, Direction::top}));
  EXPECT_THAT(texts, Contains("T1"));
  EXPECT_THAT(texts, Contains("T2"));
  EXPECT_THAT(texts, Contains("T3"));
  EXPECT_THAT(texts, Contains("Station 1").Times(2));
}

TEST(Picture, NamesThePointThatStandsOutWhateverItHides) {
  for (const Size& size : {Size{640, 480}, Size{1920, 1080}}) {
    EXPECT_THAT(textsOf(pictureOf(manyPoints(), contentOf(50), {Format::png, size, Direction::top})),
                Contains("T2 in Station 1: 42.426 mm"));
  }
}

TEST(Picture, StatesItsScaleAndHowFarResidualsAreEnlarged) {
  const auto texts = textsOf(pictureOf(threePoints(), contentOf(2), {Format::png, {640, 480}, Direction::top}));
  EXPECT_THAT(texts, Contains("2 m"));
  EXPECT_THAT(texts, Contains("residual of 20 mm, enlarged 50 times"));
}

TEST(Picture, DrawsTheBarAsLongAsItSays) {
  // From T1 at the left to T2 at the right there are 10 m; the bar of 2 m is a fifth of that.
  const Content content = [] {
    Content plain = contentOf(2);
    plain.stations.clear();
    plain.residuals.clear();
    return plain;
  }();
  const Picture picture =
      pictureOf({{{0, 0, 0}, "", 5}, {{10, 0, 0}, "", 5}}, content, {Format::png, {640, 480}, Direction::top});
  const double pixelsPerMetre = (picture.layout.drawing.width() - 2 * 36.0) / 10.0;
  const auto pixels = pixelsOf(picture.bytes);
  const int row = static_cast<int>(picture.layout.footer.top) + 16;
  int dark = 0;
  for (int x = 0; x < picture.layout.drawing.right; ++x) {
    dark += pixels.values[static_cast<std::size_t>(3 * (row * pixels.width + x))] < 128 ? 1 : 0;
    if (dark > 0 && pixels.values[static_cast<std::size_t>(3 * (row * pixels.width + x))] >= 128) break;
  }
  EXPECT_NEAR(dark, 2.0 * pixelsPerMetre, 2.0);
}

TEST(Picture, TellsHowManyLabelsHaveNoRoom) {
  Content content = contentOf(3);
  content.residuals.clear();
  content.stations.clear();
  const auto texts = textsOf(pictureOf(manyPoints(), content, {Format::png, {640, 480}, Direction::top}));
  std::size_t shown = 0;
  for (const std::string& text : texts) shown += text.front() == 'P' && text != "P" ? 1 : 0;
  EXPECT_GT(shown, 0u);
  std::string remark;
  for (const std::string& text : texts) {
    if (text.find("No room for") == 0) remark = text;
  }
  EXPECT_EQ(remark.substr(0, 16), ("No room for " + std::to_string(5000 - shown)).substr(0, 16));
}

TEST(Picture, GivesTheSameBytesForTheSameInput) {
  for (const Format format : {Format::png, Format::svg, Format::pdf}) {
    const Request request{format, {640, 480}, Direction::fit};
    const std::string first = pictureOf(threePoints(), contentOf(2), request).bytes;
    EXPECT_TRUE(first == pictureOf(threePoints(), contentOf(2), request).bytes);
  }
}

TEST(Picture, PassesOverPointsWithoutAPlace) {
  auto points = threePoints();
  points.push_back({{std::nan(""), 0, 0}, "T4", 1});
  points.push_back({{0, std::numeric_limits<double>::infinity(), 0}, "T5", 1});
  points.push_back({{1e307, -1e307, 0}, "T6", 1});
  const auto texts = textsOf(pictureOf(points, contentOf(2), {Format::png, {640, 480}, Direction::top}));
  EXPECT_THAT(texts, Contains("T3"));
  EXPECT_THAT(texts, Not(Contains("T4")));
  EXPECT_THAT(texts, Not(Contains("T5")));
  EXPECT_THAT(texts, Not(Contains("T6")));
}

TEST(Picture, RefusesToShowNothing) {
  const Request request{Format::png, {640, 480}, Direction::top};
  EXPECT_THROW(pictureOf({}, contentOf(1), request), NothingToShow);
  EXPECT_THROW(pictureOf({{{std::nan(""), 0, 0}, "T1", 1}}, contentOf(1), request), NothingToShow);
  EXPECT_THROW(pictureOf({{{1e307, 0, 0}, "T1", 1}}, contentOf(1), request), NothingToShow);
}

TEST(Picture, ShowsASinglePointAndOnesFarFromTheOrigin) {
  const Request request{Format::png, {640, 480}, Direction::top};
  Content content = contentOf(1);
  content.stations.clear();
  content.residuals.clear();
  EXPECT_THAT(textsOf(pictureOf({{{4500000, 7500000, 130}, "T1", 1}}, content, request)), Contains("T1"));
  EXPECT_THAT(
      textsOf(pictureOf({{{4500000, 7500000, 130}, "T1", 1}, {{4500000.01, 7500000, 130}, "T2", 1}}, content, request)),
      Contains("T2"));
}

TEST(Picture, DrawsNoArrowsWithoutResiduals) {
  Content content = contentOf(1);
  // The others are too short to be enlarged.
  for (const double residual : {0.0, 1e-310, 1e-200}) {
    content.residuals = {{{0, 0, 0}, {residual, 0, 0}, 1, "T1", ""}};
    for (const std::string& text :
         textsOf(pictureOf(threePoints(), content, {Format::png, {640, 480}, Direction::top}))) {
      EXPECT_EQ(text.find("residual of"), std::string::npos) << residual;
    }
  }
}

TEST(Picture, EnlargesResidualsBesideOneWithoutALength) {
  const Request request{Format::png, {640, 480}, Direction::top};
  Content content = contentOf(1);
  const auto texts = textsOf(pictureOf(threePoints(), content, request));
  for (const double lost : {std::nan(""), std::numeric_limits<double>::infinity()}) {
    content.residuals.push_back({{0, 7, 2}, {lost, 7, 2}, 1, "T3", ""});
    EXPECT_EQ(textsOf(pictureOf(threePoints(), content, request)), texts) << lost;
  }
}

TEST(Picture, TellsFromWhereItIsSeen) {
  const std::vector<std::pair<Direction, std::string>> remarks{{Direction::top, "Seen from above."},
                                                               {Direction::front, "Seen from the front."},
                                                               {Direction::side, "Seen from the right."},
                                                               {Direction::iso, "Seen from above, front right;"},
                                                               {Direction::fit, "Seen facing the widest spread of"}};
  for (const auto& [direction, remark] : remarks) {
    EXPECT_THAT(textsOf(pictureOf(threePoints(), contentOf(2), {Format::png, {640, 480}, direction})),
                Contains(::testing::StartsWith(remark)));
  }
}

/// How many pixels of the colour of alarm stand in a part of the picture.
int alarmIn(const tiepoint::testing::Pixels& pixels, const Box& part) {
  int count = 0;
  for (int y = static_cast<int>(part.top); y < part.bottom; ++y) {
    for (int x = static_cast<int>(part.left); x < part.right; ++x) {
      const unsigned char* rgb = &pixels.values[static_cast<std::size_t>(3 * (y * pixels.width + x))];
      count += rgb[0] == alarm.red && rgb[1] == alarm.green && rgb[2] == alarm.blue ? 1 : 0;
    }
  }
  return count;
}

TEST(Picture, HasTheTipsOfAllArrowsInView) {
  Content content = contentOf(1);
  content.stations.clear();
  content.residuals = {{{10, 0, 0}, {10.03, 0, 0}, 2, "T2", "T2"}};
  const Picture picture = pictureOf(threePoints(), content, {Format::png, {640, 480}, Direction::top});
  const auto pixels = pixelsOf(picture.bytes);
  const Box& drawing = picture.layout.drawing;
  EXPECT_GT(alarmIn(pixels, drawing), 100);
  EXPECT_EQ(alarmIn(pixels, {drawing.right - 30.0, drawing.top, drawing.right, drawing.bottom}), 0);
}

TEST(Picture, HasTheStationsInView) {
  Content content = contentOf(1);
  content.residuals.clear();
  content.stations = {{"far off", 10, {500, 500, 0}}, {"nowhere", 10, {std::nan(""), 0, 0}}};
  const Picture picture = pictureOf(threePoints(), content, {Format::png, {640, 480}, Direction::top});
  EXPECT_THAT(textsOf(picture), Contains("far off"));
  EXPECT_THAT(textsOf(picture), Not(Contains("nowhere")));
}

TEST(Picture, GivesItsLegendTheWidthThatNamesNeed) {
  const Request request{Format::png, {640, 480}, Direction::top};
  Content content = contentOf(1);
  const auto width = [&] { return pictureOf(threePoints(), content, request).layout.column.width(); };
  content.groups[0].name = "S1";
  const double narrow = width();
  content.groups[0].name = "A station's name";
  EXPECT_GT(width(), narrow + 30.0);
  content.groups[0].name = std::string(100, 'W');
  EXPECT_NEAR(width(), 217.6, 1.0) << "a third of the page and no more";
  content.groups.clear();
  content.residualHead.clear();
  EXPECT_NEAR(width(), 150.0, 1.0) << "never narrower";
}

TEST(Picture, ShowsPointsThatNoLengthTellsApart) {
  Content content = contentOf(1);
  content.stations.clear();
  content.residuals.clear();
  EXPECT_THAT(textsOf(pictureOf({{{1e-310, 0, 0}, "T1", 1}, {{0, 2e-310, 0}, "T2", 1}}, content,
                                {Format::png, {640, 480}, Direction::top})),
              Contains("T2"));
}

}  // namespace
}  // namespace tiepoint::workbench::picture
