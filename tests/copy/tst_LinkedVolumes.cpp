#include "copy/CMadeRescue.h"

#include <QDirIterator>
#include <QMap>
#include <QRandomGenerator>

#include <optional>
#include <sys/stat.h>

static const int VOLUMES = 150;
static const int FOLDERS = 14;
static const int FILES = 20;
static const int LINKS = 16;
static const int MOST_LINKS = 40; // that a way goes through

namespace {

/** What lies at a path of the volume. */
struct STEntry
{
    bool bFolder = false;
    QString strLink = {}; ///< text of a link, else empty
    QByteArray baContent = {}; ///< of a file; no other file has it
};

}

/**
 * Volumes full of links at random, and ticks at random. What is to hold of each copy is
 * told from what was made, by a way through the links of the test's own.
 */
class tst_LinkedVolumes : public CMadeRescue
{
    Q_OBJECT

private slots:
    void initTestCase() { umask(022); }
    void init();
    void cleanup() { ClearVolume(); }

    void everyFileArrivesOnce_data();
    void everyFileArrivesOnce();

private:
    int Below(int nBound) { return int(m_random.bounded(nBound)); }
    QString AnyPath(bool bFolder);
    QString AnyText(const QString& strFrom);
    void MakeEntries();
    void TickSome();
    std::optional<QString> Resolved(const QString& strLink) const;
    std::optional<QString> Gone(const QString& strFolder, const QString& strText, int& nLinks) const;
    bool IsTicked(const QString& strPath) const;
    bool IsMeantByItself(const QString& strFile) const;
    static bool IsIn(const QString& strPath, const QString& strFolder);
    static bool IsFile(const STEntry& stEntry) { return !stEntry.bFolder && stEntry.strLink.isEmpty(); }
    QMap<QByteArray, QStringList> Arrivals() const;
    void VerifyFile(const QString& strFile, const QStringList& listPlace) const;
    void VerifyLink(const QString& strLink, const QMap<QByteArray, QStringList>& mapPlace) const;

    QRandomGenerator m_random;
    QMap<QString, STEntry> m_mapEntry; // by the path below the volume
    QStringList m_listTicked;
};

void tst_LinkedVolumes::init() { NEEDS_VOLUMES(); }

/** A path that is there, of a folder or of anything. */
QString tst_LinkedVolumes::AnyPath(bool bFolder)
{
    QStringList listPath;
    for (auto it = m_mapEntry.cbegin(); it != m_mapEntry.cend(); ++it) {
        if (!bFolder || it->bFolder) {
            listPath.append(it.key());
        }
    }
    return listPath.isEmpty() || (bFolder && Below(4) == 0) ? QString() : listPath.at(Below(listPath.size()));
}

/** A link's text: to something by one of the ways that there are, or to nothing. */
QString tst_LinkedVolumes::AnyText(const QString& strFrom)
{
    const QString strTo = AnyPath(Below(3) != 0);
    switch (Below(8)) {
    case 0:
        return "/Volumes/Macintosh HD/" + strTo;
    case 1:
        return "/Volumes/STICK/" + strTo;
    case 2:
        return "not there";
    case 3:
    case 4:
        return '/' + strTo;
    default:
        return QString("../").repeated(strFrom.count('/')) + (strTo.isEmpty() ? "." : strTo);
    }
}

void tst_LinkedVolumes::MakeEntries()
{
    m_mapEntry.clear();
    const auto fnName = [this](const QString& strKind, int n) {
        const QString strFolder = AnyPath(true);
        return (strFolder.isEmpty() ? QString() : strFolder + '/') + strKind + QString::number(n);
    };
    for (int n = 0; n < FOLDERS; ++n) {
        m_mapEntry[fnName("folder", n)].bFolder = true;
    }
    for (int n = 0; n < FILES; ++n) {
        m_mapEntry[fnName("file", n)].baContent = "content " + QByteArray::number(n);
    }
    for (int n = 0; n < LINKS; ++n) {
        const QString strName = fnName("link", n);
        m_mapEntry[strName].strLink = AnyText(strName);
    }
    for (auto it = m_mapEntry.cbegin(); it != m_mapEntry.cend(); ++it) {
        const QString strPath = m_pSource->Path(it.key());
        if (it->bFolder) {
            QVERIFY(QDir().mkpath(strPath));
        } else if (it->strLink.isEmpty()) {
            WriteFile(strPath, it->baContent);
        } else {
            QVERIFY(QDir().mkpath(QFileInfo(strPath).path()));
            QVERIFY(QFile::link(it->strLink, strPath));
        }
    }
}

bool tst_LinkedVolumes::IsIn(const QString& strPath, const QString& strFolder)
{
    return strFolder.isEmpty() || strPath == strFolder || strPath.startsWith(strFolder + '/');
}

bool tst_LinkedVolumes::IsTicked(const QString& strPath) const
{
    for (const QString& strTicked : m_listTicked) {
        if (IsIn(strPath, strTicked)) {
            return true;
        }
    }
    return false;
}

/** Whether a tick, or a link, is of the file alone. */
bool tst_LinkedVolumes::IsMeantByItself(const QString& strFile) const
{
    for (auto it = m_mapEntry.cbegin(); it != m_mapEntry.cend(); ++it) {
        if (!it->strLink.isEmpty() && Resolved(it.key()) == strFile) {
            return true;
        }
    }
    return m_listTicked.contains(strFile);
}

