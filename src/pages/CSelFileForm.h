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

    /** Shows a disk as the chosen one, its picture included; the prompt for an empty path. */
    void ShowDisk(const QString& strName, const QString& strPath);

    /** Shows a disk's name with its free and its total space, or the prompt when its path is empty. */
    void ShowSpace(const QString& strName, const QString& strPath);

private:
    void InitNames();
    void InitTexts();
    void InitAccess();
};
