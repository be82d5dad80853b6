// The order of the virtual functions of a matrix format.
#include "support/virtual_table.h"

#ifndef _MSC_VER

#include <gtest/gtest.h>

#include "files/trans_mat_file_format.h"

namespace {

using namespace tiepoint::testing;
using ZOR::reg::iTransMatFileFormat;

TEST(VirtualTables, AMatrixFormatHasItsDescriptionThenItsTextAndItsDestructorLast) {
  EXPECT_TRUE(std::has_virtual_destructor_v<iTransMatFileFormat>);
  // A destructor ahead of them would have pushed them back by its two places.
  EXPECT_EQ(placesOf(&iTransMatFileFormat::description, &iTransMatFileFormat::formatMatrix), inTurn(0, 2));
}

}  // namespace

#endif
