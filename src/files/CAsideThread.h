#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

/**
 * A thread that asks disks one thing after the other, for somebody who cannot wait
 * for ever. One question is cheap, unlike CAsideQuestion with a thread for each.
 *
 * What asks holds copies of all that it needs, as it may outlast everybody. Where
 * the system gives no thread it runs on the calling one. For one calling thread.
 */
class CAsideThread
{
public:
    CAsideThread();

    /** Ends the thread; while it waits for a disk it is left behind. */
    ~CAsideThread();

    CAsideThread(const CAsideThread&) = delete;
    CAsideThread& operator=(const CAsideThread&) = delete;

    /**
     * Waits for the answer for as long as fnGiveUp, which is asked about every 50 ms,
     * is false. After that every question gets nothing until that answer has come.
     */
    template <typename Answer>
    std::optional<Answer> Ask(std::function<Answer()> fnAsk, const std::function<bool()>& fnGiveUp)
    {
        const auto pAnswer = std::make_shared<std::optional<Answer>>();
        const bool bDone = Run([pAnswer, fnAsk = std::move(fnAsk)] { *pAnswer = fnAsk(); }, fnGiveUp);
        return bDone ? std::move(*pAnswer) : std::nullopt;
    }

private:
    struct STShared;

    bool Run(std::function<void()> fnWork, const std::function<bool()>& fnGiveUp);
    static void Serve(const std::shared_ptr<STShared>& pShared);

    const std::shared_ptr<STShared> m_pShared;
    bool m_bThread = true; // the system has given one
};
