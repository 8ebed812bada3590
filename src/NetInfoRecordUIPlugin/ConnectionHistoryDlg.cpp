// The connection-history page. One file, however long: its trace lines name it together with a line number.
//
// Tests of freshly made objects are not idle: they are made with the allocation that answers null, so that a machine
// short of memory loses a row or a menu and not the host's process.
#include "ConnectionHistoryDlg.h"

#include "HistoryRows.h"
#include "NetInfoRecordLogic.h"
#include "Trace.h"
#include "ui/Change.h"
#include "ui/CommonUtils.h"
#include "ui/ExtendDialog.h"

#include <QAction>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHash>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QPen>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

static const trace::Unit s_traceUnit = {"../../src/NetInfoRecordUIPlugin/ConnectionHistoryDlg", nullptr};

static const int s_rowHeight = 14;

ConnectionHistoryDlg *ConnectionHistoryDlg::m_pConnectionHistoryInst = nullptr;

namespace {

/// Tells the page when a widget of its goes without it: a host may delete a window and with it what was put inside.
/// Lives as a child of that widget.
class Obituary : public QObject
{
public:
    typedef void (ConnectionHistoryDlg::*Listener)(const QWidget *gone);

    Obituary(QWidget *widget, ConnectionHistoryDlg *page, Listener listener)
        : QObject(widget), m_widget(widget), m_page(page), m_listener(listener)
    {
    }
    ~Obituary()
    {
        if (m_page)
            (m_page->*m_listener)(m_widget);
    }

private:
    Q_DISABLE_COPY(Obituary)

    const QWidget *m_widget;
    QPointer<ConnectionHistoryDlg> m_page;
    Listener m_listener;
};

} // namespace

GridDelegateLayout::GridDelegateLayout() {}

GridDelegateLayout::~GridDelegateLayout() {}

void GridDelegateLayout::drawFocus(QPainter *painter, const QStyleOptionViewItem &option, const QRect &) const
{
    if (!(option.state & QStyle::State_HasFocus))
        return;
    QPen pen(Qt::white);
    pen.setWidth(0);
    painter->setPen(pen);
}

ConnectionHistoryDlg *ConnectionHistoryDlg::Instance()
{
    TRACE(trace::Start);
    if (!m_pConnectionHistoryInst)
        m_pConnectionHistoryInst = new ConnectionHistoryDlg;
    TRACE(trace::End);
    return m_pConnectionHistoryInst;
}

void ConnectionHistoryDlg::Destroy()
{
    TRACE(trace::Start);
    delete m_pConnectionHistoryInst;
    m_pConnectionHistoryInst = nullptr;
    TRACE(trace::End);
}

ConnectionHistoryDlg::ConnectionHistoryDlg()
    : QWidget(nullptr)
    , m_pConnectionHistoryWidget(new (std::nothrow) QWidget)
    , m_pConnectionTblTreeWidget(new (std::nothrow) QTableWidget(m_pConnectionHistoryWidget))
    , m_pNetInfoRecordLogic(nullptr)
    , m_pTableMenu(nullptr)
    , m_pDeleteAction(nullptr)
    , m_pDeleteAllAction(nullptr)
    , m_pGridDelegate(new (std::nothrow) GridDelegateLayout)
    , m_pLastConnectionDlg(nullptr)
    , m_pLastConnectionWidget(nullptr)
    , m_pStatisticGroup(nullptr)
    , m_pOkButton(nullptr)
    , m_pDownloadedValueLabel(nullptr)
    , m_pUploadedValueLabel(nullptr)
    , m_pTransferTimeValueLabel(nullptr)
    , m_pDownloadedCaptionLabel(nullptr)
    , m_pUploadedCaptionLabel(nullptr)
    , m_pTransferTimeCaptionLabel(nullptr)
    , m_pDeleteShortcut(new (std::nothrow) QShortcut(m_pConnectionTblTreeWidget))
    , m_pMenuDeleteShortcut(nullptr)
    , m_pMenuDShortcut(nullptr)
    , m_pMenuAShortcut(nullptr)
    , m_pNoteLabel(new (std::nothrow) QLabel)
    , m_filling(0)
    , m_isAsking(false)
{
    TRACE(trace::StartFile);
    if (m_pConnectionHistoryWidget)
        new Obituary(m_pConnectionHistoryWidget, this, &ConnectionHistoryDlg::forgetPage);
    m_pNetInfoRecordLogic = NetInfoRecordLogic::Instance();
    TRACE(trace::EndFile);
}

