// Reads lines into a buffer of fixed size, so that an endless line ends in an error instead of in all the memory.
#include "LineReader.h"

#include <istream>
#include <string_view>

namespace zelk {

LineReader::LineReader(std::istream &input, const ImportOptions &options)
    : m_input(input), m_options(options), m_buffer(maximum + 1)
{
}

bool LineReader::next()
{
    m_text.clear();
    if (!m_input.good())
        return false;
    m_input.getline(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
    const auto taken = static_cast<std::size_t>(m_input.gcount());
    if (m_input.bad() || taken == 0)
        return false;
    ++m_number;
    if (m_input.fail())
        failAt(m_options, m_number, "the line is longer than any line of a text file; is this the right file?");
    m_text.assign(m_buffer.data(), m_input.eof() ? taken : taken - 1);
    if (!m_input.eof())
        m_text += '\n';
    if (m_number == 1)
        inspectFirst();
    return true;
}

void LineReader::inspectFirst()
{
    constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
    const std::string_view text = m_text;
    if (text.substr(0, 2) == "\xFF\xFE" || text.substr(0, 2) == "\xFE\xFF")
        failAt(m_options, 1, "the file is written in UTF-16; save it as UTF-8");
    if (text.substr(0, utf8Mark.size()) == utf8Mark)
        m_text.erase(0, utf8Mark.size());
}

} // namespace zelk
