// The look of the history page, which names its table and note for this purpose.
#ifndef NETINFO_APP_HISTORYSTYLE_H
#define NETINFO_APP_HISTORYSTYLE_H

#include <QFont>
#include <QString>

namespace HistoryStyle {

/// Height in pixels that the page gives every row of its table.
constexpr int rowHeight = 14;

/// The largest size, in pixels and not above that of `font`, whose lines fit into a row.
int rowFontPixels(const QFont &font);

/// The style sheet. All colours come from the palette.
QString sheet(const QFont &font);

} // namespace HistoryStyle

#endif
