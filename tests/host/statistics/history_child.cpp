// Another process on a history file, for the tests: each command does one thing through the library and says on
// standard output what it did, one line a step, unbuffered, so that a test may kill it at any moment and still know.
#include "HistoryFixture.h"

#include <statistics/ZelkStatistics.h>

#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <vector>

using zelk::ConnectionHistory;
using zelk::HistoryError;
using zelk::Record;

namespace {

void say(const std::string &line)
{
    const std::string text = line + "\n";
    if (::write(STDOUT_FILENO, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        std::_Exit(99);
}

Record named(const std::string &name)
{
    Record record = sampleRecord(1);
    record.profileName = name;
    return record;
}

int number(const char *text)
{
    return static_cast<int>(std::strtol(text, nullptr, 10));
}

/// Adds `count` records named after `prefix` and says each name once it is durable.
void addMany(ConnectionHistory &history, const std::string &prefix, int count)
{
    for (int i = 0; i < count; ++i) {
        const std::string name = prefix + std::to_string(i);
        history.add(named(name));
        say("added " + name);
    }
}

/// Adds and removes at random until it is killed.
[[noreturn]] void churn(ConnectionHistory &history, const std::string &prefix)
{
    std::mt19937 random(static_cast<unsigned>(std::hash<std::string>()(prefix)));
    std::vector<Record> own = history.list();
    for (int i = 0;; ++i) {
        if (own.empty() || random() % 5 < 3) {
            Record record = named(prefix + std::to_string(i));
            record.key = history.add(record);
            say("added " + record.profileName);
            own.push_back(record);
        } else {
            const std::size_t victim = random() % own.size();
            say("removing " + own[victim].profileName);
            history.remove(own[victim].key);
            say("removed " + own[victim].profileName);
            own.erase(own.begin() + static_cast<std::ptrdiff_t>(victim));
        }
    }
}

/// Holds a lock on the file until standard input ends.
void hold(const std::string &path, const char *lock)
{
    sqlite3 *handle = nullptr;
    if (sqlite3_open(path.c_str(), &handle) != SQLITE_OK ||
        sqlite3_exec(handle, lock, nullptr, nullptr, nullptr) != SQLITE_OK)
        std::_Exit(98);
    say("held");
    char byte = 0;
    while (::read(STDIN_FILENO, &byte, 1) > 0) {
    }
    sqlite3_close(handle);
}

void limitFileSize(rlim_t bytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    if (::setrlimit(RLIMIT_FSIZE, &limit) != 0)
        std::_Exit(97);
}

void callService(const char *call, int position)
{
    _ZELK_ST_CONNRECORD *records = nullptr;
    int count = -1;
    long code = -1;
    if (std::strcmp(call, "all") == 0) {
        code = ZELK_Statistics_GetAllConnRecord(&records, &count);
    } else if (std::strcmp(call, "last") == 0) {
        _ZELK_ST_CONNRECORD record{};
        code = ZELK_Statistics_GetLastConnRecord(&record);
    } else {
        code = ZELK_Statistics_ConnRecord_RemoveRecord(position);
    }
    say(std::string(call) + " " + std::to_string(code) + " " + std::to_string(count));
    ZELK_Statistics_ReleaseConnRecord(records);
}

void run(const std::vector<const char *> &words)
{
    const std::string command = words.at(0);
    const std::string path = ConnectionHistory::defaultPath();
    if (command == "service") {
        for (std::size_t i = 1; i < words.size(); ++i)
            callService(words[i], 0);
    } else if (command == "hold") {
        hold(path, words.at(1));
    } else if (command == "open") {
        say("opened " + std::to_string(ConnectionHistory(path).count()));
    } else if (command == "read") {
        say("read " + std::to_string(ConnectionHistory(path, ConnectionHistory::Access::ReadOnly).list().size()));
    } else if (command == "remove-all-and-die") {
        ConnectionHistory history(path);
        for (const Record &record : history.list()) {
            if (record.profileName != words.at(1))
                history.remove(record.key);
        }
        ::kill(::getpid(), SIGKILL);
    } else {
        ConnectionHistory history(path);
        if (command == "add")
            addMany(history, words.at(1), number(words.at(2)));
        else if (command == "churn")
            churn(history, words.at(1));
    }
}

} // namespace

/// Options come first: --nobody gives up root's rights, --limit BYTES bounds the size of files.
int main(int argc, char **argv)
{
    std::vector<const char *> words(argv + 1, argv + argc);
    while (!words.empty() && words[0][0] == '-') {
        if (std::strcmp(words[0], "--nobody") == 0) {
            if (::geteuid() == 0 && (::setresgid(65534, 65534, 65534) != 0 || ::setresuid(65534, 65534, 65534) != 0))
                return 96;
        } else {
            limitFileSize(static_cast<rlim_t>(number(words.at(1))));
            words.erase(words.begin());
        }
        words.erase(words.begin());
    }
    try {
        run(words);
    } catch (const HistoryError &error) {
        say("error " + std::to_string(static_cast<long>(error.code())) + " " + error.what());
        return 1;
    }
    return 0;
}
