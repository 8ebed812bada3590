// `export`: to standard output or to a file, which appears whole or not at all.
#include "Commands.h"
#include "ExitCode.h"
#include "FileFormatOption.h"
#include "OutputFile.h"
#include "TimeArgument.h"

#include <iostream>
#include <memory>

namespace cli {
namespace {

struct Options {
    FilterOptions filter;
    std::string file = "-";
    std::string format;
};

void run(const Options &options, const Context &context)
{
    const auto format = fileFormat(options.format, options.file);
    if (!format && options.file != "-")
        throw Failure(ExitCode::Usage, "export: the name does not tell the format; give --format csv or json.");
    const zelk::Filter filter = options.filter.filter();
    const zelk::ConnectionHistory history(context.historyPath(), zelk::ConnectionHistory::Access::ReadOnly);
    if (options.file == "-") {
        history.exportRecords(std::cout, format.value_or(zelk::FileFormat::Csv), filter);
        return;
    }
    OutputFile output(options.file);
    history.exportRecords(output.stream(), *format, filter);
    output.finish();
}

} // namespace

void addExportCommand(CLI::App &program, const Context &context)
{
    const auto options = std::make_shared<Options>();
    CLI::App *command = program.add_subcommand("export", "Write the connections for other programs or as a backup");
    command->add_option("FILE", options->file, "The file; - for standard output, which is the default")->type_name("");
    command->add_option("--format", options->format, "csv or json (default: as the name ends; csv on standard output)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"csv", "json"}));
    options->filter.addTo(*command);
    command->footer("An export imported into an empty history gives the same history.");
    command->callback([options, &context] { run(*options, context); });
}

} // namespace cli
