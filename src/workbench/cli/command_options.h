// What every command can be told, and how its help says so.
#pragma once

#include "workbench/cli/options.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace tiepoint::workbench::cli {

/// Each puts the options of a command into `app`; parsing fills `options`, which must outlive it, and throws
/// CommandError for a number that is none and for an empty text.
void addRegister(CLI::App& app, RegisterOptions& options);
void addImport(CLI::App& app, ImportOptions& options);
void addGroups(CLI::App& app, GroupsOptions& options);
void addClouds(CLI::App& app, CloudsOptions& options);
void addRender(CLI::App& app, RenderOptions& options);

/// The options that every command has. Gives that of the drawing.
CLI::Option* addHostOptions(CLI::App& app, HostOptions& host, const char* documentHelp);

}  // namespace tiepoint::workbench::cli
