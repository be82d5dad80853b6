#include "workbench/view/view.h"

#include <gmock/gmock.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

using namespace tiepoint::workbench;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

View viewOf(const ViewState& state) {
  View view;
  view.setState(state);
  return view;
}

ViewState lookingAlong(const OdGeVector3d& direction, const OdGeVector3d& up) {
  ViewState state;
  state.position = {-direction.x, -direction.y, -direction.z};
  state.target = {0.0, 0.0, 0.0};
  state.up = up;
  return state;
}

ViewState onDevice(double width, double height, int pixelWidth, int pixelHeight) {
  ViewState state;
  state.width = width;
  state.height = height;
  state.pixelWidth = pixelWidth;
  state.pixelHeight = pixelHeight;
  return state;
}

OdGePoint3d through(const OdGeMatrix3d& matrix, OdGePoint3d point) { return point.p_transform(matrix); }

OdGeMatrix3d matrixOf(const double (&entries)[16]) {
  OdGeMatrix3d matrix;
  for (int i = 0; i < 16; ++i) matrix(i / 4, i % 4) = entries[i];
  return matrix;
}

bool holdsNegativeZero(const OdGeMatrix3d& matrix) {
  for (const auto& row : matrix.entry) {
    for (const double value : row) {
      if (value == 0.0 && std::signbit(value)) return true;
    }
  }
  return false;
}

/// The largest difference of R x R transposed from the identity, over the upper left 3 x 3 block.
double distanceFromRigid(const OdGeMatrix3d& m) {
  double largest = 0.0;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      const double product = m(i, 0) * m(j, 0) + m(i, 1) * m(j, 1) + m(i, 2) * m(j, 2);
      largest = std::max(largest, std::abs(product - (i == j ? 1.0 : 0.0)));
    }
  }
  return largest;
}

double determinant3(const OdGeMatrix3d& m) {
  return m(0, 0) * (m(1, 1) * m(2, 2) - m(1, 2) * m(2, 1)) - m(0, 1) * (m(1, 0) * m(2, 2) - m(1, 2) * m(2, 0)) +
         m(0, 2) * (m(1, 0) * m(2, 1) - m(1, 1) * m(2, 0));
}

testing::AssertionResult refuses(const ViewState& state) {
  View view;
  try {
    view.setState(state);
  } catch (const std::invalid_argument& error) {
    if (std::string(error.what()).find('\n') != std::string::npos) {
      return testing::AssertionFailure() << "more than one line: " << error.what();
    }
    const bool kept = view.position() == OdGePoint3d(0.0, 0.0, 1.0) && view.fieldWidth() == 100.0;
    return kept ? testing::AssertionSuccess() : testing::AssertionFailure() << "the view has changed";
  }
  return testing::AssertionFailure() << "the state was taken";
}

}  // namespace

TEST(View, LooksDownOnTheDrawingAtFirst) {
  const View view;
  EXPECT_EQ(view.position(), OdGePoint3d(0.0, 0.0, 1.0));
  EXPECT_EQ(view.target(), OdGePoint3d(0.0, 0.0, 0.0));
  EXPECT_EQ(view.upVector(), OdGeVector3d(0.0, 1.0, 0.0));
  EXPECT_EQ(view.direction(), OdGeVector3d(0.0, 0.0, 1.0));
  EXPECT_EQ(view.xAxis(), OdGeVector3d(1.0, 0.0, 0.0));
}

TEST(View, OfTheTopHasExactZerosAndOnes) {
  ViewState state;
  state.position = {1000000.25, -4500000.5, 130.0};
  state.target = {1000000.25, -4500000.5, 12.0};
  const OdGeMatrix3d expected = matrixOf({1.0, 0.0, 0.0, -1000000.25,  //
                                          0.0, 1.0, 0.0, 4500000.5,    //
                                          0.0, 0.0, 1.0, -130.0,       //
                                          0.0, 0.0, 0.0, 1.0});
  const OdGeMatrix3d matrix = viewOf(state).viewingMatrix();
  EXPECT_EQ(matrix, expected);
  EXPECT_FALSE(holdsNegativeZero(matrix));
}

TEST(View, OfTheFrontHasTheDrawingsHeightsUpwards) {
  const OdGeMatrix3d expected = matrixOf({1.0, 0.0, 0.0, 0.0,    //
                                          0.0, 0.0, 1.0, 0.0,    //
                                          0.0, -1.0, 0.0, -3.0,  //
                                          0.0, 0.0, 0.0, 1.0});
  const OdGeMatrix3d matrix = viewOf(lookingAlong({0.0, 3.0, 0.0}, {0.0, 0.0, 1.0})).viewingMatrix();
  EXPECT_EQ(matrix, expected);
  EXPECT_FALSE(holdsNegativeZero(matrix));
}

