// The page "Usage" with real files: figures, keys and mouse, pictures, and the one query behind it.
#include "HostUi.h"
#include "UsageChart.h"
#include "UsageColours.h"
#include "UsagePage.h"
#include "statistics/ConnectionHistory.h"

#include <QAccessible>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>

namespace {

QStringList s_statements;

int keepStatement(unsigned int, void *, void *statement, void *)
{
    s_statements << QString::fromUtf8(sqlite3_sql(static_cast<sqlite3_stmt *>(statement)));
    return 0;
}

int watchConnection(sqlite3 *database, const char **, const void *)
{
    return sqlite3_trace_v2(database, SQLITE_TRACE_STMT, keepStatement, nullptr);
}

zelk::Record record(const char *profile, const QDateTime &start, std::int64_t seconds, std::int64_t up,
                    std::int64_t down)
{
    zelk::Record result;
    result.profile = profile;
    result.start = start.toSecsSinceEpoch();
    result.end = result.start + seconds;
    result.connectedSeconds = seconds;
    result.bytesUploaded = up;
    result.bytesDownloaded = down;
    return result;
}

QDateTime at(int month, int day, int hour = 12)
{
    return QDateTime(QDate(2026, month, day), QTime(hour, 0));
}

QPalette darkPalette()
{
    QPalette palette(QColor(0x31, 0x36, 0x3b));
    palette.setColor(QPalette::Base, QColor(0x1b, 0x1e, 0x20));
    palette.setColor(QPalette::Text, QColor(0xfc, 0xfc, 0xfc));
    return palette;
}

QPalette lightPalette()
{
    QPalette palette(QColor(0xef, 0xf0, 0xf1));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    return palette;
}

bool holds(const QImage &image, const QColor &colour)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).rgb() == colour.rgb())
                return true;
        }
    }
    return false;
}

constexpr std::int64_t mb = 1048576;

} // namespace

class UsagePageTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void totalsInFull();
    void profileChoosesItsFigures();
    void choiceOfProfileOutlastsTheMonth();
    void monthsByButtonAndKeyboard();
    void nothingBeyondThisMonth();
    void arrowKeysReadDays();
    void mouseSelectsTheDayBelowIt();
    void everyControlHasAName();
    void languageChangesEveryText();
    void newRecordsAppearByThemselves();
    void midnightMovesToday();
    void damagedHistoryIsExplained();
    void pictureHasTheBarsInTheirColours_data();
    void pictureHasTheBarsInTheirColours();
    void pictureIsSavedAsPng();
    void pictureThatCannotBeSavedSaysWhy();
    void oneIndexedQueryOnManyRecords();

private:
    void fill();
    template <typename T> T *child(const char *name) const { return m_page->findChild<T *>(name); }
    QString value(const char *name) const { return child<QLabel>(name)->text(); }
    UsageChart *chart() const { return child<UsageChart>("UsageChart"); }
    void show();

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UsagePage> m_page;
    QDate m_today{2026, 11, 18};
};

void UsagePageTest::init()
{
    m_today = QDate(2026, 11, 18);
    m_folder = std::make_unique<QTemporaryDir>();
    qputenv("NETINFO_HISTORY", m_folder->filePath("history.sqlite").toLocal8Bit());
    HostUi::instance()->overrideLanguage("en");
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    fill();
    m_page = std::make_unique<UsagePage>(nullptr, [this] { return m_today; });
    m_page->setPalette(lightPalette());
}

void UsagePageTest::cleanup()
{
    m_page.reset();
}

void UsagePageTest::fill()
{
    zelk::ConnectionHistory history;
    history.add({record("web", at(11, 1, 0), 90000, 2 * mb, 20 * mb), record("web", at(11, 17), 3725, 3 * mb, 30 * mb),
                 record("mail", at(11, 17), 60, mb, mb), record("web", at(10, 31, 23), 60, 5 * mb, 50 * mb)});
}

void UsagePageTest::show()
{
    m_page->resize(900, 560);
    m_page->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_page.get()));
    m_page->activateWindow();
}

void UsagePageTest::totalsInFull()
{
    QCOMPARE(value("UsageDownloaded"), QString("51.00 MB"));
    QCOMPARE(value("UsageUploaded"), QString("6.00 MB"));
    QCOMPARE(value("UsageTime"), QString("26:03:05"));
    QCOMPARE(value("UsageConnections"), QString("3"));
    QCOMPARE(child<QDateEdit>("UsageMonth")->text(), QString("November 2026"));
}

void UsagePageTest::profileChoosesItsFigures()
{
    auto *profiles = child<QComboBox>("UsageProfile");
    QCOMPARE(profiles->count(), 3);
    QCOMPARE(profiles->itemText(0), QString("All profiles"));
    show();
    profiles->setFocus();
    QTest::keyClick(profiles, Qt::Key_Down);
    QCOMPARE(profiles->currentText(), QString("mail"));
    QCOMPARE(value("UsageDownloaded"), QString("1.00 MB"));
    QTest::keyClick(profiles, Qt::Key_Down);
    QCOMPARE(value("UsageDownloaded"), QString("50.00 MB"));
}

