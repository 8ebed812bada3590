// Icons of the pages, drawn in the colours of the palette so that they suit light and dark desktops at any scale.
#ifndef NETINFO_APP_NAVIGATIONICONS_H
#define NETINFO_APP_NAVIGATIONICONS_H

#include <QIcon>

namespace NavigationIcons {

enum class Shape { History, Usage, Settings };

QIcon icon(Shape shape);

} // namespace NavigationIcons

#endif
