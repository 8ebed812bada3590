// What is announced when several connections come and go, and what a listener makes of it.
#include "host/dialup/Announcer.h"
#include "plugin/INotify.h"

#include <QtTest>

namespace {

// Reacts to announcements as the history page does: an end counts only after a beginning.
struct Listener {
    bool armed = false;
    int handled = 0;

    void notify(unsigned int status)
    {
        if (status == 1)
            armed = true;
        if (status == 0 && armed) {
            armed = false;
            ++handled;
        }
    }
};

} // namespace

class AnnouncerTest : public QObject
{
    Q_OBJECT

private slots:
    void announces_data();
    void announces();
    void carriesCodeAndNoExtra();
    void everyEndIsHeardOnce();
};

void AnnouncerTest::announces_data()
{
    QTest::addColumn<QStringList>("events");
    QTest::addColumn<QString>("announced");

    QTest::newRow("nothing happens") << QStringList{} << "";
    QTest::newRow("one comes and goes") << QStringList{"+1", "-1"} << "10";
    QTest::newRow("one after the other") << QStringList{"+1", "-1", "+2", "-2"} << "1010";
    QTest::newRow("two at once, both heard") << QStringList{"+1", "+2", "-1", "-2"} << "11010";
    QTest::newRow("the later one goes first") << QStringList{"+1", "+2", "-2", "-1"} << "11010";
    QTest::newRow("three at once") << QStringList{"+1", "+2", "+3", "-2", "-1", "-3"} << "11101010";
    QTest::newRow("told twice of the same beginning") << QStringList{"+1", "+1", "-1"} << "10";
    QTest::newRow("over before anybody saw it") << QStringList{"-1"} << "10";
    QTest::newRow("left over while another is up") << QStringList{"+1", "-2", "-1"} << "11010";
    QTest::newRow("comes up again under the same key") << QStringList{"+1", "-1", "+1", "-1"} << "1010";
}

void AnnouncerTest::announces()
{
    QFETCH(QStringList, events);

    Announcer announcer;
    QString announced;
    connect(&announcer, &Announcer::announce, this,
            [&](unsigned int, unsigned int status, unsigned int) { announced += QString::number(status); });
    for (const QString &event : std::as_const(events)) {
        const qint64 key = event.mid(1).toLongLong();
        event.startsWith('+') ? announcer.established(key) : announcer.ended(key);
    }

    QTEST(announced, "announced");
}

void AnnouncerTest::carriesCodeAndNoExtra()
{
    Announcer announcer;
    QSignalSpy spy(&announcer, &Announcer::announce);

    announcer.established(1);

    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy[0][0].toUInt(), 0x600U);
    QCOMPARE(spy[0][1].toUInt(), 1U);
    QCOMPARE(spy[0][2].toUInt(), 0U);
}

// Every order in which three connections can come and go: after each end the listener has handled one more.
void AnnouncerTest::everyEndIsHeardOnce()
{
    QVector<int> order{1, 1, 2, 2, 3, 3}; // A key's first place is its beginning, its second one its end.
    int orders = 0;
    do {
        Announcer announcer;
        Listener listener;
        connect(&announcer, &Announcer::announce, this,
                [&](unsigned int, unsigned int status, unsigned int) { listener.notify(status); });
        QSet<int> up;
        int ended = 0;
        for (const int key : std::as_const(order)) {
            if (up.contains(key)) {
                up.remove(key);
                announcer.ended(key);
                ++ended;
            } else {
                up.insert(key);
                announcer.established(key);
            }
            QCOMPARE(listener.handled, ended);
            QCOMPARE(listener.armed, !up.isEmpty());
        }
        ++orders;
    } while (std::next_permutation(order.begin(), order.end()));
    QCOMPARE(orders, 90);
}

QTEST_GUILESS_MAIN(AnnouncerTest)
#include "tst_announcer.moc"