ConnectionHistoryDlg::~ConnectionHistoryDlg()
{
    try {
        TRACE(trace::StartFile);
        ReleaseTable();
        destroyWidgets();
        NetInfoRecordLogic::Destroy();
        forgetEverything();
        TRACE(trace::EndFile);
    } catch (...) {
        // The host is unloading the library; there is nobody left to tell.
    }
}

void ConnectionHistoryDlg::destroyWidgets()
{
    if (m_pConnectionTblTreeWidget) {
        for (int column = 0; column < rows::columnCount; ++column)
            delete m_pConnectionTblTreeWidget->horizontalHeaderItem(column);
        delete m_pConnectionTblTreeWidget->itemDelegate();
    }
    delete m_pLastConnectionDlg;
    m_pLastConnectionDlg = nullptr;
    delete m_pConnectionTblTreeWidget;
    m_pConnectionTblTreeWidget = nullptr;
    delete m_pConnectionHistoryWidget;
    m_pConnectionHistoryWidget = nullptr;
}

void ConnectionHistoryDlg::forgetPage(const QWidget *gone)
{
    if (m_pConnectionHistoryWidget != gone)
        return;
    m_pConnectionHistoryWidget = nullptr;
    m_pConnectionTblTreeWidget = nullptr;
    m_pDeleteShortcut = nullptr;
    m_pNoteLabel = nullptr;
    m_pTableMenu = nullptr;
    m_pMenuDeleteShortcut = nullptr;
    m_pMenuDShortcut = nullptr;
    m_pMenuAShortcut = nullptr;
}

void ConnectionHistoryDlg::forgetEverything()
{
    m_pNetInfoRecordLogic = nullptr;
    m_pTableMenu = nullptr;
    m_pDeleteAction = nullptr;
    m_pDeleteAllAction = nullptr;
    m_pLastConnectionWidget = nullptr;
    m_pStatisticGroup = nullptr;
    m_pOkButton = nullptr;
    m_pDownloadedValueLabel = nullptr;
    m_pUploadedValueLabel = nullptr;
    m_pTransferTimeValueLabel = nullptr;
    m_pDownloadedCaptionLabel = nullptr;
    m_pUploadedCaptionLabel = nullptr;
    m_pTransferTimeCaptionLabel = nullptr;
    m_pMenuDeleteShortcut = nullptr;
    m_pMenuDShortcut = nullptr;
    m_pMenuAShortcut = nullptr;
}

void ConnectionHistoryDlg::Init()
{
    TRACE(trace::StartFile);
    if (!m_pConnectionTblTreeWidget || !m_pConnectionHistoryWidget) {
        TRACE(trace::ArgIsNull);
        return;
    }
    m_pConnectionTblTreeWidget->setObjectName(QString::fromUtf8("m_pConnectionTblTreeWidget"));
    if (!layOut()) {
        TRACE(trace::ArgIsNull);
        return;
    }
    uiSetText();
    if (m_pNetInfoRecordLogic) {
        m_pNetInfoRecordLogic->m_vecAccumulate = QVector<AccumulateDialogRecord>();
        m_pNetInfoRecordLogic->m_hash = QHash<int, ConnectionRecord *>();
        m_pNetInfoRecordLogic->GetAllConnectedRecords();
    }
    populateTable();
    connect(m_pDeleteShortcut, SIGNAL(activated()), this, SLOT(onDelete()));
    connect(m_pConnectionTblTreeWidget, SIGNAL(customContextMenuRequested(const QPoint &)), this,
            SLOT(showTableContextMenu(const QPoint &)));
    TRACE(trace::EndFile);
}

/// False when a piece is missing.
bool ConnectionHistoryDlg::layOut()
{
    std::unique_ptr<QVBoxLayout> page(new (std::nothrow) QVBoxLayout);
    if (!page || !m_pDeleteShortcut || !m_pNoteLabel)
        return false;
    m_pDeleteShortcut->setKey(QKeySequence(Qt::Key_Delete));
    page->addWidget(m_pConnectionTblTreeWidget);
    QHBoxLayout *const noteRow = new (std::nothrow) QHBoxLayout;
    if (!noteRow)
        return false;
    m_pNoteLabel->setFixedHeight(35);
    noteRow->addWidget(m_pNoteLabel, 1);
    page->addLayout(noteRow);
    m_pConnectionHistoryWidget->setLayout(page.release());
    return true;
}

