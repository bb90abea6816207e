#pragma once

#include "disk/CDestinationDiscovery.h"
#include "pages/CDiskList.h"

#include <QList>
#include <QPair>
#include <QPointer>
#include <QString>
#include <QVector>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class CAsideSearches;
class CCompleteChoice;
class CDestinationPanel;
class CDropDownList;
class CGetFileSizeThread;
class CLastCopyNotice;
class CSearchWaitView;
class CSelectionCount;
class CSelFileForm;
class CSourceNotice;
class CTreeNotices;
class QDateTime;
class QFileInfo;
class QListWidgetItem;
class QMovie;
struct STCopyAccount;
struct STDiskRules;
struct STDiskState;

/**
 * The first page: the user ticks files on the left and chooses a destination
 * disk on the right; the Copy button measures the selection and, when the disk
 * can take it, emits SignalCopyFile.
 *
 * GUI thread only, but for SlotRefreshUSB.
 */
class CSelFileWidget : public QWidget
{
    Q_OBJECT

public:
    /** Builds the page and looks for disks, which may take as long as the system needs to describe them. */
    explicit CSelFileWidget(QWidget* parent = nullptr);

    /**
     * Ends a running count and running searches for disks and waits up to a second for
     * all of them. What does not end, as its disk does not answer, is left behind.
     */
    ~CSelFileWidget() override;

    /** Rebuilds the drop-down and the labels from the list of disks and chooses the first one. */
    void OnRefreshUSB();

    /**
     * Appends a disk that has appeared; call OnRefreshUSB afterwards. Whether
     * it is listed already is not asked: two events for one disk list it twice.
     */
    void AddDisk(const QFileInfo& volume);

    /** Takes every entry with this path out of the list, if there is any; call OnRefreshUSB afterwards. */
    void RemoveDisk(const QString& strPath);

    /** Paths of the disks in the list, in its order. */
    QStringList DiskPaths() const { return m_disks.Paths(); }

    /** Tells the user of a volume that has come and is no destination: the next search makes it a source. */
    void NoteNewSource(const QString& strPath);

    /** Path of the chosen disk; empty while none is chosen. */
    QString GetUsbPath() const;

    /** Name of the chosen disk, or the prompt while none is chosen. */
    QString GetUsbName() const;

    /** Size of the accepted selection in bytes; valid from SignalCopyFile to the next press of Copy. */
    qint64 GetTotalSize() const;

    /** Folder that the accepted selection is copied into; valid like GetTotalSize. */
    QString GetDstFolder() const;

    /**
     * Tells the user when the destination has fewer free bytes than the
     * selection needs (nSize, in bytes), or has gone. True when it has told.
     */
    bool ShowUsbNoEnoughDlg(qint64 nSize);

    /**
     * Notes what the last copy has left behind on that disk, with the list of its items;
     * a whole copy leaves nothing to be noted. It stands until Copy is pressed again.
     */
    void ShowLastCopy(const STCopyAccount& stAccount, const QString& strUsbName);

    /** The folder for a copy begun at this time on the disk at strUsbPath. */
    static QString DestinationFolder(const QString& strUsbPath, const QDateTime& time);

public slots:
    /**
     * Looks for disks from scratch. On the GUI thread it blocks until the
     * search is over; on another thread it posts each step to the GUI thread,
     * in order. A later search replaces one that is still running.
     */
    void SlotRefreshUSB();

    /** Opens the drop-down with the chosen disk marked. */
    void SlotShowListWidget();

    /** Makes the entry's disk the chosen one and closes the drop-down. */
    void SlotListWidgetItemClick(QListWidgetItem* pItem);

    /** Shows whether something is ticked and whether Copy can be pressed. */
    void SlotCheckFileSelected();

    /** Checks the destination and starts to count the selection's bytes. */
    void SlotCopyBtnClick();

    /**
     * Goes on after the count (nSize bytes): refuses for want of space, of which a copy of
     * everything may need more than that, or emits SignalCopyFile.
     */
    void SlotGetFileSizeFinish(qint64 nSize);

signals:
    /** The selection was measured and accepted: start to copy. */
    void SignalCopyFile();

    /** A search for disks has ended. */
    void SignalStopMovie();

    /** Kept for receivers that connect to it; the page itself never emits it. */
    void SignalDiskChange();

protected:
    /** Reads the space of the chosen disk once more: a copy may have taken some. */
    void showEvent(QShowEvent* pEvent) override;

private:
    /** Which volumes a search may make sources. */
    enum class ENSources
    {
        FIRST, ///< those of the first search that finds one
        MORE ///< those that have come since as well
    };

    void InitData();
    void InitView();
    void InitConnect();
    void OnRefreshClicked();
    void OnStopMovie();
    void RunOnGui(std::function<void()> fnStep);
    void BeginSearch(const STDiskSearch& search);
    void EndSearch(const STDiskSearch& search, const QVector<STVolume>& listVolume, ENSources enSources);
    void ShowDisk(const QString& strName);
    void UpdateControls();
    void Enable(QWidget* pControl, bool bEnable);
    void BeginCounting(const STDiskRules& stRules);
    bool EndCounting(); // false when no count was running
    bool LoseTarget(const STDiskState& state);
    void WarnOfSpace(const QString& strDetail = QString());
    void WarnUser(const QString& strText, const QString& strDetail = QString());

    std::unique_ptr<CSelFileForm> m_pForm;
    QList<QPair<QString, QString>> m_listUsbDisk; // path and display name of each candidate
    CDiskList m_disks{m_listUsbDisk}; // all that changes the list
    CDropDownList* m_pListWidget = nullptr;
    QMovie* m_pRefreshMovie = nullptr;
    int m_nMovieRuns = 0; // searches that the refresh animation still turns for
    CAsideSearches* m_pSearches = nullptr; // of the round arrow
    CSourceNotice* m_pSourceNotice = nullptr;
    CDestinationPanel* m_pDestination = nullptr;
    CTreeNotices* m_pTreeNotices = nullptr;
    CLastCopyNotice* m_pLastCopy = nullptr;
    CCompleteChoice* m_pComplete = nullptr;

    CGetFileSizeThread* m_pSizeThread = nullptr;
    CSearchWaitView* m_pWaitView = nullptr;
    std::unique_ptr<CSelectionCount> m_pCount;
    QPointer<QWidget> m_pFocusAtClick; // from which the count has taken the focus, and gets it back
    std::optional<STCopyTarget> m_target; // from the press of Copy until the answer to it
    qint64 m_nTotalSize = 0;
    QString m_strDstFolder;
};
