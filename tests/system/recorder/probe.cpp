// recorder-probe, a helper of the recorder's tests.
//   recorder-probe records FILE   prints the history's records, then its open rows, one JSON object a line
//   recorder-probe client FILE [SAMPLE-MS]   is a window: a RecorderClient that prints what it announces, one JSON
//   object a line
#include "host/recorder/RecorderClient.h"
#include "host/recorder/RecorderService.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

using namespace recorder;

namespace {

void print(const QJsonObject &object)
{
    puts(QJsonDocument(object).toJson(QJsonDocument::Compact).constData());
    fflush(stdout);
}

QJsonObject toJson(const zelk::Record &record)
{
    return {{"kind", "record"},
            {"key", qint64(record.key)},
            {"profile", QString::fromStdString(record.profile)},
            {"profileName", QString::fromStdString(record.profileName)},
            {"start", qint64(record.start)},
            {"end", qint64(record.end)},
            {"seconds", qint64(record.connectedSeconds)},
            {"up", qint64(record.bytesUploaded)},
            {"down", qint64(record.bytesDownloaded)},
            {"origin", QString::fromStdString(zelk::originToText(record.origin))},
            {"zone", record.endZoneOffset},
            {"quality", QString::fromStdString(zelk::qualityToText(record.quality))},
            {"reason", QString::fromStdString(zelk::endReasonToText(record.endReason))}};
}

QJsonObject toJson(const zelk::OpenConnection &row)
{
    return {{"kind", "open"},
            {"key", qint64(row.key)},
            {"profile", QString::fromStdString(row.profile)},
            {"type", QString::fromStdString(row.type)},
            {"interface", QString::fromStdString(row.interfaceName)},
            {"up", qint64(row.bytesUploaded)},
            {"down", qint64(row.bytesDownloaded)},
            {"tx", qint64(row.lastTx)},
            {"rx", qint64(row.lastRx)}};
}

int printHistory(const QString &file)
{
    const zelk::ConnectionHistory history(file.toStdString(), zelk::ConnectionHistory::Access::ReadOnly);
    for (const zelk::Record &record : history.list())
        print(toJson(record));
    for (const zelk::OpenConnection &row : history.openConnections())
        print(toJson(row));
    return 0;
}

// The record must be in the file by the time that its end is announced.
QJsonObject withRecord(QJsonObject event, const QString &file, qint64 key)
{
    const zelk::ConnectionHistory history(file.toStdString(), zelk::ConnectionHistory::Access::ReadOnly);
    for (const zelk::Record &record : history.list()) {
        if (record.key == key)
            event.insert("stored", toJson(record));
    }
    return event;
}

int runClient(const QString &file, int sampleMs)
{
    ClientOptions options;
    options.recorder.historyPath = file;
    options.recorder.sampleMs = sampleMs;
    RecorderClient client(options);
    const auto event = [](const char *name, const Announcement &connection) {
        QJsonObject object = QJsonObject::fromVariantMap(toVariantMap(connection));
        object.insert("event", QLatin1String(name));
        return object;
    };
    QObject::connect(&client, &RecorderClient::connectionEstablished, &client,
                     [&](const Announcement &connection) { print(event("established", connection)); });
    QObject::connect(&client, &RecorderClient::connectionEnded, &client, [&](const Announcement &connection) {
        print(withRecord(event("ended", connection), file, connection.record));
    });
    QObject::connect(&client, &RecorderClient::leftoverClosed, &client,
                     [&](const Announcement &connection) { print(event("leftover", connection)); });
    QObject::connect(&client, &RecorderClient::statusChanged, &client, [&] {
        print({{"event", "status"}, {"here", client.recordsHere()}, {"text", client.status().text()}});
    });
    client.start();
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "records" && arguments.size() == 3)
        return printHistory(arguments.at(2));
    if (arguments.value(1) == "client" && arguments.size() >= 3)
        return runClient(arguments.at(2), arguments.value(3, "1000").toInt());
    fputs("usage: recorder-probe records FILE | client FILE [SAMPLE-MS]\n", stderr);
    return 1;
}
