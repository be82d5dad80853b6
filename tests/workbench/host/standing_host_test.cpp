#include "workbench/host/standing_host.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tiepoint::workbench {
namespace {

/// A host that answers nothing.
class SilentHost final : public StandingHost {
 public:
  HostApplication& application() override { throw std::logic_error("nobody asks for it"); }
  ICmdFactory* newCommandFactory() override { return nullptr; }
  HostAppService* newAppService() override { return nullptr; }
  void refresh() override {}
};

/// A host whose making fails once it stands.
class FailingHost final : public StandingHost {
 public:
  FailingHost() { throw std::runtime_error("no module"); }
  HostApplication& application() override { throw std::logic_error("nobody asks for it"); }
  ICmdFactory* newCommandFactory() override { return nullptr; }
  HostAppService* newAppService() override { return nullptr; }
  void refresh() override {}
};

TEST(StandingHost, IsNoneAtFirst) { EXPECT_EQ(StandingHost::current(), nullptr); }

TEST(StandingHost, StandsUntilItGoes) {
  {
    const SilentHost host;
    EXPECT_EQ(StandingHost::current(), &host);
  }
  EXPECT_EQ(StandingHost::current(), nullptr);
}

TEST(StandingHost, RefusesASecondAndGoesOnStanding) {
  const SilentHost first;
  EXPECT_THROW(SilentHost(), std::logic_error);
  EXPECT_EQ(StandingHost::current(), &first);
}

TEST(StandingHost, StandsNoLongerWhenItsMakingFails) {
  EXPECT_THROW(FailingHost(), std::runtime_error);
  EXPECT_EQ(StandingHost::current(), nullptr);
  EXPECT_NO_THROW(SilentHost());
}

}  // namespace
}  // namespace tiepoint::workbench
