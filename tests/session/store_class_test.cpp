// storeCommonPoints where the class of the stored groups is missing or makes no object. This program
// defines the class descriptor itself, and its definition comes before the library's.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "support/session_builder.h"

namespace {

using Repository = ZOR::RegistrationObjectPointsRepository;

/// The library's own descriptor.
const OdRxClass* trueDescriptor() {
  using Function = const OdRxClass* (*)();
  const auto next = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "_ZN3ZOR34RegistrationObjectPointsRepository4descEv"));
  return next ? next() : nullptr;
}

const OdRxClass* descriptorOfTest = trueDescriptor();

/// Gives the true descriptor back at its end.
class WithDescriptor {
 public:
  explicit WithDescriptor(const OdRxClass* descriptor) { descriptorOfTest = descriptor; }
  ~WithDescriptor() { descriptorOfTest = trueDescriptor(); }
};

}  // namespace

const OdRxClass* ZOR::RegistrationObjectPointsRepository::desc() { return descriptorOfTest; }

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

class StoreClass : public ::testing::Test {
 protected:
  StoreClass() {
    std::map<RefPointId, double> discrepancies;
    EXPECT_TRUE(session->registerPairwise(discrepancies));
  }

  Session session{{{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}}};
};

TEST_F(StoreClass, ThatIsKnownTakesTheTargets) {
  EXPECT_TRUE(session->storeCommonPoints("merged"));
  EXPECT_EQ(session.document().storedGroup("merged").size(), 3u);
}

TEST_F(StoreClass, ThatIsNotKnownIsErrorNumber255) {
  const WithDescriptor none(nullptr);
  try {
    session->storeCommonPoints("merged");
    FAIL() << "nothing was thrown";
  } catch (const OdError& error) {
    EXPECT_EQ(static_cast<int>(error.code()), 255);
  }
  EXPECT_TRUE(session.document().storedGroup("merged").empty());
}

TEST_F(StoreClass, ThatMakesNoObjectIsARefusal) {
  const OdRxClass abstractClass(L"AbstractRepository", OdDbObject::desc(), nullptr);
  const WithDescriptor none(&abstractClass);
  EXPECT_FALSE(session->storeCommonPoints("merged"));
  EXPECT_TRUE(session.document().storedGroup("merged").empty());
}

}  // namespace
