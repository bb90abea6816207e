#pragma once

#include "ui_CSelFileWidget.h"

#include <QCoreApplication>

/**
 * The form of the selection page with its texts, fonts, pictures and what screen
 * readers say of it; it shows what it is told and decides nothing. GUI thread only.
 */
class CSelFileForm : public Ui_CSelFileWidget
{
    Q_DECLARE_TR_FUNCTIONS(CSelFileWidget)

public:
    /** After setupUi: last names, texts and fonts of the widgets, nothing ticked, no disk. */
    void Dress();

    /** Shows whether something is ticked. */
    void ShowTicked(bool bTicked);

    /** Shows a disk's name and picture, or without a disk the prompt with that name. */
    void ShowDisk(const QString& strName, bool bDisk);

    /** The same, but the picture stays as it is. */
    void ShowName(const QString& strName, bool bDisk);

    /** Shows the space of the disk that is shown, in bytes. */
    void ShowSpace(qint64 nFreeBytes, qint64 nTotalBytes);

    /** Says nothing of the space of the disk that is shown. */
    void HideSpace();

private:
    void InitNames();
    void InitTexts();
    void InitAccess();
};
