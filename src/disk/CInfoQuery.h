#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QString>
#include <QStringList>

#include <memory>

class QProcess;

/**
 * One run of a command that describes a device node, done in steps, so that several
 * can run side by side. Needs no event loop; one thread. It can be asked again when it is over.
 */
class CInfoQuery
{
public:
    CInfoQuery();

    /** Ends the command with all that it has started. */
    ~CInfoQuery();

    CInfoQuery(const CInfoQuery&) = delete;
    CInfoQuery& operator=(const CInfoQuery&) = delete;

    /** Starts the command, whose last argument is the node; it has nTimeoutMs to print and as much to end. */
    void Start(const QString& strCommand, const QStringList& listArgument, int nTimeoutMs);

    /** Reads what there is, waiting up to nMs for it. */
    void Proceed(int nMs);

    /** Whether the command has ended, or its time is over. */
    bool IsOver() const { return m_enPhase == ENPhase::OVER; }

    /** ms since the start. */
    qint64 ElapsedMs() const { return m_timerAll.elapsed(); }

    /** What the command has printed; a command that has not ended is ended, and told of. Once a start. */
    QByteArray TakeOutput();

private:
    enum class ENPhase
    {
        FIRST_OUTPUT, ///< waiting for something to read
        END, ///< waiting for the command to end
        OVER
    };

    void Judge();
    void End();
    bool HasFailed() const;
    bool IsRunning() const;

    std::unique_ptr<QProcess> m_pProcess;
    QString m_strDeviceNode;
    int m_nTimeoutMs = 0;
    QByteArray m_baOutput;
    ENPhase m_enPhase = ENPhase::OVER;
    QElapsedTimer m_timerAll;
    QElapsedTimer m_timerPhase;
};
