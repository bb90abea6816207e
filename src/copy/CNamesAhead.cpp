#include "copy/CNamesAhead.h"

#include "files/CFolderReader.h"

#include <utility>

CNamesAhead::CNamesAhead(CFolderReader& reader)
    : m_reader(reader)
{
}

bool CNamesAhead::Next()
{
    m_bAhead = !m_listAhead.empty();
    if (m_bAhead) {
        m_stHere = std::move(m_listAhead.front());
        m_listAhead.pop_front();
        return true;
    }
    m_bEnd = m_bEnd || !m_reader.Next();
    return !m_bEnd;
}

const char* CNamesAhead::Name() const { return m_bAhead ? m_stHere.baName.constData() : m_reader.Name(); }

bool CNamesAhead::IsKnownFolder() const { return m_bAhead ? m_stHere.bFolder : m_reader.IsKnownFolder(); }

QVector<STExpectedFile> CNamesAhead::Fill(const QByteArray& baPrefix)
{
    QVector<STExpectedFile> listFile;
    while (!m_bEnd && m_listAhead.size() < MOST) {
        if (!m_reader.Next()) {
            m_bEnd = true;
            break;
        }
        m_listAhead.push_back({m_reader.Name(), m_reader.IsKnownFolder()});
        if (m_reader.MayBeFile()) {
            listFile.append({baPrefix + m_reader.Name(), -1, false});
        }
    }
    return listFile;
}

QVector<STExpectedFile> CNamesAhead::Folders(const QByteArray& baPrefix) const
{
    QVector<STExpectedFile> listFolder;
    for (const STName& stName : m_listAhead) {
        if (stName.bFolder) {
            listFolder.append({baPrefix + stName.baName, -1, true});
        }
    }
    return listFolder;
}
