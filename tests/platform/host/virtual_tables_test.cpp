// The order of the virtual functions of the host's interfaces. Modules and hosts are built apart: what
// is called is the place, not the name.
#include "support/virtual_table.h"

#ifndef _MSC_VER

#include <gtest/gtest.h>

#include "platform/host/application.h"
#include "platform/host/command_factory.h"
#include "platform/host/document.h"
#include "platform/host/file_dialog.h"
#include "platform/host/message_line.h"
#include "platform/host/profile.h"
#include "platform/host/transient_service.h"
#include "platform/host/view.h"

namespace {

using namespace tiepoint::testing;

TEST(VirtualTables, TheApplicationHasItsDocumentThenTheReactorsThenLineAndDialog) {
  EXPECT_TRUE(std::has_virtual_destructor_v<HostApplication>);
  EXPECT_EQ(placesOf(&HostApplication::activeDocument, &HostApplication::addReactor, &HostApplication::removeReactor,
                     &HostApplication::messageLine, &HostApplication::fileDialog),
            inTurn(behindDestructor, 5));
}

TEST(VirtualTables, TheReactorHearsOfARemovalRightBehindAnAddition) {
  EXPECT_TRUE(std::has_virtual_destructor_v<HostApDocManagerReactor>);
  EXPECT_EQ(placesOf(&HostApDocManagerReactor::documentCreateStarted, &HostApDocManagerReactor::documentAdded,
                     &HostApDocManagerReactor::documentToBeRemoved, &HostApDocManagerReactor::documentActivated),
            inTurn(behindDestructor, 4));
}

TEST(VirtualTables, TheDocumentHasItsDatabaseThenItsServiceThenItsReadiness) {
  EXPECT_TRUE(std::has_virtual_destructor_v<HostDocument>);
  EXPECT_EQ(placesOf(&HostDocument::database, &HostDocument::transientService, &HostDocument::isReady),
            inTurn(behindDestructor, 3));
}

TEST(VirtualTables, TheTransientServiceAddsThenRemovesThenGivesTheViewThenAppliesIt) {
  EXPECT_TRUE(std::has_virtual_destructor_v<HostTransientService>);
  EXPECT_EQ(placesOf(&HostTransientService::addTransient, &HostTransientService::removeTransient,
                     &HostTransientService::activeView, &HostTransientService::applyView),
            inTurn(behindDestructor, 4));
}

TEST(VirtualTables, TheViewIsReadPieceByPieceAndSetLast) {
  EXPECT_TRUE(std::has_virtual_destructor_v<HostView>);
  EXPECT_EQ(placesOf(&HostView::viewingMatrix, &HostView::position, &HostView::target, &HostView::upVector,
                     &HostView::fieldWidth, &HostView::fieldHeight, &HostView::set),
            inTurn(behindDestructor, 7));
}

TEST(VirtualTables, TheCommandFactoryAddsThenIsReleased) {
  EXPECT_EQ(placesOf(&ICmdFactory::addCommand, &ICmdFactory::release), inTurn(0, 2));
}

TEST(VirtualTables, TheMessageLinePrints) {
  EXPECT_TRUE(std::has_virtual_destructor_v<HostMessageLine>);
  EXPECT_EQ(placeOf(&HostMessageLine::print), behindDestructor);
}

TEST(VirtualTables, TheFileDialogOpens) {
  EXPECT_TRUE(std::has_virtual_destructor_v<HostFileDialog>);
  EXPECT_EQ(placeOf(&HostFileDialog::open), behindDestructor);
}

TEST(VirtualTables, TheCountedObjectsOfTheProfileAreAskedThenReleased) {
  EXPECT_EQ(placesOf(&HostAppService::queryProfile, &HostAppService::release), inTurn(0, 2));
  EXPECT_EQ(placesOf(&HostProfile::openSection, &HostProfile::release), inTurn(0, 2));
  EXPECT_EQ(placesOf(&HostProfileSection::readValue, &HostProfileSection::release), inTurn(0, 2));
}

}  // namespace

#endif