TEST(View, AlongTheAxesHoldsNoNegativeZero) {
  const OdGeVector3d axes[] = {{1.0, 0.0, 0.0},  {-1.0, 0.0, 0.0}, {0.0, 1.0, 0.0},
                               {0.0, -1.0, 0.0}, {0.0, 0.0, 1.0},  {0.0, 0.0, -1.0}};
  for (const OdGeVector3d& along : axes) {
    for (const OdGeVector3d& up : axes) {
      if (along.x * up.x + along.y * up.y + along.z * up.z != 0.0) continue;
      const View view = viewOf(lookingAlong(along, up));
      EXPECT_FALSE(holdsNegativeZero(view.viewingMatrix()));
      EXPECT_FALSE(holdsNegativeZero(view.deviceMatrix()));
      EXPECT_EQ(distanceFromRigid(view.viewingMatrix()), 0.0);
      EXPECT_EQ(determinant3(view.viewingMatrix()), 1.0);
    }
  }
}

TEST(View, TakesUpOnlyAcrossTheDirectionOfView) {
  const View view = viewOf(lookingAlong({0.0, 0.0, -1.0}, {0.0, 2.0, 50.0}));
  EXPECT_EQ(view.xAxis(), OdGeVector3d(1.0, 0.0, 0.0));
  EXPECT_EQ(through(view.viewingMatrix(), {0.0, 1.0, 0.0}), OdGePoint3d(0.0, 1.0, -1.0));
}

TEST(View, HasItsEyeAtTheOriginAndItsTargetStraightAheadOfViewCoordinates) {
  ViewState state;
  state.position = {3.0, 0.0, 4.0};
  state.target = {0.0, 0.0, 0.0};
  const View view = viewOf(state);
  const OdGePoint3d eye = through(view.viewingMatrix(), state.position);
  const OdGePoint3d target = through(view.viewingMatrix(), state.target);
  constexpr double rounding = 1e-15;
  EXPECT_NEAR(eye.x, 0.0, rounding);
  EXPECT_NEAR(eye.y, 0.0, rounding);
  EXPECT_NEAR(eye.z, 0.0, rounding);
  EXPECT_NEAR(target.x, 0.0, rounding);
  EXPECT_NEAR(target.y, 0.0, rounding);
  EXPECT_NEAR(target.z, -5.0, 1e-14);
}

TEST(View, GivesItsDirectionTowardsTheEye) {
  ViewState state;
  state.position = {3.0, 0.0, 4.0};
  EXPECT_EQ(viewOf(state).direction(), OdGeVector3d(0.6, 0.0, 0.8));
}

TEST(View, PutsTheMiddleOfTheFieldOnTheMiddleOfTheDevice) {
  ViewState state = onDevice(100.0, 75.0, 800, 600);
  state.position = {10.0, 20.0, 30.0};
  state.target = {10.0, 20.0, 0.0};
  const OdGePoint3d middle = through(viewOf(state).deviceMatrix(), {10.0, 20.0, 0.0});
  EXPECT_EQ(middle.x, 400.0);
  EXPECT_EQ(middle.y, 300.0);
}

TEST(View, PutsTheCornersOfAFieldOfTheDevicesAspectOnTheDevicesCorners) {
  const OdGeMatrix3d device = viewOf(onDevice(100.0, 75.0, 800, 600)).deviceMatrix();
  const OdGePoint3d lowerLeft = through(device, {-50.0, -37.5, 0.0});
  const OdGePoint3d upperRight = through(device, {50.0, 37.5, 0.0});
  EXPECT_EQ(lowerLeft.x, 0.0);
  EXPECT_EQ(lowerLeft.y, 0.0);
  EXPECT_EQ(upperRight.x, 800.0);
  EXPECT_EQ(upperRight.y, 600.0);
}

TEST(View, LetsTheWidthOfAWideFieldSpanTheDevice) {
  const OdGeMatrix3d device = viewOf(onDevice(100.0, 10.0, 800, 600)).deviceMatrix();
  const OdGePoint3d upperRight = through(device, {50.0, 5.0, 0.0});
  EXPECT_EQ(upperRight.x, 800.0);
  EXPECT_EQ(upperRight.y, 340.0);
}

