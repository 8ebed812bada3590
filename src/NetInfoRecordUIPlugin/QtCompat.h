// Everything that differs between the toolkit's generations 4.6 to 6, in one place.
#ifndef NETINFORECORD_QTCOMPAT_H
#define NETINFORECORD_QTCOMPAT_H

#include <QObject>
#include <QtGlobal>

// Q_OBJECT brings a static tr(const char *) into every class. Ours ask the host through a member tr(QString), and a
// call with a literal must reach that member too, so the toolkit's pair is kept out of our classes.
#undef QT_TR_FUNCTIONS
#define QT_TR_FUNCTIONS

#endif
