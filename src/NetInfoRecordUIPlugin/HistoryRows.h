// The rows of the history table: their cells, and the records that the cells link to.
#ifndef NETINFORECORD_HISTORYROWS_H
#define NETINFORECORD_HISTORYROWS_H

#include "ConnectionRecord.h"

#include <QHash>
#include <QList>
#include <QVector>

#include <utility>
#include <vector>

class QTableWidgetItem;

namespace rows {

static const int columnCount = 6;

typedef std::pair<int, ConnectionRecord *> KeyAndRecord;

/// In ascending order of the keys; the hash's own order is anybody's guess from Qt 5 on.
std::vector<KeyAndRecord> inOrder(const QHash<int, ConnectionRecord *> &records);

/// A new cell for \a column of the row of \a record; null when there is no memory. The one in the first column links to
/// the record.
QTableWidgetItem *newCell(ConnectionRecord *record, int column);

/// The record that a cell links to; null for every cell outside the first column.
ConnectionRecord *linkedRecord(const QTableWidgetItem &item);

/// Copies of the records that \a items link to.
QVector<ConnectionRecord> recordsOf(const QList<QTableWidgetItem *> &items);

/// Whether both lists show the same connections at the same positions of the service.
bool isSame(const QVector<ConnectionRecord> &a, const QVector<ConnectionRecord> &b);

} // namespace rows

#endif
