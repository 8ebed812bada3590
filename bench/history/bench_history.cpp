// What the history page costs, against the toolkit's own floor: the same rows put into a bare table from ready-made
// strings, in the same process. Prints each figure beside its bound and ends with status 1 when one is exceeded.
#include "Bounds.h"
#include "ConnectionHistoryDlg.h"
#include "FakeHostUi.h"
#include "FakeStatistics.h"
#include "NetInfoRecordLogic.h"
#include "NetInfoRecordUIPlugin.h"
#include "plugin/IDialupUIService.h"

#include <QApplication>
#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <malloc.h>
#include <string>
#include <vector>

namespace {

using Row = std::array<QString, 6>;

/// Processor seconds of this thread. All that is measured is computing, so that a busy machine does not count.
double now()
{
    struct timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void fillService(int count)
{
    FakeStatistics::reset();
    FakeStatistics::state().isLogging = false;
    FakeStatistics::state().records.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const std::string start = std::to_string(1500000000 + i * 1800);
        const std::string end = std::to_string(1500000000 + i * 1800 + 60 + i % 1500);
        FakeStatistics::state().records.push_back(FakeStatistics::record(
            i % 3 == 0 ? u"internet.provider.example" : u"mobile", start, end, std::to_string(60 + i % 1500),
            std::to_string(1000 + i * 37L), std::to_string(5000000 + i * 1234L), "exact", "user"));
    }
}

/// The same texts that the page shows for the records of fillService(), each with memory of its own.
std::vector<Row> readyMadeRows(int count)
{
    std::vector<Row> rows;
    rows.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const QString number = QString::number(i).rightJustified(6, QLatin1Char('0'));
        rows.push_back({i % 3 == 0 ? QString::fromLatin1("internet.provider.example") : QString::fromLatin1("mobile"),
                        QStringLiteral("2024") + number + QStringLiteral("0000"),
                        QStringLiteral("2024") + number + QStringLiteral("0101"),
                        QStringLiteral("00:") + number.left(2) + QStringLiteral(":00"),
                        number + QStringLiteral(".00 KB"), number + QStringLiteral(".00 MB")});
    }
    return rows;
}

void fillBareTable(QTableWidget *table, const std::vector<Row> &rows)
{
    table->setColumnCount(6);
    table->verticalHeader()->setMinimumSectionSize(14);
    table->verticalHeader()->setDefaultSectionSize(14);
    table->verticalHeader()->setVisible(false);
    table->setRowCount(static_cast<int>(rows.size()));
    int row = 0;
    for (const Row &texts : rows) {
        for (int column = 0; column < 6; ++column) {
            QTableWidgetItem *const item = new QTableWidgetItem(0);
            item->setData(Qt::TextAlignmentRole, static_cast<int>(Qt::AlignLeft));
            item->setData(Qt::UserRole, 0);
            item->setData(Qt::DisplayRole, texts[static_cast<std::size_t>(column)]);
            item->setFlags(item->flags() & ~Qt::ItemIsEditable);
            table->setItem(row, column, item);
        }
        ++row;
    }
}

class Host : public QWidget
{
public:
    Host()
    {
        resize(900, 600);
        show();
        QApplication::processEvents();
    }
};

void pageLoadsConvertsShows(benchmark::State &state)
{
    fillService(static_cast<int>(state.range(0)));
    while (state.KeepRunning()) {
        Host host;
        const double begin = now();
        ConnectionHistoryDlg *const page = ConnectionHistoryDlg::Instance();
        page->Init();
        QRect rect(0, 0, 900, 600);
        page->ShowWindow(&host, rect);
        QApplication::processEvents();
        state.SetIterationTime(now() - begin);
        ConnectionHistoryDlg::Destroy();
    }
}

void floorFillsShows(benchmark::State &state)
{
    const std::vector<Row> rows = readyMadeRows(static_cast<int>(state.range(0)));
    while (state.KeepRunning()) {
        Host host;
        const double begin = now();
        QWidget *const widget = new QWidget(&host);
        QTableWidget *const table = new QTableWidget(widget);
        (new QVBoxLayout(widget))->addWidget(table);
        fillBareTable(table, rows);
        widget->resize(900, 600);
        widget->show();
        QApplication::processEvents();
        state.SetIterationTime(now() - begin);
    }
}

void pageDeletesSelection(benchmark::State &state)
{
    while (state.KeepRunning()) {
        fillService(static_cast<int>(state.range(0)));
        Host host;
        ConnectionHistoryDlg *const page = ConnectionHistoryDlg::Instance();
        page->Init();
        QRect rect(0, 0, 900, 600);
        page->ShowWindow(&host, rect);
        QApplication::processEvents();
        page->m_pConnectionTblTreeWidget->selectAll();
        FakeHostUi::state().answers = {1024};
        const double begin = now();
        page->onDelete();
        QApplication::processEvents();
        state.SetIterationTime(now() - begin);
        if (page->m_pConnectionTblTreeWidget->rowCount() != 0 || !FakeStatistics::state().records.empty())
            state.SkipWithError("not everything was deleted");
        ConnectionHistoryDlg::Destroy();
    }
}

