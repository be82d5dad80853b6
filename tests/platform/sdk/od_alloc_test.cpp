#include "platform/sdk/od_alloc.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <thread>

namespace {

int handlerCalls = 0;

class HandlerInForce {
 public:
  explicit HandlerInForce(std::new_handler handler) : previous(std::set_new_handler(handler)) { handlerCalls = 0; }
  ~HandlerInForce() { std::set_new_handler(previous); }

 private:
  std::new_handler previous;
};

class FailingAllocations {
 public:
  explicit FailingAllocations(std::uint64_t successes) { odrxFailAllocationsAfter(successes); }
  ~FailingAllocations() { odrxStopFailingAllocations(); }
};

bool isNullAndFreed(void* memory) {
  odrxFree(memory);
  return memory == nullptr;
}

}  // namespace

TEST(OdAlloc, GivesMemoryThatTakesWhatIsWritten) {
  void* memory = odrxAlloc(1000);
  ASSERT_NE(memory, nullptr);
  std::memset(memory, 0x5A, 1000);
  EXPECT_EQ(static_cast<unsigned char*>(memory)[999], 0x5A);
  odrxFree(memory);
}

TEST(OdAlloc, GivesDistinctBlocksForNoBytes) {
  void* first = odrxAlloc(0);
  void* second = odrxAlloc(0);
  EXPECT_NE(first, nullptr);
  EXPECT_NE(second, nullptr);
  EXPECT_NE(first, second);
  odrxFree(first);
  odrxFree(second);
}

TEST(OdAlloc, GivesNullForWhatNoHeapHolds) {
#ifdef TIEPOINT_SANITIZED
  GTEST_SKIP() << "the sanitizer's heap stops the program at such a size";
#endif
  EXPECT_TRUE(isNullAndFreed(odrxAlloc(std::numeric_limits<std::size_t>::max() - 4096)));
}

TEST(OdAlloc, FreesNull) { odrxFree(nullptr); }

TEST(OdAlloc, ItsMemoryCanBeFreedByTheHeapOfC) { std::free(odrxAlloc(64)); }

TEST(OdAlloc, FreesMemoryOfTheHeapOfC) { odrxFree(std::malloc(64)); }

TEST(OdAlloc, AlignsToThePowerOfTwoThatIsAsked) {
  for (std::size_t alignment = 1; alignment <= 4096; alignment *= 2) {
    void* memory = odrxAllocAligned(3, alignment);
    ASSERT_NE(memory, nullptr) << alignment;
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % alignment, 0u) << alignment;
    odrxFreeAligned(memory);
  }
}

TEST(OdAlloc, GivesNullForAnAlignmentThatIsNoPowerOfTwo) {
  EXPECT_EQ(odrxAllocAligned(16, 0), nullptr);
  EXPECT_EQ(odrxAllocAligned(16, 24), nullptr);
}

TEST(OdAlloc, GivesNullWhereRoundingUpToTheAlignmentOverflows) {
  EXPECT_EQ(odrxAllocAligned(std::numeric_limits<std::size_t>::max() - 8, 64), nullptr);
}

TEST(OdAlloc, CountsEveryCallOnceAlsoTheFailingOnes) {
  const std::uint64_t before = odrxAllocationCount();
  odrxFree(odrxAlloc(1));
  odrxFreeAligned(odrxAllocAligned(1, 32));
  {
    const FailingAllocations failing(0);
    odrxFree(odrxAlloc(1));
  }
  EXPECT_EQ(odrxAllocationCount() - before, 3u);
}

TEST(OdAlloc, FailsAsOftenAsItIsToldTo) {
  odrxFailAllocationsAfter(1, 2);
  std::string failed;
  for (int i = 0; i < 5; ++i) {
    void* memory = odrxAlloc(8);
    failed.push_back(memory ? '.' : 'x');
    odrxFree(memory);
  }
  odrxStopFailingAllocations();
  EXPECT_EQ(failed, ".xx..");
}

TEST(OdAlloc, FailsFromTheGivenCallOnUntilItIsStopped) {
  odrxFailAllocationsAfter(2);
  const bool first = isNullAndFreed(odrxAlloc(8));
  const bool second = isNullAndFreed(odrxAllocAligned(8, 8));
  const bool third = isNullAndFreed(odrxAlloc(8));
  const bool fourth = isNullAndFreed(odrxAllocAligned(8, 8));
  odrxStopFailingAllocations();
  const bool fifth = isNullAndFreed(odrxAlloc(8));
  EXPECT_FALSE(first);
  EXPECT_FALSE(second);
  EXPECT_TRUE(third);
  EXPECT_TRUE(fourth);
  EXPECT_FALSE(fifth);
}

TEST(OdAlloc, FailsOnTheAskingThreadOnly) {
  std::atomic<bool> isFailing{false};
  bool otherFailed = true;
  std::thread other([&] {
    while (!isFailing) std::this_thread::yield();
    otherFailed = isNullAndFreed(odrxAlloc(8));
  });
  bool ownFailed = false;
  {
    const FailingAllocations failing(0);
    isFailing = true;
    other.join();
    ownFailed = isNullAndFreed(odrxAlloc(8));
  }
  EXPECT_TRUE(ownFailed);
  EXPECT_FALSE(otherFailed);
}

TEST(OdAllocObject, GivesMemory) {
  void* memory = odrxAllocObject(16);
  EXPECT_NE(memory, nullptr);
  odrxFree(memory);
}

TEST(OdAllocObject, CallsTheNewHandlerOnceAndGivesNull) {
  const HandlerInForce handler([] { ++handlerCalls; });
  void* memory = nullptr;
  {
    const FailingAllocations failing(0);
    memory = odrxAllocObject(16);
  }
  EXPECT_EQ(memory, nullptr);
  EXPECT_EQ(handlerCalls, 1);
}

TEST(OdAllocObject, DoesNotTryAgainWhenTheHandlerHelped) {
  const HandlerInForce handler([] { odrxStopFailingAllocations(); });
  void* memory = nullptr;
  {
    const FailingAllocations failing(0);
    memory = odrxAllocObject(16);
  }
  EXPECT_EQ(memory, nullptr);
}

TEST(OdAllocObject, ThrowsWithoutANewHandler) {
  const HandlerInForce handler(nullptr);
  bool thrown = false;
  {
    const FailingAllocations failing(0);
    try {
      odrxFree(odrxAllocObject(16));
    } catch (const std::bad_alloc&) {
      thrown = true;
    }
  }
  EXPECT_TRUE(thrown);
}
