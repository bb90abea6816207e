#pragma once

#include "ask/CAskPanel.h"
#include "ask/STMissingVolume.h"

#include <QVector>

class QScrollArea;

/**
 * Says which volumes cannot be shown, why, and what helps. The list scrolls when it is long, also
 * by the keys that turn pages; Return goes on wherever the keyboard's focus is.
 */
class CAskMissingPanel : public CAskPanel
{
    Q_OBJECT

public:
    /** Exit status of the only answer. */
    static constexpr int STATUS_CONTINUE = 0;

    explicit CAskMissingPanel(const QVector<STMissingVolume>& listMissing);

    QWidget* FirstFocus() const override;

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    void AddList(const QVector<STMissingVolume>& listMissing);

    QScrollArea* m_pListArea = nullptr;
    QPushButton* m_pContinueBtn = nullptr;
};
