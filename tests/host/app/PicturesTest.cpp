// Draws every page and box of the real program with its real plug-ins and the sample history on a display of the test's
// own, light and dark, in every language; holds the pictures against blankness and clipped texts, and keeps them in
// tests/pictures of the build for people to look at.
#include "HostUi.h"
#include "MainWindow.h"
#include "Options.h"
#include "Session.h"

#include "ui/CommonUtils.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QProcess>
#include <QPushButton>
#include <QSet>
#include <QShortcut>
#include <QStyleFactory>
#include <QTableWidget>
#include <QTimer>
#include <QtTest>

#include <functional>

namespace {

QString variable(const char *name)
{
    return qEnvironmentVariable(name);
}

QPalette darkPalette()
{
    QPalette palette(QColor(53, 54, 58));
    palette.setColor(QPalette::Base, QColor(35, 36, 39));
    palette.setColor(QPalette::AlternateBase, QColor(43, 44, 48));
    palette.setColor(QPalette::Highlight, QColor(61, 132, 193));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(72, 66, 40));
    palette.setColor(QPalette::ToolTipText, QColor(240, 236, 220));
    return palette;
}

/// What a picture of a window must be, whatever it shows.
QString faultOf(const QImage &image, bool isDark)
{
    QSet<QRgb> colours;
    qint64 light = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            colours.insert(image.pixel(x, y));
            light += qGray(image.pixel(x, y));
        }
    }
    const qint64 average = light / (qint64(image.width()) * image.height());
    if (colours.size() < 16)
        return QStringLiteral("it is blank: %1 colours").arg(colours.size());
    if (isDark ? average > 110 : average < 150)
        return QStringLiteral("its average brightness is %1").arg(average);
    return {};
}

bool isInView(const QWidget *child)
{
    return child->isVisible() && child->visibleRegion().boundingRect().isValid();
}

/// Labels and buttons whose text has less room than it needs, or that stick out of their parent.
QString clippedText(const QWidget *window)
{
    for (const QWidget *child : window->findChildren<QWidget *>()) {
        const bool isLabel = qobject_cast<const QLabel *>(child) != nullptr;
        const bool isButton = qobject_cast<const QAbstractButton *>(child) != nullptr;
        const QString text = child->property("text").toString();
        if ((!isLabel && !isButton) || text.isEmpty() || !isInView(child))
            continue;
        const QSize needed =
            child->hasHeightForWidth() ? QSize(0, child->heightForWidth(child->width())) : child->minimumSizeHint();
        if (needed.width() > child->width() || needed.height() > child->height() ||
            !child->parentWidget()->rect().contains(child->geometry()))
            return text;
    }
    return {};
}

QString elidedCell(const QTableWidget *table)
{
    const QFontMetrics metrics = table->fontMetrics();
    const int padding = 2 * (table->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, table) + 1);
    for (int row = 0; row < table->rowCount(); ++row) {
        for (int column = 0; column < table->columnCount(); ++column) {
            const QVariant value = table->item(row, column)->data(Qt::DisplayRole);
            const QString text = value.userType() == QMetaType::QDateTime
                                     ? table->locale().toString(value.toDateTime(), QLocale::ShortFormat)
                                     : value.toString();
            if (metrics.horizontalAdvance(text) + padding > table->columnWidth(column))
                return text;
        }
    }
    return {};
}

QWidget *topLevel(const std::function<bool(QWidget *)> &isWanted)
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && isWanted(widget))
            return widget;
    }
    return nullptr;
}

QWidget *boxOf(const char *className)
{
    return topLevel([className](QWidget *widget) { return widget->inherits(className); });
}

} // namespace

class PicturesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_folder = QDir(variable("NETINFO_BUILD_DIR") + QStringLiteral("/tests/pictures"));
        QVERIFY(m_folder.mkpath(QStringLiteral(".")));
        const QString history = variable("NETINFO_HISTORY");
        for (const char *suffix : {"", "-wal", "-shm"})
            QFile::remove(history + QLatin1String(suffix));
        QFile::remove(HostUi::settingsFile());
        QCOMPARE(
            QProcess::execute(variable("NETINFO_BIN_DIR") + QStringLiteral("/netinfo-records"),
                              {QStringLiteral("import"), QStringLiteral("--shift-to-now"),
                               variable("NETINFO_SOURCE_DIR") + QStringLiteral("/host/cli/sample/sample-history.csv")}),
            0);
    }

    void looks_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::addColumn<QString>("language");
        for (const QString &language : HostUi::instance()->languages()) {
            QTest::addRow("light-%s", qPrintable(language)) << false << language;
            QTest::addRow("dark-%s", qPrintable(language)) << true << language;
        }
    }

    void looks()
    {
        QFETCH(bool, isDark);
        QFETCH(QString, language);
        QApplication::setPalette(isDark ? darkPalette() : QApplication::style()->standardPalette());
        QVERIFY(HostUi::instance()->overrideLanguage(language));
        m_isDark = isDark;
        m_name = QLatin1String(QTest::currentDataTag());

        Options options;
        options.developer = true;
        Session session(options);
        session.show();
        session.window().resize(MainWindow::firstSize);
        QVERIFY(QTest::qWaitForWindowExposed(&session.window()));
        pages(session);
        menu(session);
        question(session);
        totals(session);
        summary(session);
    }

