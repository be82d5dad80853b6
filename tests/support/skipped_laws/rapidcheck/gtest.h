// In the place of RapidCheck's header of this name, where RapidCheck isn't built for the platform:
// a law is compiled, and reported as skipped instead of being tried on random input.
#pragma once

#include <gtest/gtest.h>
#include <rapidcheck.h>

#define TIEPOINT_SKIPPED_LAW(TestCase, Name) \
  TEST(TestCase, Name) { GTEST_SKIP() << "RapidCheck isn't built for this platform"; }

// The law's body becomes a template that nobody calls: it is checked, and nothing of it is linked.
#define RC_GTEST_PROP(TestCase, Name, ArgList) \
  TIEPOINT_SKIPPED_LAW(TestCase, Name)         \
  template <class>                             \
  [[maybe_unused]] void law##TestCase##Name ArgList

#define RC_GTEST_FIXTURE_PROP(Fixture, Name, ArgList) \
  TIEPOINT_SKIPPED_LAW(Fixture##_RapidCheck, Name)    \
  template <class>                                    \
  class Law##Fixture##Name : public Fixture {         \
    void TestBody() override {}                       \
    void operator() ArgList;                          \
  };                                                  \
  template <class Any>                                \
  void Law##Fixture##Name<Any>::operator() ArgList
