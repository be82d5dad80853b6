#include "workbench/cli/command_line.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <functional>
#include <new>
#include <type_traits>

#include "platform/sdk/od_error.h"
#include "workbench/cli/commands/clouds_command.h"
#include "workbench/cli/commands/groups_command.h"
#include "workbench/cli/commands/import_command.h"
#include "workbench/cli/commands/register_command.h"
#include "workbench/cli/commands/render_command.h"
#include "workbench/cli/commands/rpc_command.h"
#include "workbench/cli/help_texts.h"
#include "workbench/cli/output.h"
#include "workbench/host/workbench.h"
#include "workbench/io/text_encoding.h"
#include "workbench/report/refusal_text.h"
#include "workbench/report/suggestion.h"

namespace tiepoint::workbench::cli {

namespace {

/// The description with its examples first, then options; one line a command in the list of them.
class HelpLayout : public CLI::Formatter {
 public:
  HelpLayout() { column_width(28); }

  std::string make_description(const CLI::App* app) const override { return app->get_description() + "\n"; }
  std::string make_subcommand(const CLI::App* sub) const override {
    const std::string description = sub->get_description();
    return fmt::format("  {:<26}{}\n", sub->get_name(), description.substr(0, description.find('\n')));
  }
  /// An option that takes one value each time it is given is no list, though it may be given again.
  std::string make_option_opts(const CLI::Option* option) const override {
    std::string text = CLI::Formatter::make_option_opts(option);
    const std::size_t dots = text.find(" ...");
    if (!option->get_allow_extra_args() && dots != std::string::npos) text.erase(dots, 4);
    return text;
  }
};

/// What the commands call a field that isn't called as by `register`.
const char* cloudsOptionOf(Field field) { return field == Field::cloud ? "--add" : optionOf(field); }
const char* renderOptionOf(Field field) { return field == Field::picture ? "--output" : optionOf(field); }

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

CLI::Option* addHostOptions(CLI::App& app, HostOptions& host, const char* documentHelp) {
  CLI::Option* document = addText(app, "--document", host.document, "FILE", documentHelp);
  addText(app, "--profile", host.profile, "FILE",
          "profile with the module's settings (JSON); default: built-in settings");
  addText(app, "--module", host.module, "FILE", "the registration module; default: the one installed with tiepoint");
  return document;
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
  addText(app, "--method", options.method, "METHOD", "pairwise (default) or iterative");
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

/// The program's options and commands, and what was chosen.
class CommandLine {
 public:
  CommandLine() : app(programHelp, "tiepoint") {
    app.formatter(std::make_shared<HelpLayout>());
    app.footer(exitStatusHelp);
    app.set_version_flag("--version", "tiepoint " TIEPOINT_VERSION, "print the version");
    app.set_help_flag("--help,-h", "print this help");
    // A word that begins with a slash is a path on every platform.
    app.allow_windows_style_options(false);
    addRegister(add("register", registerHelp, registerOptions, runRegister), registerOptions);
    addImport(add("import", importHelp, importOptions, runImport), importOptions);
    addGroups(add("groups", groupsHelp, groupsOptions, runGroups), groupsOptions);
    addClouds(add("clouds", cloudsHelp, cloudsOptions, runClouds, cloudsOptionOf), cloudsOptions);
    addRender(add("render", renderHelp, renderOptions, runRender, renderOptionOf), renderOptions);
    addHostOptions(add("rpc", rpcHelp, rpcOptions, runRpc), rpcOptions.host,
                   "drawing to open before the first request; created if missing");
  }

  ExitStatus run(int argc, const char* const* argv) {
    try {
      parse({argv + 1, argv + argc});
    } catch (const CLI::CallForHelp&) {
      writeOut(app.help());
      return ExitStatus::done;
    } catch (const CLI::CallForVersion&) {
      writeOut(app.version() + "\n");
      return ExitStatus::done;
    } catch (const CLI::ExtrasError&) {
      throw CommandError(ExitStatus::usage, explainUnknown() + seeHelp());
    } catch (const CLI::ParseError& error) {
      throw CommandError(ExitStatus::usage, error.what() + seeHelp());
    }
    if (!chosen) throw CommandError(ExitStatus::usage, "no command given; see tiepoint --help");
    return runChosen();
  }

 private:
  template <class Options>
  CLI::App& add(const char* name, const char* help, Options& options, ExitStatus (*action)(const Options&),
                FieldNames names = optionOf) {
    CLI::App* command = app.add_subcommand(name, help);
    command->callback([this, &options, action, names] {
      fieldNames = names;
      document = &options.host.document;
      chosen = [&options, action] { return action(options); };
    });
    return *command;
  }

  /// "help" and "help COMMAND" are other words for --help.
  void parse(std::vector<std::string> words) {
    if (!words.empty() && words.front() == "help") {
      words.erase(words.begin());
      const std::vector<std::string> known = commandNames();
      if (!words.empty() && std::find(known.begin(), known.end(), words.front()) == known.end()) {
        throw CommandError(ExitStatus::usage, unknownWord(nullptr, words.front()) + seeHelp());
      }
      words.emplace_back("--help");
    }
    std::reverse(words.begin(), words.end());
    app.parse(std::move(words));
  }

  /// The SDK doesn't know which file it may not write.
  ExitStatus runChosen() const {
    try {
      return chosen();
    } catch (const Refused& refused) {
      const Refusal& refusal = refused.refusal();
      throw CommandError(statusOf(refusalClass(refusal.kind)), refusalText(refusal, fieldNames));
    } catch (const OdError& error) {
      if (error.code() != eWriteProtected) throw;
      throw CommandError(
          ExitStatus::file,
          fmt::format("{}: the drawing can't be changed because its file or folder is read-only; make it "
                      "writable or work on a copy",
                      *document));
    }
  }

  /// The command that the line names, if it got so far.
  const CLI::App* namedCommand() const {
    const std::vector<CLI::App*> commands = app.get_subcommands();
    return commands.empty() ? nullptr : commands.front();
  }

  std::string seeHelp() const {
    const CLI::App* command = namedCommand();
    return fmt::format("; see tiepoint {}--help", command ? command->get_name() + " " : "");
  }

  /// With the nearest name for what isn't known.
  std::string explainUnknown() const {
    const CLI::App* command = namedCommand();
    const std::string given = app.remaining(true).front();
    return given.compare(0, 1, "-") == 0 ? unknownOption(command ? *command : app, given) : unknownWord(command, given);
  }

  static std::string unknownOption(const CLI::App& command, const std::string& given) {
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options()) {
      if (!option->get_lnames().empty()) names.push_back("--" + option->get_lnames().front());
    }
    const std::string name = given.substr(0, given.find('='));
    const auto nearest = nearestName(name, names);
    return fmt::format("unknown option {}{}", name, nearest ? fmt::format("; did you mean {}?", *nearest) : "");
  }

  std::string unknownWord(const CLI::App* command, const std::string& given) const {
    if (command) return fmt::format("unexpected argument \"{}\"", given);
    return fmt::format("unknown command \"{}\"{}", given, suggestion(given, commandNames()));
  }

  std::vector<std::string> commandNames() const {
    std::vector<std::string> names;
    for (const CLI::App* known : app.get_subcommands([](const CLI::App*) { return true; })) {
      names.push_back(known->get_name());
    }
    return names;
  }

  CLI::App app;
  std::function<ExitStatus()> chosen;
  const std::string* document = nullptr;
  FieldNames fieldNames = optionOf;
  RegisterOptions registerOptions;
  ImportOptions importOptions;
  GroupsOptions groupsOptions;
  CloudsOptions cloudsOptions;
  RenderOptions renderOptions;
  RpcOptions rpcOptions;
};

/// Codes of the drawing SDK that mean the drawing's file, as against its content.
bool isFileError(OdResult code) {
  switch (code) {
    case eFileAccessErr:
    case eNotADrawing:
    case eNewerFormat:
    case eFileSharingViolation:
    case eWriteProtected:
    case eDiskFull:
      return true;
    default:
      return false;
  }
}

ExitStatus fail(ExitStatus status, const std::string& message) {
  printError(message);
  return status;
}

}  // namespace

ExitStatus runCommandLine(int argc, const char* const* argv) {
  ignoreBrokenPipe();
  try {
    return CommandLine().run(argc, argv);
  } catch (const CommandError& error) {
    return fail(error.status(), error.what());
  } catch (const EncodingError& error) {
    return fail(ExitStatus::usage, std::string(error.what()) + "; names and paths must be UTF-8");
  } catch (const OdError& error) {
    return fail(isFileError(error.code()) ? ExitStatus::file : ExitStatus::refused, error.what());
  } catch (const std::bad_alloc&) {
    return fail(ExitStatus::refused, "out of memory");
  } catch (const std::exception& error) {
    return fail(ExitStatus::refused, error.what());
  }
}

}  // namespace tiepoint::workbench::cli
