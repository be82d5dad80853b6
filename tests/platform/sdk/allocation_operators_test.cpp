#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "platform/sdk/od_alloc.h"
#include "support/platform.h"

// Some compilers leave the sized forms out of <new> unless they are asked for them.
#ifndef __cpp_sized_deallocation
void operator delete(void* memory, std::size_t size) noexcept;
void operator delete[](void* memory, std::size_t size) noexcept;
void operator delete(void* memory, std::size_t size, std::align_val_t alignment) noexcept;
void operator delete[](void* memory, std::size_t size, std::align_val_t alignment) noexcept;
#endif

namespace {

int handlerCalls = 0;

// The first two calls bring nothing, the third makes memory available again.
void handlerThatHelpsAtTheThirdCall() {
  if (++handlerCalls == 3) odrxStopFailingAllocations();
}

void handlerThatTakesItselfOut() {
  ++handlerCalls;
  std::set_new_handler(nullptr);
}

void handlerThatThrows() {
  ++handlerCalls;
  throw std::bad_alloc();
}

class AllocationOperators : public testing::Test {
 protected:
  void SetUp() override {
    handlerCalls = 0;
    previous = std::set_new_handler(nullptr);
  }
  void TearDown() override {
    odrxStopFailingAllocations();
    std::set_new_handler(previous);
  }

  std::new_handler previous = nullptr;
};

constexpr std::align_val_t wideAlignment{256};

bool isAligned(const void* memory) {
  return reinterpret_cast<std::uintptr_t>(memory) % static_cast<std::size_t>(wideAlignment) == 0;
}

// How many allocations of the SDK one call of an operator makes.
template <class Call>
std::uint64_t allocationsOf(Call call) {
  const std::uint64_t before = odrxAllocationCount();
  call();
  return odrxAllocationCount() - before;
}

template <class Call>
bool throwsBadAlloc(Call call) {
  bool thrown = false;
  try {
    call();
  } catch (const std::bad_alloc&) {
    thrown = true;
  }
  odrxStopFailingAllocations();
  return thrown;
}

}  // namespace

TEST_F(AllocationOperators, EveryFormOfNewGoesThroughTheSdkOnce) {
  EXPECT_EQ(allocationsOf([] { ::operator delete(::operator new(24)); }), 1u);
  EXPECT_EQ(allocationsOf([] { ::operator delete[](::operator new[](24)); }), 1u);
  EXPECT_EQ(allocationsOf([] { ::operator delete(::operator new(24, std::nothrow), std::nothrow); }), 1u);
  EXPECT_EQ(allocationsOf([] { ::operator delete[](::operator new[](24, std::nothrow), std::nothrow); }), 1u);
  EXPECT_EQ(allocationsOf([] { ::operator delete(::operator new(24, wideAlignment), wideAlignment); }), 1u);
  EXPECT_EQ(allocationsOf([] { ::operator delete[](::operator new[](24, wideAlignment), wideAlignment); }), 1u);
  EXPECT_EQ(allocationsOf([] {
              ::operator delete(::operator new(24, wideAlignment, std::nothrow), wideAlignment, std::nothrow);
            }),
            1u);
  EXPECT_EQ(allocationsOf([] {
              ::operator delete[](::operator new[](24, wideAlignment, std::nothrow), wideAlignment, std::nothrow);
            }),
            1u);
}

TEST_F(AllocationOperators, EverySizedFormOfDeleteTakesWhatNewGave) {
  ::operator delete (::operator new(24), std::size_t{24});
  ::operator delete[](::operator new[](24), std::size_t{24});
  ::operator delete (::operator new(24, wideAlignment), std::size_t{24}, wideAlignment);
  ::operator delete[](::operator new[](24, wideAlignment), std::size_t{24}, wideAlignment);
}

