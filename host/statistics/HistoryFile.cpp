// See HistoryFile.h.
#include "HistoryFile.h"

#include "ErrorTranslation.h"
#include "Schema.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>

namespace zelk {
namespace {

constexpr int busyTimeoutMs = 5000;

/// The few bytes at the beginning of the file that say what it is.
struct FileHeader {
    std::int64_t fileSize = 0;
    std::array<unsigned char, 100> bytes{};

    bool isSqlite() const { return std::memcmp(bytes.data(), "SQLite format 3", 16) == 0; }
    std::uint32_t userVersion() const { return bigEndian(60); }
    std::uint32_t applicationId() const { return bigEndian(68); }

private:
    std::uint32_t bigEndian(std::size_t at) const
    {
        std::uint32_t value = 0;
        for (std::size_t i = at; i < at + 4; ++i)
            value = value << 8U | bytes.at(i);
        return value;
    }
};

/// Read through SQLite's own file handle: SQLite itself then neither locks nor makes anything, and closing a second
/// handle of our own would drop the locks that other connections of this process hold.
FileHeader readHeader(sqlite3 *handle)
{
    FileHeader header;
    sqlite3_file *file = nullptr;
    int result = sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    sqlite3_int64 size = 0;
    if (result == SQLITE_OK)
        result = file->pMethods->xFileSize(file, &size);
    if (result == SQLITE_OK && size > 0)
        result = file->pMethods->xRead(file, header.bytes.data(), static_cast<int>(header.bytes.size()), 0);
    if (result != SQLITE_OK && result != SQLITE_IOERR_SHORT_READ)
        throw SQLite::Exception("The file's header cannot be read", result);
    header.fileSize = size;
    return header;
}

bool holdsData(const std::string &path)
{
    struct stat status {
    };
    return ::stat(path.c_str(), &status) == 0 && status.st_size > 0;
}

/// SQLite takes a file of one byte for an empty one and would write over it.
bool holdsOneByte(const std::string &path)
{
    struct stat status {
    };
    return ::stat(path.c_str(), &status) == 0 && status.st_size == 1;
}

bool exists(const std::string &path)
{
    struct stat status {
    };
    return ::stat(path.c_str(), &status) == 0;
}

void syncFolder(const std::filesystem::path &folder)
{
    const int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return; // A folder that may be written but not read cannot be synchronised by anyone.
    ::fsync(handle);
    ::close(handle);
}

/// What someone connected to is nobody else's business, so folder and file are the user's alone.
void makeFolder(const std::filesystem::path &folder, const std::string &path)
{
    if (folder.empty() || exists(folder))
        return;
    makeFolder(folder.parent_path(), path);
    if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
        const int error = errno;
        const ResultCode code = systemError(error, path).code();
        throw fileError(code == ResultCode::DiskFull ? code : ResultCode::MissingFolder, path, std::strerror(error));
    }
    syncFolder(folder.parent_path());
}

void makeFile(const std::string &path)
{
    if (exists(path))
        return;
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    makeFolder(folder, path);
    const int handle = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (handle < 0)
        throw systemError(errno, path);
    ::close(handle);
    syncFolder(folder);
}

/// What the system said when SQLite could not open a file at all; 0 when nothing is known.
int systemCodeOfOpening(const std::string &path)
{
    if (std::filesystem::is_directory(path))
        return EISDIR;
    return ::access(path.c_str(), R_OK) != 0 ? errno : 0;
}

/// What the system said when an operation failed. SQLite may have lost it by then to a look for its log, so a write
/// that failed in a process whose files must not grow is taken for one that made a file too large.
int systemCodeOf(sqlite3 *handle, int sqliteCode)
{
    rlimit limit{};
    const bool isBounded = ::getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
    const bool isWrite = sqliteCode == SQLITE_IOERR_WRITE || sqliteCode == SQLITE_IOERR_SHMSIZE;
    return isBounded && isWrite ? EFBIG : sqlite3_system_errno(handle);
}

/// The name under which SQLite opens a file as one that nobody changes.
std::string immutableName(const std::string &path)
{
    constexpr const char *digits = "0123456789ABCDEF";
    std::string name = "file:";
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '%' || c == '?' || c == '#' || byte < 0x20)
            name += {'%', digits[byte >> 4U], digits[byte & 15U]};
        else
            name += c;
    }
    return name + "?immutable=1";
}

} // namespace

HistoryFile::HistoryFile(const std::string &path, ConnectionHistory::Access access)
    : m_path(std::filesystem::absolute(path).string()), m_access(access)
{
    run([] {});
}

void HistoryFile::refresh()
{
    if (m_database && hasMoved())
        close();
    if (!m_database || m_version == 0)
        open();
}

SQLite::Statement &HistoryFile::prepared(const char *sql)
{
    const auto found = m_statements.find(sql);
    return found != m_statements.end() ? found->second
                                       : m_statements.emplace(sql, SQLite::Statement(*m_database, sql)).first->second;
}

