// Turns what SQLite and the system report into HistoryErrors that name the file and the remedy.
#ifndef NETINFO_STATISTICS_ERRORTRANSLATION_H
#define NETINFO_STATISTICS_ERRORTRANSLATION_H

#include "ConnectionHistory.h"

#include <string>

namespace zelk {

/// The error of a kind that concerns the file at `path`; `detail`, where not empty, says more in brackets.
HistoryError fileError(ResultCode code, const std::string &path, const std::string &detail = {});

/// The error behind a failed system call on the file at `path`.
HistoryError systemError(int errorNumber, const std::string &path);

/// The error behind an extended SQLite result code and the errno that went with it (0: none).
HistoryError sqliteError(int sqliteCode, int errorNumber, const std::string &path, const std::string &detail);

} // namespace zelk

#endif
