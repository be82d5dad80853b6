#include "host_access/registration_settings.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "host_access/host_of_test.h"

namespace tiepoint::testing {
namespace {

using ZOR::reg::RegistrationSettings;

class Settings : public ::testing::Test {
 protected:
  Settings() { HostOfTest::renew(); }
  ~Settings() override { EXPECT_EQ(host.livingObjects, 0) << "an object of the host wasn't released"; }

  template <class Value>
  void store(const wchar_t* key, Value value) {
    host.values[key].set(value);
  }

  HostOfTest& host = HostOfTest::current();
};

void expectDefaults() {
  const RegistrationSettings settings;
  EXPECT_EQ(settings.maxIterations(), 100);
  EXPECT_EQ(settings.convergenceCriteria(), 0.001);
  EXPECT_EQ(settings.sizeLabel(), 10);
  EXPECT_EQ(settings.heightLabelText(), 10);
  EXPECT_TRUE(settings.isVisibleLabelText());
}

TEST_F(Settings, AMissingSectionGivesAllFiveDefaults) {
  host.hasSection = false;
  expectDefaults();
}

TEST_F(Settings, AMissingProfileGivesAllFiveDefaults) {
  host.hasProfile = false;
  expectDefaults();
}

TEST_F(Settings, AMissingServiceGivesAllFiveDefaults) {
  host.hasService = false;
  expectDefaults();
}

TEST_F(Settings, AnEmptySectionGivesAllFiveDefaults) {
  expectDefaults();
  EXPECT_EQ(host.reads, 5);
}

TEST_F(Settings, EachKeyGivesItsOwnValue) {
  store(L"MaxIterations", 7);
  store(L"ConvergenceCriteria", 0.25);
  store(L"SizeLabel", 21);
  store(L"HeightLabelText", 34);
  store(L"IsVisibleLabelText", 0);
  const RegistrationSettings settings;
  EXPECT_EQ(settings.maxIterations(), 7);
  EXPECT_EQ(settings.convergenceCriteria(), 0.25);
  EXPECT_EQ(settings.sizeLabel(), 21);
  EXPECT_EQ(settings.heightLabelText(), 34);
  EXPECT_FALSE(settings.isVisibleLabelText());
}

TEST_F(Settings, LabelsStoredAsZeroAreHidden) {
  store(L"IsVisibleLabelText", 0);
  EXPECT_FALSE(RegistrationSettings().isVisibleLabelText());
}

TEST_F(Settings, LabelsStoredAsTwoAreVisible) {
  store(L"IsVisibleLabelText", 2);
  EXPECT_TRUE(RegistrationSettings().isVisibleLabelText());
}

TEST_F(Settings, LabelsStoredAsMinusOneAreVisible) {
  store(L"IsVisibleLabelText", -1);
  EXPECT_TRUE(RegistrationSettings().isVisibleLabelText());
}

TEST_F(Settings, LabelsNotStoredAreVisible) { EXPECT_TRUE(RegistrationSettings().isVisibleLabelText()); }

TEST_F(Settings, LabelsAreReadAsAWholeNumber) {
  store(L"IsVisibleLabelText", 0.75);
  EXPECT_FALSE(RegistrationSettings().isVisibleLabelText());
}

TEST_F(Settings, LabelsThatCannotBeConvertedAreVisible) {
  store(L"IsVisibleLabelText", std::wstring(L"no"));
  EXPECT_TRUE(RegistrationSettings().isVisibleLabelText());
}

TEST_F(Settings, NumbersAreConvertedBetweenTheirKinds) {
  store(L"MaxIterations", 12.9);
  store(L"ConvergenceCriteria", 2);
  store(L"SizeLabel", std::wstring(L"15"));
  const RegistrationSettings settings;
  EXPECT_EQ(settings.maxIterations(), 12);
  EXPECT_EQ(settings.convergenceCriteria(), 2.0);
  EXPECT_EQ(settings.sizeLabel(), 15);
}

TEST_F(Settings, ValuesAreNotCheckedForSense) {
  store(L"MaxIterations", -3);
  store(L"ConvergenceCriteria", -0.5);
  store(L"SizeLabel", 0);
  const RegistrationSettings settings;
  EXPECT_EQ(settings.maxIterations(), -3);
  EXPECT_EQ(settings.convergenceCriteria(), -0.5);
  EXPECT_EQ(settings.sizeLabel(), 0);
}

TEST_F(Settings, ValuesThatCannotBeConvertedLeaveTheDefaults) {
  store(L"MaxIterations", std::wstring(L"many"));
  store(L"ConvergenceCriteria", std::wstring());
  store(L"SizeLabel", 3e9);
  store(L"HeightLabelText", std::numeric_limits<double>::quiet_NaN());
  host.values[L"IsVisibleLabelText"] = CZorVariant();
  expectDefaults();
}

TEST_F(Settings, AValueIsReadWhenItIsAskedFor) {
  const RegistrationSettings settings;
  EXPECT_EQ(host.reads, 0);
  store(L"MaxIterations", 7);
  EXPECT_EQ(settings.maxIterations(), 7);
  store(L"MaxIterations", 8);
  EXPECT_EQ(settings.maxIterations(), 8);
}

TEST_F(Settings, TheSectionIsKeptAndReleasedWithTheSettings) {
  {
    const RegistrationSettings settings;
    EXPECT_EQ(host.livingObjects, 1);
  }
  EXPECT_EQ(host.livingObjects, 0);
}

TEST_F(Settings, AFailingQueryLeavesNoServiceBehind) {
  host.failsAtQuery = true;
  EXPECT_THROW(RegistrationSettings(), std::runtime_error);
}

TEST_F(Settings, AFailingOpeningLeavesNeitherServiceNorProfileBehind) {
  host.failsAtOpening = true;
  EXPECT_THROW(RegistrationSettings(), std::runtime_error);
}

TEST_F(Settings, AHostThatFailsAsItTakesItsObjectsBackIsNoFailure) {
  host.failsAtRelease = true;
  store(L"MaxIterations", 7);
  EXPECT_EQ(RegistrationSettings().maxIterations(), 7);
}

}  // namespace
}  // namespace tiepoint::testing
