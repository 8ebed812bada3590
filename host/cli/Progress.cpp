// The bar is one line that is written over itself.
#include "Progress.h"

#include <iostream>
#include <unistd.h>

namespace cli {

Progress::Progress(std::string what) : m_what(std::move(what)), m_terminal(isatty(STDERR_FILENO) == 1) {}

Progress::~Progress()
{
    if (m_percent >= 0)
        std::cerr << "\r\033[K" << std::flush;
}

void Progress::show(std::uint64_t done, std::uint64_t total)
{
    constexpr int width = 40;
    if (!m_terminal || total == 0)
        return;
    const int percent = static_cast<int>(static_cast<double>(done) * 100 / static_cast<double>(total));
    if (percent == m_percent)
        return;
    m_percent = percent;
    const auto filled = static_cast<std::size_t>(percent * width / 100);
    const std::string bar = std::string(filled, '#') + std::string(width - filled, '.');
    const std::string number = std::to_string(percent);
    std::cerr << '\r' << m_what << " [" << bar << "] " << std::string(3 - number.size(), ' ') << number << " %"
              << std::flush;
}

} // namespace cli
