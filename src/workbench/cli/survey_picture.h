// Pictures of a drawing's points, before and after their registration.
#pragma once

#include <string>

#include "workbench/cli/length_format.h"
#include "workbench/cli/road.h"
#include "workbench/picture/picture.h"
#include "workbench/session/driven_session.h"

namespace tiepoint::workbench::cli {

/// Before a session begins: markers of many points are offered to the module smaller than it would draw
/// them, unless the profile says how large they are.
void suitMarkers(Workbench& workbench, const picture::Size& size);

/// The bytes of a picture of a session that isn't solved. Throws CommandError: (refused) when no point
/// has a place, (file) when the picture can't be drawn.
std::string storedPicture(Workbench& workbench, const DrivenSession& session, const std::string& title,
                          const LengthFormat& lengths, const picture::Request& request);

/// The same of one that is, with its residuals. Groups that aren't registered don't show.
std::string registeredPicture(Workbench& workbench, DrivenSession& session, const Road& road,
                              const LengthFormat& lengths, const picture::Request& request);

}  // namespace tiepoint::workbench::cli