void ConnectionHistoryDlg::uiSetText()
{
    TRACE(trace::StartFile);
    QTableWidgetItem *items[rows::columnCount];
    bool isComplete = true;
    for (int column = rows::columnCount - 1; column >= 0; --column) {
        items[column] = new (std::nothrow) QTableWidgetItem(0);
        isComplete = isComplete && items[column];
    }
    if (!isComplete || !m_pConnectionTblTreeWidget || !m_pNoteLabel) {
        TRACE(trace::ArgIsNull);
        return;
    }
    m_pConnectionTblTreeWidget->setObjectName(QLatin1String("Empty Table")); // style sheets know it by this name
    m_pConnectionTblTreeWidget->setColumnCount(rows::columnCount);
    m_pConnectionTblTreeWidget->setWordWrap(false);
    if (m_pGridDelegate)
        m_pConnectionTblTreeWidget->setItemDelegate(m_pGridDelegate);
    setHeaderItems(items);
    setTableBehaviour();
    m_pNoteLabel->setText(tr("IDS_STC_EXPLAIN_TEXT"));
    m_pNoteLabel->setObjectName(QLatin1String("NetInfoRecordUIPlugin_LabelNote"));
    QHeaderView *const header = m_pConnectionTblTreeWidget->horizontalHeader();
    if (!header) {
        TRACE(trace::ArgIsNull);
        return;
    }
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setTextElideMode(Qt::ElideRight);
    TRACE(trace::EndFile);
}

/// The table takes the items and deletes those of the previous language.
void ConnectionHistoryDlg::setHeaderItems(QTableWidgetItem *const *items)
{
    static const char *const ids[rows::columnCount] = {"IDS_LIST_APN",      "IDS_LIST_STARTTIME",
                                                       "IDS_LIST_ENDTIME",  "IDS_LIST_CONNECTEDTIME",
                                                       "IDS_LIST_UPLOADED", "IDS_LIST_DOWNLOADED"};
    for (int column = 0; column < rows::columnCount; ++column) {
        m_pConnectionTblTreeWidget->setHorizontalHeaderItem(column, items[column]);
        items[column]->setData(Qt::DisplayRole, tr(QLatin1String(ids[column])));
    }
}

void ConnectionHistoryDlg::setTableBehaviour()
{
    static const int widths[rows::columnCount] = {110, 135, 135, 110, 110, 110};
    m_pConnectionTblTreeWidget->setContextMenuPolicy(Qt::CustomContextMenu);
    m_pConnectionTblTreeWidget->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_pConnectionTblTreeWidget->setShowGrid(false);
    m_pConnectionTblTreeWidget->verticalHeader()->setVisible(false);
    // From Qt 5 on a header refuses to make rows lower than its own font asks for. With this height as the default the
    // header need not move all rows below each row whose height is set.
    m_pConnectionTblTreeWidget->verticalHeader()->setMinimumSectionSize(s_rowHeight);
    m_pConnectionTblTreeWidget->verticalHeader()->setDefaultSectionSize(s_rowHeight);
    for (int column = 0; column < rows::columnCount; ++column)
        m_pConnectionTblTreeWidget->setColumnWidth(column, widths[column]);
}

QString ConnectionHistoryDlg::tr(QString id)
{
    TRACE(trace::Start);
    return Change::tr(id, QLatin1String("NetInfoRecordUIPlugin"));
}

bool ConnectionHistoryDlg::ShowWindow(QWidget *parent, QRect &rect)
{
    TRACE(trace::StartFile);
    if (!m_pConnectionHistoryWidget) {
        TRACE(trace::ArgIsNull);
        return false;
    }
    m_pConnectionHistoryWidget->setObjectName(QLatin1String("NetInfoRecordUIPlugin_ConnectionHistoryWidget"));
    m_pConnectionHistoryWidget->setParent(parent);
    m_pConnectionHistoryWidget->resize(rect.width(), rect.height());
    m_pConnectionHistoryWidget->move(rect.left(), rect.top());
    QTableWidgetItem *const first = m_pConnectionTblTreeWidget ? m_pConnectionTblTreeWidget->item(0, 0) : nullptr;
    if (first) {
        m_pConnectionTblTreeWidget->scrollToItem(first, QAbstractItemView::PositionAtTop);
        m_pConnectionTblTreeWidget->setCurrentCell(-1, -1);
    }
    m_pConnectionHistoryWidget->setAttribute(Qt::WA_MouseTracking, true);
    m_pConnectionHistoryWidget->setVisible(true);
    TRACE(trace::EndFile);
    return true;
}

