#pragma once

#include <QObject>

class CNoticeLine;

/**
 * Says in the line of notices where the log is when it cannot be written beside the
 * program, or that it cannot be written at all. GUI thread only.
 */
class CLogNotice : public QObject
{
    Q_OBJECT

public:
    /** Listens to the program's log until its own end. The line is not owned and has to live as long. */
    CLogNotice(CNoticeLine* pNotice, QObject* pParent);
    ~CLogNotice() override;

private:
    void Update();

    CNoticeLine* m_pNotice;
};
