// The dialog frame: content, fixed sizes, legible texts, centring.
#include "ContentFitter.h"

#include "ui/CommonUtils.h"
#include "ui/ExtendDialog.h"

#include <QApplication>
#include <QFontInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QtTest>

namespace {

/// A content with the same shape as the summary of a connection: the group's height is fixed.
struct Summary {
    explicit Summary(const QString &caption) : widget(new QWidget), group(new QGroupBox(caption))
    {
        auto *form = new QFormLayout(group);
        form->setContentsMargins(10, 20, 10, 10);
        for (int i = 0; i < 3; ++i) {
            auto *value = new QLabel(QStringLiteral("1234.56 MB"));
            labels << new QLabel(caption) << value;
            form->addRow(labels.at(labels.size() - 2), value);
        }
        group->setFixedHeight(106);
        auto *layout = new QVBoxLayout(widget);
        layout->setContentsMargins(14, 11, 15, 15);
        layout->addWidget(group);
        auto *row = new QHBoxLayout;
        row->addWidget(new QPushButton(caption), 132);
        layout->addLayout(row);
    }

    /// Every label inside its parent, tall and wide enough, and none over another.
    QString fault() const
    {
        QRect before;
        for (const QLabel *label : labels) {
            if (label->height() < label->heightForWidth(label->width()) ||
                label->height() < label->minimumSizeHint().height())
                return QStringLiteral("cut off in height: %1").arg(label->text());
            if (label->width() < label->minimumSizeHint().width())
                return QStringLiteral("cut off in width: %1").arg(label->text());
            if (!label->parentWidget()->rect().contains(label->geometry()))
                return QStringLiteral("outside its parent: %1").arg(label->text());
            if (before.intersects(label->geometry()))
                return QStringLiteral("over its neighbour: %1").arg(label->text());
            before = label->geometry();
        }
        return {};
    }

    QWidget *widget;
    QGroupBox *group;
    QList<QLabel *> labels;
};

} // namespace

class DialogTest : public QObject
{
    Q_OBJECT

private slots:
    void carriesItsContent()
    {
        ExtendDialog dialog(nullptr, Qt::WindowCloseButtonHint, WIDGET_TYPE_DIALOG, false);
        auto *content = new QWidget(&dialog);
        dialog.AddMainWidget(content);
        dialog.setWindowTitle(QStringLiteral("Title"));
        dialog.setFixedSize(382, 217);
        dialog.show();
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Title"));
        QCOMPARE(dialog.size(), QSize(382, 217));
        QCOMPARE(content->geometry(), QRect(0, 0, 382, 217));
        QVERIFY(content->isVisible());
        QVERIFY(dialog.windowFlags().testFlag(Qt::WindowCloseButtonHint));
        QVERIFY(dialog.isWindow());
    }

    void takesTheSameContentAgain()
    {
        ExtendDialog dialog(nullptr, Qt::Dialog | Qt::WindowCloseButtonHint, WIDGET_TYPE_DIALOG, false);
        auto *content = new QWidget;
        dialog.AddMainWidget(content);
        QCOMPARE(content->parentWidget(), &dialog);
        dialog.setFixedSize(380, 320);
        dialog.show();
        dialog.AddMainWidget(content);
        QCOMPARE(dialog.layout()->count(), 1);
        QVERIFY(content->isVisible());
        QCOMPARE(content->size(), QSize(380, 320));
    }

    void keepsAnEarlierContentUntilItGoes()
    {
        QPointer<QWidget> first = new QWidget;
        QPointer<QWidget> second = new QWidget;
        {
            ExtendDialog dialog(nullptr, Qt::Dialog, WIDGET_TYPE_DIALOG, false);
            dialog.AddMainWidget(first);
            dialog.AddMainWidget(second);
            dialog.AddMainWidget(nullptr);
            dialog.show();
            QVERIFY(!first->isVisible());
            QVERIFY(second->isVisible());
        }
        QVERIFY(first.isNull());
        QVERIFY(second.isNull());
    }