void ConnectionHistoryDlg::FitSize(QRect &rect)
{
    TRACE(trace::StartOf);
    if (m_pConnectionHistoryWidget) {
        m_pConnectionHistoryWidget->move(rect.left(), rect.top());
        m_pConnectionHistoryWidget->resize(rect.width(), rect.height());
    }
    TRACE(trace::EndOf);
}

void ConnectionHistoryDlg::Hide()
{
    TRACE(trace::Start);
    if (m_pConnectionHistoryWidget)
        m_pConnectionHistoryWidget->setVisible(false);
    TRACE(trace::End);
}

void ConnectionHistoryDlg::OnAccumulateClicked()
{
    TRACE(trace::Enter);
    TRACE(trace::Exit);
}

void ConnectionHistoryDlg::populateTable()
{
    TRACE(trace::StartFile);
    if (!m_pNetInfoRecordLogic || !m_pConnectionTblTreeWidget) {
        TRACE(trace::ArgIsNull);
        return;
    }
    ++m_filling;
    const std::vector<rows::KeyAndRecord> records = rows::inOrder(m_pNetInfoRecordLogic->m_hash);
    m_pConnectionTblTreeWidget->setRowCount(static_cast<int>(records.size()));
    m_pConnectionTblTreeWidget->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    int row = 0;
    for (const rows::KeyAndRecord &entry : records) {
        if (!entry.second) {
            TRACE(trace::ArgIsNull);
            return;
        }
        PopulateTableRowOfConnectionRecord(entry.second, row);
        ++row;
    }
    TRACE(trace::EndFile);
}

void ConnectionHistoryDlg::PopulateTableRowOfConnectionRecord(ConnectionRecord *record, int row)
{
    TRACE(trace::StartFile);
    if (!m_pConnectionTblTreeWidget || !record) {
        TRACE(trace::ArgIsNull);
        return;
    }
    m_pConnectionTblTreeWidget->setRowHeight(row, s_rowHeight);
    for (int column = 0; column < rows::columnCount; ++column) {
        QTableWidgetItem *const item = rows::newCell(record, column);
        if (!item) {
            TRACE(trace::ArgIsNull);
            return;
        }
        m_pConnectionTblTreeWidget->setItem(row, column, item);
    }
    TRACE(trace::EndFile);
}

void ConnectionHistoryDlg::ReleaseTable()
{
    TRACE(trace::StartFile);
    if (!m_pConnectionTblTreeWidget || !m_pNetInfoRecordLogic) {
        TRACE(trace::ArgIsNull);
        return;
    }
    if (m_isAsking) {
        m_isAsking = false;
        m_askedAbout = rows::recordsOf(m_pConnectionTblTreeWidget->selectedItems());
    }
    for (int row = 0; row < m_pConnectionTblTreeWidget->rowCount(); ++row) {
        const QTableWidgetItem *const item = m_pConnectionTblTreeWidget->item(row, 0);
        if (!item) {
            TRACE(trace::ArgIsNull);
            return;
        }
        delete rows::linkedRecord(*item);
    }
    TRACE(trace::EndFileBlank);
}

void ConnectionHistoryDlg::showTableContextMenu(const QPoint &pos)
{
    TRACE(trace::Start);
    if (!m_pConnectionTblTreeWidget) {
        TRACE(trace::ArgIsNull);
        return;
    }
    // The position is the viewport's, the height the whole table's: hosts' keyboards send positions in between.
    if (pos.y() > m_pConnectionTblTreeWidget->height() || pos.y() < 0 ||
        !m_pConnectionTblTreeWidget->indexAt(pos).isValid())
        return;
    createTableRightClickAction();
    if (!m_pTableMenu || m_pConnectionTblTreeWidget->rowCount() == 0)
        return;
    m_pTableMenu->exec(m_pConnectionTblTreeWidget->viewport()->mapToGlobal(pos));
    TRACE(trace::End);
}