void UsagePageTest::choiceOfProfileOutlastsTheMonth()
{
    show();
    auto *profiles = child<QComboBox>("UsageProfile");
    profiles->setFocus();
    QTest::keyClick(profiles, Qt::Key_Down);
    m_page->showMonth(QDate(2026, 10, 1));
    QCOMPARE(profiles->currentText(), QString("mail"));
    QCOMPARE(value("UsageConnections"), QString("0"));
    m_page->showMonth(QDate(2026, 11, 1));
    QCOMPARE(profiles->currentText(), QString("mail"));
    QCOMPARE(value("UsageConnections"), QString("1"));
}

void UsagePageTest::monthsByButtonAndKeyboard()
{
    show();
    QTest::mouseClick(child<QToolButton>("UsagePreviousMonth"), Qt::LeftButton);
    QCOMPARE(m_page->month(), QDate(2026, 10, 1));
    QCOMPARE(value("UsageDownloaded"), QString("50.00 MB"));
    QTest::keyClick(m_page.get(), Qt::Key_PageUp);
    QCOMPARE(m_page->month(), QDate(2026, 9, 1));
    QTest::keyClick(m_page.get(), Qt::Key_PageDown);
    QTest::mouseClick(child<QToolButton>("UsageNextMonth"), Qt::LeftButton);
    QCOMPARE(m_page->month(), QDate(2026, 11, 1));
    child<QDateEdit>("UsageMonth")->setDate(QDate(2025, 2, 1));
    QCOMPARE(m_page->month(), QDate(2025, 2, 1));
    QTest::mouseClick(child<QPushButton>("UsageThisMonth"), Qt::LeftButton);
    QCOMPARE(m_page->month(), QDate(2026, 11, 1));
}

void UsagePageTest::nothingBeyondThisMonth()
{
    QVERIFY(!child<QToolButton>("UsageNextMonth")->isEnabled());
    QVERIFY(!child<QPushButton>("UsageThisMonth")->isEnabled());
    m_page->showMonth(QDate(2030, 1, 1));
    QCOMPARE(m_page->month(), QDate(2026, 11, 1));
    m_page->showMonth(QDate(1950, 1, 1));
    QCOMPARE(m_page->month(), QDate(1970, 1, 1));
}

void UsagePageTest::arrowKeysReadDays()
{
    show();
    chart()->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(chart()->hasFocus());
    QCOMPARE(chart()->selectedDay(), 18); // today
    QTest::keyClick(chart(), Qt::Key_Left);
    const QString expected =
        "17 November 2026: 31.00 MB downloaded, 4.00 MB uploaded, connected 1:03:05, connections: 2";
    QVERIFY2(value("UsageDay").endsWith(expected), qPrintable(value("UsageDay")));
    QVERIFY(chart()->accessibleDescription().endsWith(expected));
    QTest::keyClick(chart(), Qt::Key_Home);
    QCOMPARE(chart()->selectedDay(), 1);
    QTest::keyClick(chart(), Qt::Key_Left);
    QCOMPARE(chart()->selectedDay(), 1);
    QTest::keyClick(chart(), Qt::Key_End);
    QTest::keyClick(chart(), Qt::Key_Right);
    QCOMPARE(chart()->selectedDay(), 30);
}

void UsagePageTest::mouseSelectsTheDayBelowIt()
{
    show();
    for (const int day : {1, 17, 30}) {
        QTest::mouseClick(chart(), Qt::LeftButton, Qt::NoModifier, chart()->columnOf(day).center().toPoint());
        QCOMPARE(chart()->selectedDay(), day);
        // The mark lies above a weekend's shade (the 1st is a Sunday) and below the bars.
        const QPoint free = chart()->columnOf(day).topLeft().toPoint() + QPoint(3, 8);
        const QImage image = chart()->grab().toImage();
        QCOMPARE(image.pixelColor(free), UsageColours(m_page->palette()).selection);
    }
    QCOMPARE(chart()->dayAt(QPoint(1, 100)), 0);
}

void UsagePageTest::everyControlHasAName()
{
    show();
    for (QWidget *widget : m_page->findChildren<QWidget *>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible() ||
            widget->parentWidget() == child<QDateEdit>("UsageMonth"))
            continue;
        QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(widget);
        QVERIFY2(interface && !interface->text(QAccessible::Name).isEmpty(), qPrintable(widget->objectName()));
    }
}

void UsagePageTest::languageChangesEveryText()
{
    QVERIFY(HostUi::instance()->overrideLanguage("de"));
    QCOMPARE(child<QComboBox>("UsageProfile")->itemText(0), QString("Alle Profile"));
    QCOMPARE(child<QPushButton>("UsageThisMonth")->text(), QString("Dieser &Monat"));
    for (const QLabel *label : m_page->findChildren<QLabel *>())
        QVERIFY2(!label->text().contains("IDS_"), qPrintable(label->text()));
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    m_page->retranslate();
    QCOMPARE(value("UsageDownloaded"), QString("51,00 MB"));
    QCOMPARE(child<QDateEdit>("UsageMonth")->text(), QString("November 2026"));
}

