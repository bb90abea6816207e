#include "pages/CSourceNotice.h"

#include "disk/CDestinationDiscovery.h"
#include "pages/CNoticeLine.h"

#include <QFileInfo>

#include <algorithm>

CSourceNotice::CSourceNotice(CNoticeLine* pNotice, QObject* pParent)
    : QObject(pParent)
    , m_pNotice(pNotice)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(PATIENCE);
    connect(&m_patience, &QTimer::timeout, this, &CSourceNotice::Tell);
}

void CSourceNotice::Forget()
{
    m_patience.stop();
    m_listVolume.clear();
    m_pNotice->Clear(ENNotice::SOURCES);
    m_pNotice->Clear(ENNotice::ELSEWHERE);
}

void CSourceNotice::Look(const QVector<STVolume>& listVolume)
{
    Forget();
    for (auto& [strPath, stOpen] : m_mapOpen) {
        stOpen.bStale = true;
    }
    for (const STVolume& stVolume : listVolume) {
        if (stVolume.enRole == VOLUME_ROLE_SOURCE) {
            m_listVolume.append({stVolume.strPath, stVolume.strName, stVolume.baDevice});
            Ask(stVolume.strPath);
        }
    }
    // Whatever the search makes of it, the next one makes of it, too.
    const auto fnHasCome = [this](const STVolume& stVolume) { return stVolume.strPath == m_strCome; };
    if (std::any_of(listVolume.begin(), listVolume.end(), fnHasCome)) {
        m_strCome.clear();
    }
    m_patience.start();
    Tell();
}

void CSourceNotice::Came(const QString& strPath)
{
    if (!IsKnown(strPath)) {
        m_strCome = strPath;
        Tell();
    }
}

void CSourceNotice::Removed(const QString& strPath)
{
    if (strPath != m_strCome && !IsKnown(strPath)) {
        return;
    }
    m_strCome = strPath == m_strCome ? QString() : m_strCome;
    const auto fnIsIt = [&strPath](const STHomeVolume& stVolume) { return stVolume.strPath == strPath; };
    m_listVolume.erase(std::remove_if(m_listVolume.begin(), m_listVolume.end(), fnIsIt), m_listVolume.end());
    Tell();
}

bool CSourceNotice::IsKnown(const QString& strPath) const
{
    return std::any_of(m_listVolume.begin(), m_listVolume.end(),
                       [&strPath](const STHomeVolume& stVolume) { return stVolume.strPath == strPath; });
}

void CSourceNotice::Ask(const QString& strPath)
{
    STOpen& stOpen = m_mapOpen[strPath];
    if (stOpen.pQuestion) {
        return; // asked again when that one is answered
    }
    const auto fnAsk = [strPath] { return CHomeFolders::Look(strPath); };
    const auto fnAnswered = [this, strPath] {
        QMetaObject::invokeMethod(
            this, [this, strPath] { OnAnswer(strPath); }, Qt::QueuedConnection);
    };
    stOpen = {std::make_unique<Question>(fnAsk, fnAnswered)};
}

void CSourceNotice::OnAnswer(const QString& strPath)
{
    const auto itOpen = m_mapOpen.find(strPath);
    const std::optional<STHomeFacts> stFacts = itOpen->second.pQuestion->Get();
    const bool bStale = itOpen->second.bStale;
    m_mapOpen.erase(itOpen);
    const auto it = std::find_if(m_listVolume.begin(), m_listVolume.end(),
                                 [&strPath](const auto& stVolume) { return stVolume.strPath == strPath; });
    if (it == m_listVolume.end()) {
        return;
    }
    if (bStale) {
        Ask(strPath);
        return;
    }
    it->stFacts = stFacts;
    Tell();
}

// Who speaks too early calls a volume locked that is only slow.
void CSourceNotice::Tell()
{
    const bool bAll = std::all_of(m_listVolume.begin(), m_listVolume.end(),
                                  [](const STHomeVolume& stVolume) { return stVolume.stFacts.has_value(); });
    if (m_strCome.isEmpty() && !bAll && m_patience.isActive()) {
        return;
    }
    const std::optional<STMissingHomes> stMissing = CHomeFolders::Missing(m_listVolume);
    const bool bElsewhere = m_strCome.isEmpty() && stMissing && !stMissing->strHomes.isEmpty();
    m_pNotice->Set(ENNotice::SOURCES, bElsewhere ? QString() : NeededText(stMissing));
    m_pNotice->Set(ENNotice::ELSEWHERE, bElsewhere ? ElsewhereText(*stMissing) : QString());
}

/** What is to be done before the files can be had; empty without it. */
QString CSourceNotice::NeededText(const std::optional<STMissingHomes>& stMissing) const
{
    if (!m_strCome.isEmpty()) {
        //: The name of a volume. The round arrow is the button that looks for disks.
        return tr("%1 is there now: press the round arrow to list it.")
            .arg(m_pNotice->Shortened(QFileInfo(m_strCome).fileName()));
    }
    if (!stMissing) {
        return QString();
    }
    return LockedText().arg(m_pNotice->Shortened(stMissing->strSystem));
}

// Every newer Mac shows it for as long as it is there: what has just happened goes first.
QString CSourceNotice::ElsewhereText(const STMissingHomes& stMissing) const
{
    //: Names of two volumes: where the users' files are, and where the user may be looking for them.
    return tr("The users' files are on %1, not on %2.")
        .arg(m_pNotice->Shortened(stMissing.strHomes), m_pNotice->Shortened(stMissing.strSystem));
}
