// A text of a picture, and where it stands.
#pragma once

#include <string>

#include "workbench/picture/box.h"

namespace tiepoint::workbench::picture {

struct PaintedText {
  std::string text;
  Box box;
};

}  // namespace tiepoint::workbench::picture