private:
    void keep(QWidget *widget, const QString &what)
    {
        const QImage image = widget->grab().toImage();
        QVERIFY(image.save(m_folder.filePath(m_name + QLatin1Char('-') + what + QStringLiteral(".png"))));
        const QString fault = faultOf(image, m_isDark);
        QVERIFY2(fault.isEmpty(), qPrintable(what + QStringLiteral(": ") + fault));
        const QString clipped = clippedText(widget);
        QVERIFY2(clipped.isEmpty(), qPrintable(what + QStringLiteral(" clips: ") + clipped));
    }

    void pages(Session &session)
    {
        for (const QString &page : session.window().pageNames()) {
            QVERIFY(session.window().showPage(page));
            QCoreApplication::processEvents();
            keep(&session.window(), page);
        }
        session.window().showPage(QStringLiteral("history"));
        const auto *table = session.window().findChild<QTableWidget *>(QStringLiteral("Empty Table"));
        if (table == nullptr)
            QFAIL("The history page has no table.");
        QVERIFY(table->rowCount() >= 60);
        QCOMPARE(table->rowHeight(0), 14);
        QVERIFY(table->fontMetrics().height() <= 14);
        QVERIFY2(elidedCell(table).isEmpty(), qPrintable(elidedCell(table)));
        QVERIFY2(table->horizontalHeader()->length() <= table->viewport()->width(), "columns need scrolling");
    }

    /// Opens something that waits in an event loop of its own, and draws it from within.
    void drawFromWithin(const std::function<void()> &open, const std::function<QWidget *()> &find, const QString &what)
    {
        bool isDrawn = false;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            if (QWidget *widget = find()) {
                timer.stop();
                keep(widget, what);
                isDrawn = true;
                widget->close();
            }
        });
        timer.start(10);
        open();
        QTRY_VERIFY(isDrawn);
    }

    void menu(Session &session)
    {
        auto *table = session.window().findChild<QTableWidget *>(QStringLiteral("Empty Table"));
        drawFromWithin(
            [table] { QMetaObject::invokeMethod(table, "customContextMenuRequested", Q_ARG(QPoint, QPoint(20, 20))); },
            [] { return QApplication::activePopupWidget(); }, QStringLiteral("menu"));
    }

    void question(Session &session)
    {
        auto *table = session.window().findChild<QTableWidget *>(QStringLiteral("Empty Table"));
        table->selectRow(3);
        table->setFocus();
        auto *deletion = table->findChild<QShortcut *>(QString(), Qt::FindDirectChildrenOnly);
        QVERIFY(deletion != nullptr);
        drawFromWithin([deletion] { QMetaObject::invokeMethod(deletion, "activated"); },
                       [] { return boxOf("QMessageBox"); }, QStringLiteral("question"));
        table->clearSelection();
    }

    void totals(Session &session)
    {
        auto *action = session.window().findChild<QAction *>(QStringLiteral("Window_CumulativeUIPlugin"));
        QVERIFY(action != nullptr);
        action->trigger();
        QTRY_VERIFY(boxOf("ExtendDialog") != nullptr);
        QWidget *dialog = boxOf("ExtendDialog");
        QCoreApplication::processEvents();
        QCOMPARE(dialog->size(), QSize(380, 320));
        keep(dialog, QStringLiteral("totals"));
        dialog->close();
        QTRY_VERIFY(boxOf("ExtendDialog") == nullptr);
    }

    void summary(Session &session)
    {
        session.simulateConnection(1);
        QTRY_VERIFY_WITH_TIMEOUT(boxOf("ExtendDialog") != nullptr, 20000);
        QWidget *dialog = boxOf("ExtendDialog");
        QCoreApplication::processEvents();
        QCOMPARE(dialog->size(), QSize(382, 217));
        keep(dialog, QStringLiteral("summary"));
        const auto buttons = dialog->findChildren<QPushButton *>();
        QCOMPARE(buttons.size(), 1);
        buttons.first()->click();
        QTRY_VERIFY(boxOf("ExtendDialog") == nullptr);
    }

    QDir m_folder;
    QString m_name;
    bool m_isDark = false;
};

int main(int argc, char *argv[])
{
    QProcess display;
    display.start(QStringLiteral("Xvfb"),
                  {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                   QStringLiteral("1280x900x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    if (!display.waitForReadyRead(30000))
        qFatal("Xvfb did not start: %s. Install the package xvfb.", qPrintable(display.errorString()));
    qputenv("DISPLAY", ':' + display.readLine().trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("NETINFO_HISTORY", qgetenv("XDG_DATA_HOME") + "/pictures.sqlite");
    QDir().mkpath(qEnvironmentVariable("XDG_DATA_HOME"));
    // No connection of this computer belongs into the pictures.
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    int status = 0;
    {
        QApplication application(argc, argv);
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        PicturesTest test;
        status = QTest::qExec(&test, argc, argv);
    }
    display.terminate();
    display.waitForFinished();
    return status;
}

#include "PicturesTest.moc"
