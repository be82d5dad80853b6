#include "platform/host/zor_variant.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <string>

namespace {

CZorVariant text(const wchar_t* content) {
  CZorVariant variant;
  variant.set(std::wstring(content));
  return variant;
}

CZorVariant real(double content) {
  CZorVariant variant;
  variant.set(content);
  return variant;
}

template <class Number>
bool isRefusedAs(const CZorVariant& variant) {
  try {
    (void)static_cast<Number>(variant);
  } catch (const CZorVariantBadCast&) {
    return true;
  }
  return false;
}

// A locale with a decimal comma: one of the system's, or one compiled for this test.
class DecimalCommaLocale {
 public:
  DecimalCommaLocale() {
    for (const char* name : {"de_DE.UTF-8", "German_Germany"}) {
      if (std::setlocale(LC_NUMERIC, name)) return;
    }
#ifndef _WIN32
    folder = std::filesystem::path(testing::TempDir()) / "zor_variant_test_locales";
    std::filesystem::create_directories(folder);
    const std::string command =
        "localedef -i de_DE -f UTF-8 '" + (folder / "de_DE.UTF-8").string() + "' > /dev/null 2>&1";
    if (std::system(command.c_str()) != 0) return;
    setenv("LOCPATH", folder.c_str(), 1);
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
#endif
  }
  ~DecimalCommaLocale() {
    std::setlocale(LC_NUMERIC, "C");
    if (!folder.empty()) std::filesystem::remove_all(folder);
  }

  bool isInForce() const { return std::string(std::localeconv()->decimal_point) == ","; }

 private:
  std::filesystem::path folder;
};

}  // namespace

TEST(CZorVariant, NothingIsRefusedByEveryCast) {
  const CZorVariant variant;
  EXPECT_TRUE(variant.isEmpty());
  EXPECT_TRUE(isRefusedAs<int>(variant));
  EXPECT_TRUE(isRefusedAs<unsigned int>(variant));
  EXPECT_TRUE(isRefusedAs<double>(variant));
}

TEST(CZorVariant, ClearMakesItNothing) {
  CZorVariant variant = real(1.0);
  variant.clear();
  EXPECT_TRUE(variant.isEmpty());
}

TEST(CZorVariant, NumbersConvertBetweenTheirKinds) {
  CZorVariant whole;
  whole.set(-7);
  EXPECT_EQ(static_cast<int>(whole), -7);
  EXPECT_EQ(static_cast<double>(whole), -7.0);
  EXPECT_EQ(static_cast<double>(real(0.001)), 0.001);
  EXPECT_EQ(static_cast<int>(real(2.9)), 2);
  EXPECT_EQ(static_cast<int>(real(-2.9)), -2);
  EXPECT_EQ(static_cast<unsigned int>(real(4294967295.0)), 4294967295u);
}

TEST(CZorVariant, WholeNumberCastsRefuseWhatIsOutOfRange) {
  EXPECT_TRUE(isRefusedAs<int>(real(2147483648.0)));
  EXPECT_FALSE(isRefusedAs<int>(real(-2147483648.0)));
  EXPECT_TRUE(isRefusedAs<int>(real(-2147483649.0)));
  EXPECT_TRUE(isRefusedAs<unsigned int>(real(-1.0)));
  EXPECT_FALSE(isRefusedAs<unsigned int>(real(-0.5)));
  EXPECT_TRUE(isRefusedAs<int>(real(std::numeric_limits<double>::quiet_NaN())));
  EXPECT_TRUE(isRefusedAs<int>(real(std::numeric_limits<double>::infinity())));
}

TEST(CZorVariant, ATextThatIsANumberConverts) {
  EXPECT_EQ(static_cast<double>(text(L"0.001")), 0.001);
  EXPECT_EQ(static_cast<double>(text(L"-12.5")), -12.5);
  EXPECT_EQ(static_cast<double>(text(L"1e-3")), 0.001);
  EXPECT_EQ(static_cast<int>(text(L"100")), 100);
  EXPECT_EQ(static_cast<int>(text(L"7.9")), 7);
}

TEST(CZorVariant, ATextThatIsNotANumberAsAWholeIsRefused) {
  for (const wchar_t* content :
       {L"", L" ", L"ten", L"10 m", L"10 ", L" 10", L"1,5", L"1.5.2", L"--1", L"0x10", L"1\x0660", L"\x0661"}) {
    EXPECT_TRUE(isRefusedAs<double>(text(content))) << testing::PrintToString(std::wstring(content));
  }
}

TEST(CZorVariant, ATextWithANullCharacterIsRefused) {
  CZorVariant variant;
  variant.set(std::wstring(L"1\0", 2));
  EXPECT_TRUE(isRefusedAs<double>(variant));
}

TEST(CZorVariant, ATextBeyondTheRangeIsRefused) { EXPECT_TRUE(isRefusedAs<double>(text(L"1e999"))); }

TEST(CZorVariant, TheDecimalPointIsAPointInEveryLocale) {
  const DecimalCommaLocale locale;
  if (!locale.isInForce()) GTEST_SKIP() << "no locale with a decimal comma on this system";
  EXPECT_EQ(static_cast<double>(text(L"0.001")), 0.001);
  EXPECT_TRUE(isRefusedAs<double>(text(L"0,001")));
}
