// A picture of what the module draws in a view.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "workbench/picture/page_layout.h"
#include "workbench/picture/painted_text.h"
#include "workbench/picture/picture_content.h"
#include "workbench/picture/picture_request.h"

class OdGiDrawable;

namespace tiepoint::workbench::picture {

struct Request {
  Format format = Format::png;
  Size size;
  Direction direction = Direction::top;
};

struct Picture {
  /// Of the file.
  std::string bytes;
  PageLayout layout;
  /// Every text in it, in units of the page.
  std::vector<PaintedText> texts;
};

/// There is nothing to look at.
class NothingToShow : public std::runtime_error {
 public:
  NothingToShow() : std::runtime_error("no point has a position that can be shown") {}
};

/// Draws the drawables as a view does, and the content around it. The same input gives the same bytes.
/// Throws NothingToShow, and std::runtime_error when the font is missing or the picture can't be made.
Picture drawPicture(const Request& request, const Content& content, const std::vector<const OdGiDrawable*>& drawables);

}  // namespace tiepoint::workbench::picture
