// `import`: a file, or standard input, in one step that is undone as a whole when anything in it is wrong.
#include "Commands.h"
#include "ExitCode.h"
#include "FileFormatOption.h"
#include "Progress.h"
#include "Text.h"

#include <nlohmann/json.hpp>

#include <cerrno>
#include <cstring>
#include <ctime>
#include <fstream>
#include <iostream>
#include <memory>
#include <sys/stat.h>

namespace cli {
namespace {

struct Options {
    std::string file;
    std::string format;
    std::string profile;
    bool shiftToNow = false;
    bool json = false;
};

[[noreturn]] void cannotRead(const std::string &file, const std::string &why)
{
    throw Failure(ExitCode::Failure, "Cannot read " + file + ": " + why + '.');
}

// Opens the file and returns when it was last written.
std::int64_t open(std::ifstream &stream, const std::string &file)
{
    struct stat status = {};
    if (stat(file.c_str(), &status) != 0)
        cannotRead(file, std::strerror(errno));
    if (S_ISDIR(status.st_mode))
        cannotRead(file, "it is a folder");
    stream.open(file, std::ios::binary);
    if (!stream)
        cannotRead(file, std::strerror(errno));
    return status.st_mtime;
}

zelk::ImportOptions importOptions(const Options &options)
{
    const auto format = fileFormat(options.format, options.file);
    if (!format)
        throw Failure(ExitCode::Usage, "import: the name does not tell the format; give --format csv, json or pppd.");
    const bool log = *format == zelk::FileFormat::Pppd;
    if (log && options.profile.empty())
        throw Failure(ExitCode::Usage, "import: a log of pppd does not name the profile; give it with --profile.");
    if (!log && !options.profile.empty())
        throw Failure(ExitCode::Usage, "import: --profile goes with --format pppd; CSV and JSON name the profiles.");
    zelk::ImportOptions result;
    result.format = *format;
    result.profile = options.profile;
    result.sourceName = options.file == "-" ? "standard input" : options.file;
    if (options.shiftToNow)
        result.shiftTo = std::time(nullptr);
    return result;
}

zelk::ImportResult import(const Options &options, const Context &context)
{
    zelk::ImportOptions how = importOptions(options);
    std::ifstream file;
    if (options.file != "-")
        how.logTime = open(file, options.file);
    Progress progress("Importing");
    how.progress = [&progress](std::uint64_t done, std::uint64_t total) { progress.show(done, total); };
    zelk::ConnectionHistory history(context.historyPath());
    return history.importRecords(options.file == "-" ? std::cin : file, how);
}

void report(const zelk::ImportResult &result, const std::string &path)
{
    std::cout << "Added " << countOf(result.added, "connection") << " to " << printableLine(path) << ".\n";
    if (result.alreadyThere == 1)
        std::cout << "1 was already there and was left out.\n";
    else if (result.alreadyThere > 1)
        std::cout << result.alreadyThere << " were already there and were left out.\n";
}

void run(const Options &options, const Context &context)
{
    zelk::ImportResult result;
    try {
        result = import(options, context);
    } catch (const zelk::HistoryError &error) {
        if (error.code() != zelk::ResultCode::ImportFailed && error.code() != zelk::ResultCode::InvalidRecord)
            throw;
        throw Failure(ExitCode::BadInput, std::string(error.what()) + "\nNothing was imported.");
    }
    for (const std::string &message : result.skipped)
        std::cerr << printable(message) << '\n';
    if (options.json)
        std::cout << nlohmann::ordered_json{{"added", result.added},
                                            {"already_there", result.alreadyThere},
                                            {"skipped", result.skipped.size()}}
                         .dump()
                  << '\n';
    else
        report(result, context.historyPath());
}

} // namespace

void addImportCommand(CLI::App &program, const Context &context)
{
    const auto options = std::make_shared<Options>();
    CLI::App *command = program.add_subcommand("import", "Add the connections of a file, all of them or none");
    command->add_option("FILE", options->file, "The file; - for standard input")->type_name("")->required();
    command
        ->add_option("--format", options->format,
                     "csv, json, or pppd for the system log of pppd (default: as the name ends)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"csv", "json", "pppd"}));
    command->add_option("--profile", options->profile, "The profile of a log's connections")->type_name("NAME");
    command->add_flag("--shift-to-now", options->shiftToNow,
                      "Move all times by whole days, so that the last connection ended yesterday");
    command->add_flag("--json", options->json, "Print the numbers added, left out and skipped as JSON");
    command->footer("A connection that the history already holds is left out, so that importing a file twice does no "
                    "harm.");
    command->callback([options, &context] { run(*options, context); });
}

} // namespace cli
