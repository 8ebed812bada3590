// The SQLite file under a history: finding, making, checking and opening it, and running statements in it.
#ifndef NETINFO_STATISTICS_HISTORYFILE_H
#define NETINFO_STATISTICS_HISTORYFILE_H

#include "ConnectionHistory.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

namespace zelk {

/// What a finished transaction outlives.
enum class Durability { ProcessDeath, PowerLoss };

class HistoryFile
{
public:
    /// Opens the file at once; throws HistoryError.
    HistoryFile(const std::string &path, ConnectionHistory::Access access);

    const std::string &path() const { return m_path; }
    bool isWritable() const { return m_access == ConnectionHistory::Access::ReadWrite; }

    /// Opens the file anew where it was missing so far, or was moved away or replaced while open. To be called at the
    /// beginning of every operation.
    void refresh();
    /// 0: there is no history to read (Access::ReadOnly of a missing or empty file).
    int version() const { return m_version; }
    /// Names this opening of the file within the process; another one after the file was replaced.
    std::uint32_t generation() const { return m_generation; }

    SQLite::Database &database() { return *m_database; }
    /// A prepared statement, kept for the next use. `sql` must be a literal: its address is its name.
    SQLite::Statement &prepared(const char *sql);

    /// Runs `work` and turns SQLite's exceptions into HistoryErrors about this file.
    template <typename Work> auto run(Work &&work)
    {
        try {
            refresh();
            return work();
        } catch (const SQLite::Exception &error) {
            raise(error);
        }
    }

private:
    friend class WriteTransaction;

    [[noreturn]] void raise(const SQLite::Exception &error);
    void open();
    void close();
    void openReadWrite();
    void openReadOnly();
    void openHandle(const std::string &name, int flags);
    void inspectHeader();
    void inspectSchema();
    void configureWriting();
    bool hasMoved();
    void setDurability(Durability durability);

    std::string m_path;
    ConnectionHistory::Access m_access;
    std::optional<SQLite::Database> m_database;
    std::unordered_map<const char *, SQLite::Statement> m_statements;
    std::optional<Durability> m_durability;
    int m_version = 0;
    std::uint32_t m_generation = 0;
};

/// Resets a kept statement when its use ends, however it ends, so that it holds no lock and no bound text.
class StatementUse
{
public:
    StatementUse(HistoryFile &file, const char *sql) : m_statement(file.prepared(sql)) {}
    ~StatementUse();
    StatementUse(const StatementUse &) = delete;
    StatementUse &operator=(const StatementUse &) = delete;

    SQLite::Statement *operator->() { return &m_statement; }
    SQLite::Statement &operator*() { return m_statement; }

private:
    SQLite::Statement &m_statement;
};

/// A write from beginning to commit(); undone when it goes out of scope before.
class WriteTransaction
{
public:
    WriteTransaction(HistoryFile &file, Durability durability);
    void commit() { m_transaction.commit(); }

private:
    static SQLite::Database &prepare(HistoryFile &file, Durability durability);

    SQLite::Transaction m_transaction;
};

} // namespace zelk

#endif
