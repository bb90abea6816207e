#pragma once

#include <QString>
#include <QWidget>

#include <map>

class CElidedLabel;
class CLinkButton;

/** What a notice is about, the most serious first. */
enum class ENNotice
{
    NO_ANSWER, ///< a disk does not answer
    LAST_COPY, ///< what the last copy has left behind
    UNLISTED, ///< not all of a ticked volume will be copied
    SOURCES, ///< the files of users are not to be had yet, or a volume is not listed yet
    LARGE_FILES, ///< the destination cannot hold files of every size
    FOLDER, ///< the folder that was opened last does not show all that is in it
    DESTINATION, ///< the destination is another one than the user knows of
    ELSEWHERE, ///< the files of users are on another volume of the list; as long as it is there
    LOG ///< the log is not where it belongs
};

/**
 * One line of notices behind a mark, the most serious one first and as many as fit
 * whole; nothing is seen while there is none. A notice may have a link.
 *
 * Screen readers are told what is new. All texts are plain. GUI thread only.
 */
class CNoticeLine : public QWidget
{
    Q_OBJECT

public:
    explicit CNoticeLine(QWidget* pParent = nullptr);

    /** Shows a notice in place of an earlier one of its kind; an empty text takes it back. */
    void Set(ENNotice enNotice, const QString& strText, const QString& strLink = QString());

    /** Takes a notice back. */
    void Clear(ENNotice enNotice) { Set(enNotice, QString()); }

    /** What the line says at present; empty without a notice. */
    QString Text() const;

    /** A name as it may stand in a notice: not so long that it would hide what is said of it. */
    QString Shortened(const QString& strName) const;

    /** What is said of the disk or folder of that name that does not answer. */
    QString NoAnswerText(const QString& strName) const;

    /** A name and what is said of it. */
    QString TextOf(const QString& strName, const QString& strText) const;

    /** What the keyboard reaches in it: the link, while there is one. */
    QWidget* TabStop() const;

signals:
    /** The link of that notice was pressed. */
    void SignalLink(ENNotice enNotice);

protected:
    void resizeEvent(QResizeEvent* pEvent) override;
    /** The mark before the text. */
    void paintEvent(QPaintEvent* pEvent) override;

private:
    struct STNotice
    {
        QString strText;
        QString strLink;
    };

    void Rebuild();
    void Arrange();
    QSize LinkSize() const;
    int RoomForText() const;
    void Say(const QString& strText);

    std::map<ENNotice, STNotice> m_mapNotice;
    CElidedLabel* m_pText;
    CLinkButton* m_pLink;
    ENNotice m_enLink = ENNotice::LAST_COPY; // whose link is shown
};

Q_DECLARE_METATYPE(ENNotice)