TEST_F(AllocationOperators, TheStandardContainersOfThisProgramUseThem) {
  std::vector<int> numbers;
  std::unique_ptr<double> number;
  // A compiler may leave out a new whose memory nobody sees.
  const void* volatile seen = nullptr;
  EXPECT_EQ(allocationsOf([&] {
              numbers.resize(100, 7);
              seen = numbers.data();
            }),
            1u);
  EXPECT_EQ(allocationsOf([&] {
              number = std::make_unique<double>(1.0);
              seen = number.get();
            }),
            1u);
  EXPECT_EQ(numbers[99], 7);
  EXPECT_EQ(*number, 1.0);
}

TEST_F(AllocationOperators, TheStandardLibrarysOwnCodeUsesThem) {
  if (tiepoint::testing::onWindows) GTEST_SKIP() << "a replaced operator doesn't reach into another binary there";
  std::string text;
  EXPECT_EQ(allocationsOf([&] { text.assign(100, 'x'); }), 1u);
  EXPECT_EQ(text[99], 'x');
}

TEST_F(AllocationOperators, AlignedFormsAlign) {
  void* one = ::operator new(5, wideAlignment);
  void* many = ::operator new[](5, wideAlignment);
  void* gentle = ::operator new(5, wideAlignment, std::nothrow);
  EXPECT_TRUE(isAligned(one));
  EXPECT_TRUE(isAligned(many));
  EXPECT_TRUE(isAligned(gentle));
  ::operator delete(one, wideAlignment);
  ::operator delete[](many, wideAlignment);
  ::operator delete(gentle, wideAlignment);
}

TEST_F(AllocationOperators, WithoutAHandlerNewThrows) {
  EXPECT_TRUE(throwsBadAlloc([] {
    odrxFailAllocationsAfter(0);
    ::operator delete(::operator new(24));
  }));
  EXPECT_TRUE(throwsBadAlloc([] {
    odrxFailAllocationsAfter(0);
    ::operator delete[](::operator new[](24, wideAlignment), wideAlignment);
  }));
}

TEST_F(AllocationOperators, AHandlerIsCalledUntilMemoryIsThere) {
  std::set_new_handler(handlerThatHelpsAtTheThirdCall);
  odrxFailAllocationsAfter(0);
  void* memory = ::operator new(24);
  EXPECT_NE(memory, nullptr);
  EXPECT_EQ(handlerCalls, 3);
  ::operator delete(memory);
}

TEST_F(AllocationOperators, AHandlerIsCalledUntilAlignedMemoryIsThere) {
  std::set_new_handler(handlerThatHelpsAtTheThirdCall);
  odrxFailAllocationsAfter(0);
  void* memory = ::operator new(24, wideAlignment);
  EXPECT_TRUE(isAligned(memory));
  EXPECT_EQ(handlerCalls, 3);
  ::operator delete(memory, wideAlignment);
}

TEST_F(AllocationOperators, AHandlerThatTakesItselfOutEndsTheTries) {
  std::set_new_handler(handlerThatTakesItselfOut);
  EXPECT_TRUE(throwsBadAlloc([] {
    odrxFailAllocationsAfter(0);
    ::operator delete(::operator new(24));
  }));
  EXPECT_EQ(handlerCalls, 1);
}

TEST_F(AllocationOperators, TheNoThrowFormsGiveNullWhenTheHandlerThrows) {
  std::set_new_handler(handlerThatThrows);
  odrxFailAllocationsAfter(0);
  void* const one = ::operator new(24, std::nothrow);
  void* const many = ::operator new[](24, std::nothrow);
  void* const aligned = ::operator new(24, wideAlignment, std::nothrow);
  void* const alignedMany = ::operator new[](24, wideAlignment, std::nothrow);
  odrxStopFailingAllocations();
  EXPECT_EQ(one, nullptr);
  EXPECT_EQ(many, nullptr);
  EXPECT_EQ(aligned, nullptr);
  EXPECT_EQ(alignedMany, nullptr);
  EXPECT_EQ(handlerCalls, 4);
}

TEST_F(AllocationOperators, TheNoThrowFormGivesNullWithoutAHandler) {
  odrxFailAllocationsAfter(0);
  void* const memory = ::operator new(24, std::nothrow);
  odrxStopFailingAllocations();
  EXPECT_EQ(memory, nullptr);
}