void ConnectionHistoryDlg::createTableRightClickAction()
{
    TRACE(trace::Enter);
    m_pTableMenu = new (std::nothrow) QMenu(m_pConnectionTblTreeWidget);
    if (!m_pTableMenu || !createMenuShortcuts() || !createMenuActions()) {
        TRACE(trace::ArgIsNull);
        return;
    }
    connect(m_pDeleteAction, SIGNAL(triggered()), this, SLOT(onDelete()));
    connect(m_pDeleteAllAction, SIGNAL(triggered()), this, SLOT(onDeleteAll()));
    connect(m_pMenuDeleteShortcut, SIGNAL(activated()), this, SLOT(onDelete()));
    connect(m_pMenuDShortcut, SIGNAL(activated()), this, SLOT(onDelete()));
    connect(m_pMenuAShortcut, SIGNAL(activated()), this, SLOT(onDeleteAll()));
    TRACE(trace::Exit);
}

/// Keys that work while the menu is open. False when a piece is missing.
bool ConnectionHistoryDlg::createMenuShortcuts()
{
    m_pMenuDeleteShortcut = new (std::nothrow) QShortcut(m_pTableMenu);
    if (!m_pMenuDeleteShortcut)
        return false;
    m_pMenuDeleteShortcut->setKey(QKeySequence(Qt::Key_Delete));
    m_pMenuDShortcut = new (std::nothrow) QShortcut(m_pTableMenu);
    m_pMenuAShortcut = new (std::nothrow) QShortcut(m_pTableMenu);
    if (!m_pMenuDShortcut || !m_pMenuAShortcut)
        return false;
    m_pMenuDShortcut->setKey(QKeySequence(Qt::Key_D));
    m_pMenuAShortcut->setKey(QKeySequence(Qt::Key_A));
    return true;
}

/// The two entries. False when a piece is missing.
bool ConnectionHistoryDlg::createMenuActions()
{
    m_pDeleteAction = new (std::nothrow) QAction(tr("IDS_MENU_DELETE"), this);
    if (!m_pDeleteAction)
        return false;
    m_pTableMenu->addAction(m_pDeleteAction);
    m_pDeleteAllAction = new (std::nothrow) QAction(tr("IDS_MENU_DELETEALL"), this);
    if (!m_pDeleteAllAction)
        return false;
    m_pTableMenu->addAction(m_pDeleteAllAction);
    return true;
}

/// Asks the user. The host translates the labels of the buttons itself. Its box runs an event loop in which anything
/// may happen, the end of this page included.
bool ConnectionHistoryDlg::isConfirmed(const QString &textId)
{
    const int answer =
        CommonUtils::ShowMessage(QMessageBox::Question, m_pConnectionHistoryWidget, tr("IDS_PROMPT_CAPTION"),
                                 tr(textId), QLatin1String("IDS_OK"), QLatin1String("IDS_CANCEL"), QLatin1String(""),
                                 true, Qt::WindowCloseButtonHint, nullptr, QLatin1String(""), true);
    return answer == QMessageBox::Ok;
}

void ConnectionHistoryDlg::onDelete()
{
    TRACE(trace::Entered);
    if (!m_pConnectionTblTreeWidget || !m_pNetInfoRecordLogic) {
        TRACE(trace::ArgIsNull);
        return;
    }
    QList<QTableWidgetItem *> selected = m_pConnectionTblTreeWidget->selectedItems();
    if (selected.count() / rows::columnCount == 0)
        return;
    const unsigned int filling = m_filling;
    const QPointer<ConnectionHistoryDlg> self(this);
    m_isAsking = true;
    bool isAgreed = isConfirmed(QLatin1String("IDS_STR_DELETE"));
    if (!self)
        return;
    m_isAsking = false;
    if (isAgreed && m_filling != filling) {
        // A connection ended meanwhile and the rows are new ones. The answer counts only if it still means the same.
        selected = m_pConnectionTblTreeWidget->selectedItems();
        isAgreed = !m_askedAbout.isEmpty() && rows::isSame(rows::recordsOf(selected), m_askedAbout);
    }
    m_askedAbout = QVector<ConnectionRecord>();
    if (isAgreed)
        deleteSelected(selected);
    TRACE(trace::Exit);
}

