#pragma once

#include <QElapsedTimer>
#include <QWidget>

class CElidedLabel;
struct STDiskWait;

/**
 * What stands in the window's place while the window cannot be built yet, because the
 * search for disks takes long: the program's name, and what is waited for. A start
 * that takes no longer than a moment shows nothing of it. GUI thread.
 */
class CStartSplash : public QWidget
{
    Q_OBJECT

public:
    /** A start of this many ms has nothing to explain. */
    static constexpr int SHOW_AFTER_MS = 400;

    /** An answer that takes this many ms longer is waited for by name. */
    static constexpr int NAME_AFTER_MS = 2000;

    /** The start counts from here. */
    CStartSplash();

    /** Tells what the search waits for now and has it painted, although nobody runs the event loop. */
    void Wait(const STDiskWait& wait);

    /** The line for what is waited for. */
    static QString Text(const STDiskWait& wait);

private:
    void PutInPlace();

    CElidedLabel* m_pText = nullptr;
    QElapsedTimer m_timer;
};
