#include "platform/sdk/od_error.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "platform/sdk/od_test_objects.h"

namespace {

constexpr OdResult allCodes[] = {eOk,
                                 eNotApplicable,
                                 eInvalidInput,
                                 eNotThatKindOfClass,
                                 eNotOpenForRead,
                                 eNotOpenForWrite,
                                 eWasOpenForWrite,
                                 eNullObjectId,
                                 eNotInDatabase,
                                 eWasErased,
                                 eNoActiveTransaction,
                                 eFileAccessErr,
                                 eNotADrawing,
                                 eNewerFormat,
                                 eFileSharingViolation,
                                 eWriteProtected,
                                 eDiskFull,
                                 eNullClass};

}  // namespace

TEST(OdError, BearsItsCode) { EXPECT_EQ(OdError(eWasErased).code(), eWasErased); }

TEST(OdError, SaysWhatItsCodeMeans) {
  EXPECT_STREQ(OdError(eNotOpenForWrite).what(), "The object is not open for writing");
  EXPECT_STREQ(OdError(eDiskFull).what(), "The disk is full");
}

TEST(OdError, EveryCodeHasAPhraseOfItsOwn) {
  std::set<std::string> phrases;
  for (const OdResult code : allCodes) phrases.insert(OdError(code).what());
  EXPECT_EQ(phrases.size(), std::size(allCodes));
  EXPECT_EQ(phrases.count("Unknown error"), 0u);
}

TEST(OdError, ACodeThatIsNoneSaysSo) { EXPECT_STREQ(OdError(static_cast<OdResult>(7)).what(), "Unknown error"); }

TEST(OdError, TakesADescriptionOfItsOwn) {
  const OdError error(eNotADrawing, "walls.dwt is not a drawing");
  EXPECT_EQ(error.code(), eNotADrawing);
  EXPECT_STREQ(error.what(), "walls.dwt is not a drawing");
}

TEST(OdErrorNotThatKindOfClass, NamesBothClasses) {
  const OdError_NotThatKindOfClass error(NumberObject::desc(), OdDbDictionary::desc());
  EXPECT_EQ(error.code(), eNotThatKindOfClass);
  EXPECT_EQ(error.fromClass(), NumberObject::desc());
  EXPECT_EQ(error.toClass(), OdDbDictionary::desc());
  EXPECT_STREQ(error.what(), "An object of class NumberObject is not one of class OdDbDictionary");
}

TEST(OdErrorNotThatKindOfClass, SaysWhenAClassIsMissing) {
  const OdError_NotThatKindOfClass error(nullptr, OdDbDictionary::desc());
  EXPECT_STREQ(error.what(), "An object of class (no class) is not one of class OdDbDictionary");
}