void floorDeletes(benchmark::State &state)
{
    const int count = static_cast<int>(state.range(0));
    const std::vector<Row> rows = readyMadeRows(count);
    while (state.KeepRunning()) {
        fillService(count);
        Host host;
        QTableWidget table(&host);
        table.setSelectionBehavior(QAbstractItemView::SelectRows);
        fillBareTable(&table, rows);
        table.resize(900, 600);
        table.show();
        QApplication::processEvents();
        if (state.range(1) != 0)
            table.selectAll();
        const double begin = now();
        for (int row = count - 1; row >= 0; --row)
            table.removeRow(row);
        for (int position = count - 1; position >= 0; --position)
            ZELK_Statistics_ConnRecord_RemoveRecord(position);
        QApplication::processEvents();
        state.SetIterationTime(now() - begin);
    }
}

/// Bytes in use on the heap.
double heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

double pageBytes(int count)
{
    fillService(count);
    const double before = heapBytes();
    ConnectionHistoryDlg::Instance()->Init();
    const double bytes = heapBytes() - before;
    ConnectionHistoryDlg::Destroy();
    return bytes;
}

double floorBytes(int count)
{
    QTableWidget table;
    const double before = heapBytes();
    fillBareTable(&table, readyMadeRows(count)); // the strings are the table's alone afterwards
    return heapBytes() - before;
}

class DialupPlugin : public QObject, public IDialupUIService
{
    Q_OBJECT
    Q_INTERFACES(IDialupUIService)
};

/// Growth of the heap over \a rounds connection ends, after a first hundred.
double bytesLeakedBy(int rounds)
{
    fillService(20);
    FakeStatistics::state().last = FakeStatistics::state().records.back();
    DialupPlugin dialup;
    FakeHostUi::PluginContainer container;
    container.objects.insert(QStringLiteral("92804312-432E-401F-96BB-1C20D852815D"), &dialup);
    Host host;
    FakeHostUi::state().container = &container;
    FakeHostUi::state().mainWindow = &host;
    FakeHostUi::state().settings.insert(QStringLiteral("NetInfoRecordUIPlugin/WhetherShowNotesbox"),
                                        QStringLiteral("true"));
    NetInfoRecordUIPlugin plugin;
    plugin.Init();
    QRect rect(0, 0, 900, 600);
    plugin.ShowWindow(&host, rect);
    double before = 0;
    for (int round = -100; round < rounds; ++round) {
        if (round == 0)
            before = heapBytes();
        plugin.Notify(0x600, 1, 0);
        plugin.Notify(0x600, 0, 0);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
        container.calls.clear(); // the stand-in's own notes
        FakeHostUi::state().trCalls.clear();
        FakeHostUi::state().settingsCalls.clear();
        FakeHostUi::state().dialogs.clear();
    }
    const double leaked = heapBytes() - before;
    plugin.OnDestroy();
    FakeHostUi::reset();
    return leaked;
}

bool report(const ShortestTimes &times)
{
    const double small = times.of("page/10000");
    const double large = times.of("page/100000");
    const double megabyte = 1024 * 1024;
    bool isGood = !times.failed();
    std::printf("\n");
    isGood &= isWithin("load, convert, show 10,000 records / floor", small / times.of("floor/10000"), 1.5);
    isGood &= isWithin("load, convert, show 100,000 records / floor", large / times.of("floor/100000"), 1.5);
    isGood &= isWithin("100,000 records / 10,000 records", large / small, 11);
    isGood &= isWithin("delete 10,000 selected rows of 10,000 / floor",
                       times.of("delete/10000") / times.of("deleteFloor/10000/0"), 1.5);
    std::printf("%-62s %8.2f\n", "  the same / floor whose rows are selected, too",
                times.of("delete/10000") / times.of("deleteFloor/10000/1"));
    const double page = pageBytes(100000);
    const double floor = floorBytes(100000);
    std::printf("memory at 100,000 rows: page %.1f MiB, floor %.1f MiB\n", page / megabyte, floor / megabyte);
    isGood &= isWithin("memory at 100,000 rows / floor", page / floor, 1.5);
    isGood &= isWithin("MiB leaked by 10,000 connection ends", bytesLeakedBy(10000) / megabyte, 1);
    return isGood;
}

void addBenchmark(const char *name, void (*function)(benchmark::State &), const std::vector<std::int64_t> &arguments)
{
    benchmark::RegisterBenchmark(name, function)
        ->Args(arguments)
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(7)
        ->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_LOGGING_RULES"))
        qputenv("QT_LOGGING_RULES", "*.debug=false");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    std::vector<char *> arguments(argv, argv + argc);
    char interleave[] = "--benchmark_enable_random_interleaving=true"; // floor and page under the same disturbances
    arguments.push_back(interleave);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    const QApplication application(argc, argv);

    for (const std::int64_t rows : {10000, 100000}) {
        addBenchmark("page", pageLoadsConvertsShows, {rows});
        addBenchmark("floor", floorFillsShows, {rows});
    }
    addBenchmark("delete", pageDeletesSelection, {10000});
    addBenchmark("deleteFloor", floorDeletes, {10000, 0});
    addBenchmark("deleteFloor", floorDeletes, {10000, 1});

    ShortestTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);
    return report(times) ? 0 : 1;
}

#include "bench_history.moc"
