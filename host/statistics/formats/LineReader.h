// Reads an input line by line, counts the lines, and refuses lines that no text file has.
#ifndef NETINFO_STATISTICS_FORMATS_LINEREADER_H
#define NETINFO_STATISTICS_FORMATS_LINEREADER_H

#include "Source.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace zelk {

class LineReader
{
public:
    /// A line beyond this is an error: such a file is not text, and would otherwise be swallowed whole.
    static constexpr std::size_t maximum = 1U << 20U;

    LineReader(std::istream &input, const ImportOptions &options);

    /// Goes to the next line; false at the end of the input.
    bool next();
    /// The line with its line feed, if it has one. A byte order mark of UTF-8 is left out.
    const std::string &text() const { return m_text; }
    /// 1-based number of the line; 0 before the first.
    std::uint64_t number() const { return m_number; }

private:
    void inspectFirst();

    std::istream &m_input;
    const ImportOptions &m_options;
    std::vector<char> m_buffer;
    std::string m_text;
    std::uint64_t m_number = 0;
};

} // namespace zelk

#endif
