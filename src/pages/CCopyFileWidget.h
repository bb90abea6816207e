#pragma once

#include "copy/ENCopyStatus.h"
#include "copy/STCopyAccount.h"
#include "pages/CCopyStage.h"

#include <QString>
#include <QWidget>

#include <memory>
#include <optional>

class CCopyEndBox;
class CCopyFileThread;
class CCopyWatch;
class CEarlyPressGuard;
class KvMessageBox;
class QMovie;
class QTimer;
class Ui_CCopyFileWidget;

/**
 * The page that is shown while the copy runs: the current file, the progress,
 * the remaining time, how it goes, and a way to stop. In the end it says what has
 * become of the copy.
 *
 * Owns the copy worker. One that does not end when it is to, as its disk does not
 * answer, is left behind, and a fresh one takes its place. GUI thread only.
 */
class CCopyFileWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CCopyFileWidget(QWidget* parent = nullptr);

    /** Stops the copy and waits a moment for the worker; a half-copied file stays as it is. */
    ~CCopyFileWidget() override;

    /**
     * Starts to copy what is ticked in the source tree.
     * @param totalSize bytes to copy
     * @param destPath folder to copy into
     * @param usbName display name of the destination disk
     *
     * Returns at once. While an earlier copy's worker has not ended yet (its
     * disk may be slow to answer) the page waits for it and starts then.
     */
    void OnCopyFile(qint64 totalSize, QString destPath, QString usbName);

    /**
     * Pauses (1), resumes (0) or stops (2) page and worker; a copy that was stopped
     * stays stopped, and one whose stop is being asked about stays paused.
     */
    void SetCopyStatus(int nStatus);

    /** Whether the user is asked to leave the program: a copy that begins meanwhile begins paused. */
    void SetExitQuestion(bool bOpen);

    /** The status as last set. */
    int GetCopyStatus() const;

    /** Name of the destination disk of the last copy; empty before the first. */
    QString GetCopyUsbName() const;

    /** What became of the last copy, as far as it is known; nothing is told of a copy that has not ended. */
    STCopyAccount LastAccount() const;

    /**
     * Ends the copy because its destination was removed, and tells the user.
     * May be called any number of times for one removal, also while it is
     * telling: the user reads one message and SignalCopyFileFinish comes once.
     */
    void USBExtract();

    /** "hh:mm:ss" of a number of seconds; whole days are left out. */
    static QString RemainTimeText(qint64 nSeconds);

public slots:
    /** Shows the file that is being copied and the percent, held to 0..100. */
    void SlotGetCopyInfo(const QString& strFileName, int nPercent);

    /** Shows the remaining time; 0 means that nothing new is known. */
    void SlotCopyRemainTime(qint64 nSeconds);

    /** Keeps the account of the present copy; one of an earlier copy is dropped. */
    void SlotCopyAccount(const STCopyAccount& stAccount);

    /** Tells the user that the copy has ended and emits SignalCopyFileFinish. */
    void SlotCopyFinish();

    /** Pauses the copy and asks whether to stop it. False when it goes on. */
    bool SlotCancelBtnClick();

signals:
    /** The user has been told of the copy's end and the page is free again; once a copy. */
    void SignalCopyFileFinish();

private:
    struct STCopyOrder
    {
        qint64 nTotalSize = 0; ///< bytes
        QString strDestPath; ///< folder to copy into
    };

    void InitData();
    void InitView();
    void InitConnect();
    void MakeWorker();
    template <typename Signal, typename Slot> void Hear(Signal fnSignal, Slot fnSlot);
    void StartWorker();
    void OnWorkerFinished();
    void LeaveWorkerBehind();
    bool IsStopping() const;
    void ApplyStatus(ENCopyStatus enStatus);
    std::optional<int> AskStop();
    void StopByUser();
    void ShowStopping();
    void CloseQuestion();
    void CloseOfRemoval();
    void ShowTime(const QString& strTime);
    void HoldPainting();
    void LetPaint();

    std::unique_ptr<Ui_CCopyFileWidget> m_pForm;
    CCopyFileThread* m_pCopyThread = nullptr;
    ENCopyStatus m_enStatus = COPY_STATUS_RUN;
    QMovie* m_pMovie = nullptr;
    QTimer* m_pFrameTimer = nullptr; // runs for one picture of the screen after progress was painted
    QString m_strUsbName;
    bool m_bExtract = false; // the worker's last signal has nothing to report: the removal was reported
    CCopyEndBox* m_pFinishBox = nullptr;
    KvMessageBox* m_pQuestion = nullptr; // while it is open
    STCopyOrder m_order; // the present copy's
    CCopyStage m_stage;
    std::optional<STCopyAccount> m_stAccount; // the present copy's, once it is there
    CCopyWatch* m_pWatch = nullptr;
    CEarlyPressGuard* m_pPressGuard = nullptr;
    bool m_bExitQuestion = false;
};
