// Pictures of a drawing's points, before and after their registration.
#pragma once

#include <string>
#include <vector>

#include "workbench/picture/picture.h"
#include "workbench/report/length_format.h"
#include "workbench/values/registration.h"
#include "workbench/values/session_state.h"
#include "workbench/values/shown_group.h"

namespace tiepoint::workbench {

/// What a picture tells of a session that isn't solved; `title` is a path.
picture::Content storedContent(const SessionState& state, const ShownGroups& shown, const std::string& title,
                               const LengthFormat& lengths);

/// The same of a registered survey: the residuals, the stations, the point that is worst, and what isn't
/// shown.
picture::Content registeredContent(const Registration& registration, const ShownGroups& shown,
                                   const LengthFormat& lengths);

/// What a view shows.
struct ShownPoints {
  const ShownGroups& groups;
  const std::vector<const OdGiDrawable*>& drawables;
};

/// The bytes of a picture of a session that isn't solved. Throws Refused: (nothingToShow) when no point
/// has a place, (pictureFailed) when the picture can't be drawn.
std::string storedPicture(const SessionState& state, const ShownPoints& shown, const std::string& title,
                          const LengthFormat& lengths, const picture::Request& request);

/// The same of one that is registered, with its residuals; the others are taken not to show.
std::string registeredPicture(const Registration& registration, const ShownPoints& shown, const LengthFormat& lengths,
                              const picture::Request& request);

}  // namespace tiepoint::workbench
