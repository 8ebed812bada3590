// Times as people give them on the command line.
#ifndef NETINFO_CLI_TIMEARGUMENT_H
#define NETINFO_CLI_TIMEARGUMENT_H

#include "statistics/ConnectionHistory.h"
#include "statistics/formats/TimeText.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

namespace cli {

/// "2026-08-03T07:12:09+02:00", or "2026-08-03 07:12[:09]" in local time. Throws Failure(Usage) that names the option.
zelk::ZonedTime momentArgument(const std::string &option, const std::string &text);

/// "3600", "1:00:00" or "60:00": seconds. Throws like the above.
std::int64_t durationArgument(const std::string &option, const std::string &text);

/// The options --profile, --month, --from and --to of a subcommand.
class FilterOptions
{
public:
    void addTo(CLI::App &command);
    /// What they ask for; throws Failure(Usage) for a month or time that does not exist.
    zelk::Filter filter() const;

private:
    std::optional<std::string> m_profile;
    std::string m_month;
    std::string m_from;
    std::string m_to;
};

} // namespace cli

#endif