void ConnectionHistoryDlg::deleteSelected(const QList<QTableWidgetItem *> &selected)
{
    ++m_filling;
    // Asked for its row, an item searches the whole table.
    QHash<const QTableWidgetItem *, int> rowOfItem;
    rowOfItem.reserve(m_pConnectionTblTreeWidget->rowCount());
    for (int row = 0; row < m_pConnectionTblTreeWidget->rowCount(); ++row)
        rowOfItem.insert(m_pConnectionTblTreeWidget->item(row, 0), row);

    QVector<int> keys;
    QVector<int> positions;
    keys.reserve(selected.count() / rows::columnCount);
    positions.reserve(selected.count() / rows::columnCount);
    for (int i = 0; i < selected.count(); ++i) {
        if (const ConnectionRecord *const record = rows::linkedRecord(*selected.at(i))) {
            keys.append(record->nId);
            positions.append(rowOfItem.value(selected.at(i), -1));
        }
    }
    removeRows(positions);
    removeRecords(keys);
}

/// From the last one up, so that no removal moves a row still to be removed.
void ConnectionHistoryDlg::removeRows(QVector<int> positions)
{
    std::sort(positions.begin(), positions.end());
    for (int i = static_cast<int>(positions.size()) - 1; i >= 0; --i)
        m_pConnectionTblTreeWidget->removeRow(positions.at(i));
}

/// From the highest position down, since the service addresses its records by position. The remaining records keep
/// theirs until the store is next loaded.
void ConnectionHistoryDlg::removeRecords(QVector<int> keys)
{
    std::sort(keys.begin(), keys.end());
    for (int i = static_cast<int>(keys.size()) - 1; i >= 0; --i) {
        m_pNetInfoRecordLogic->DeleteRecord(keys.at(i));
        delete m_pNetInfoRecordLogic->m_hash.take(keys.at(i));
    }
}

void ConnectionHistoryDlg::onDeleteAll()
{
    TRACE(trace::Entered);
    if (!m_pNetInfoRecordLogic || !m_pConnectionTblTreeWidget) {
        TRACE(trace::ArgIsNull);
        return;
    }
    const QPointer<ConnectionHistoryDlg> self(this);
    const bool isAgreed = isConfirmed(QLatin1String("IDS_STR_CLEARALL"));
    if (!self)
        return;
    if (isAgreed) {
        m_pNetInfoRecordLogic->DeleteAll();
        ReleaseTable();
        m_pNetInfoRecordLogic->m_vecAccumulate = QVector<AccumulateDialogRecord>();
        m_pNetInfoRecordLogic->m_hash = QHash<int, ConnectionRecord *>();
        populateTable();
    }
    TRACE(trace::Exit);
}

void ConnectionHistoryDlg::ShowDialogOfLastConnectedRecord(QWidget *parent)
{
    TRACE(trace::Enter);
    if (!m_pNetInfoRecordLogic) {
        TRACE(trace::ArgIsNull);
        return;
    }
    if (m_pLastConnectionDlg)
        discardSummary();
    if (!m_pNetInfoRecordLogic->GetLastConnectedRecord())
        return;
    if (!createSummaryFrame(parent) || !fillSummary()) {
        TRACE(trace::ArgIsNull);
        return;
    }
    m_pLastConnectionDlg->show();
    connect(m_pOkButton, SIGNAL(clicked()), this, SLOT(onClickOkButton()));
    TRACE(trace::Exit);
}

void ConnectionHistoryDlg::onClickOkButton()
{
    TRACE(trace::Enter);
    if (m_pLastConnectionDlg) {
        m_pLastConnectionDlg->close();
        discardSummary();
    }
    TRACE(trace::Exit);
}

/// Has the box deleted once control is back in the event loop.
void ConnectionHistoryDlg::discardSummary()
{
    m_pLastConnectionDlg->deleteLater();
    forgetSummary(m_pLastConnectionDlg);
}

/// Two value labels keep their addresses on purpose: those who hold the members rely on just these eight being reset.
void ConnectionHistoryDlg::forgetSummary(const QWidget *gone)
{
    if (m_pLastConnectionDlg != gone)
        return;
    m_pLastConnectionDlg = nullptr;
    m_pStatisticGroup = nullptr;
    m_pOkButton = nullptr;
    m_pDownloadedValueLabel = nullptr;
    m_pUploadedCaptionLabel = nullptr;
    m_pLastConnectionWidget = nullptr;
    m_pTransferTimeCaptionLabel = nullptr;
    m_pDownloadedCaptionLabel = nullptr;
}

