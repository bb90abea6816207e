#pragma once

#include <QMap>

#include <functional>
#include <optional>

/** Counts what a piece of code asks of the system. */
class CCallCounter
{
public:
    /** How often each call was made, by its number. */
    using Calls = QMap<long, int>;

    /**
     * Runs fnWork in a process of its own, on a copy of this thread, and gives the calls
     * of that thread; nothing where no process may be watched here. fnWork says whether it
     * has done its work; one that has not ends the test run.
     */
    static std::optional<Calls> Count(const std::function<bool()>& fnWork);
};