    void survivesTheDeathOfItsContent()
    {
        ExtendDialog dialog(nullptr, Qt::Dialog, WIDGET_TYPE_DIALOG, false);
        auto *content = new QWidget;
        dialog.AddMainWidget(content);
        dialog.show();
        delete content;
        QCOMPARE(dialog.layout()->count(), 0);
        dialog.AddMainWidget(new QLabel(QStringLiteral("next")));
        QCOMPARE(dialog.layout()->count(), 1);
    }

    void staysAsLargeAsItIsUnlessResizable()
    {
        ExtendDialog fixed(nullptr, Qt::Dialog, WIDGET_TYPE_DIALOG, false);
        fixed.resize(300, 200);
        fixed.show();
        QCOMPARE(fixed.minimumSize(), QSize(300, 200));
        QCOMPARE(fixed.maximumSize(), QSize(300, 200));

        ExtendDialog resizable(nullptr, Qt::Dialog, WIDGET_TYPE_DIALOG, true);
        resizable.resize(300, 200);
        resizable.show();
        resizable.resize(400, 250);
        QCOMPARE(resizable.size(), QSize(400, 250));
    }

    void longTextsStayLegible_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("pointSize");
        const QString usual = QStringLiteral("Downloaded:");
        const QString lengthy = QString::fromUtf8("Heruntergeladene Datenmenge der Verbindung:");
        for (const int points : {8, 9, 10, 11, 12, 14}) {
            QTest::addRow("usual at %d pt", points) << usual << points;
            QTest::addRow("long at %d pt", points) << lengthy << points;
        }
    }

    void longTextsStayLegible()
    {
        QFETCH(QString, caption);
        QFETCH(int, pointSize);
        const QFont before = QApplication::font();
        QFont font = before;
        font.setPointSize(pointSize);
        QApplication::setFont(font);
        {
            ExtendDialog dialog(nullptr, Qt::WindowCloseButtonHint, WIDGET_TYPE_DIALOG, false);
            const Summary summary(caption);
            dialog.AddMainWidget(summary.widget);
            dialog.setFixedSize(382, 217);
            dialog.show();
            QVERIFY(QTest::qWaitForWindowExposed(&dialog));
            QVERIFY2(summary.fault().isEmpty(), qPrintable(summary.fault()));
            QCOMPARE(dialog.size(), QSize(382, 217));
            QVERIFY(QFontInfo(summary.labels.at(0)->font()).pixelSize() >= ContentFitter::smallestPixelSize);
        }
        QApplication::setFont(before);
    }

    void whatIsTooLongForAnyFontIsWrappedAndToldInFull()
    {
        ExtendDialog dialog(nullptr, Qt::WindowCloseButtonHint, WIDGET_TYPE_DIALOG, false);
        const QString endless = QStringLiteral("word ").repeated(60).trimmed();
        auto *content = new QWidget;
        auto *label = new QLabel(endless);
        auto *layout = new QVBoxLayout(content);
        layout->addWidget(label);
        dialog.AddMainWidget(content);
        dialog.setFixedSize(382, 217);
        dialog.show();
        QVERIFY(label->wordWrap());
        QCOMPARE(label->toolTip(), endless);
    }

    void centresOverParentOrScreen()
    {
        QWidget parent;
        parent.setGeometry(150, 100, 400, 300);
        parent.show();
        QVERIFY(QTest::qWaitForWindowExposed(&parent));
        QDialog over(&parent);
        over.setFixedSize(100, 80);
        CommonUtils::MoveCentre(&over);
        QCOMPARE(over.geometry().center(), parent.frameGeometry().center());

        QDialog alone;
        alone.setFixedSize(100, 80);
        CommonUtils::MoveCentre(&alone);
        QCOMPARE(alone.geometry().center(), QGuiApplication::primaryScreen()->availableGeometry().center());

        CommonUtils::MoveCentre(nullptr);
    }

    void neverCentresBeyondTheScreen()
    {
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QWidget parent;
        parent.setGeometry(screen.right() - 50, screen.bottom() - 50, 400, 300);
        parent.show();
        QDialog dialog(&parent);
        dialog.setFixedSize(200, 200);
        CommonUtils::MoveCentre(&dialog);
        // The frame that the window system draws may stand out by a few pixels.
        QVERIFY(screen.adjusted(-8, -8, 8, 8).contains(dialog.geometry()));
    }
};

QTEST_MAIN(DialogTest)
#include "DialogTest.moc"
