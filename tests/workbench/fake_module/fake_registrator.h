// A registration session that solves nothing: it writes down what it is asked and gives back
// values that tests know.
#pragma once

#include "session/i_multi_registrator.h"

/// Every operation adds a line to a log, "operation(inputs)". getResultsReport gives the log and
/// empties it; it isn't in the log itself. Outputs are fixed values, or the inputs again.
///
/// `renameGroup` with one of these names throws: "throw OdError", "throw wrong class",
/// "throw bad_alloc", "throw rounding_error", "throw logic_error", "throw int". With
/// "store and throw" it first stores a group of that name in the active drawing; `storeCommonPoints`
/// stores a group of the name that it is given. Groups other than 0 are refused by `addGroups`,
/// which then leaves its outputs alone.
ZOR::reg::iMultiRegistrator* newFakeRegistrator();
