// A progress bar on standard error, for people only: where that is no terminal, nothing is written.
#ifndef NETINFO_CLI_PROGRESS_H
#define NETINFO_CLI_PROGRESS_H

#include <cstdint>
#include <string>

namespace cli {

class Progress
{
public:
    explicit Progress(std::string what);
    /// Takes the bar off the screen again.
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /// Draws the bar anew when its percentage has changed.
    void show(std::uint64_t done, std::uint64_t total);

private:
    std::string m_what;
    bool m_terminal;
    int m_percent = -1;
};

} // namespace cli

#endif
