// The subcommands. Each function adds one to the program: its options, its help, and what it does when it is chosen.
#ifndef NETINFO_CLI_COMMANDS_H
#define NETINFO_CLI_COMMANDS_H

#include <CLI/CLI.hpp>

#include <string>

namespace cli {

/// What all of them share: the file that --history names, else the usual one.
struct Context {
    std::string historyOption;
    std::string historyPath() const;
};

void addListCommand(CLI::App &program, const Context &context);
void addAddCommand(CLI::App &program, const Context &context);
void addRemoveCommand(CLI::App &program, const Context &context);
void addImportCommand(CLI::App &program, const Context &context);
void addExportCommand(CLI::App &program, const Context &context);
void addPathCommand(CLI::App &program, const Context &context);

} // namespace cli

#endif
