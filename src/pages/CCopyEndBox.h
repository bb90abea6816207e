#pragma once

#include "copy/STCopyAccount.h"
#include "kit/KvMessageBox.h"

#include <optional>

class CItemListDialog;

/**
 * The box that tells the end of a copy: the same words for every end, and below
 * them what has become of the files. GUI thread only.
 */
class CCopyEndBox : public KvMessageBox
{
    Q_OBJECT

public:
    explicit CCopyEndBox(QWidget* parent = nullptr);

    /** What to say of the copy; nothing when it has no account. */
    void SetAccount(const std::optional<STCopyAccount>& stAccount);

    /** Whether the user is reading that all of the copy is on the disk. */
    bool SaysAllIsOnTheDisk() const;

    /** Takes the box away, with its list. */
    void TakeAway();

private:
    void ShowList();

    std::optional<STCopyAccount> m_stAccount;
    CItemListDialog* m_pList = nullptr; // while it is open
};
