// `add`: one connection by hand.
#include "Commands.h"
#include "ExitCode.h"
#include "TimeArgument.h"

#include <nlohmann/json.hpp>

#include <iostream>
#include <memory>

namespace cli {
namespace {

struct Options {
    std::string profile;
    std::string profileName;
    std::string start;
    std::string end;
    std::string duration;
    std::string connected;
    std::uint64_t uploaded = 0;
    std::uint64_t downloaded = 0;
    std::string quality = "exact";
    std::string reason = "unknown";
    bool json = false;
};

std::int64_t amount(const std::string &option, std::uint64_t bytes)
{
    if (bytes > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
        throw Failure(ExitCode::BadInput, option + ": " + std::to_string(bytes) + " bytes are beyond any amount.");
    return static_cast<std::int64_t>(bytes);
}

template <class Value>
Value word(const std::string &option, const std::string &text, const std::optional<Value> &value,
           const std::string &words)
{
    if (!value)
        throw Failure(ExitCode::Usage, option + ": \"" + text + "\" is not known; it may be " + words + '.');
    return *value;
}

void setTimes(zelk::Record &record, const Options &options)
{
    record.start = momentArgument("--start", options.start).seconds;
    zelk::ZonedTime end;
    if (options.end.empty()) {
        end.seconds = record.start + durationArgument("--duration", options.duration);
        end.offset = zelk::localOffset(end.seconds);
    } else {
        end = momentArgument("--end", options.end);
    }
    record.end = end.seconds;
    record.endZoneOffset = end.offset;
    record.connectedSeconds =
        options.connected.empty() ? record.end - record.start : durationArgument("--connected", options.connected);
    if (record.end < record.start)
        throw Failure(ExitCode::BadInput, "--end: the end is before the start; correct one of them.");
}

zelk::Record recordOf(const Options &options)
{
    zelk::Record record;
    record.profile = options.profile;
    record.profileName = options.profileName;
    setTimes(record, options);
    record.bytesUploaded = amount("--uploaded", options.uploaded);
    record.bytesDownloaded = amount("--downloaded", options.downloaded);
    record.origin = zelk::Origin::Added;
    record.quality = word("--quality", options.quality, zelk::qualityFromText(options.quality),
                          "exact, or some of resumed, recovered, counter-restarted and clock-changed, joined by +");
    record.endReason = word("--reason", options.reason, zelk::endReasonFromText(options.reason),
                            "unknown, user, network, unplugged, sleep or carrier");
    return record;
}

void run(const Options &options, const Context &context)
{
    const zelk::Record record = recordOf(options);
    const std::int64_t key = zelk::ConnectionHistory(context.historyPath()).add(record);
    if (options.json)
        std::cout << nlohmann::ordered_json{{"key", key}}.dump() << '\n';
    else
        std::cout << "Added with key " << key << ".\n";
}

void addAmountOption(CLI::App &command, const std::string &name, std::uint64_t &target, const std::string &help)
{
    auto *option = command.add_option(name, target, help)->type_name("BYTES")->transform(CLI::AsSizeValue(false));
    // Comes before the other, which would take -5 for a number far beyond any amount.
    option->transform([](const std::string &text) {
        if (text.find('-') != std::string::npos)
            throw CLI::ValidationError("an amount cannot be negative");
        return text;
    });
}

} // namespace

void addAddCommand(CLI::App &program, const Context &context)
{
    const auto options = std::make_shared<Options>();
    CLI::App *command = program.add_subcommand("add", "Add one connection by hand");
    command->add_option("--profile", options->profile, "The profile, as the history shows it")
        ->type_name("NAME")
        ->required();
    command->add_option("--profile-name", options->profileName, "The profile's own name, where it differs")
        ->type_name("NAME");
    command->add_option("--start", options->start, "When it began: \"2026-08-03 07:12\" or with a zone")
        ->type_name("TIME")
        ->required();
    auto *end = command->add_option("--end", options->end, "When it ended")->type_name("TIME");
    auto *duration =
        command->add_option("--duration", options->duration, "How long it lasted instead: seconds, or h:mm:ss")
            ->type_name("TIME");
    end->excludes(duration);
    command->add_option("--connected", options->connected, "Connected time, where it is less: seconds, or h:mm:ss")
        ->type_name("TIME");
    addAmountOption(*command, "--uploaded", options->uploaded, "Amount sent; KB, MB and GB are powers of 1024");
    addAmountOption(*command, "--downloaded", options->downloaded, "Amount received");
    command->add_option("--quality", options->quality, "How far the figures can be trusted")->capture_default_str();
    command->add_option("--reason", options->reason, "Why it ended")->capture_default_str();
    command->add_flag("--json", options->json, "Print the new key as JSON");
    command->callback([options, &context] {
        if (options->end.empty() == options->duration.empty())
            throw Failure(ExitCode::Usage, "add: give the end with --end or the length with --duration.");
        run(*options, context);
    });
}

} // namespace cli
