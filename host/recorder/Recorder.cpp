// The recorder's state machine. A Track is one connection from its open row to its record: it is unconfirmed while only
// the row says that it is up, confirmed once its source has said so, and waits in `closing` while its record cannot be
// written.
#include "host/recorder/Recorder.h"

#include "host/recorder/Tally.h"

#include <QTimer>

#include <algorithm>
#include <set>
#include <vector>

namespace recorder {

namespace {

struct Track {
    zelk::OpenConnection row; // key 0: not in the history yet
    ConnectionSource *source = nullptr;
    QString id;
    std::shared_ptr<CounterReader> counters; // null: left behind and not resumed yet
    bool confirmed = false;
    bool announced = false;
};

struct Closing {
    Track track;
    zelk::Record record;
};

Announcement announcementOf(const Track &track)
{
    Announcement a;
    a.connection = track.row.key;
    a.confirmed = track.confirmed;
    a.profile = QString::fromStdString(track.row.profile);
    a.profileName = QString::fromStdString(track.row.profileName);
    a.type = QString::fromStdString(track.row.type);
    a.interfaceName = QString::fromStdString(track.row.interfaceName);
    a.startMs = track.row.startWallMs;
    a.connectedSeconds = (track.row.seenBootMs - track.row.startBootMs) / 1000;
    a.bytesUploaded = track.row.bytesUploaded;
    a.bytesDownloaded = track.row.bytesDownloaded;
    a.quality = track.row.quality;
    return a;
}

Announcement announcementOf(const Closing &closed, std::int64_t key)
{
    Announcement a = announcementOf(closed.track);
    a.confirmed = true;
    a.record = key;
    a.startMs = closed.record.start * 1000;
    a.connectedSeconds = closed.record.connectedSeconds;
    a.quality = closed.record.quality;
    a.endReason = closed.record.endReason;
    return a;
}

// Names come from profiles that anybody may have written; the history takes a kilobyte of them, and no zero character.
std::string nameOf(QString name)
{
    constexpr int longest = 1024;
    name.remove(QChar(0));
    while (name.toUtf8().size() > longest)
        name.chop(name.size() > 1 && name.at(name.size() - 1).isLowSurrogate() ? 2 : 1);
    return name.toStdString();
}

zelk::OpenConnection rowOf(const ConnectionInfo &info, const QString &boot, const Moment &now, const Counters &baseline)
{
    zelk::OpenConnection row;
    row.profile = nameOf(info.profile);
    row.profileName = nameOf(info.profileName);
    row.profileUuid = info.profileUuid.toStdString();
    row.type = info.type.toStdString();
    row.interfaceName = info.interfaceName.toStdString();
    row.interfaceIndex = info.interfaceIndex;
    row.bootId = boot.toStdString();
    row.serviceOwner = info.serviceOwner.toStdString();
    row.activePath = info.activePath.toStdString();
    row.startWallMs = row.seenWallMs = now.wall;
    row.startBootMs = row.seenBootMs = now.boot;
    row.lastTx = baseline.sent;
    row.lastRx = baseline.received;
    return row;
}

} // namespace

struct Recorder::Private {
    Private(Recorder *recorder, const RecorderOptions &recorderOptions) : q(recorder), options(recorderOptions)
    {
        if (options.historyPath.isEmpty())
            options.historyPath = QString::fromStdString(zelk::ConnectionHistory::defaultPath());
        sampling.setInterval(options.sampleMs);
        retry.setInterval(options.retryMs);
        QObject::connect(&sampling, &QTimer::timeout, q, [this] { tick(); });
        QObject::connect(&retry, &QTimer::timeout, q, [this] { tryAgain(); });
    }

    bool openHistory();
    void begin(ConnectionSource *source);
    void adoptRows(ConnectionSource *source);
    void up(ConnectionSource *source, const ConnectionInfo &info);
    bool resume(ConnectionSource *source, const ConnectionInfo &info);
    void last(ConnectionSource *source, const QString &id, const Counters &counters);
    void down(ConnectionSource *source, const QString &id, zelk::EndReason reason);
    void interrupted(ConnectionSource *source);
    void settled(ConnectionSource *source);
    bool slept(const Moment &now) const;
    void tick();
    void tryAgain();
    void sample(Track &track, const Moment &now);
    void store(Track &track);
    bool finishClosing(const Closing &closing);
    void close(Track track, const Moment &end, zelk::EndReason reason);
    void flushClosing();
    void announce(Track &track);
    void wrote();
    void failed(const zelk::HistoryError &error);
    void setHistoryStatus(const Status &status);
    void adjustTimers();
    Track *find(ConnectionSource *source, const QString &id);
    Track take(const Track *track);

