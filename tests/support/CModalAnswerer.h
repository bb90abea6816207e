#pragma once

#include <QObject>
#include <QPixmap>
#include <QStringList>
#include <QTimer>

#include <functional>

class QPushButton;
class QWidget;

/**
 * Waits for the next modal window, notes what it shows and answers it, so that
 * a test can go through code that runs a modal message box.
 *
 * Make it before the call that opens the box; it answers once. GUI thread.
 */
class CModalAnswerer : public QObject
{
    Q_OBJECT

public:
    /** Clicks the visible button whose text is strButton. */
    explicit CModalAnswerer(const QString& strButton);

    /** Closes the box by its title button instead. */
    static QString TitleButton();

    /** The visible buttons of a box that have a text, from left to right. */
    static QList<QPushButton*> VisibleButtons(const QWidget* pBox);

    /** Runs fnMeanwhile while the box is open, before it is answered. */
    void Meanwhile(std::function<void()> fnMeanwhile);

    /** True when a box was seen and answered. */
    bool Answered() const;

    /** The message shown, as plain text without its HTML. */
    QString Text() const;

    /** The texts of the visible buttons, from left to right. */
    QStringList Buttons() const;

    /** The icon shown. */
    QPixmap Icon() const;

private:
    void Look();
    void Note(QWidget* pBox);

    QString m_strButton;
    std::function<void()> m_fnMeanwhile;
    QTimer m_timer;
    QString m_strText;
    QStringList m_listButton;
    QPixmap m_pixIcon;
    bool m_bSeen = false;
    bool m_bAnswered = false;
};
