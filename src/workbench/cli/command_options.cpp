#include "workbench/cli/command_options.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <charconv>
#include <type_traits>

#include "workbench/cli/exit_status.h"

namespace tiepoint::workbench::cli {

namespace {

/// One argument each time the option is given, so that a file behind it stays a file.
void addRepeated(CLI::App& app, const std::string& name, std::vector<std::string>& values, const char* type,
                 const char* help) {
  app.add_option(name, values, help)->type_name(type)->allow_extra_args(false);
}

/// An empty text is what an unset variable of the shell leaves; it would be taken for none.
CLI::Option* addText(CLI::App& app, const std::string& name, std::string& value, const char* type, const char* help) {
  const auto read = [&value, name](const std::string& text) {
    if (text.empty()) {
      throw CommandError(ExitStatus::usage, fmt::format("{}: the value is empty; is a shell variable unset?",
                                                        name.substr(0, name.find(','))));
    }
    value = text;
  };
  return app.add_option_function<std::string>(name, read, help)->type_name(type);
}

/// The whole text is a number; thrown from inside the parser, as its own complaint names no reason.
template <class Number>
void addNumber(CLI::App& app, const std::string& name, std::optional<Number>& value, const char* type,
               const char* help) {
  const auto read = [&value, name](const std::string& text) {
    Number number{};
    const char* const begin = text.data() + (text.compare(0, 1, "+") == 0 ? 1 : 0);
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(begin, end, number);
    if (error != std::errc{} || stop != end) {
      throw CommandError(ExitStatus::usage,
                         fmt::format("{} {}: not a {}", name, text,
                                     std::is_integral_v<Number> ? "whole number, 0 or more" : "number"));
    }
    value = number;
  };
  app.add_option_function<std::string>(name, read, help)->type_name(type);
}

void addFileOptions(CLI::App& app, FileOptions& files) {
  app.add_option("files", files.files, "files of reference points, of any text form (see docs/import-format.md)")
      ->type_name("FILE");
  addText(app, "--layout", files.layout, "LAYOUT",
          "columns of FILES: NXYZ, XYZ, XYZW or NXYZW; default: NXYZ, or else detected");
  const auto add = [&](const char* name, std::vector<std::string>& paths, const char* help) {
    app.add_option(name, paths, help)->type_name("FILE");
  };
  add("--nxyz", files.nxyz, "more files: name x y z");
  add("--xyz", files.xyz, "more files: x y z, points without names");
  add("--xyzw", files.xyzw, "more files: x y z weight");
  add("--nxyzw", files.nxyzw, "more files: name x y z weight");
  addText(app, "--columns", files.columns, "LIST",
          "of FILES: name,x,y,z[,w], n,e,h, - to skip; or name=1,x=3,... by number or header");
  addText(app, "--decimal", files.decimal, "MARK", "decimal mark, point or comma; default: detected");
  addText(app, "--encoding", files.encoding, "NAME",
          "utf-8, utf-16le, utf-16be, windows-1251 or windows-1252; default: detected");
  addText(app, "--input-unit", files.inputUnit, "UNIT", "m, mm, ft or usft (US survey feet): converted to metres");
}

void addPrintOptions(CLI::App& app, bool& json, bool& quiet) {
  app.add_flag("--json", json, "print one JSON object instead of text");
  app.add_flag("--quiet", quiet, "no warnings, and no summary unless --json is given");
}

void addPictureOptions(CLI::App& app, PictureOptions& picture, const char* size, const char* view) {
  addText(app, size, picture.size, "WxH", "size in pixels, 400x300 to 8000x8000; default: 1200x800");
  addText(app, view, picture.view, "VIEW", "top (default), front, side, iso or fit (facing the widest spread)");
}

void addAdjustOptions(CLI::App& app, AdjustOptions& options) {
  addRepeated(app, "--sigma", options.sigma, "[GROUP=]S",
              "adjust: a coordinate's sigma, for all or one group; may be given again");
  addText(app, "--sigmas", options.sigmasFile, "FILE",
          "adjust: file of them: one \"GROUP S\" or \"GROUP POINT S\" per line");
  addText(app, "--control", options.controlFile, "FILE",
          "adjust: given places: \"NAME x y z\" and sigmas or covariances per line");
  addRepeated(app, "--level", options.level, "GROUP",
              "adjust: this group (or all) only turns about z; may be given again");
  addText(app, "--start", options.startFile, "FILE", "adjust: poses to start from, as --transforms writes them");
  addText(app, "--variance", options.variance, "WHICH", "adjust: a-priori (default with any sigma) or a-posteriori");
  addNumber(app, "--alpha", options.alpha, "A", "adjust: level of each test; default: 0.001");
  addNumber(app, "--power", options.power, "P", "adjust: power that detectable errors are for; default: 0.8");
  addText(app, "--carry", options.carryFile, "FILE",
          "adjust: points to carry to the common system: \"GROUP x y z\" per line");
  addRepeated(app, "--trace", options.trace, "GROUP:POINT",
              "adjust: effect of this measurement on every group; may be given again");
}

void addMatchOptions(CLI::App& app, RegisterOptions& options) {
  addText(app, "--match", options.match, "HOW", "name unnamed points: auto (searches), triangles or distance");
  addNumber(app, "--match-limit", options.matchLimit, "LENGTH",
            "auto: largest discrepancy allowed; default: 0.02 (20 with --unit mm)");
  addNumber(app, "--side-tolerance", options.sideTolerance, "LENGTH",
            "triangles, auto: largest difference between sides of congruent triangles");
  addNumber(app, "--min-side-difference", options.minSideDifference, "LENGTH",
            "triangles, auto: smallest difference between two sides of a usable triangle");
  addNumber(app, "--tolerance", options.tolerance, "LENGTH",
            "distance, auto: largest distance between points of one target");
}

}  // namespace

CLI::Option* addHostOptions(CLI::App& app, HostOptions& host, const char* documentHelp) {
  CLI::Option* document = addText(app, "--document", host.document, "FILE", documentHelp);
  addText(app, "--profile", host.profile, "FILE",
          "profile with the module's settings (JSON); default: built-in settings");
  addText(app, "--module", host.module, "FILE", "the registration module; default: the one installed with tiepoint");
  return document;
}

void addRegister(CLI::App& app, RegisterOptions& options) {
  addFileOptions(app, options.files);
  addHostOptions(app, options.host, "the drawing; created if missing and files are named");
  addRepeated(app, "--base", options.base, "GROUP", "register into this group's system; may be given again");
  addRepeated(app, "--exclude", options.exclude, "GROUP[:POINT]",
              "leave out a group or one of its points; may be given again");
  addRepeated(app, "--weight", options.weight, "GROUP:POINT=W",
              "weight of a point, 0 to 1; 0 leaves it out; may be given again");
  addText(app, "--weights", options.weightsFile, "FILE",
          "file of weights: one \"GROUP POINT WEIGHT\" per line, # comments");
  addMatchOptions(app, options);
  addText(app, "--method", options.method, "METHOD", "adjust (default), pairwise or iterative");
  addAdjustOptions(app, options.adjust);
  addNumber(app, "--max-iterations", options.maxIterations, "NUMBER",
            "iterative: limit of passes; default: the profile's, or 100");
  addNumber(app, "--convergence", options.convergence, "LENGTH",
            "iterative: stop once a pass moves targets less; default: the profile's, or 0.001");
  addNumber(app, "--keep-cluster", options.keepCluster, "NUMBER",
            "if the groups aren't connected, go on with this cluster");
  addRepeated(app, "--cloud", options.clouds, "NAME=FILE",
              "add a point cloud; it moves with the group of the same name");
  app.add_flag("--apply", options.apply, "move the drawing's clouds");
  addText(app, "--moved", options.moved, "FOLDER",
          "with --apply: write moved copies of text clouds there; created if missing");
  addText(app, "--store", options.store, "NAME", "store the merged targets in the drawing as a group");
  addText(app, "--common-points", options.commonPoints, "FILE", "write the merged targets: name x y z weight");
  addText(app, "--matrices", options.matrices, "FOLDER",
          "write each group's matrix to GROUP.txt there; created if missing");
  addText(app, "--matrix-format", options.matrixFormat, "FORMAT",
          "plain (default: all digits), 4x4 or trf (PolyWorks, transposed)");
  addText(app, "--transforms", options.transforms, "FILE",
          "write all groups' rotations, translations and residuals as JSON");
  addText(app, "--report", options.report, "FILE", "write a report as HTML");
  addText(app, "--report-kind", options.reportKind, "KIND", "results (default), points or groups");
  addText(app, "--picture", options.picture.file, "FILE",
          "draw the registered points with enlarged residuals: .png, .svg or .pdf");
  addPictureOptions(app, options.picture, "--picture-size", "--picture-view");
  app.add_flag("--force", options.force, "replace existing files; move clouds again");
  app.add_flag("--all-points", options.allPoints,
               "print tables in full; default: only the worst rows of more than 200");
  app.add_flag("--axes", options.axes, "also show each discrepancy along x, y and z of the common system");
  addText(app, "--unit", options.unit, "UNIT", "unit of the files, m or mm; residuals are then printed in mm");
  addPrintOptions(app, options.json, options.quiet);
}

void addImport(CLI::App& app, ImportOptions& options) {
  addFileOptions(app, options.files);
  addHostOptions(app, options.host, "the drawing; created if missing")->required();
  addPrintOptions(app, options.json, options.quiet);
}

void addGroups(CLI::App& app, GroupsOptions& options) {
  addHostOptions(app, options.host, "the drawing")->required();
  app.add_flag("--points", options.points, "list the points as well");
  app.add_flag("--json", options.json, "print one JSON object instead of text");
}

void addClouds(CLI::App& app, CloudsOptions& options) {
  addHostOptions(app, options.host, "the drawing; created if missing and clouds are added")->required();
  addRepeated(app, "--add", options.add, "NAME=FILE", "add a point cloud");
  addText(app, "--moved", options.moved, "FOLDER", "write moved copies of text clouds there; created if missing");
  app.add_flag("--force", options.force, "replace existing files");
  app.add_flag("--json", options.json, "print one JSON object instead of text");
}

void addRender(CLI::App& app, RenderOptions& options) {
  addHostOptions(app, options.host, "the drawing")->required();
  addText(app, "--output,-o", options.picture.file, "FILE", "the picture: .png, .svg or .pdf")->required();
  addPictureOptions(app, options.picture, "--size", "--view");
  addText(app, "--unit", options.unit, "UNIT", "unit of the drawing, m or mm, for the scale bar");
  app.add_flag("--force", options.force, "replace an existing file");
}

}  // namespace tiepoint::workbench::cli
