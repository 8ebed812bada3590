// Cells and links of the history table.
#include "HistoryRows.h"

#include "Conversion.h"
#include "QtCompat.h"

#include <QTableWidgetItem>

#include <algorithm>
#include <new>

namespace {

/// A cell that shows a date-time value. The value is made from its stamp when somebody looks: few rows are ever in
/// sight, and the toolkit takes longer for one date-time value than for all the rest of a row.
class StampItem : public QTableWidgetItem
{
public:
    explicit StampItem(const QString &stamp) : QTableWidgetItem(0), m_stamp(stamp), m_isPending(true) {}

    QVariant data(int role) const override
    {
        if (m_isPending && isDisplay(role))
            return conversion::stampValue(m_stamp);
        return QTableWidgetItem::data(role);
    }
    void setData(int role, const QVariant &value) override
    {
        m_isPending = m_isPending && !isDisplay(role);
        QTableWidgetItem::setData(role, value);
    }
    QTableWidgetItem *clone() const override
    {
        QTableWidgetItem *const copy = new QTableWidgetItem(*this);
        copy->setData(Qt::DisplayRole, data(Qt::DisplayRole));
        return copy;
    }

private:
    static bool isDisplay(int role) { return role == Qt::DisplayRole || role == Qt::EditRole; }

    QString m_stamp;
    bool m_isPending; ///< Nobody has put another value in the stamp's place.
};

/// A cell with its value and nothing else.
QTableWidgetItem *newValueCell(const ConnectionRecord &record, int column)
{
    if (column == 1 || column == 2)
        return new (std::nothrow) StampItem(column == 1 ? record.strStartTime : record.strEndTime);
    const QString *const texts[rows::columnCount] = {
        &record.strApn, nullptr, nullptr, &record.strConnectedTime, &record.strUploaded, &record.strDownloaded};
    QTableWidgetItem *const item = new (std::nothrow) QTableWidgetItem(0);
    if (item)
        item->setData(Qt::DisplayRole, *texts[column]);
    return item;
}

} // namespace

namespace rows {

std::vector<KeyAndRecord> inOrder(const QHash<int, ConnectionRecord *> &records)
{
    std::vector<KeyAndRecord> result;
    result.reserve(static_cast<std::size_t>(records.size()));
    for (QHash<int, ConnectionRecord *>::const_iterator it = records.constBegin(); it != records.constEnd(); ++it)
        result.push_back(KeyAndRecord(it.key(), it.value()));
    std::sort(result.begin(), result.end());
    return result;
}

QTableWidgetItem *newCell(ConnectionRecord *record, int column)
{
    QTableWidgetItem *const item = newValueCell(*record, column);
    if (!item)
        return nullptr;
    item->setData(Qt::TextAlignmentRole, static_cast<int>(Qt::AlignLeft));
    item->setData(Qt::UserRole, column == 0 ? compat::pointerToVariant(record) : QVariant(0));
    item->setFlags(item->flags() & ~Qt::ItemIsEditable);
    return item;
}

ConnectionRecord *linkedRecord(const QTableWidgetItem &item)
{
    return compat::pointerFromVariant<ConnectionRecord>(item.data(Qt::UserRole));
}

QVector<ConnectionRecord> recordsOf(const QList<QTableWidgetItem *> &items)
{
    QVector<ConnectionRecord> records;
    records.reserve(items.count() / columnCount);
    for (int i = 0; i < items.count(); ++i) {
        if (const ConnectionRecord *const record = linkedRecord(*items.at(i)))
            records.append(*record);
    }
    return records;
}

bool isSame(const QVector<ConnectionRecord> &a, const QVector<ConnectionRecord> &b)
{
    if (a.count() != b.count())
        return false;
    for (int i = 0; i < a.count(); ++i) {
        const ConnectionRecord &x = a.at(i);
        const ConnectionRecord &y = b.at(i);
        if (x.nId != y.nId || x.strApn != y.strApn || x.strStartTime != y.strStartTime ||
            x.strEndTime != y.strEndTime || x.strConnectedTime != y.strConnectedTime ||
            x.strUploaded != y.strUploaded || x.strDownloaded != y.strDownloaded)
            return false;
    }
    return true;
}

} // namespace rows