/// False when a piece is missing.
bool ConnectionHistoryDlg::createSummaryFrame(QWidget *parent)
{
    m_pLastConnectionDlg =
        new (std::nothrow) ExtendDialog(parent, Qt::WindowCloseButtonHint, WIDGET_TYPE_DIALOG, false);
    m_pLastConnectionWidget = new (std::nothrow) QWidget(m_pLastConnectionDlg);
    if (!m_pLastConnectionDlg)
        return false;
    new Obituary(m_pLastConnectionDlg, this, &ConnectionHistoryDlg::forgetSummary);
    if (m_pLastConnectionWidget)
        m_pLastConnectionDlg->AddMainWidget(m_pLastConnectionWidget);
    m_pLastConnectionDlg->setWindowTitle(tr("IDS_TITLE_SINGLE"));
    m_pLastConnectionDlg->setFixedSize(382, 217);
    return true;
}

/// False when a piece is missing; what there is then stays in the frame, which is not shown.
bool ConnectionHistoryDlg::fillSummary()
{
    QVBoxLayout *const page = new (std::nothrow) QVBoxLayout;
    createSummaryWidgets();
    QFormLayout *const form = new (std::nothrow) QFormLayout;
    QHBoxLayout *const buttonRow = new (std::nothrow) QHBoxLayout;
    if (!page || !areSummaryWidgetsComplete() || !form || !buttonRow)
        return false;

    m_pLastConnectionDlg->setWindowModality(Qt::WindowModal);
    form->setContentsMargins(10, 20, 10, 10);
    setSummaryTexts();
    form->addRow(m_pUploadedCaptionLabel, m_pUploadedValueLabel);
    form->addRow(m_pDownloadedCaptionLabel, m_pDownloadedValueLabel);
    form->addRow(m_pTransferTimeCaptionLabel, m_pTransferTimeValueLabel);
    m_pStatisticGroup->setLayout(form);
    m_pOkButton->setText(tr("IDS_BTN_OK"));
    buttonRow->addWidget(m_pOkButton, 132); // a stretch, not an alignment: the button fills its row
    m_pStatisticGroup->setFixedHeight(106);
    m_pStatisticGroup->setTitle(tr("IDS_GROUP_STATISTIC"));
    page->setContentsMargins(14, 11, 15, 15);
    page->addWidget(m_pStatisticGroup);
    page->addLayout(buttonRow);
    m_pLastConnectionWidget->setLayout(page);
    return true;
}

void ConnectionHistoryDlg::createSummaryWidgets()
{
    m_pStatisticGroup = new (std::nothrow) QGroupBox;
    m_pOkButton = new (std::nothrow) QPushButton;
    m_pDownloadedValueLabel = new (std::nothrow) QLabel;
    m_pUploadedValueLabel = new (std::nothrow) QLabel;
    m_pTransferTimeValueLabel = new (std::nothrow) QLabel;
    m_pDownloadedCaptionLabel = new (std::nothrow) QLabel;
    m_pUploadedCaptionLabel = new (std::nothrow) QLabel;
    m_pTransferTimeCaptionLabel = new (std::nothrow) QLabel;
}

bool ConnectionHistoryDlg::areSummaryWidgetsComplete() const
{
    return m_pStatisticGroup && m_pOkButton && m_pLastConnectionWidget && m_pDownloadedValueLabel &&
           m_pUploadedValueLabel && m_pTransferTimeValueLabel && m_pDownloadedCaptionLabel && m_pUploadedCaptionLabel &&
           m_pTransferTimeCaptionLabel;
}

void ConnectionHistoryDlg::setSummaryTexts()
{
    m_pUploadedCaptionLabel->setText(tr("IDS_TREE_UPLOADED_DATA"));
    m_pDownloadedCaptionLabel->setText(tr("IDS_TREE_DOWNLOADED_DATA"));
    m_pTransferTimeCaptionLabel->setText(tr("IDS_TREE_TIME_TRANSFER"));
    const ConnectionRecord &last = m_pNetInfoRecordLogic->m_lastRecord;
    m_pDownloadedValueLabel->setText(last.strDownloaded);
    m_pUploadedValueLabel->setText(last.strUploaded);
    m_pTransferTimeValueLabel->setText(last.strConnectedTime);
}
