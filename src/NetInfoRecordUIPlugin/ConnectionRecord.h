// One past connection as it is displayed.
#ifndef NETINFORECORD_CONNECTIONRECORD_H
#define NETINFORECORD_CONNECTIONRECORD_H

#include <QString>

/// Every value is already the text that table and summary show. All texts start empty, not null.
class ConnectionRecord
{
public:
    ConnectionRecord();

    int nId; ///< Position in the service's list when it was read, from 0; -1 for a record outside the list.
    QString strApn;
    QString strStartTime;     ///< Local time, "yyyyMMddhhmmss".
    QString strEndTime;       ///< Local time, "yyyyMMddhhmmss".
    QString strSpare;         ///< Stays empty; keeps the layout that others were built against.
    QString strUploaded;      ///< With unit.
    QString strDownloaded;    ///< With unit.
    QString strAux1;          ///< The service's own text, unchanged.
    QString strAux2;          ///< The service's own text, unchanged.
    QString strConnectedTime; ///< "hh:mm:ss", starting again at 00:00:00 every 24 hours.
};

#endif
