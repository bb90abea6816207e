#pragma once

#include <QCoreApplication>
#include <QList>
#include <QString>

/** What the copy's worker is seen to do at a moment. */
struct STCopySample
{
    qint64 nFiles = 0; ///< whole so far
    qint64 nBytes = 0; ///< copied so far
    qint64 nSinceProgressMs = 0; ///< since the last step ended
    bool bFlushing = false; ///< the last bytes are being written to the disk
    bool bPaused = false; ///< held by the user
    QString strPath; ///< the item it is at
};

/** Which kind of thing the line says; a screen reader is told when it changes. */
enum class ENCopyState
{
    NOTHING, ///< too early for a figure
    FIGURES, ///< files done and megabytes a second
    STOPPING, ///< told to stop
    FLUSHING, ///< the last bytes are being written
    NO_ANSWER ///< a disk has not answered for long
};

/**
 * The line on the copy page that says how the copy goes: from what the worker is
 * seen to do, now and then, it makes one text. GUI thread only.
 */
class CCopyStateLine
{
    Q_DECLARE_TR_FUNCTIONS(CCopyStateLine)

public:
    static constexpr qint64 NO_ANSWER_MS = 20000; ///< without progress until the line says so
    static constexpr qint64 WINDOW_MS = 3000; ///< the last part of the copy that the speed is of
    static constexpr qint64 LEAST_MS = 1000; ///< less than that gives no speed

    /** A copy begins. */
    void Begin();

    /** It was told to stop. */
    void Stop();

    /** Takes what is seen at nNowMs of a clock that only goes forwards. */
    void Look(const STCopySample& stSample, qint64 nNowMs);

    ENCopyState State() const;

    /** The text to show; empty when there is nothing to say. */
    QString Text() const;

private:
    struct STPoint
    {
        qint64 nMs = 0;
        qint64 nBytes = 0;
    };

    void TakeSpeed(const STCopySample& stSample, qint64 nNowMs);
    QString FiguresText() const;

    bool m_bStopping = false;
    ENCopyState m_enState = ENCopyState::NOTHING;
    STCopySample m_stSample;
    QList<STPoint> m_listPoint; // of the last part, oldest first
};
