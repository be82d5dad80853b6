#include "workbench/report/field_names.h"

#include <array>

namespace tiepoint::workbench {

namespace {

constexpr std::array options{"",
                             "FILE",
                             "--columns",
                             "--decimal",
                             "--encoding",
                             "--input-unit",
                             "--document",
                             "--base",
                             "--exclude",
                             "--weight",
                             "--weights",
                             "--match",
                             "--match-limit",
                             "--side-tolerance",
                             "--min-side-difference",
                             "--tolerance",
                             "--method",
                             "--max-iterations",
                             "--convergence",
                             "--sigma",
                             "--sigmas",
                             "--control",
                             "--level",
                             "--start",
                             "--variance",
                             "--alpha",
                             "--power",
                             "--carry",
                             "--trace",
                             "--keep-cluster",
                             "--cloud",
                             "--apply",
                             "--moved",
                             "--store",
                             "--common-points",
                             "--matrices",
                             "--matrix-format",
                             "--transforms",
                             "--report",
                             "--report-kind",
                             "--picture"};

static_assert(options.size() == static_cast<std::size_t>(Field::picture) + 1, "an option for each field, in order");

}  // namespace

const char* optionOf(Field field) { return options[static_cast<std::size_t>(field)]; }

}  // namespace tiepoint::workbench
