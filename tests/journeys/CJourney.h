#pragma once

#include <QJsonObject>
#include <QLocalSocket>
#include <QObject>
#include <QPoint>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

/**
 * Drives the real program in its real window: starts it, finds its parts
 * through the preloaded probe, moves the mouse of the X server and takes
 * pictures of the screen. Every wait is a wait for a condition and has an end.
 */
class CJourney : public QObject
{
    Q_OBJECT

public:
    /** Pictures go to the folder strPictures, numbered in order. */
    explicit CJourney(const QString& strPictures);

    /** Ends the program if it still runs. */
    ~CJourney() override;

    /** Starts the executable and waits for its window; false when it does not come. */
    bool Start(const QString& strExecutable, const QStringList& listArgument = {});

    /** True while the program runs. */
    bool IsRunning() const;

    /** Waits up to nMs for the program to end; false when it does not. */
    bool WaitForEnd(int nMs = 5000);

    /** Starts the executable and waits for nothing. */
    void Launch(const QString& strExecutable, const QStringList& listArgument = {});

    /** Waits up to nMs for a visible widget of a program that was launched; false when it does not come. */
    bool WaitForWidget(const QString& strName, int nMs = 20000);

    /**
     * Whether the program has ended, or has done all that a program can: one of its
     * threads may be held by the kernel until a disk answers.
     */
    bool HasEnded() const;

    /** Exit status of the ended program; -1 when it crashed. */
    int ExitCode() const;

    /** Everything that the program wrote to its standard error. */
    QString Errors() const;

    /** The probe's answer; empty when the window did not answer within nMs. */
    QJsonObject Ask(const QJsonObject& objQuestion, int nMs = 10000);

    /** What stands below the text of the modal box; empty when nothing does. */
    QString Detail();

    /** A visible widget by object name, inside the widget strIn when given. */
    QJsonObject Widget(const QString& strName, const QString& strIn = QString());

    /** The modal window on top. */
    QJsonObject Modal();

    /** What a visible widget has for its text; empty when it is not there. */
    QString Text(const QString& strName, const QString& strIn = QString());

    /** Whether a widget is on the screen. */
    bool Shows(const QString& strName);

    /** The page in front: 0 for the selection, 1 for the copy. */
    int Page();

    /** Percent that the copy page shows; -1 when that page is not in front. */
    int Progress();

    /** A row of the tree by the texts of the rows that lead to it. */
    QJsonObject Row(const QStringList& listPath);

    /** The drop-down of destinations. */
    QJsonObject List();

    /** Texts of the drop-down's entries. */
    QStringList ListTexts();

    /** Clicks the middle of a described rectangle. */
    void Click(const QJsonObject& objRect);

    /** Clicks the middle of a visible widget. */
    void Click(const QString& strName, const QString& strIn = QString());

    /** Presses and releases keys one after the other, each named as xdotool does ("Tab", "alt+Down"). */
    static void PressKeys(const QStringList& listKey);

    /** Presses a key and keeps it down, or lets it go. */
    static void HoldKey(const QString& strKey, bool bDown);

    /** Clicks the branch arrow of a row; false when it does not open. */
    bool Open(const QStringList& listPath);

    /** Clicks the check box of a row; false when it is not ticked whole then. */
    bool TickWhole(const QStringList& listPath);

    /** Clicks a widget; false when that does not open the drop-down. */
    bool OpenList(const QString& strName);

    /** Clicks an entry of the open drop-down; false when there is none or it is not chosen. */
    bool ChooseDisk(const QString& strDisk);

    /** Waits for a modal box with this text and clicks the button; false when either does not come. */
    bool AnswerBox(const QString& strText, const QString& strButton, int nMs = 20000);

    /** Waits for a modal box with this text and leaves it open. */
    bool WaitForBox(const QString& strText, int nMs = 20000);

    /** Waits until fnDone is true; false after nMs. */
    static bool WaitFor(const std::function<bool()>& fnDone, int nMs = 20000);

    /** Saves a picture of the whole screen. */
    void Picture(const QString& strName);

    /** Makes each block that the program writes take nMs longer; 0 ends that. */
    void SlowWrites(int nMs);

    /**
     * Holds such calls of the program, and of the commands that it runs, until the next
     * Hang: lines "CALL PATH" of a call ("open", "read", "readdir", "stat", "statvfs",
     * "opendir", "write") and the beginning of a path below /Volumes.
     */
    void Hang(const QStringList& listCall);

    /** Sets a variable of the program's environment; before Start. */
    void SetVariable(const QString& strName, const QString& strValue);

    /** Makes each folder that the program lists take nMs longer; 0 ends that. */
    void SlowListing(int nMs);

    /** Holds the destination's flush (0), lets it fail (an errno value) or go on (-1). */
    void HoldFlush(int nOrder);

    /** Sends the program a signal. */
    void Send(int nSignal);

    /** The longest time that the window took for an answer, in ms. */
    qint64 LongestAnswerMs() const;

private:
    void ClickAt(const QPoint& pt);
    void ClickInRow(const QStringList& listPath, int nPoints);

    QString m_strPictures;
    int m_nPicture = 0;
    qint64 m_nLongestAnswerMs = 0;
    QTemporaryDir m_dir;
    QProcessEnvironment m_environment;
    QProcess m_process;
    QLocalSocket m_socket;
};
