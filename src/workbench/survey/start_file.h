// Poses to start from, as an earlier registration wrote them.
#pragma once

#include <string>
#include <vector>

#include "workbench/values/adjustment_request.h"

namespace tiepoint::workbench {

/// The poses of the registered stations, in the order of the file, which is JSON as `--transforms` writes it;
/// only `groups`, and of each group `name`, `registered`, `rotation` and `translation` are looked at. A
/// rotation is made exactly one; it may be off by 1e-6.
///
/// `path` is UTF-8. Throws Refused: (startNotRead) with what is wrong as its cause, and what a file that can't
/// be read throws. Causes: "json" (count: the line), "number" for one that no double holds, the key that is
/// missing or of another type ("groups"; "name", with the group's place in the list, from 1, as count;
/// "registered", "rotation", "translation", with the group's name), and with the group's name also "twice" and
/// "improper", a rotation that mirrors or isn't one.
std::vector<StationPose> readStartFile(const std::string& path);

}  // namespace tiepoint::workbench
