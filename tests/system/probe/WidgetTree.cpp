// Walks the widgets. Texts are found through the properties that widgets share, so a new kind of widget needs no code.
#include "WidgetTree.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QJsonArray>
#include <QMenu>
#include <QMenuBar>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QWidget>

namespace {

QJsonArray toJson(const QRect &rect)
{
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

QJsonArray toJson(const QSize &size)
{
    return {size.width(), size.height()};
}

QRect onScreen(const QWidget *widget, const QRect &rect)
{
    return {widget->mapToGlobal(rect.topLeft()), rect.size()};
}

QString textOf(const QWidget *widget)
{
    for (const char *property : {"text", "title", "currentText", "plainText", "windowTitle"}) {
        QString text = widget->property(property).toString();
        if (!text.isEmpty())
            return text;
    }
    return QString();
}

QSize neededBy(const QWidget *widget)
{
    QSize size = widget->minimumSizeHint();
    if (widget->hasHeightForWidth())
        size = QSize(widget->minimumSizeHint().width(), widget->heightForWidth(widget->width()));
    return size;
}

template <typename Menu> QJsonArray entriesOf(const Menu *menu)
{
    QJsonArray entries;
    const auto actions = menu->actions();
    for (const QAction *action : actions) {
        if (!action->isVisible() || action->isSeparator())
            continue;
        entries.append(
            QJsonObject{{"text", action->text()},
                        {"enabled", action->isEnabled()},
                        {"checked", action->isChecked()},
                        {"rect", toJson(onScreen(menu, menu->actionGeometry(const_cast<QAction *>(action))))}});
    }
    return entries;
}

QJsonArray entriesOf(const QAbstractItemView *view)
{
    QJsonArray entries;
    const QAbstractItemModel *model = view->model();
    for (int row = 0; model && row < model->rowCount(view->rootIndex()); ++row) {
        const QModelIndex index = model->index(row, 0, view->rootIndex());
        entries.append(QJsonObject{{"text", index.data().toString()},
                                   {"enabled", bool(index.flags() & Qt::ItemIsEnabled)},
                                   {"checked", view->selectionModel()->isSelected(index)},
                                   {"rect", toJson(onScreen(view->viewport(), view->visualRect(index)))}});
    }
    return entries;
}

QJsonArray columnsOf(const QTableView *table)
{
    QJsonArray columns;
    const QHeaderView *header = table->horizontalHeader();
    for (int column = 0; column < header->count(); ++column)
        columns.append(QJsonObject{{"text", table->model()->headerData(column, Qt::Horizontal).toString()},
                                   {"width", header->sectionSize(column)},
                                   {"needs", header->sectionSizeHint(column)}});
    return columns;
}

// What a delegate draws, so that dates read as on the screen. All delegates of the toolkit share this conversion, but
// only one kind shows it.
QString shownText(const QTableView *table, const QModelIndex &index)
{
    return QStyledItemDelegate().displayText(index.data(), table->locale());
}

QJsonObject rowOf(const QTableView *table, int row)
{
    QJsonArray cells;
    QJsonArray values;
    QJsonArray needs;
    QRect rect;
    for (int column = 0; column < table->model()->columnCount(); ++column) {
        const QModelIndex index = table->model()->index(row, column);
        cells.append(shownText(table, index));
        values.append(QJsonValue::fromVariant(index.data()));
        needs.append(table->sizeHintForIndex(index).width());
        rect |= table->visualRect(index);
    }
    return {{"cells", cells},
            {"values", values},
            {"needs", needs},
            {"selected", table->selectionModel()->isRowSelected(row, QModelIndex())},
            {"rect", toJson(onScreen(table->viewport(), rect & table->viewport()->rect()))}};
}

QJsonArray rowsOf(const QTableView *table)
{
    QJsonArray rows;
    for (int row = 0; row < table->model()->rowCount(); ++row)
        rows.append(rowOf(table, row));
    return rows;
}

void describeContents(const QWidget *widget, QJsonObject &result)
{
    if (const auto *table = qobject_cast<const QTableView *>(widget)) {
        result["columns"] = columnsOf(table);
        result["rows"] = rowsOf(table);
        result["viewport"] = toJson(onScreen(table->viewport(), table->viewport()->rect()));
    } else if (const auto *menu = qobject_cast<const QMenu *>(widget)) {
        result["entries"] = entriesOf(menu);
    } else if (const auto *bar = qobject_cast<const QMenuBar *>(widget)) {
        result["entries"] = entriesOf(bar);
    } else if (const auto *view = qobject_cast<const QAbstractItemView *>(widget);
               view && !qobject_cast<const QHeaderView *>(widget)) {
        result["entries"] = entriesOf(view);
    }
    if (widget->property("checkable").toBool())
        result["checked"] = widget->property("checked").toBool();
}

QJsonObject describe(const QWidget *widget)
{
    QJsonArray children;
    for (const QObject *child : widget->children()) {
        const auto *childWidget = qobject_cast<const QWidget *>(child);
        if (childWidget && childWidget->isVisible() && !childWidget->isWindow())
            children.append(describe(childWidget));
    }
    QJsonObject result{{"class", widget->metaObject()->className()},
                       {"name", widget->objectName()},
                       {"text", textOf(widget)},
                       {"rect", toJson(onScreen(widget, widget->rect()))},
                       {"needs", toJson(neededBy(widget))},
                       {"enabled", widget->isEnabled()},
                       {"focus", widget->hasFocus()},
                       {"children", children}};
    describeContents(widget, result);
    return result;
}

QJsonObject describeWindow(const QWidget *window)
{
    QJsonObject result = describe(window);
    result["title"] = window->windowTitle();
    result["id"] = QString::number(window->winId());
    result["active"] = window->isActiveWindow();
    result["popup"] = window == QApplication::activePopupWidget();
    result["modal"] = window->isModal();
    return result;
}

} // namespace

QJsonObject describeWindows()
{
    QJsonArray windows;
    const auto topLevels = QApplication::topLevelWidgets();
    for (const QWidget *window : topLevels) {
        if (window->isVisible())
            windows.append(describeWindow(window));
    }
    return {{"windows", windows}};
}
