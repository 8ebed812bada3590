// The connection-history page: table, note, deletion and the summary of the last connection.
#ifndef NETINFORECORD_CONNECTIONHISTORYDLG_H
#define NETINFORECORD_CONNECTIONHISTORYDLG_H

#include "ConnectionRecord.h"
#include "QtCompat.h"

#include <QItemDelegate>
#include <QList>
#include <QString>
#include <QVector>
#include <QWidget>

class ExtendDialog;
class NetInfoRecordLogic;
class QAction;
class QGroupBox;
class QLabel;
class QMenu;
class QPushButton;
class QShortcut;
class QTableWidget;
class QTableWidgetItem;

/// Draws the cells without a focus rectangle.
class GridDelegateLayout : public QItemDelegate
{
public:
    GridDelegateLayout();
    ~GridDelegateLayout();

protected:
    void drawFocus(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect) const override;
};

/// The page's owner. It is never shown itself: what the user sees is m_pConnectionHistoryWidget, which ShowWindow()
/// puts into a widget of the host.
class ConnectionHistoryDlg : public QWidget
{
    Q_OBJECT

public:
    /// The one page; made, but not initialised, by the first call.
    static ConnectionHistoryDlg *Instance();
    /// Deletes the page, an open summary box and the record store. Does nothing when there is none.
    static void Destroy();

    ConnectionHistoryDlg();
    ~ConnectionHistoryDlg();

    /// Lays out the page, loads all records and shows them. Once after Instance().
    void Init();
    /// Applies the table's settings and every translated text; again after a change of language.
    void uiSetText();
    /// The display text of the string ID \a id.
    QString tr(QString id);
    /// Embeds the page into \a parent at \a rect (its coordinates, pixels) and shows it.
    bool ShowWindow(QWidget *parent, QRect &rect);
    void FitSize(QRect &rect);
    void Hide();

    /// Rebuilds all rows from the store, in ascending order of nId.
    void populateTable();
    void PopulateTableRowOfConnectionRecord(ConnectionRecord *record, int row);
    /// Frees the record of every row and leaves the rows; the caller must empty the store's hash and fill it afresh.
    void ReleaseTable();

    /// Makes a new context menu; earlier ones stay with the table.
    void createTableRightClickAction();
    /// Shows the figures of the last connection in a box over \a parent; no box when the service has none.
    void ShowDialogOfLastConnectedRecord(QWidget *parent);

public slots:
    void OnAccumulateClicked();
    void showTableContextMenu(const QPoint &);
    void onDelete();
    void onDeleteAll();
    void onClickOkButton();

public:
    static ConnectionHistoryDlg *m_pConnectionHistoryInst;

    QWidget *m_pConnectionHistoryWidget;
    QTableWidget *m_pConnectionTblTreeWidget;
    NetInfoRecordLogic *m_pNetInfoRecordLogic;
    QMenu *m_pTableMenu;
    QAction *m_pDeleteAction;
    QAction *m_pDeleteAllAction;
    GridDelegateLayout *m_pGridDelegate;
    ExtendDialog *m_pLastConnectionDlg;
    QWidget *m_pLastConnectionWidget;
    QGroupBox *m_pStatisticGroup;
    QPushButton *m_pOkButton;
    QLabel *m_pDownloadedValueLabel;
    QLabel *m_pUploadedValueLabel;
    QLabel *m_pTransferTimeValueLabel;
    QLabel *m_pDownloadedCaptionLabel;
    QLabel *m_pUploadedCaptionLabel;
    QLabel *m_pTransferTimeCaptionLabel;
    QShortcut *m_pDeleteShortcut;
    QShortcut *m_pMenuDeleteShortcut;
    QShortcut *m_pMenuDShortcut;
    QShortcut *m_pMenuAShortcut;
    QLabel *m_pNoteLabel;

private:
    bool layOut();
    void setHeaderItems(QTableWidgetItem *const *items);
    void setTableBehaviour();
    void destroyWidgets();
    void forgetPage(const QWidget *gone);
    void forgetEverything();

    bool createMenuShortcuts();
    bool createMenuActions();
    bool isConfirmed(const QString &textId);
    void deleteSelected(const QList<QTableWidgetItem *> &selected);
    void removeRows(QVector<int> positions);
    void removeRecords(QVector<int> keys);

    void discardSummary();
    void forgetSummary(const QWidget *gone);
    bool createSummaryFrame(QWidget *parent);
    bool fillSummary();
    void createSummaryWidgets();
    bool areSummaryWidgetsComplete() const;
    void setSummaryTexts();

    unsigned int m_filling; ///< Tells one set of rows from the next.
    bool m_isAsking;        ///< The question about the selected records is open, and they are still there.
    QVector<ConnectionRecord> m_askedAbout; ///< What it was about, where they are not.
};

#endif
