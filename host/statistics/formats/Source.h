// What the readers of the import formats hand on: records with the lines they came from, still outside any history.
//
// Every reader throws HistoryError with ResultCode::ImportFailed and a message of the form "FILE:LINE: what is wrong".
// The whole input is read before the first record is written, so that a slow pipe never holds the history's lock.
#ifndef NETINFO_STATISTICS_FORMATS_SOURCE_H
#define NETINFO_STATISTICS_FORMATS_SOURCE_H

#include "../ConnectionHistory.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace zelk {

struct SourceRecord {
    Record record;
    std::uint64_t line = 0; ///< 1-based line on which it begins.
};

struct Source {
    std::vector<SourceRecord> records;
    std::vector<std::string> skipped; ///< As in ImportResult.
};

/// Reads the whole input in the format that the options name, and moves the times if they ask for it.
Source readSource(std::istream &input, const ImportOptions &options);

/// The readers themselves. `readPppd` takes the profile from the options.
Source readCsv(std::istream &input, const ImportOptions &options);
Source readJson(std::istream &input, const ImportOptions &options);
Source readPppd(std::istream &input, const ImportOptions &options);

/// Writers of what the first two read. Keys are not written: they belong to one file.
void writeCsv(std::ostream &output, const std::vector<Record> &records);
void writeJson(std::ostream &output, const std::vector<Record> &records);

/// Appends a record whose values are all in range; otherwise throws the error for its line.
void append(Source &source, Record record, std::uint64_t line, const ImportOptions &options);

/// "FILE:LINE: " as messages begin; without a source's name "line LINE: ".
std::string place(const ImportOptions &options, std::uint64_t line);

/// Throws the error for a line of the input.
[[noreturn]] void failAt(const ImportOptions &options, std::uint64_t line, const std::string &message);

} // namespace zelk

#endif
