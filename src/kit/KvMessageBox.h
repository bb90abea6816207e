#pragma once

#include "kit/CBoxDetail.h"
#include "kit/KvStyleDialog.h"

#include <QString>

#include <memory>

class QPushButton;
class Ui_KvMessageBox;

/** The buttons of a message box, to be combined by bits, and the answer that each one gives. */
enum KvMessageBox_Style
{
    Style_Yes = 1,
    Style_No = 2,
    Style_Ok = 4,
    Style_Cancel = 8
};

/**
 * The message box of the program: an icon, one centred message, up to four buttons,
 * and between message and buttons a detail when there is one.
 *
 * Make it on the stack, adjust texts and icon, run it with exec() and read the
 * answer with GetClickedBtn(). GUI thread only.
 */
class KvMessageBox : public KvStyleDialog
{
    Q_OBJECT

public:
    /**
     * @param strContent the message, shown as HTML so that it may hold links: a
     *        name that is not the program's own has to be escaped before
     * @param nStyle the KvMessageBox_Style bits of the buttons to show; with 0
     *        only the title's close button ends the box
     */
    KvMessageBox(const QString& strContent, int nStyle, QWidget* parent = nullptr);
    ~KvMessageBox() override;

    /** The KvMessageBox_Style value of the button that closed the box; 0 when none did. */
    int GetClickedBtn() const;

    /** Sets the text of one button; a combination of buttons or an unknown value changes nothing. */
    void SetBtnText(const KvMessageBox_Style& enWhich, const QString& strText);

    /** Sets the texts of all four buttons. */
    void SetButtonText(QString strYes, QString strNo, QString strOk, QString strCancel);

    /** Shows another image (file or resource path) above the message; none when it cannot be read. */
    void setIcon(QString strPath);

    /** Hides the image above the message. */
    void hideIcon();

    /** Replaces the message by the text as it is, without the line spacing of the first one. */
    void SetDialogInfomationContent(const QString& strText);

    /** Same as SetDialogInfomationContent: the box has no visible title. */
    void SetTitle(QString strText);

    /** Shows a detail below the message, as plain text; an empty one is not there, as at first. */
    void SetDetail(const QString& strText, ENDetail enKind);

    /** Shows a link below the detail, in the Tab order behind the buttons; an empty one is not there. */
    void SetDetailLink(const QString& strText);

    /** Sets the least and the greatest size of the box in pixels, in place of the fixed 490 x 300. */
    void setBoxSize(int nMinWidth, int nMinHeight, int nMaxWidth, int nMaxHeight);

    /** Sets the least and the greatest size in pixels of the part below the title. */
    void setBoxContentSize(int nMinWidth, int nMinHeight, int nMaxWidth, int nMaxHeight);

    /** Lets a drag of the box start on its message, too. */
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

public slots:
    /** These four close the box with the answer of their button. */
    void slotClose_yes();
    void slotClose_no();
    void slotClose_ok();
    void slotClose_cancel();

    /** Closes the box with the answer 0. */
    void SlotCloseWindow();

    /** Does nothing: the box has no password field to reveal. */
    void slot_peekPassword();

    /** Opens a link of the message in the desktop's own program for it; the box stays open. */
    void slotLink(QString strLink);

signals:
    /** The link of the detail was chosen; the box stays open. */
    void SignalDetailLink();

protected:
    void showEvent(QShowEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;

private:
    void InitMessage(const QString& strContent);
    void InitButtons(int nStyle);
    void InitConnect();
    void InitTabOrder();
    QPushButton* Button(KvMessageBox_Style enWhich) const;
    void BalanceLines();
    void MoveTogether(int nMargin);
    void LayOut();
    void TellReaders();
    void CloseWith(int nResult);

    int m_nClickedBtn = 0;
    std::unique_ptr<Ui_KvMessageBox> m_pForm;
    CBoxDetail* m_pDetail = nullptr;
};
