#pragma once

#include <QAccessible>
#include <QPersistentModelIndex>
#include <QPointer>

class CFileTreeView;
enum class ENFolderTrouble;

/**
 * What a screen reader hears of one row of the source tree: its name, its path,
 * its tick, whether it is open, and what can be done with it.
 *
 * Valid while the row is shown: not below a closed folder, not while the nodes
 * are lent, not after its entry or the view has gone. It may outlive all of
 * these. GUI thread only.
 */
class CFileRowAccess : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    CFileRowAccess(CFileTreeView* pView, const QModelIndex& index);

    /** The row; invalid once its entry has gone. */
    QModelIndex Index() const;

    /** Notes what is wrong with its folder; true when it is something else than before. Only while valid. */
    bool NoteTrouble();

    /** Notes the row's tick; true when it is another than the one noted before. Only while valid. */
    bool NoteTick();

    bool isValid() const override;
    QObject* object() const override;
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int nIndex) const override;
    QAccessibleInterface* childAt(int nX, int nY) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* pChild) const override;

    /** The name as it is shown, and as the description what is wrong with the folder, and the full path. */
    QString text(QAccessible::Text enText) const override;
    void setText(QAccessible::Text enText, const QString& strText) override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType enType) override;

    /**
     * Ticking; for a folder also pressing, which opens or closes it; and making it the
     * current row. Nothing while the tree is out of sight.
     */
    QStringList actionNames() const override;
    void doAction(const QString& strAction) override;
    QStringList keyBindingsForAction(const QString& strAction) const override;

private:
    int Tick() const;
    ENFolderTrouble Trouble() const;

    QPointer<CFileTreeView> m_pView;
    QPersistentModelIndex m_index;
    int m_nTick; // as it was noted last
    ENFolderTrouble m_enTrouble; // the same
};
