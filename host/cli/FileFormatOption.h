// The option --format of import and export, and what a file's name says where it is not given.
#ifndef NETINFO_CLI_FILEFORMATOPTION_H
#define NETINFO_CLI_FILEFORMATOPTION_H

#include "statistics/ConnectionHistory.h"

#include <optional>
#include <string>

namespace cli {

/// The format that "csv", "json" or "pppd" names, else that of a name ending in ".csv" or ".json".
std::optional<zelk::FileFormat> fileFormat(const std::string &option, const std::string &file);

} // namespace cli

#endif
