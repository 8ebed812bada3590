// See ErrorTranslation.h.
#include "ErrorTranslation.h"

#include <sqlite3.h>

#include <cerrno>
#include <system_error>

namespace zelk {
namespace {

std::string folderOf(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

std::string sentence(ResultCode code, const std::string &path)
{
    const std::string file = "The history file '" + path + "' ";
    switch (code) {
    case ResultCode::Damaged:
        return file + "is damaged or not a connection history. Nothing was changed: put a backup in its place or move "
                      "it away to begin a new one";
    case ResultCode::Busy:
        return file + "was held by another program for more than five seconds. Try again or close that program";
    case ResultCode::ReadOnly:
        return file + "cannot be opened for writing. Give yourself the right to write the file and its folder";
    case ResultCode::MissingFolder:
        return "The folder '" + folderOf(path) +
               "' for the history file does not exist and could not be made. Make "
               "it or set NETINFO_HISTORY to a file elsewhere";
    case ResultCode::DiskFull:
        return "No space is left to write the history file '" + path + "'. Nothing was changed: free some space there";
    case ResultCode::NewerFile:
        return file + "was written by a newer version of this program. Nothing was changed: update this program or set "
                      "NETINFO_HISTORY to another file";
    default:
        return file + "could not be used. Check the file and its folder";
    }
}

bool isFullDisk(int errorNumber)
{
    return errorNumber == ENOSPC || errorNumber == EDQUOT || errorNumber == EFBIG;
}

bool isRefused(int errorNumber)
{
    return errorNumber == EACCES || errorNumber == EPERM || errorNumber == EROFS;
}

bool isMissing(int errorNumber)
{
    return errorNumber == ENOENT || errorNumber == ENOTDIR;
}

ResultCode kindOfErrno(int errorNumber)
{
    if (isFullDisk(errorNumber))
        return ResultCode::DiskFull;
    if (isRefused(errorNumber))
        return ResultCode::ReadOnly;
    if (isMissing(errorNumber))
        return ResultCode::MissingFolder;
    return errorNumber == EISDIR ? ResultCode::Damaged : ResultCode::Failed;
}

ResultCode kindOfSqlite(int sqliteCode, int errorNumber)
{
    switch (sqliteCode & 0xFF) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_ERROR: // Our statements are right, so the tables that they name are not what they should be.
    case SQLITE_MISMATCH:
        return ResultCode::Damaged;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
        return ResultCode::Busy;
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return ResultCode::ReadOnly;
    case SQLITE_FULL:
        return ResultCode::DiskFull;
    case SQLITE_CANTOPEN:
        return sqliteCode == SQLITE_CANTOPEN_ISDIR ? ResultCode::Damaged : kindOfErrno(errorNumber);
    case SQLITE_IOERR:
        return isFullDisk(errorNumber) || isRefused(errorNumber) ? kindOfErrno(errorNumber) : ResultCode::Failed;
    default:
        return ResultCode::Failed;
    }
}

} // namespace

HistoryError::~HistoryError() = default;

HistoryError fileError(ResultCode code, const std::string &path, const std::string &detail)
{
    return {code, sentence(code, path) + (detail.empty() ? "." : " (" + detail + ").")};
}

HistoryError systemError(int errorNumber, const std::string &path)
{
    return fileError(kindOfErrno(errorNumber), path, std::generic_category().message(errorNumber));
}

HistoryError sqliteError(int sqliteCode, int errorNumber, const std::string &path, const std::string &detail)
{
    return fileError(kindOfSqlite(sqliteCode, errorNumber), path, detail);
}

} // namespace zelk
