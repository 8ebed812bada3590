// `list`: a table for people, exact figures for programs.
#include "Commands.h"
#include "Text.h"
#include "TimeArgument.h"

#include <nlohmann/json.hpp>

#include <iostream>
#include <memory>

namespace cli {
namespace {

constexpr std::size_t profileColumns = 40; // A longer name is shown in part; --json has all of it.

struct Options {
    FilterOptions filter;
    bool json = false;
};

void printTable(const std::vector<zelk::Record> &records)
{
    using Align = Table::Align;
    Table table({{"Key", Align::Right},
                 {"Profile"},
                 {"Start"},
                 {"End"},
                 {"Connected", Align::Right},
                 {"Uploaded", Align::Right},
                 {"Downloaded", Align::Right},
                 {"Figures"},
                 {"Ended"}});
    for (const zelk::Record &record : records)
        table.add({std::to_string(record.key), shortened(printableLine(record.profile), profileColumns),
                   localTimeText(record.start), localTimeText(record.end), durationText(record.connectedSeconds),
                   amountText(record.bytesUploaded), amountText(record.bytesDownloaded), qualityWords(record.quality),
                   endReasonWords(record.endReason)});
    table.print(std::cout);
}

nlohmann::ordered_json toJson(const zelk::Record &record)
{
    nlohmann::ordered_json members;
    members["key"] = record.key;
    members["profile"] = record.profile;
    members["profile_name"] = record.profileName;
    members["start"] = zelk::formatRfc3339({record.start, 0}).value_or("");
    members["end"] = zelk::formatRfc3339({record.end, 0}).value_or("");
    members["end_zone_offset"] = record.endZoneOffset;
    members["connected_seconds"] = record.connectedSeconds;
    members["bytes_uploaded"] = record.bytesUploaded;
    members["bytes_downloaded"] = record.bytesDownloaded;
    members["origin"] = zelk::originToText(record.origin);
    members["origin_detail"] = record.originDetail;
    members["quality"] = zelk::qualityToText(record.quality);
    members["end_reason"] = zelk::endReasonToText(record.endReason);
    return members;
}

void printJson(const std::vector<zelk::Record> &records)
{
    const char *separator = "[\n  ";
    for (const zelk::Record &record : records) {
        std::cout << separator << toJson(record).dump();
        separator = ",\n  ";
    }
    std::cout << (records.empty() ? "[]\n" : "\n]\n");
}

void run(const Options &options, const Context &context)
{
    const zelk::Filter filter = options.filter.filter();
    const zelk::ConnectionHistory history(context.historyPath(), zelk::ConnectionHistory::Access::ReadOnly);
    const auto records = history.list(filter);
    if (options.json)
        printJson(records);
    else if (records.empty())
        std::cout << (history.count() == 0 ? "The history is empty.\n" : "No connection matches.\n");
    else
        printTable(records);
}

} // namespace

void addListCommand(CLI::App &program, const Context &context)
{
    const auto options = std::make_shared<Options>();
    CLI::App *command = program.add_subcommand("list", "List the connections, in the order in which they were added");
    options->filter.addTo(*command);
    command->add_flag("--json", options->json, "Print a JSON array: whole numbers in bytes and seconds, times in UTC");
    command->callback([options, &context] { run(*options, context); });
}

} // namespace cli
