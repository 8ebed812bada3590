// `path`: where the history is.
#include "Commands.h"

#include "statistics/ConnectionHistory.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <iostream>
#include <memory>

namespace cli {

std::string Context::historyPath() const
{
    return historyOption.empty() ? zelk::ConnectionHistory::defaultPath() : historyOption;
}

void addPathCommand(CLI::App &program, const Context &context)
{
    const auto json = std::make_shared<bool>(false);
    CLI::App *command = program.add_subcommand("path", "Print the name of the history file");
    command->add_flag("--json", *json, "Print it as JSON, with whether it exists");
    command->callback([json, &context] {
        const std::string path = context.historyPath();
        std::error_code unreadable;
        if (*json)
            std::cout
                << nlohmann::ordered_json{{"path", path}, {"exists", std::filesystem::exists(path, unreadable)}}.dump()
                << '\n';
        else
            std::cout << path << '\n';
    });
}

} // namespace cli
