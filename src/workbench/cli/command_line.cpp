#include "workbench/cli/command_line.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <new>

#include "platform/sdk/od_error.h"
#include "workbench/cli/command_options.h"
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
