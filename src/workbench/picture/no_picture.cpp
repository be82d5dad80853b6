// In place of all the drawing, where there is no library to draw with.
#include "workbench/picture/picture.h"

namespace tiepoint::workbench::picture {

Picture drawPicture(const Request&, const Content&, const std::vector<const OdGiDrawable*>&) {
  throw std::runtime_error("this build of tiepoint can't draw pictures");
}

}  // namespace tiepoint::workbench::picture