TEST(View, LetsTheHeightOfATallFieldSpanTheDevice) {
  const OdGeMatrix3d device = viewOf(onDevice(10.0, 75.0, 800, 600)).deviceMatrix();
  const OdGePoint3d upperRight = through(device, {5.0, 37.5, 0.0});
  EXPECT_EQ(upperRight.x, 440.0);
  EXPECT_EQ(upperRight.y, 600.0);
}

TEST(View, TakesWhatTheModuleSets) {
  View view;
  view.set({1.0, 2.0, 3.0}, {1.0, 2.0, 2.0}, {0.0, 1.0, 0.0}, 11.0, 22.0, HostProjection::parallel);
  EXPECT_EQ(view.position(), OdGePoint3d(1.0, 2.0, 3.0));
  EXPECT_EQ(view.target(), OdGePoint3d(1.0, 2.0, 2.0));
  EXPECT_EQ(view.upVector(), OdGeVector3d(0.0, 1.0, 0.0));
  EXPECT_EQ(view.fieldWidth(), 11.0);
  EXPECT_EQ(view.fieldHeight(), 22.0);
  EXPECT_EQ(view.state().pixelWidth, 800);
  EXPECT_EQ(view.state().pixelHeight, 600);
}

TEST(View, ShowsTheSameForAPerspectiveProjection) {
  View parallel;
  View perspective;
  parallel.set({1.0, 2.0, 3.0}, {0.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, 4.0, 3.0, HostProjection::parallel);
  perspective.set({1.0, 2.0, 3.0}, {0.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, 4.0, 3.0, HostProjection::perspective);
  EXPECT_EQ(perspective.deviceMatrix(), parallel.deviceMatrix());
}

TEST(View, LooksDownWhenTheModulePutsTheEyeOnItsTarget) {
  View view;
  view.set({5.0, 6.0, 7.0}, {5.0, 6.0, 7.0}, {0.0, 1.0, 0.0}, 4.0, 3.0, HostProjection::parallel);
  EXPECT_EQ(view.position(), OdGePoint3d(5.0, 6.0, 7.0));
  EXPECT_EQ(view.direction(), OdGeVector3d(0.0, 0.0, 1.0));
  EXPECT_EQ(view.xAxis(), OdGeVector3d(1.0, 0.0, 0.0));
}

TEST(View, TakesTheDrawingsYAxisForAnUpVectorAlongTheDirectionOfView) {
  View view;
  view.set({0.0, 0.0, 9.0}, {0.0, 0.0, 0.0}, {0.0, 0.0, 1.0}, 4.0, 3.0, HostProjection::parallel);
  EXPECT_EQ(view.xAxis(), OdGeVector3d(1.0, 0.0, 0.0));
  view.set({0.0, 0.0, 9.0}, {0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}, 4.0, 3.0, HostProjection::parallel);
  EXPECT_EQ(view.xAxis(), OdGeVector3d(1.0, 0.0, 0.0));
}

TEST(View, TakesTheDrawingsZAxisForAnUpVectorThatAlsoLiesAlongY) {
  View view;
  view.set({0.0, -9.0, 0.0}, {0.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, 4.0, 3.0, HostProjection::parallel);
  EXPECT_EQ(view.xAxis(), OdGeVector3d(1.0, 0.0, 0.0));
  EXPECT_EQ(through(view.viewingMatrix(), {0.0, 0.0, 1.0}), OdGePoint3d(0.0, 1.0, -9.0));
}

TEST(View, LeavesOutOfTheScaleASizeThatIsNotPositive) {
  View view;
  view.set({0.0, 0.0, 1.0}, {0.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, 0.0, 75.0, HostProjection::parallel);
  EXPECT_EQ(view.deviceMatrix()(0, 0), 8.0);
  view.set({0.0, 0.0, 1.0}, {0.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, 200.0, -1.0, HostProjection::parallel);
  EXPECT_EQ(view.deviceMatrix()(0, 0), 4.0);
  view.set({0.0, 0.0, 1.0}, {0.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, 0.0, 0.0, HostProjection::parallel);
  EXPECT_EQ(view.deviceMatrix()(0, 0), 1.0);
}

TEST(View, StaysAsItWasWhenTheModuleSetsANumberThatIsNotFinite) {
  const OdGePoint3d eye{1.0, 2.0, 3.0};
  const OdGePoint3d target{0.0, 0.0, 0.0};
  const OdGeVector3d up{0.0, 1.0, 0.0};
  for (const double bad : {infinity, -infinity, notANumber}) {
    View view;
    view.set({bad, 2.0, 3.0}, target, up, 4.0, 3.0, HostProjection::parallel);
    view.set(eye, {0.0, bad, 0.0}, up, 4.0, 3.0, HostProjection::parallel);
    view.set(eye, target, {0.0, 0.0, bad}, 4.0, 3.0, HostProjection::parallel);
    view.set(eye, target, up, bad, 3.0, HostProjection::parallel);
    view.set(eye, target, up, 4.0, bad, HostProjection::parallel);
    EXPECT_EQ(view.position(), OdGePoint3d(0.0, 0.0, 1.0));
    EXPECT_EQ(view.fieldWidth(), 100.0);
    EXPECT_EQ(view.fieldHeight(), 75.0);
  }
}

TEST(View, RefusesAnEyeOnItsTarget) {
  ViewState state;
  state.position = {5.0, 6.0, 7.0};
  state.target = {5.0, 6.0, 7.0};
  EXPECT_TRUE(refuses(state));
}

TEST(View, RefusesAnUpVectorAlongTheDirectionOfView) {
  EXPECT_TRUE(refuses(lookingAlong({0.0, 0.0, -1.0}, {0.0, 0.0, 1.0})));
  EXPECT_TRUE(refuses(lookingAlong({0.0, 0.0, -1.0}, {0.0, 0.0, -7.0})));
  EXPECT_TRUE(refuses(lookingAlong({1.0, 2.0, 3.0}, {0.1, 0.2, 0.3})));
  EXPECT_TRUE(refuses(lookingAlong({0.0, 0.0, -1.0}, {0.0, 0.0, 0.0})));
}

TEST(View, RefusesSizesThatAreNotPositive) {
  EXPECT_TRUE(refuses(onDevice(0.0, 75.0, 800, 600)));
  EXPECT_TRUE(refuses(onDevice(100.0, -75.0, 800, 600)));
  EXPECT_TRUE(refuses(onDevice(100.0, 75.0, 0, 600)));
  EXPECT_TRUE(refuses(onDevice(100.0, 75.0, 800, -1)));
}

TEST(View, RefusesNumbersThatAreNotFinite) {
  for (const double bad : {infinity, -infinity, notANumber}) {
    EXPECT_TRUE(refuses(onDevice(bad, 75.0, 800, 600)));
    EXPECT_TRUE(refuses(onDevice(100.0, bad, 800, 600)));
    ViewState state;
    state.position.x = bad;
    EXPECT_TRUE(refuses(state));
    state = {};
    state.target.y = bad;
    EXPECT_TRUE(refuses(state));
    state = {};
    state.up.z = bad;
    EXPECT_TRUE(refuses(state));
  }
}

TEST(View, TakesHugeAndTinyVectors) {
  EXPECT_EQ(viewOf(lookingAlong({0.0, 0.0, -1e300}, {0.0, 1e-300, 0.0})).direction(), OdGeVector3d(0.0, 0.0, 1.0));
  EXPECT_EQ(viewOf(lookingAlong({0.0, 0.0, -1e-310}, {0.0, 1e300, 0.0})).xAxis(), OdGeVector3d(1.0, 0.0, 0.0));
}

RC_GTEST_PROP(View, GivesARigidMatrixWhateverFiniteValuesTheModuleSets, ()) {
  // Whole numbers of a small range make zero and parallel vectors likely.
  const auto number = [] { return static_cast<double>(*rc::gen::inRange(-3, 4)); };
  View view;
  view.set({number(), number(), number()}, {number(), number(), number()}, {number(), number(), number()}, number(),
           number(), HostProjection::parallel);
  const OdGeMatrix3d matrix = view.viewingMatrix();
  RC_ASSERT(distanceFromRigid(matrix) < 1e-14);
  RC_ASSERT(std::abs(determinant3(matrix) - 1.0) < 1e-14);
  RC_ASSERT(!holdsNegativeZero(matrix));
}

RC_GTEST_PROP(View, LooksAtTheMiddleOfTheDeviceFromAnywhere, ()) {
  const auto coordinate = [] { return *rc::gen::inRange(-5000000, 5000001) * 0.5; };
  ViewState state;
  state.position = {coordinate(), coordinate(), coordinate()};
  state.target = {coordinate(), coordinate(), coordinate()};
  state.up = {coordinate(), coordinate(), coordinate()};
  View view;
  try {
    view.setState(state);
  } catch (const std::invalid_argument&) {
    RC_DISCARD("no view");
  }
  const OdGePoint3d middle = through(view.deviceMatrix(), state.target);
  RC_ASSERT(std::abs(middle.x - 400.0) < 1e-6);
  RC_ASSERT(std::abs(middle.y - 300.0) < 1e-6);
}
