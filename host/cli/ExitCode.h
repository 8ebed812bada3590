// How the program ends, as the manual page promises, and the error that carries such an end upwards.
#ifndef NETINFO_CLI_EXITCODE_H
#define NETINFO_CLI_EXITCODE_H

#include <stdexcept>
#include <string>

namespace cli {

enum class ExitCode {
    Success = 0,
    Failure = 1,     ///< The history or a file could not be read or written, or the user said no.
    Usage = 2,       ///< The command line is wrong.
    BadInput = 3,    ///< The input of an import, or the values of a connection to add, are wrong. Nothing was added.
    NoSuchRecord = 4 ///< A key names no connection.
};

class Failure : public std::runtime_error
{
public:
    Failure(ExitCode code, const std::string &message) : std::runtime_error(message), m_code(code) {}
    ExitCode code() const { return m_code; }

private:
    ExitCode m_code;
};

} // namespace cli

#endif
