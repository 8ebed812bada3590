#include "HistoryStyle.h"

#include <QFontInfo>
#include <QFontMetrics>

namespace HistoryStyle {

int rowFontPixels(const QFont &font)
{
    QFont tried = font;
    int pixels = QFontInfo(font).pixelSize();
    for (; pixels > 8; --pixels) {
        tried.setPixelSize(pixels);
        if (QFontMetrics(tried).height() <= rowHeight)
            break;
    }
    return pixels;
}

QString sheet(const QFont &font)
{
    // The blank in the table's name rules out the usual "#name" selector.
    return QStringLiteral("QTableWidget[objectName=\"Empty Table\"] {"
                          "  font-size: %1px; border: 1px solid palette(mid); border-radius: 4px;"
                          "  background: palette(base); alternate-background-color: palette(alternate-base);"
                          "  qproperty-alternatingRowColors: true; }"
                          "QTableWidget[objectName=\"Empty Table\"] QHeaderView { background: palette(base);"
                          "  font-size: %2px; }"
                          "QTableWidget[objectName=\"Empty Table\"] QHeaderView::section {"
                          "  background: palette(base); border: none; border-bottom: 1px solid palette(mid);"
                          "  padding: 5px 3px; font-weight: bold; }"
                          "QLabel#NetInfoRecordUIPlugin_LabelNote { qproperty-wordWrap: true;"
                          "  color: palette(window-text); font-size: %1px; }")
        .arg(rowFontPixels(font))
        .arg(qMax(rowFontPixels(font), qMin(QFontInfo(font).pixelSize(), 12)));
}

} // namespace HistoryStyle