    Recorder *q;
    RecorderOptions options;
    QString boot = bootId();
    std::unique_ptr<zelk::ConnectionHistory> history;
    std::vector<ConnectionSource *> sources;
    std::vector<ConnectionSource *> waiting; // for the history to open
    std::set<ConnectionSource *> unsettled;
    std::vector<Track> tracks;
    std::vector<Closing> closing;
    Status historyStatus;
    QTimer sampling;
    QTimer retry;
    std::int64_t asleepMs = 0; // boot clock less monotonic clock, which grows by sleeping only
};

bool Recorder::Private::openHistory()
{
    if (history)
        return true;
    try {
        history = std::make_unique<zelk::ConnectionHistory>(options.historyPath.toStdString());
        wrote();
    } catch (const zelk::HistoryError &error) {
        failed(error);
    }
    return history != nullptr;
}

void Recorder::Private::begin(ConnectionSource *source)
{
    if (openHistory()) {
        adoptRows(source);
        source->start();
    } else {
        waiting.push_back(source);
    }
    adjustTimers();
}

void Recorder::Private::adoptRows(ConnectionSource *source)
{
    try {
        for (const zelk::OpenConnection &row : history->openConnections()) {
            const bool known = std::any_of(tracks.begin(), tracks.end(),
                                           [&row](const Track &track) { return track.row.key == row.key; });
            if (!known && source->owns(row))
                tracks.push_back(Track{row, source, {}, nullptr, false, false});
        }
    } catch (const zelk::HistoryError &error) {
        failed(error);
    }
}

// An open row goes on when the same profile is up on the very same link, and nothing says that it was dialled anew: a
// restarted service gives its objects new names, a running one keeps them.
bool Recorder::Private::resume(ConnectionSource *source, const ConnectionInfo &info)
{
    const auto same = [&](const Track &track) {
        return !track.confirmed && track.source == source && info.interfaceIndex != 0 &&
               track.row.interfaceIndex == info.interfaceIndex && track.row.bootId == boot.toStdString() &&
               track.row.profileUuid == info.profileUuid.toStdString() &&
               (track.row.serviceOwner != info.serviceOwner.toStdString() ||
                track.row.activePath == info.activePath.toStdString());
    };
    const auto track = std::find_if(tracks.begin(), tracks.end(), same);
    if (track == tracks.end())
        return false;
    track->id = info.id;
    track->counters = info.counters;
    track->confirmed = true;
    track->row.serviceOwner = info.serviceOwner.toStdString();
    track->row.activePath = info.activePath.toStdString();
    track->row.quality |= zelk::QualityResumed;
    sample(*track, options.clock());
    store(*track);
    announce(*track);
    return true;
}

void Recorder::Private::up(ConnectionSource *source, const ConnectionInfo &info)
{
    if (!resume(source, info)) {
        const Moment now = options.clock();
        Counters baseline = info.baseline.value_or(Counters{});
        if (!info.baseline)
            baseline = info.counters->read().value_or(Counters{});
        tracks.push_back(Track{rowOf(info, boot, now, baseline), source, info.id, info.counters, true, false});
        store(tracks.back());
        announce(tracks.back());
    }
    adjustTimers();
}

void Recorder::Private::last(ConnectionSource *source, const QString &id, const Counters &counters)
{
    if (Track *track = find(source, id))
        countLast(track->row, counters);
}

void Recorder::Private::down(ConnectionSource *source, const QString &id, zelk::EndReason reason)
{
    Track *track = find(source, id);
    if (track == nullptr)
        return;
    const Moment now = options.clock();
    const Moment seen{track->row.seenWallMs, track->row.seenBootMs, 0};
    const bool heardLate = reason == zelk::EndReason::Sleep && slept(now);
    sample(*track, now);
    close(take(track), heardLate ? seen : now, reason); // what ended before the machine slept did not last the night
    adjustTimers();
}

void Recorder::Private::interrupted(ConnectionSource *source)
{
    for (Track &track : tracks) {
        if (track.source == source)
            track.confirmed = false; // its counters go on being read
    }
}

// What nobody has confirmed is over, and nobody saw its end: the record ends when it was last seen.
void Recorder::Private::settled(ConnectionSource *source)
{
    std::vector<Track> over;
    const auto isOver = [source](const Track &track) { return track.source == source && !track.confirmed; };
    std::copy_if(tracks.begin(), tracks.end(), std::back_inserter(over), isOver);
    tracks.erase(std::remove_if(tracks.begin(), tracks.end(), isOver), tracks.end());
    for (Track &track : over) {
        const bool thisBoot = track.row.bootId == boot.toStdString();
        const auto remainder = thisBoot ? source->remainder(track.row) : nullptr;
        if (const auto counters = remainder ? remainder->read() : std::nullopt)
            count(track.row, *counters);
        track.row.quality |= zelk::QualityRecovered;
        close(track, Moment{track.row.seenWallMs, track.row.seenBootMs, 0}, zelk::EndReason::Unknown);
    }
    adjustTimers();
}

void Recorder::Private::sample(Track &track, const Moment &now)
{
    if (!track.counters)
        return;
    if (const auto counters = track.counters->read())
        count(track.row, *counters);
    track.row.seenWallMs = now.wall;
    track.row.seenBootMs = now.boot;
}

// Since the last look at the clocks; true also where nobody announced the sleep.
bool Recorder::Private::slept(const Moment &now) const
{
    return now.boot - now.monotonic - asleepMs > clockToleranceMs;
}

void Recorder::Private::tick()
{
    const Moment now = options.clock();
    const bool woke = slept(now);
    asleepMs = now.boot - now.monotonic;
    for (Track &track : tracks) {
        sample(track, now);
        if (track.counters)
            store(track);
        announce(track);
    }
    if (!woke)
        return;
    for (ConnectionSource *source : std::vector<ConnectionSource *>(sources))
        source->refresh();
}

void Recorder::Private::tryAgain()
{
    if (!openHistory())
        return;
    for (ConnectionSource *source : std::exchange(waiting, {}))
        begin(source);
    flushClosing();
    adjustTimers();
}

// Writes the row, as a new one where the history has none of it yet.
void Recorder::Private::store(Track &track)
{
    try {
        if (track.row.key == 0)
            track.row.key = history->openConnection(track.row);
        else
            history->checkpoint(track.row);
        wrote();
    } catch (const zelk::HistoryError &error) {
        if (error.code() == zelk::ResultCode::NoSuchRecord)
            track.row.key = 0; // the file was put back to an older state: write the row again
        else
            failed(error);
    }
}

void Recorder::Private::announce(Track &track)
{
    if (track.announced || !track.confirmed || track.row.key == 0)
        return;
    track.announced = true;
    emit q->connectionEstablished(announcementOf(track));
}

void Recorder::Private::close(Track track, const Moment &end, zelk::EndReason reason)
{
    closing.push_back(Closing{track, finish(track.row, end, reason)});
    flushClosing();
}

// True when it is done with: written, or never to be.
bool Recorder::Private::finishClosing(const Closing &pending)
{
    Closing now = pending;
    try {
        if (now.track.row.key == 0)
            now.track.row.key = history->openConnection(now.track.row);
        const auto key = history->closeConnection(now.track.row.key, now.record);
        wrote();
        if (!now.track.announced && now.track.confirmed) { // too short for an open row, yet it was up
            now.track.announced = true;
            emit q->connectionEstablished(announcementOf(now.track));
        }
        emit q->connectionEnded(announcementOf(now, key.value_or(0)));
        return true;
    } catch (const zelk::HistoryError &error) {
        failed(error);
        return error.code() == zelk::ResultCode::InvalidRecord;
    }
}

void Recorder::Private::flushClosing()
{
    std::vector<Closing> pending = std::exchange(closing, {});
    std::vector<Closing> left;
    for (const Closing &one : pending) {
        if (!left.empty() || !finishClosing(one)) // in the order of their ends
            left.push_back(one);
    }
    closing.insert(closing.begin(), left.begin(), left.end());
}

void Recorder::Private::wrote()
{
    setHistoryStatus({});
}

void Recorder::Private::failed(const zelk::HistoryError &error)
{
    setHistoryStatus({Status::NoHistory, QString::fromUtf8(error.what())});
}

void Recorder::Private::setHistoryStatus(const Status &status)
{
    if (historyStatus == status)
        return;
    historyStatus = status;
    emit q->statusChanged();
}

// The process sleeps in the kernel while nothing is up and nothing waits to be written.
void Recorder::Private::adjustTimers()
{
    const bool anyUp = std::any_of(tracks.begin(), tracks.end(), [](const Track &track) { return !!track.counters; });
    if (anyUp && !sampling.isActive()) {
        const Moment now = options.clock();
        asleepMs = now.boot - now.monotonic;
        sampling.start();
    } else if (!anyUp) {
        sampling.stop();
    }
    const bool anyWaits = !waiting.empty() || !closing.empty();
    if (anyWaits && !retry.isActive())
        retry.start();
    else if (!anyWaits)
        retry.stop();
}

Track *Recorder::Private::find(ConnectionSource *source, const QString &id)
{
    const auto found = std::find_if(tracks.begin(), tracks.end(), [&](const Track &track) {
        return track.source == source && !track.id.isEmpty() && track.id == id;
    });
    return found == tracks.end() ? nullptr : &*found;
}

Track Recorder::Private::take(const Track *track)
{
    Track copy = *track;
    tracks.erase(tracks.begin() + (track - tracks.data()));
    return copy;
}

Recorder::Recorder(const RecorderOptions &options, QObject *parent)
    : QObject(parent), d(std::make_unique<Private>(this, options))
{
}

Recorder::~Recorder()
{
    blockSignals(true); // nobody is told of half a recorder
    while (!d->sources.empty())
        removeSource(d->sources.back());
    if (d->history)
        d->flushClosing();
}

void Recorder::addSource(ConnectionSource *source)
{
    source->setParent(this);
    d->sources.push_back(source);
    connect(source, &ConnectionSource::connectionUp, this,
            [this, source](const ConnectionInfo &info) { d->up(source, info); });
    connect(source, &ConnectionSource::lastCounters, this,
            [this, source](const QString &id, const Counters &counters) { d->last(source, id, counters); });
    connect(source, &ConnectionSource::connectionDown, this,
            [this, source](const QString &id, zelk::EndReason reason) { d->down(source, id, reason); });
    connect(source, &ConnectionSource::interrupted, this, [this, source] {
        d->unsettled.insert(source);
        d->interrupted(source);
    });
    connect(source, &ConnectionSource::settled, this, [this, source] {
        d->settled(source);
        d->unsettled.erase(source);
        emit settled();
    });
    connect(source, &ConnectionSource::aboutToSleep, this, &Recorder::checkpoint);
    connect(source, &ConnectionSource::statusChanged, this, &Recorder::statusChanged);
    d->unsettled.insert(source);
    d->begin(source);
}

void Recorder::removeSource(ConnectionSource *source)
{
    checkpoint();
    source->disconnect(this);
    source->stop();
    const auto isOurs = [source](const Track &track) { return track.source == source; };
    d->tracks.erase(std::remove_if(d->tracks.begin(), d->tracks.end(), isOurs), d->tracks.end());
    d->sources.erase(std::remove(d->sources.begin(), d->sources.end(), source), d->sources.end());
    d->waiting.erase(std::remove(d->waiting.begin(), d->waiting.end(), source), d->waiting.end());
    d->unsettled.erase(source);
    d->adjustTimers();
    source->deleteLater();
}

void Recorder::checkpoint()
{
    d->tick();
}

QVector<Announcement> Recorder::activeConnections() const
{
    QVector<Announcement> active;
    for (const Track &track : d->tracks) {
        if (track.row.key != 0)
            active.append(announcementOf(track));
    }
    return active;
}

Status Recorder::status() const
{
    Status worst = d->historyStatus;
    for (const ConnectionSource *source : d->sources) {
        if (source->status().code > worst.code)
            worst = source->status();
    }
    return worst;
}

bool Recorder::isSettled() const
{
    return d->unsettled.empty();
}

QString Recorder::historyPath() const
{
    return d->options.historyPath;
}

} // namespace recorder
