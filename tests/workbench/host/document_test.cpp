#include "workbench/host/document.h"

#include <gtest/gtest.h>

#include "platform/sdk/od_db_dictionary.h"
#include "workbench/temporary_folder.h"
#include "workbench/view/test_drawable.h"

namespace tiepoint::workbench {
namespace {

TEST(Document, HasTheNumberThatItWasGiven) {
  const Document document(7, Drawing::temporary());
  EXPECT_EQ(document.number(), 7);
  EXPECT_TRUE(document.isReady());
}

TEST(Document, OfADrawingInMemoryHasNoPath) { EXPECT_EQ(Document(1, Drawing::temporary()).path(), ""); }

TEST(Document, OfAFileHasItsPath) {
  const TemporaryFolder folder;
  const std::string path = folder.file("зал.tpd");
  EXPECT_EQ(Document(1, Drawing::open(path, true)).path(), path);
}

TEST(Document, GivesTheDatabaseOfItsDrawing) {
  auto drawing = Drawing::temporary();
  const OdDbDatabasePtr database = drawing->database();
  Document document(1, std::move(drawing));
  EXPECT_EQ(document.database().get(), database.get());
}

TEST(Document, LocksItsFileUntilItGoes) {
  const TemporaryFolder folder;
  const std::string path = folder.file("hall.tpd");
  {
    const Document document(1, Drawing::open(path, true));
    EXPECT_THROW(Drawing::open(path, false), OdError);
  }
  EXPECT_NO_THROW(Drawing::open(path, false));
}

TEST(Document, ShowsDrawablesOfItsOwn) {
  TestDrawable drawable;
  Document one(1, Drawing::temporary()), two(2, Drawing::temporary());
  one.transientService()->addTransient(&drawable, 0, 0, 0, 0);
  ASSERT_EQ(one.transient().drawables().size(), 1u);
  EXPECT_EQ(one.transient().drawables()[0].drawable, &drawable);
  EXPECT_TRUE(two.transient().drawables().empty());
}

}  // namespace
}  // namespace tiepoint::workbench
