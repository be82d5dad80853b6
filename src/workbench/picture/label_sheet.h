// The texts in a drawing, placed first and painted last.
#pragma once

#include <string>
#include <vector>

#include "workbench/picture/camera.h"
#include "workbench/picture/canvas.h"
#include "workbench/picture/label_placer.h"
#include "workbench/picture/marks.h"
#include "workbench/picture/picture_content.h"
#include "workbench/view/recording_draw.h"

namespace tiepoint::workbench::picture {

/// A text at a point of the page, with the height of its capital letters.
struct Label {
  PagePoint anchor;
  std::string text;
  double height = 0.0;
  Rgb color;
};

/// The recorded texts as labels, in their order. Where one target was measured by several groups, the
/// same name stands several times at nearly the same point; it becomes one label.
std::vector<Label> labelsOf(const std::vector<DrawnText>& texts, const Projection& projection, double pixelSize);

/// Labels of targets with larger residuals come before the others; otherwise the order stays.
void putLargestResidualsFirst(std::vector<Label>& labels, const std::vector<Residual>& residuals);

class LabelSheet {
 public:
  LabelSheet(Canvas& canvas, const Box& area);

  /// To be told of all marks before the first text comes.
  LabelPlacer& places() { return placer; }

  /// Beside the arrow's ring, wherever there is room; a line leads to it.
  void addNote(const PageArrow& arrow);
  void addStationName(const PagePoint& station, const std::string& name);
  /// False when there is no room.
  bool addLabel(const Label& label, bool mayBeFar);

  void paintLeaders();
  void paintTexts();

 private:
  struct Text {
    PagePoint start;
    std::string text;
    TextStyle style;
  };

  std::optional<LabelPosition> add(const LabelWish& wish, const std::string& text, const TextStyle& style);

  Canvas& canvas;
  LabelPlacer placer;
  std::vector<Text> texts;
  std::vector<PageLine> leaders;
};

}  // namespace tiepoint::workbench::picture
