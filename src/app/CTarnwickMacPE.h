#pragma once

#include "disk/CDiskListener.h"

#include <QMainWindow>

#include <memory>

namespace Ui {
class CTarnwickMacPE;
}

/**
 * The program's one window: title strip, selection page and copy page.
 *
 * It routes disk events to the pages, changes pages when a copy starts and
 * ends, keeps the machine awake and asks before it closes. GUI thread.
 */
class CTarnwickMacPE : public QMainWindow
{
    Q_OBJECT

public:
    /** Builds the window, starts the disk listener and the keep-awake command. */
    explicit CTarnwickMacPE(QWidget* pParent = nullptr);

    /** Ends the workers of both pages, waiting for them. */
    ~CTarnwickMacPE() override;

    /**
     * Callback for the disk listener; pUser is the window. Drops a record that
     * is null or has an empty path, else handles it before it returns.
     */
    static void DiskChange(STDiskNotication* pNotication, void* pUser);

    /** The same for a caller that holds the window; the record is not checked. */
    void OnDiskChange(STDiskNotication* pNotication);

    /** Makes the pending disk event, if there is none, and starts the disk listener. */
    void InitData();

    /** Gives the window its frame, title and first page. */
    void InitView();

    /** Connects the window's signals. */
    void InitConnect();

    /** Lets the pages scroll where the screen is smaller than the window; before it is shown. */
    void FitScreen(const QSize& sizeScreen);

    /**
     * Stops a running copy and waits up to nWaitMs for its worker; false when that still
     * runs. No box is opened, but one that is open stays.
     */
    bool EndCopy(int nWaitMs);

    /** Completes the account of a copy that does not end, as far as its disk answers. */
    void CloseCopy();

    /** Starts the command that keeps display and system awake for 30 days; a failure is not reported. */
    static void ProhibitSleep();

signals:
    /** A disk event is pending; handled at once, on the same thread. */
    void SignalDiskChange();

public slots:
    /** Hands the pending disk event to the pages and refreshes the destinations. */
    void SlotDiskChange();

    /** Changes the page: to the copy page and back, by sender. */
    void SlotStackPageChange();

protected:
    /** Asks before leaving; a running copy pauses while the question is open. */
    void closeEvent(QCloseEvent* pEvent) override;

private:
    bool IsCopyPageShown() const;
    void Receive(const QString& strPath);
    QString PendingPath(const QStringList& listName) const;

    std::unique_ptr<Ui::CTarnwickMacPE> m_pUi;
    std::unique_ptr<STDiskNotication> m_pDiskEvent; // the one that is being handled
};