/** Ticks some entries, none of which lies in another. */
void tst_LinkedVolumes::TickSome()
{
    m_listTicked.clear();
    for (int nLeft = 1 + Below(4); nLeft > 0; --nLeft) {
        const QString strPath = Below(20) == 0 ? QString() : AnyPath(false);
        bool bFree = true;
        for (const QString& strTicked : qAsConst(m_listTicked)) {
            bFree = bFree && !IsIn(strPath, strTicked) && !IsIn(strTicked, strPath);
        }
        if (bFree) {
            m_listTicked.append(strPath);
        }
    }
    Tick(m_listTicked);
}

/** Where a way from a folder leads; nothing when it leads out, round or nowhere. */
std::optional<QString> tst_LinkedVolumes::Gone(const QString& strFolder, const QString& strText,
                                               int& nLinks) const
{
    QString strHere = strFolder;
    QString strWay = strText;
    if (strWay.startsWith("/Volumes/")) {
        strWay = strWay.mid(int(qstrlen("/Volumes")));
        if (strWay.section('/', 1, 1) != "Macintosh HD") {
            return std::nullopt;
        }
        strWay = '/' + strWay.section('/', 2);
    }
    if (strWay.startsWith('/')) {
        strHere.clear();
    }
    for (const QString& strName : strWay.split('/', Qt::SkipEmptyParts)) {
        if (!strHere.isEmpty() && !m_mapEntry.value(strHere).bFolder) {
            return std::nullopt;
        }
        if (strName == "..") {
            strHere = strHere.contains('/') ? strHere.section('/', 0, -2) : QString();
        } else if (strName != ".") {
            const QString strNext = strHere.isEmpty() ? strName : strHere + '/' + strName;
            if (!m_mapEntry.contains(strNext) || ++nLinks > MOST_LINKS) {
                return std::nullopt;
            }
            const QString strLink = m_mapEntry.value(strNext).strLink;
            const std::optional<QString> strEnd
                = strLink.isEmpty() ? strNext : Gone(strHere, strLink, nLinks);
            if (!strEnd) {
                return std::nullopt;
            }
            strHere = *strEnd;
        }
    }
    return strHere;
}

std::optional<QString> tst_LinkedVolumes::Resolved(const QString& strLink) const
{
    int nLinks = 0;
    const QString strFolder = strLink.contains('/') ? strLink.section('/', 0, -2) : QString();
    return Gone(strFolder, m_mapEntry.value(strLink).strLink, nLinks);
}

/** The places on the stick that have each content. */
QMap<QByteArray, QStringList> tst_LinkedVolumes::Arrivals() const
{
    QMap<QByteArray, QStringList> mapPlace;
    QDirIterator it(Arrived(), QDir::Files | QDir::NoSymLinks | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString strPath = it.next();
        mapPlace[Content(strPath)].append(strPath.mid(Arrived().size() + 1));
    }
    return mapPlace;
}

void tst_LinkedVolumes::everyFileArrivesOnce_data()
{
    QTest::addColumn<quint32>("nSeed");
    for (quint32 n = 1; n <= VOLUMES; ++n) {
        QTest::addRow("%u", n) << n;
    }
}

/** The file of that path is there at most once, and in its place if it is ticked. */
void tst_LinkedVolumes::VerifyFile(const QString& strFile, const QStringList& listPlace) const
{
    const QString strWhat = strFile + ", ticked " + m_listTicked.join(", ");
    // What a tick or a link means by itself may lie in a folder that is followed, too.
    QVERIFY2(listPlace.size() <= 1 || IsMeantByItself(strFile),
             qPrintable(strWhat + " is at " + listPlace.join(" and ")));
    QVERIFY2(listPlace.contains(strFile) || !IsTicked(strFile), qPrintable(strWhat + " is not in its place"));
}

/** The ticked link of that path is one again, or all that it leads to is there. */
void tst_LinkedVolumes::VerifyLink(const QString& strLink,
                                   const QMap<QByteArray, QStringList>& mapPlace) const
{
    const QString strWhat = strLink + ", ticked " + m_listTicked.join(", ");
    const std::optional<QString> strEnd = Resolved(strLink);
    if (!strEnd || IsTicked(*strEnd) || IsIn(strLink, *strEnd)) {
        QVERIFY2(QFileInfo(Arrived(strLink)).isSymLink(), qPrintable(strWhat + " is no link"));
        return;
    }
    for (auto it = m_mapEntry.cbegin(); it != m_mapEntry.cend(); ++it) {
        if (IsFile(*it) && IsIn(it.key(), *strEnd)) {
            QVERIFY2(mapPlace.contains(it->baContent), qPrintable(strWhat + " leads to what is missing"));
        }
    }
}

void tst_LinkedVolumes::everyFileArrivesOnce()
{
    QFETCH(quint32, nSeed);
    m_random.seed(nSeed);
    MakeDisks(20);
    MakeEntries();
    TickSome();
    CountAndCopy(true);
    QVERIFY(Account().nProblems == 0 && !Account().bStopped);
    QCOMPARE(Account().nBytes, m_nCounted);
    const QMap<QByteArray, QStringList> mapPlace = Arrivals();
    QMap<QByteArray, QStringList> mapLeft = mapPlace;
    for (auto it = m_mapEntry.cbegin(); it != m_mapEntry.cend(); ++it) {
        if (IsFile(*it)) {
            VerifyFile(it.key(), mapLeft.take(it->baContent));
        } else if (!it->bFolder && IsTicked(it.key())) {
            VerifyLink(it.key(), mapPlace);
        } else if (IsTicked(it.key())) {
            QVERIFY2(QFileInfo(Arrived(it.key())).isDir(), qPrintable(it.key() + " is not there"));
        }
    }
    QVERIFY2(mapLeft.isEmpty(), "what is not of the volume is there");
}

QTEST_GUILESS_MAIN(tst_LinkedVolumes)
#include "tst_LinkedVolumes.moc"
