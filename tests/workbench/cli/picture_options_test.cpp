#include "workbench/cli/picture_options.h"

#include <gtest/gtest.h>

#include "workbench/cli/exit_status.h"

namespace tiepoint::workbench::cli {
namespace {

std::string refusal(const PictureOptions& options, const PictureOptionNames& names = registerPictureNames) {
  try {
    pictureRequest(options, names);
  } catch (const CommandError& error) {
    EXPECT_EQ(error.status(), ExitStatus::usage);
    return error.what();
  }
  return "no refusal";
}

TEST(PictureOptions, AskForNothingWithoutAFile) { EXPECT_FALSE(pictureRequest({}, registerPictureNames).has_value()); }

TEST(PictureOptions, AskForAPlainPictureFromAbove) {
  const auto request = pictureRequest({"hall.svg", "", ""}, registerPictureNames);
  ASSERT_TRUE(request.has_value());
  EXPECT_EQ(request->format, picture::Format::svg);
  EXPECT_EQ(request->size.width, 1200);
  EXPECT_EQ(request->size.height, 800);
  EXPECT_EQ(request->direction, picture::Direction::top);
}

TEST(PictureOptions, AskForWhatIsGiven) {
  const auto request = pictureRequest({"hall.PDF", "640x480", "iso"}, renderPictureNames);
  ASSERT_TRUE(request.has_value());
  EXPECT_EQ(request->format, picture::Format::pdf);
  EXPECT_EQ(request->size.width, 640);
  EXPECT_EQ(request->size.height, 480);
  EXPECT_EQ(request->direction, picture::Direction::iso);
}

TEST(PictureOptions, RefuseWhatThereIsntInOneLine) {
  EXPECT_EQ(refusal({"hall.jpg", "", ""}), "--picture hall.jpg: the file must end in .png, .svg or .pdf");
  EXPECT_EQ(refusal({"hall.jpg", "", ""}, renderPictureNames),
            "--output hall.jpg: the file must end in .png, .svg or .pdf");
  EXPECT_EQ(refusal({"hall.png", "640", ""}),
            "--picture-size 640: must have the form WxH, from 400x300 to 8000x8000 pixels");
  EXPECT_EQ(refusal({"hall.png", "1x1", ""}, renderPictureNames),
            "--size 1x1: must have the form WxH, from 400x300 to 8000x8000 pixels");
  EXPECT_EQ(refusal({"hall.png", "", "below"}), "--picture-view below: unknown; choose top, front, side, iso or fit");
}

TEST(PictureOptions, RefuseASizeOrAViewOfNoPicture) {
  EXPECT_EQ(refusal({"", "640x480", ""}), "--picture-size needs --picture FILE");
  EXPECT_EQ(refusal({"", "", "iso"}), "--picture-view needs --picture FILE");
}

}  // namespace
}  // namespace tiepoint::workbench::cli
