// The record store: service calls and the conversion of raw records.
#include "NetInfoRecordLogic.h"

#include "Conversion.h"
#include "Trace.h"
#include "statistics/ZelkStatistics.h"

#include <cstring>

static const trace::Unit s_traceUnit = {"../../src/NetInfoRecordUIPlugin/NetInfoRecordLogic", nullptr};

NetInfoRecordLogic *NetInfoRecordLogic::m_pNetInfoRecordLogicInst = nullptr;

namespace {

QString profileText(const uint16_t *units)
{
    int length = 0;
    while (units[length] != 0)
        ++length;
    return QString(reinterpret_cast<const QChar *>(units), length);
}

} // namespace

ConnectionRecord::ConnectionRecord()
    : nId(-1)
    , strApn(QLatin1String(""))
    , strStartTime(QLatin1String(""))
    , strEndTime(QLatin1String(""))
    , strSpare(QLatin1String(""))
    , strUploaded(QLatin1String(""))
    , strDownloaded(QLatin1String(""))
    , strAux1(QLatin1String(""))
    , strAux2(QLatin1String(""))
    , strConnectedTime(QLatin1String(""))
{
}

NetInfoRecordLogic *NetInfoRecordLogic::Instance()
{
    TRACE(trace::TimedStart);
    if (!m_pNetInfoRecordLogicInst)
        m_pNetInfoRecordLogicInst = new NetInfoRecordLogic;
    TRACE(trace::TimedEndPadded);
    return m_pNetInfoRecordLogicInst;
}

void NetInfoRecordLogic::Destroy()
{
    TRACE(trace::TimedStartPadded);
    delete m_pNetInfoRecordLogicInst;
    m_pNetInfoRecordLogicInst = nullptr;
    TRACE(trace::TimedEndPadded);
}

NetInfoRecordLogic::NetInfoRecordLogic() : m_loadClock(nullptr)
{
    TRACE(trace::TimedStart);
    TRACE(trace::TimedEndPadded);
}

NetInfoRecordLogic::~NetInfoRecordLogic()
{
    TRACE(trace::TimedStart);
    TRACE(trace::TimedEndPadded);
}

bool NetInfoRecordLogic::GetAllConnectedRecords()
{
    TRACE(trace::TimedStart);
    _ZELK_ST_CONNRECORD *records = nullptr;
    int count = 0;
    TRACE(trace::CallingGetAll);
    const long result = ZELK_Statistics_GetAllConnRecord(&records, &count);
    TRACE_NUMBER(trace::FinishedGetAll, result);
    if (result == 0) {
        m_hash.reserve(m_hash.size() + count);
        conversion::LocalClock clock;
        m_loadClock = &clock;
        for (int i = 0; i < count; ++i)
            populateSDKtoUIStructure(i, records + i);
        m_loadClock = nullptr;
    }
    ZELK_Statistics_ReleaseConnRecord(records);
    TRACE(trace::TimedExit);
    return result == 0;
}

bool NetInfoRecordLogic::GetLastConnectedRecord()
{
    TRACE(trace::TimedStart);
    _ZELK_ST_CONNRECORD raw;
    std::memset(&raw, 0, sizeof(raw));
    TRACE(trace::CallingGetLast);
    const long result = ZELK_Statistics_GetLastConnRecord(&raw);
    TRACE_NUMBER(trace::FinishedGetLast, result);
    if (result == 0) {
        conversion::LocalClock clock;
        fill(m_lastRecord, raw, clock);
    }
    TRACE(trace::TimedEnd);
    return result == 0;
}

bool NetInfoRecordLogic::DeleteRecord(int index)
{
    TRACE(trace::TimedEnter);
    TRACE(trace::TimedStart);
    TRACE(trace::CallingRemove);
    const long result = ZELK_Statistics_ConnRecord_RemoveRecord(index);
    TRACE_NUMBER(trace::FinishedRemove, result);
    TRACE(trace::TimedEnd);
    return result == 0;
}

bool NetInfoRecordLogic::DeleteAll()
{
    TRACE(trace::TimedStart);
    bool isAnyRemoved = false;
    TRACE(trace::CallingRemove);
    // Every removal moves the remaining records up, so the first one goes each time.
    for (int i = 0; i < m_hash.size(); ++i) {
        const long result = ZELK_Statistics_ConnRecord_RemoveRecord(0);
        TRACE_NUMBER(trace::FinishedRemove, result);
        isAnyRemoved = isAnyRemoved || result == 0;
    }
    TRACE(trace::TimedEnd);
    return isAnyRemoved;
}

void NetInfoRecordLogic::populateSDKtoUIStructure(int index, _ZELK_ST_CONNRECORD *raw)
{
    TRACE(trace::TimedEnter);
    if (!raw) {
        TRACE(trace::ArgIsNull);
        return;
    }
    ConnectionRecord *const record = new ConnectionRecord;
    record->nId = index;
    conversion::LocalClock ownClock;
    fill(*record, *raw, m_loadClock ? *m_loadClock : ownClock);
    m_hash.insert(index, record);
    TRACE(trace::TimedExit);
}

QString NetInfoRecordLogic::TransformUnits(double kilobytes)
{
    TRACE(trace::TimedStart);
    const double megabyte = 1024;
    const double gigabyte = 1024 * 1024;
    QString text;
    if (kilobytes >= gigabyte)
        text = conversion::twoDecimals(kilobytes / gigabyte) + QLatin1String(" GB");
    else if (kilobytes >= megabyte)
        text = conversion::twoDecimals(kilobytes / megabyte) + QLatin1String(" MB");
    else
        text = conversion::twoDecimals(kilobytes) + QLatin1String(" KB");
    TRACE(trace::TimedEnd);
    return text;
}

/// Everything but the position and the unused field.
void NetInfoRecordLogic::fill(ConnectionRecord &record, const _ZELK_ST_CONNRECORD &raw, conversion::LocalClock &clock)
{
    record.strApn = profileText(raw.profile);
    record.strStartTime = clock.stampText(conversion::toInt(raw.startTime));
    record.strEndTime = clock.stampText(conversion::toInt(raw.endTime));
    record.strConnectedTime = conversion::durationText(conversion::toInt(raw.connectedTime));
    record.strUploaded = amountText(raw.uploaded);
    record.strDownloaded = amountText(raw.downloaded);
    record.strAux1 = QString::fromLatin1(raw.aux1);
    record.strAux2 = QString::fromLatin1(raw.aux2);
}

QString NetInfoRecordLogic::amountText(const char *bytes)
{
    return TransformUnits(conversion::toDouble(bytes) / 1024);
}
