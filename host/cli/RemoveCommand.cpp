// `remove`: by the keys that `list` shows, or everything after a question.
#include "Commands.h"
#include "ExitCode.h"
#include "Text.h"

#include "statistics/ConnectionHistory.h"

#include <nlohmann/json.hpp>

#include <iostream>
#include <memory>
#include <set>
#include <unistd.h>

namespace cli {
namespace {

struct Options {
    std::vector<std::int64_t> keys;
    bool all = false;
    bool yes = false;
    bool json = false;
};

std::set<std::int64_t> keysIn(const zelk::ConnectionHistory &history)
{
    std::set<std::int64_t> keys;
    for (const zelk::Record &record : history.list())
        keys.insert(record.key);
    return keys;
}

// Asks on the terminal; without one, only --yes agrees.
void confirm(std::size_t count, const std::string &path, bool yes)
{
    if (yes)
        return;
    if (isatty(STDIN_FILENO) != 1)
        throw Failure(ExitCode::Usage, "remove: --all needs --yes when nobody can be asked.");
    std::cerr << "Remove " << countOf(count, "connection") << " from " << printableLine(path) << "? [y/N] "
              << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    if (answer != "y" && answer != "Y" && answer != "yes")
        throw Failure(ExitCode::Failure, "Nothing was removed.");
}

// A mistyped key shall not cost the connections beside it: all must exist before the first goes.
std::set<std::int64_t> chosenKeys(const Options &options, const zelk::ConnectionHistory &history)
{
    std::set<std::int64_t> present = keysIn(history);
    if (options.all) {
        confirm(present.size(), history.path(), options.yes);
        return present;
    }
    std::set<std::int64_t> chosen;
    for (const std::int64_t key : options.keys) {
        if (present.count(key) == 0)
            throw Failure(ExitCode::NoSuchRecord, "No connection has the key " + std::to_string(key) +
                                                      "; nothing was removed. Run list for the keys.");
        chosen.insert(key);
    }
    return chosen;
}

void run(const Options &options, const Context &context)
{
    zelk::ConnectionHistory history(context.historyPath());
    std::size_t removed = 0;
    for (const std::int64_t key : chosenKeys(options, history))
        removed += history.remove(key) ? 1 : 0; // Someone else may have removed it meanwhile.
    if (options.json)
        std::cout << nlohmann::ordered_json{{"removed", removed}}.dump() << '\n';
    else
        std::cout << "Removed " << countOf(removed, "connection") << ".\n";
}

} // namespace

void addRemoveCommand(CLI::App &program, const Context &context)
{
    const auto options = std::make_shared<Options>();
    CLI::App *command = program.add_subcommand("remove", "Remove connections for good");
    auto *keys = command->add_option("KEY", options->keys, "Keys of the connections, as list shows them");
    keys->type_name("");
    command->add_flag("--all", options->all, "Remove every connection")->excludes(keys);
    command->add_flag("-y,--yes", options->yes, "Do not ask");
    command->add_flag("--json", options->json, "Print the number removed as JSON");
    command->callback([options, &context] {
        if (options->keys.empty() && !options->all)
            throw Failure(ExitCode::Usage, "remove: give the keys of the connections, or --all.");
        run(*options, context);
    });
}

} // namespace cli
