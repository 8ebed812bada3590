// Everything that differs between the toolkit's generations 4.6 to 6, in one place.
#ifndef NETINFORECORD_QTCOMPAT_H
#define NETINFORECORD_QTCOMPAT_H

#include <QDateTime>
#include <QObject>
#include <QVariant>
#include <QtGlobal>
#include <QtPlugin>

// Q_OBJECT brings a static tr(const char *) into every class. Ours ask the host through a member tr(QString), and a
// call with a literal must reach that member too, so the toolkit's pair is kept out of our classes.
#undef QT_TR_FUNCTIONS
#define QT_TR_FUNCTIONS

// From Qt 5 on the class itself declares that it is a plug-in; before, a macro in its source file exports it.
#if QT_VERSION >= 0x050000
#define NETINFO_EXPORT_PLUGIN(name, Class)
#else
#define Q_PLUGIN_METADATA(x)
#define NETINFO_EXPORT_PLUGIN(name, Class) Q_EXPORT_PLUGIN2(name, Class)
#endif

namespace compat {

/// Local date and time \a seconds after 1970-01-01 00:00 UTC, or before it when negative.
inline QDateTime localFromSeconds(int seconds)
{
#if QT_VERSION >= 0x040700
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(seconds) * 1000);
#else
    return QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC).addSecs(seconds).toLocalTime();
#endif
}

/// A pointer as an item's role carries it; 0 stands for none.
inline QVariant pointerToVariant(const void *pointer)
{
    return QVariant(static_cast<qulonglong>(reinterpret_cast<quintptr>(pointer)));
}

template <typename T> T *pointerFromVariant(const QVariant &value)
{
    return reinterpret_cast<T *>(static_cast<quintptr>(value.toULongLong()));
}

} // namespace compat

#endif
