#include "ui/Startup.h"

#include "HostUi.h"

IPluginContainer *Startup::GetPluginContainer()
{
    return HostUi::instance()->pluginContainer();
}
