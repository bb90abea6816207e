#pragma once

#include "copy/STCopyAccount.h"

#include <QObject>
#include <QString>

class CNoticeLine;
class QWidget;

/**
 * Says in the line of notices what the last copy has left behind, with a link to
 * the list of its items. GUI thread only.
 */
class CLastCopyNotice : public QObject
{
    Q_OBJECT

public:
    /** The list opens over pPage, which owns this. The line is not owned and has to live as long. */
    CLastCopyNotice(CNoticeLine* pNotice, QWidget* pPage);

    /** Says what became of the copy to that disk; nothing when all of it is there. */
    void Show(const STCopyAccount& stAccount, const QString& strUsbName);

private:
    void ShowItems();

    CNoticeLine* m_pNotice;
    QWidget* m_pPage;
    STCopyAccount m_stAccount; // which the notice is about
};