void HistoryFile::raise(const SQLite::Exception &error)
{
    const int code = error.getExtendedErrorCode();
    const int systemCode = m_database ? systemCodeOf(m_database->getHandle(), code) : systemCodeOfOpening(m_path);
    if (m_version == 0)
        close();
    throw sqliteError(code, systemCode, m_path, error.what());
}

void HistoryFile::open()
{
    close();
    try {
        if (isWritable())
            openReadWrite();
        else
            openReadOnly();
    } catch (const HistoryError &) {
        close();
        throw;
    }
}

void HistoryFile::close()
{
    m_statements.clear();
    m_database.reset();
    m_durability.reset();
    m_version = 0;
}

void HistoryFile::openReadWrite()
{
    // SQLite would throw away a log whose file is gone or empty, and the records in it.
    if (!holdsData(m_path) && holdsData(m_path + "-wal"))
        throw fileError(ResultCode::Damaged, m_path, "the file is missing or empty, but '" + m_path + "-wal' is not");
    makeFile(m_path);
    openHandle(m_path, SQLite::OPEN_READWRITE);
    inspectHeader();
    if (sqlite3_db_readonly(m_database->getHandle(), "main") != 0)
        throw fileError(ResultCode::ReadOnly, m_path);
    inspectSchema();
    configureWriting();
}

void HistoryFile::openReadOnly()
{
    if (!holdsData(m_path))
        return;
    openHandle(m_path, SQLite::OPEN_READONLY);
    inspectHeader();
    try {
        inspectSchema();
    } catch (const SQLite::Exception &) {
        // In a folder that may not be written SQLite has no place for its log; without a log there is no need for one.
        if (holdsData(m_path + "-wal") || ::access(m_path.c_str(), R_OK) != 0)
            throw;
        openHandle(immutableName(m_path), SQLite::OPEN_READONLY | SQLite::OPEN_URI);
        inspectSchema();
    }
}

void HistoryFile::openHandle(const std::string &name, int flags)
{
    m_database.reset();
    m_database.emplace(name, flags, busyTimeoutMs);
    static std::atomic<std::uint32_t> opened{0};
    m_generation = ++opened;
    // Until the file is known to be ours and no newer, closing it must not carry its log over into it.
    sqlite3_db_config(m_database->getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

void HistoryFile::inspectHeader()
{
    const FileHeader header = readHeader(m_database->getHandle());
    if (header.fileSize == 0 && holdsOneByte(m_path))
        throw fileError(ResultCode::Damaged, m_path);
    if (header.fileSize == 0)
        return;
    if (!header.isSqlite() || (header.applicationId() != 0 && header.applicationId() != historyApplicationId))
        throw fileError(ResultCode::Damaged, m_path);
    if (header.applicationId() == historyApplicationId && header.userVersion() > newestVersion)
        throw fileError(ResultCode::NewerFile, m_path, "format " + std::to_string(header.userVersion()));
}

void HistoryFile::inspectSchema()
{
    m_database->exec("BEGIN");
    const auto applicationId = m_database->execAndGet("PRAGMA application_id").getUInt();
    const int version = schemaVersion(*m_database);
    const bool isEmpty = m_database->execAndGet("SELECT count(*) FROM sqlite_master").getInt() == 0;
    m_database->exec("COMMIT");
    if (applicationId == 0 && version == 0 && isEmpty)
        return;
    if (applicationId != historyApplicationId || version < recordsVersion)
        throw fileError(ResultCode::Damaged, m_path);
    if (version > newestVersion)
        throw fileError(ResultCode::NewerFile, m_path, "format " + std::to_string(version));
    m_version = version;
}

void HistoryFile::configureWriting()
{
    sqlite3_db_config(m_database->getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
    m_database->exec("PRAGMA secure_delete = ON; PRAGMA temp_store = MEMORY; PRAGMA cell_size_check = ON");
    setDurability(Durability::PowerLoss);
    m_database->exec("PRAGMA journal_mode = WAL");
    migrateSchema(*m_database);
    m_version = schemaVersion(*m_database);
}

bool HistoryFile::hasMoved()
{
    int moved = 0;
    sqlite3_file_control(m_database->getHandle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

void HistoryFile::setDurability(Durability durability)
{
    if (m_durability == durability)
        return;
    m_database->exec(durability == Durability::PowerLoss ? "PRAGMA synchronous = FULL" : "PRAGMA synchronous = NORMAL");
    m_durability = durability;
}

StatementUse::~StatementUse()
{
    m_statement.tryReset();
    try {
        m_statement.clearBindings();
    } catch (const SQLite::Exception &) { // It cannot fail for a statement that exists, and nothing depends on it.
        return;
    }
}

WriteTransaction::WriteTransaction(HistoryFile &file, Durability durability)
    : m_transaction(prepare(file, durability), SQLite::TransactionBehavior::IMMEDIATE)
{
}

SQLite::Database &WriteTransaction::prepare(HistoryFile &file, Durability durability)
{
    if (!file.isWritable())
        throw fileError(ResultCode::ReadOnly, file.path(), "it was opened for reading only");
    file.setDurability(durability);
    return file.database();
}

} // namespace zelk
