// What people read: names made safe for a terminal, amounts, durations and times, and tables of them.
#ifndef NETINFO_CLI_TEXT_H
#define NETINFO_CLI_TEXT_H

#include "statistics/ConnectionHistory.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace cli {

/// Has the C library take text for UTF-8, whatever the locale says: the history's texts always are.
void useUtf8();

/// The text with everything escaped that would make a terminal do something else than show it: control characters and
/// the ones that turn the writing direction ("\u{202e}"), and bytes that are not UTF-8 ("\xff"). Line feeds stay.
std::string printable(const std::string &text);
/// The same for a piece of one line: line feeds are escaped too.
std::string printableLine(const std::string &text);

/// The columns that a printable text takes on a terminal.
std::size_t columnsOf(const std::string &text);
/// At most so many columns of it, an ellipsis at the end where something was cut.
std::string shortened(const std::string &text, std::size_t columns);

/// "12.34 MB" as the history page shows it: KB, MB and GB are powers of 1024.
std::string amountText(std::int64_t bytes);
/// "1:02:03"; hours go on beyond a day.
std::string durationText(std::int64_t seconds);
/// "2026-08-03 07:12:09" in the system's time zone.
std::string localTimeText(std::int64_t seconds);
/// "recovered, counter restarted"; "exact".
std::string qualityWords(unsigned quality);
/// "by the user", "modem unplugged" and so on.
std::string endReasonWords(zelk::EndReason reason);

/// "1 connection", "2 connections".
std::string countOf(std::size_t number, const std::string &noun);

/// Prints rows under their heads, columns aligned by what they take on a terminal.
class Table
{
public:
    enum class Align { Left, Right };
    struct Column {
        std::string head;
        Align align = Align::Left;
    };

    explicit Table(std::vector<Column> columns) : m_columns(std::move(columns)) {}
    void add(std::vector<std::string> row) { m_rows.push_back(std::move(row)); }
    void print(std::ostream &output) const;

private:
    std::vector<Column> m_columns;
    std::vector<std::vector<std::string>> m_rows;
};

} // namespace cli

#endif
