#include "flow/CLateFlush.h"

#include <utility>

void CLateFlush::Add(std::shared_ptr<const CDescriptor> pFile)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_bNewest) {
        m_listFile.pop_back();
    }
    m_listFile.push_back({std::move(pFile), nullptr});
    m_bNewest = true;
}

void CLateFlush::Booked(Lost fnLost)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!std::exchange(m_bNewest, false)) {
        return;
    }
    if (fnLost) {
        m_listFile.back().fnLost = std::move(fnLost);
    } else {
        m_listFile.pop_back();
    }
}

int CLateFlush::Count() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return int(m_listFile.size());
}

void CLateFlush::Flush(const std::function<int(int nDescriptor)>& fnFlush)
{
    std::vector<STFile> listFile;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        listFile.swap(m_listFile);
        m_bNewest = false;
        m_bFlushes = true;
    }
    for (const STFile& stFile : listFile) {
        const int nError = fnFlush(stFile.pFile->Get());
        if (nError != 0 && stFile.fnLost) {
            stFile.fnLost(nError);
        }
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_bFlushes = false;
}

std::optional<CLateFlush::Files> CLateFlush::Take()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_bFlushes) {
        return std::nullopt;
    }
    Files listFile;
    for (STFile& stFile : m_listFile) {
        listFile.push_back(std::move(stFile.pFile));
    }
    m_listFile.clear();
    m_bNewest = false;
    return listFile;
}
