// See FileFormatOption.h.
#include "FileFormatOption.h"

#include <filesystem>

namespace cli {

std::optional<zelk::FileFormat> fileFormat(const std::string &option, const std::string &file)
{
    const std::string extension = std::filesystem::path(file).extension().string();
    if (option == "csv" || (option.empty() && extension == ".csv"))
        return zelk::FileFormat::Csv;
    if (option == "json" || (option.empty() && extension == ".json"))
        return zelk::FileFormat::Json;
    if (option == "pppd")
        return zelk::FileFormat::Pppd;
    return std::nullopt;
}

} // namespace cli
