// The command where the class of the stored groups is missing or makes no object. This program
// defines the class descriptor itself, and its definition comes before the library's.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "module/import_host.h"
#include "platform/pointclouds/points_repository.h"

namespace {

const OdRxClass* descriptorOfTest = nullptr;

}  // namespace

const OdRxClass* ZOR::RegistrationObjectPointsRepository::desc() { return descriptorOfTest; }

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ImportCommandClass : public ImportTest {};

TEST_F(ImportCommandClass, ThatIsNotKnownIsErrorNumber255) {
  descriptorOfTest = nullptr;
  try {
    import({files.write(L"a.txt", "P1 1 2 3\n")});
    FAIL() << "nothing was thrown";
  } catch (const OdError& error) {
    EXPECT_EQ(static_cast<int>(error.code()), 255);
  }
  EXPECT_THAT(messages(), ElementsAre(L"Found 1 files"));
  EXPECT_THAT(groups(), IsEmpty());
}

TEST_F(ImportCommandClass, ThatIsNotKnownIsNotAskedForAFileWithoutPoints) {
  descriptorOfTest = nullptr;
  import({files.write(L"a.txt", "")});
  EXPECT_THAT(messages(), ElementsAre(L"Found 1 files", L"Warning: reference points are not found in the file a",
                                      L"Command complite. 0 groups of reference points loaded in document"));
}

TEST_F(ImportCommandClass, ThatMakesNoObjectIsAWarningForEachFile) {
  const OdRxClass abstractClass(L"AbstractRepository", OdDbObject::desc(), nullptr);
  descriptorOfTest = &abstractClass;
  import({files.write(L"a.txt", "P1 1 2 3\n"), files.write(L"b.txt", "P1 1 2 3\n")});
  EXPECT_THAT(messages(), ElementsAre(L"Found 2 files", L"Warning: dont't create repository in document",
                                      L"Warning: dont't create repository in document",
                                      L"Command complite. 0 groups of reference points loaded in document"));
  EXPECT_THAT(groups(), IsEmpty());
}

}  // namespace
}  // namespace tiepoint::testing
