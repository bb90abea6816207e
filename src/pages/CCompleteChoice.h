#pragma once

#include <QObject>

class CNoticeLine;
class QCheckBox;

/**
 * The choice whether a tick means everything in it: the check box, the link to it in
 * the line of notices, and what the tree's root says of it to the workers. GUI thread only.
 */
class CCompleteChoice : public QObject
{
    Q_OBJECT

public:
    /**
     * Off at first, unless the environment has TARNWICK_COMPLETE_RESCUE=1. Neither of the
     * two is owned; they have to live as long.
     */
    CCompleteChoice(QCheckBox* pBox, CNoticeLine* pNotice, QObject* pParent);

    /** Whether a tick means everything in it. */
    bool IsOn() const;

signals:
    /** The user has made another choice; the tree knows it already. */
    void SignalChanged(bool bOn);

private:
    void OnToggled(bool bOn);
    void OnLink();

    QCheckBox* m_pBox;
};
