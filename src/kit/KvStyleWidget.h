#pragma once

#include <QPoint>
#include <QString>
#include <QWidget>

class QDesktopWidget;

/**
 * A strip that wears a stretched background image and drags another widget.
 *
 * The main window uses it as its title bar, because it has no frame of the
 * window system. All members run on the GUI thread. The class name is also
 * the strip's selector in the application stylesheet.
 */
class KvStyleWidget : public QWidget
{
    Q_OBJECT

public:
    /** Makes a strip that drags nothing and shows no image until told to. */
    explicit KvStyleWidget(QWidget* parent = nullptr);

    /**
     * Takes the desktop widget and the available size of the primary screen,
     * which bound the drag. The constructor does it once; call it again after
     * the screen has changed. Without a screen the size is 0 x 0.
     */
    void initData();

    /**
     * Chooses the widget that follows a left-button drag on the strip.
     * @param pTarget the widget to move, not owned; null moves nothing. It must
     *        outlive the strip or be replaced before it goes.
     * @param ptOffset pixels taken off the cursor position at each move
     * @param bEnable false leaves presses on the strip alone
     */
    void setEnabledMouseDrag(QWidget* pTarget, QPoint ptOffset, bool bEnable);

    /** Sets the file or resource path of the background image; one that cannot be read paints nothing. */
    void setBackgroundImage(const QString& strPath);

public slots:
    /** Closes the drag target, which may refuse; does nothing without one. */
    void slotClosePWidget();

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;

private:
    bool MayMoveTo(const QPoint& ptNew) const;

    bool m_bDragEnabled = false;
    QPoint m_ptOffset;
    QPoint m_ptPress;
    bool m_bPressed = false;
    QWidget* m_pTarget = nullptr;
    QString m_strImage;
    QDesktopWidget* m_pDesktop = nullptr;
    int m_nScreenWidth = 0;
    int m_nScreenHeight = 0;
};
