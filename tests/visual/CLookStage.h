#pragma once

#include "app/CStartUp.h"
#include "support/CFakeCommands.h"
#include "support/CVolume.h"

#include <QImage>
#include <QModelIndex>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

class CCopyFileWidget;
class CFileTreeView;
class CSelFileWidget;
class CTarnwickMacPE;
class QPushButton;
class QWidget;

/**
 * The main window over volumes of known content, for one picture: fresh with
 * each object, active, without a mouse over it. GUI thread only.
 */
class CLookStage
{
public:
    /** Before there is an application: scales it as the program does on a screen nWidth points wide. */
    static STScale PrepareScale(int nWidth);

    /** Gives the application the program's fonts and style sheet; once. */
    static void Prepare();

    CLookStage();
    ~CLookStage();
    CLookStage(const CLookStage&) = delete;
    CLookStage& operator=(const CLookStage&) = delete;

    /** Plugs in a stick; the first one gets chosen, as in the program. */
    CVolume& AddStick(const QString& strName, int nMiB);

    CTarnwickMacPE* Window() const;
    CSelFileWidget* SelectPage() const;
    CCopyFileWidget* CopyPage() const;
    CFileTreeView* Tree() const;

    /** A part of the page that is shown or of the title strip, by object name. Without one the test ends. */
    QWidget* Part(const char* pName) const;

    /** The control of that name that takes clicks. */
    QPushButton* Button(const char* pName) const;

    /** Row of a path, relative to the source volume; opens the folders that lead to it. */
    QModelIndex Row(const QString& strPath) const;

    /** Opens a folder. */
    void Expand(const QString& strPath) const;

    /** Ticks a row with the mouse. */
    void Tick(const QString& strPath) const;

    /** Shows the page of a copy that has just begun and now stands still. */
    void BeginCopy() const;

    /** Puts the mouse over a place of a widget, from the edge of its window. */
    static void Hover(QWidget* pWidget, const QPoint& pt);
    static void Hover(QWidget* pWidget);

    /** The window and the list that may be open over it; dialogs stand where the screen lets them. */
    QImage Picture() const;

    /** The part of that picture in which a widget stands, with some of what is around. */
    QImage Picture(const QWidget* pWidget) const;

    /** A dialog on grey ground, so that its shadow and its corners are seen. */
    static QImage OnGround(QWidget* pDialog);

    /**
     * Runs fnOpen, which runs a modal dialog; gives what fnSee makes of the dialog and
     * answers it with the button of that text. No picture when none opens.
     */
    static QImage DuringModal(const std::function<void()>& fnOpen, const QString& strAnswer,
                              const std::function<QImage(QWidget*)>& fnSee);

private:
    void FillSource() const;

    CFakeCommands m_commands;
    CVolume m_source;
    std::vector<std::unique_ptr<CVolume>> m_listStick;
    std::unique_ptr<CTarnwickMacPE> m_pWindow;
};
