// The record store: reads the history from the statistics service and turns it into records for display.
#ifndef NETINFORECORD_NETINFORECORDLOGIC_H
#define NETINFORECORD_NETINFORECORDLOGIC_H

#include "AccumulateDlg.h"
#include "ConnectionRecord.h"

#include <QHash>
#include <QString>
#include <QVector>

struct _ZELK_ST_CONNRECORD;

namespace conversion {
class LocalClock;
}

/// Deliberately thin: it neither empties its hash before a load, nor frees the records it has made, nor takes deleted
/// ones out of the hash. Those who show the records do that on the public members.
class NetInfoRecordLogic
{
public:
    /// The one store; made by the first call.
    static NetInfoRecordLogic *Instance();
    /// Deletes the store, not the records in its hash. Does nothing when there is none.
    static void Destroy();

    NetInfoRecordLogic();
    ~NetInfoRecordLogic();

    /// Adds every record of the service to the hash. False when the service failed; the hash is then as before.
    bool GetAllConnectedRecords();
    /// Refills m_lastRecord. False when the service failed; m_lastRecord must then not be shown.
    bool GetLastConnectedRecord();
    /// Has the service remove the record at position \a index.
    bool DeleteRecord(int index);
    /// Has the service remove as many records as the hash holds. True when at least one went.
    bool DeleteAll();
    /// Makes the record for position \a index from \a raw and puts it into the hash.
    void populateSDKtoUIStructure(int index, _ZELK_ST_CONNRECORD *raw);
    /// An amount in KB as text: two decimals and " KB", " MB" or " GB".
    QString TransformUnits(double kilobytes);

    QHash<int, ConnectionRecord *> m_hash; ///< By nId. The records belong to whoever shows them.
    QVector<AccumulateDialogRecord> m_vecAccumulate;
    ConnectionRecord m_lastRecord;

    static NetInfoRecordLogic *m_pNetInfoRecordLogicInst;

private:
    void fill(ConnectionRecord &record, const _ZELK_ST_CONNRECORD &raw, conversion::LocalClock &clock);
    QString amountText(const char *bytes);

    conversion::LocalClock *m_loadClock; ///< While all records are loaded; null otherwise.
};

#endif
