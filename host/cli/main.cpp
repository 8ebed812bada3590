// netinfo-records: lists, adds, removes, imports and exports the connections of a history.
#include "Commands.h"
#include "ExitCode.h"
#include "Text.h"

#include "statistics/ConnectionHistory.h"

#include <iostream>

namespace {

using cli::ExitCode;

constexpr const char *exitCodes = "Exit status:\n"
                                  "  0  success\n"
                                  "  1  the history or a file could not be read or written\n"
                                  "  2  the command line is wrong\n"
                                  "  3  the values to import or to add are wrong; nothing was added\n"
                                  "  4  a key names no connection";

int complain(const std::string &message, ExitCode code)
{
    std::cout.flush();
    std::cerr << "netinfo-records: " << cli::printable(message) << '\n';
    return static_cast<int>(code);
}

ExitCode exitCodeOf(zelk::ResultCode code)
{
    switch (code) {
    case zelk::ResultCode::InvalidRecord:
    case zelk::ResultCode::ImportFailed:
        return ExitCode::BadInput;
    case zelk::ResultCode::NoSuchRecord:
        return ExitCode::NoSuchRecord;
    default:
        return ExitCode::Failure;
    }
}

void build(CLI::App &program, cli::Context &context)
{
    program.description("Lists, adds, removes, imports and exports the connections of the connection history.");
    program.footer(exitCodes);
    program.set_version_flag("--version", "netinfo-records " NETINFO_VERSION, "Print the version and exit");
    program
        .add_option("--history", context.historyOption,
                    "The history file (default: $NETINFO_HISTORY, else "
                    "$XDG_DATA_HOME/netinfo/history.sqlite)")
        ->type_name("FILE")
        ->check([](const std::string &file) { return file.empty() ? "the name of the history file is empty" : ""; });
    program.require_subcommand(0, 1);
    program.fallthrough();
    cli::addListCommand(program, context);
    cli::addAddCommand(program, context);
    cli::addRemoveCommand(program, context);
    cli::addImportCommand(program, context);
    cli::addExportCommand(program, context);
    cli::addPathCommand(program, context);
}

int parse(CLI::App &program, int argc, char **argv)
{
    try {
        program.parse(argc, argv);
        if (program.get_subcommands().empty())
            throw cli::Failure(ExitCode::Usage,
                               "give a command: list, add, remove, import, export or path; --help tells more.");
    } catch (const CLI::Success &help) {
        return program.exit(help);
    } catch (const CLI::ParseError &error) {
        return complain(std::string(error.what()) + "\nRun it with --help for the options.", ExitCode::Usage);
    } catch (const cli::Failure &failure) {
        return complain(failure.what(), failure.code());
    } catch (const zelk::HistoryError &error) {
        return complain(error.what(), exitCodeOf(error.code()));
    }
    return static_cast<int>(ExitCode::Success);
}

} // namespace

int main(int argc, char **argv)
{
    try {
        cli::useUtf8();
        CLI::App program;
        program.name("netinfo-records");
        cli::Context context;
        build(program, context);
        const int code = parse(program, argc, argv);
        if (!std::cout.flush())
            return complain("Cannot write to standard output; is the disk full?", ExitCode::Failure);
        return code;
    } catch (const std::exception &error) {
        return complain(error.what(), ExitCode::Failure);
    }
}