void UsagePageTest::newRecordsAppearByThemselves()
{
    show();
    zelk::ConnectionHistory history;
    history.add(record("web", at(11, 18), 60, mb, mb));
    QTRY_COMPARE(value("UsageConnections"), QString("4"));
}

void UsagePageTest::midnightMovesToday()
{
    show();
    m_today = QDate(2026, 12, 1);
    QTRY_VERIFY(child<QToolButton>("UsageNextMonth")->isEnabled());
    QCOMPARE(m_page->month(), QDate(2026, 11, 1));
}

void UsagePageTest::damagedHistoryIsExplained()
{
    m_page.reset();
    for (const QString &name : QDir(m_folder->path()).entryList(QDir::Files))
        QVERIFY(QFile::remove(m_folder->filePath(name)));
    QFile file(m_folder->filePath("history.sqlite"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(8192, 'x'));
    file.close();
    m_page = std::make_unique<UsagePage>(nullptr, [this] { return m_today; });
    show();
    QVERIFY(child<QLabel>("UsageProblem")->isVisible());
    QVERIFY(value("UsageProblem").contains(file.fileName()));
    QCOMPARE(value("UsageConnections"), QString("0"));
}

void UsagePageTest::pictureHasTheBarsInTheirColours_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void UsagePageTest::pictureHasTheBarsInTheirColours()
{
    QFETCH(bool, isDark);
    m_page->setPalette(isDark ? darkPalette() : lightPalette());
    const QImage image = m_page->picture();
    const UsageColours colours(m_page->palette());
    QVERIFY(holds(image, colours.downloaded));
    QVERIFY(holds(image, colours.uploaded));
    QCOMPARE(image.pixelColor(0, 0).rgb(), colours.ground.rgb());
    // To be looked at.
    const QDir folder(qEnvironmentVariable("NETINFO_BUILD_DIR") + "/tests/pictures");
    QVERIFY(folder.mkpath("."));
    QVERIFY(image.save(folder.filePath(QString("usage-%1.png").arg(QTest::currentDataTag()))));
}

void UsagePageTest::pictureIsSavedAsPng()
{
    const QString file = m_folder->filePath("usage.png");
    QVERIFY(!m_page->savePicture(file));
    QImage image;
    QVERIFY(image.load(file, "PNG"));
    QCOMPARE(image.size(), QSize(1920, 1120));
}

void UsagePageTest::pictureThatCannotBeSavedSaysWhy()
{
    const auto reason = m_page->savePicture(m_folder->filePath("missing/usage.png"));
    QVERIFY(reason);
    QVERIFY(!reason->isEmpty());
}

/// Drawn on 100,000 records: one statement, answered through the index on the start, in milliseconds.
void UsagePageTest::oneIndexedQueryOnManyRecords()
{
    std::vector<zelk::Record> records;
    records.reserve(100000);
    std::mt19937 random(1);
    const qint64 first = at(1, 1).addYears(-4).toSecsSinceEpoch();
    for (int i = 0; i < 100000; ++i) {
        records.push_back(record(i % 3 == 0 ? "web" : "mail", QDateTime::fromSecsSinceEpoch(first + i * 1500LL), 600,
                                 static_cast<std::int64_t>(random() % 5000000),
                                 static_cast<std::int64_t>(random() % 50000000)));
    }
    zelk::ConnectionHistory().add(records);

    using Entry = void (*)();
    QCOMPARE(sqlite3_auto_extension(reinterpret_cast<Entry>(&watchConnection)), SQLITE_OK);
    s_statements.clear();
    m_page->refresh();
    sqlite3_reset_auto_extension();
    const QStringList queries = s_statements.filter(QRegularExpression("^SELECT .*FROM records"));
    QCOMPARE(queries.size(), 1);

    sqlite3 *database = nullptr;
    QCOMPARE(sqlite3_open(qgetenv("NETINFO_HISTORY").constData(), &database), SQLITE_OK);
    sqlite3_stmt *plan = nullptr;
    QCOMPARE(
        sqlite3_prepare_v2(database, ("EXPLAIN QUERY PLAN " + queries[0]).toUtf8().constData(), -1, &plan, nullptr),
        SQLITE_OK);
    QStringList steps;
    while (sqlite3_step(plan) == SQLITE_ROW)
        steps << QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(plan, 3)));
    sqlite3_finalize(plan);
    sqlite3_close(database);
    QCOMPARE(steps.size(), 1);
    QVERIFY2(steps[0].contains("SEARCH records USING INDEX records_by_start"), qPrintable(steps.join('\n')));

    std::array<qint64, 7> milliseconds{};
    for (qint64 &elapsed : milliseconds) {
        QElapsedTimer timer;
        timer.start();
        m_page->refresh();
        elapsed = timer.elapsed();
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    qInfo("reading a month out of 100,000 records: %lld ms (median of 7)", milliseconds[3]);
    QVERIFY(milliseconds[3] < 100);
}

QTEST_MAIN(UsagePageTest)

#include "test_usagepage.moc"
