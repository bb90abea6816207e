#pragma once

#include "copy/STCopyAccount.h"
#include "kit/KvStyleDialog.h"

class CElidedLabel;
class QListWidget;
class QPushButton;

/**
 * The list of what a copy's account says of single items: for each the path, the
 * reason and how much of it was copied, in two lines.
 *
 * Make it on the stack and run it with exec(). Return closes it, Escape does nothing,
 * as in every dialog of the kit. GUI thread only.
 */
class CItemListDialog : public KvStyleDialog
{
    Q_OBJECT

public:
    explicit CItemListDialog(const STCopyAccount& stAccount, QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    QWidget* MakeTitle();
    QWidget* MakeBody(const STCopyAccount& stAccount);
    void FillList(const STCopyAccount& stAccount);
    static QString Footer(const STCopyAccount& stAccount);

    QListWidget* m_pList = nullptr;
};
