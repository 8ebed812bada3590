// The recorder's smaller parts: arithmetic, what the network service's numbers mean, the kernel's links, the lock.
#include "FakeSource.h"

#include "host/recorder/HistoryLock.h"
#include "host/recorder/KernelLink.h"
#include "host/recorder/NetworkManagerTypes.h"
#include "host/recorder/RecorderService.h"
#include "host/recorder/Tally.h"

#include <QTemporaryDir>
#include <QTest>

using namespace recorder;

class TestRecorderParts : public QObject
{
    Q_OBJECT

private slots:
    void finishes_data();
    void finishes();
    void zoneOffsetIsThatOfTheEnd();
    void endReasons_data();
    void endReasons();
    void recorded_data();
    void recorded();
    void shownProfiles();
    void countersOfTheLoopback_data();
    void countersOfTheLoopback();
    void countersOfNoLink();
    void lockIsForOne();
    void announcementsTravel();
};

void TestRecorderParts::finishes_data()
{
    QTest::addColumn<qint64>("wallStart");
    QTest::addColumn<qint64>("wallEnd");
    QTest::addColumn<qint64>("bootMs");
    QTest::addColumn<qint64>("start");
    QTest::addColumn<qint64>("end");
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<bool>("marked");
    const qint64 t = 1'700'000'000;
    QTest::newRow("a minute") << t * 1000 << (t + 60) * 1000 << qint64(60'000) << t << t + 60 << qint64(60) << false;
    QTest::newRow("less than a second") << t * 1000 + 900 << t * 1000 + 1100 << qint64(200) << t << t + 1 << qint64(0)
                                        << false;
    QTest::newRow("rounding never exceeds the span")
        << t * 1000 << t * 1000 + 1500 << qint64(1500) << t << t + 1 << qint64(1) << false;
    QTest::newRow("two seconds are tolerated")
        << t * 1000 << (t + 62) * 1000 << qint64(60'000) << t << t + 62 << qint64(60) << false;
    QTest::newRow("just over two seconds")
        << t * 1000 << (t + 62) * 1000 + 1 << qint64(60'000) << t + 2 << t + 62 << qint64(60) << true;
    QTest::newRow("back an hour") << t * 1000 << (t - 3540) * 1000 << qint64(60'000) << t - 3600 << t - 3540
                                  << qint64(60) << true;
    QTest::newRow("forward a day") << t * 1000 << (t + 86460) * 1000 << qint64(60'000) << t + 86400 << t + 86460
                                   << qint64(60) << true;
    QTest::newRow("back by little, before the start")
        << t * 1000 << t * 1000 - 500 << qint64(1200) << t - 2 << t - 1 << qint64(1) << true;
    QTest::newRow("before 1970 there is nothing")
        << qint64(5000) << qint64(1000) << qint64(60'000) << qint64(0) << qint64(1) << qint64(1) << true;
}

void TestRecorderParts::finishes()
{
    QFETCH(qint64, wallStart);
    QFETCH(qint64, wallEnd);
    QFETCH(qint64, bootMs);
    zelk::OpenConnection row;
    row.startWallMs = wallStart;
    row.startBootMs = 1000;
    const zelk::Record record = finish(row, Moment{wallEnd, 1000 + bootMs, 0}, zelk::EndReason::User);
    QTEST(qint64(record.start), "start");
    QTEST(qint64(record.end), "end");
    QTEST(qint64(record.connectedSeconds), "seconds");
    QTEST((record.quality & zelk::QualityClockChanged) != 0, "marked");
}

void TestRecorderParts::zoneOffsetIsThatOfTheEnd()
{
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "Europe/Berlin");
    const std::int32_t summer = zoneOffset(1'690'000'000'000);
    const std::int32_t winter = zoneOffset(1'700'000'000'000);
    qputenv("TZ", zone);
    QCOMPARE(summer, 7200);
    QCOMPARE(winter, 3600);
    QCOMPARE(zoneOffset(1'690'000'000'000), 0);
}

void TestRecorderParts::endReasons_data()
{
    QTest::addColumn<uint>("reason");
    QTest::addColumn<bool>("linkGone");
    QTest::addColumn<zelk::EndReason>("end");
    QTest::newRow("user") << 39U << false << zelk::EndReason::User;
    QTest::newRow("replaced") << 60U << false << zelk::EndReason::User;
    QTest::newRow("profile deleted") << 38U << false << zelk::EndReason::User;
    QTest::newRow("network drops the bearer") << 25U << false << zelk::EndReason::Network;
    QTest::newRow("telephone call ends") << 13U << false << zelk::EndReason::Network;
    QTest::newRow("Wi-Fi lost") << 8U << false << zelk::EndReason::Network;
    QTest::newRow("lease lost") << 6U << false << zelk::EndReason::Network;
    QTest::newRow("no password") << 7U << false << zelk::EndReason::Unknown;
    QTest::newRow("dongle pulled") << 36U << false << zelk::EndReason::Unplugged;
    QTest::newRow("link deleted") << 3U << true << zelk::EndReason::Unplugged;
    QTest::newRow("service ends") << 3U << false << zelk::EndReason::Unknown;
    QTest::newRow("carrier") << 40U << false << zelk::EndReason::Carrier;
    QTest::newRow("sleep") << 37U << false << zelk::EndReason::Sleep;
    QTest::newRow("none given") << 0U << true << zelk::EndReason::Unknown;
    QTest::newRow("one that does not exist yet") << 900U << false << zelk::EndReason::Unknown;
}

void TestRecorderParts::endReasons()
{
    QFETCH(uint, reason);
    QFETCH(bool, linkGone);
    QFETCH(zelk::EndReason, end);
    QCOMPARE(endReason(reason, linkGone), end);
}

void TestRecorderParts::recorded_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("setting"); // group.key=value
    QTest::addColumn<uint>("flags");
    QTest::addColumn<uint>("metered");
    QTest::addColumn<bool>("all");
    QTest::addColumn<bool>("mobile");
    QTest::addColumn<bool>("onlyMetered");
    const auto row = [](const char *name, const char *type, const char *setting, uint flags, uint metered, int all,
                        int mobile, int onlyMetered) {
        QTest::newRow(name) << QString(type) << QString(setting) << flags << metered << bool(all) << bool(mobile)
                            << bool(onlyMetered);
    };
    row("modem, metered by guess", "gsm", "", 0x1c, 3, 1, 1, 1);
    row("older modem", "cdma", "", 0x1c, 1, 1, 1, 1);
    row("modem, not metered", "gsm", "", 0x1c, 2, 1, 1, 0);
    row("dialling through a telephone", "bluetooth", "bluetooth.type=dun", 0x1c, 0, 1, 1, 0);
    row("a telephone's network", "bluetooth", "bluetooth.type=panu", 0x1c, 0, 1, 0, 0);
    row("serving a network by Bluetooth", "bluetooth", "bluetooth.type=nap", 0x1c, 0, 0, 0, 0);
    row("Wi-Fi, not metered by guess", "802-11-wireless", "", 0x1c, 4, 1, 0, 0);
    row("own access point", "802-11-wireless", "802-11-wireless.mode=ap", 0x1c, 0, 0, 0, 0);
    row("cable", "802-3-ethernet", "", 0x1c, 0, 1, 0, 0);
    row("shared with others", "802-3-ethernet", "ipv4.method=shared", 0x1c, 0, 0, 0, 0);
    row("brought up by others", "802-3-ethernet", "", 0x9c, 1, 0, 0, 0);
    row("PPP over cable", "pppoe", "", 0x1c, 0, 1, 0, 0);
    for (const char *type : {"loopback", "bridge", "bond", "team", "vlan", "tun", "wireguard", "vpn", "ip-tunnel",
                             "macvlan", "vxlan", "dummy", "veth", "something-new"})
        row(type, type, "", 0x1c, 1, 0, 0, 0);
}

void TestRecorderParts::recorded()
{
    QFETCH(QString, type);
    QFETCH(QString, setting);
    QFETCH(uint, flags);
    QFETCH(uint, metered);
    ActiveFacts facts;
    facts.type = type;
    facts.stateFlags = flags;
    facts.metered = metered;
    const int dot = static_cast<int>(setting.indexOf('.'));
    const int equals = static_cast<int>(setting.indexOf('='));
    if (dot > 0)
        facts.profile[setting.left(dot)][setting.mid(dot + 1, equals - dot - 1)] = setting.mid(equals + 1);
    QTEST(isRecorded(facts, Wanted::All), "all");
    QTEST(isRecorded(facts, Wanted::Mobile), "mobile");
    QTEST(isRecorded(facts, Wanted::Metered), "onlyMetered");
    facts.vpn = true;
    QVERIFY(!isRecorded(facts, Wanted::All));
}

void TestRecorderParts::shownProfiles()
{
    ActiveFacts facts;
    facts.id = "Web Mobile";
    QCOMPARE(shownProfile(facts), QStringLiteral("Web Mobile"));
    facts.profile["gsm"]["apn"] = "";
    QCOMPARE(shownProfile(facts), QStringLiteral("Web Mobile"));
    facts.profile["gsm"]["apn"] = "internet.example";
    QCOMPARE(shownProfile(facts), QStringLiteral("internet.example"));
}

void TestRecorderParts::countersOfTheLoopback_data()
{
    QTest::addColumn<QByteArray>("root");
    QTest::newRow("from sysfs") << QByteArray("/sys/class/net");
    QTest::newRow("from netlink, where sysfs is missing") << QByteArray("/nowhere");
}

void TestRecorderParts::countersOfTheLoopback()
{
    QFETCH(QByteArray, root);
    KernelCounters asked("lo", root);
    KernelCounters other("lo");
    QCOMPARE(asked.index(), interfaceIndex("lo"));
    const auto before = other.read();
    const auto counters = asked.read();
    const auto after = other.read();
    QVERIFY(before && counters && after);
    QVERIFY(before->sent <= counters->sent && counters->sent <= after->sent);
    QVERIFY(before->received <= counters->received && counters->received <= after->received);
}

void TestRecorderParts::countersOfNoLink()
{
    KernelCounters none("no-such-link");
    QCOMPARE(none.index(), 0);
    QVERIFY(!none.read());
    QCOMPARE(interfaceIndex("no-such-link"), 0);
    QVERIFY(!isUpperHalf("lo"));
}

void TestRecorderParts::lockIsForOne()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("deep/er/history.sqlite");
    HistoryLock first(path);
    HistoryLock second(path);
    QCOMPARE(first.acquire().code, Status::Ok);
    QCOMPARE(first.acquire().code, Status::Ok);
    QCOMPARE(second.acquire().code, Status::OtherRecorder);
    QCOMPARE(second.acquire().detail, QStringLiteral("process %1").arg(QCoreApplication::applicationPid()));
    first.release();
    QCOMPARE(second.acquire().code, Status::Ok);
    HistoryLock impossible("/proc/history.sqlite");
    QCOMPARE(impossible.acquire().code, Status::NoHistory);
    QVERIFY(impossible.acquire().text().contains("/proc/history.sqlite"));
}

void TestRecorderParts::announcementsTravel()
{
    Announcement sent;
    sent.connection = 3;
    sent.record = 4;
    sent.confirmed = false;
    sent.profile = "internet.example";
    sent.profileName = "Web Mobile";
    sent.type = "gsm";
    sent.interfaceName = "wwan0";
    sent.startMs = 1'700'000'000'123;
    sent.connectedSeconds = 60;
    sent.bytesUploaded = Q_INT64_C(5'000'000'000);
    sent.bytesDownloaded = 7;
    sent.quality = zelk::QualityResumed | zelk::QualityClockChanged;
    sent.endReason = zelk::EndReason::Carrier;
    const QVariantMap map = toVariantMap(sent);
    QCOMPARE(map.value("quality").toString(), QStringLiteral("resumed+clock-changed"));
    const Announcement received = announcementFromVariantMap(map);
    QCOMPARE(toVariantMap(received), map);
    QCOMPARE(received.bytesUploaded, sent.bytesUploaded);
    QCOMPARE(received.endReason, sent.endReason);
    QCOMPARE(announcementFromVariantMap({{"quality", "marvellous"}}).quality, unsigned(zelk::QualityExact));
}

QTEST_GUILESS_MAIN(TestRecorderParts)
#include "test_parts.moc"
