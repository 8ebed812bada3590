// A file that is written beside its place and moved there when it is whole, so that a full disk or a crash never leaves
// half an export or destroys an older one.
#ifndef NETINFO_CLI_OUTPUTFILE_H
#define NETINFO_CLI_OUTPUTFILE_H

#include <fstream>
#include <string>

namespace cli {

class OutputFile
{
public:
    /// Throws Failure when nothing can be written there. A name that is no regular file, such as a device or a pipe, is
    /// written directly.
    explicit OutputFile(const std::string &file);
    /// Without finish(), removes what was written beside the place.
    ~OutputFile();
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    std::ostream &stream() { return m_stream; }
    /// Makes it durable and puts it in place. Throws Failure.
    void finish();

private:
    void createBeside();
    [[noreturn]] void fail() const;

    std::string m_target;
    std::string m_beside; ///< Empty when written directly.
    std::ofstream m_stream;
};

} // namespace cli

#endif
