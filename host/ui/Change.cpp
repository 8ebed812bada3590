#include "ui/Change.h"

#include "HostUi.h"

QString Change::tr(QString key, QString context)
{
    return HostUi::instance()->translation(key, context);
}
