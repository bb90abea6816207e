#include "copy/CDiskWalk.h"
#include "files/CFileNameCodec.h"
#include "support/CTempTree.h"

#include <QFile>
#include <QtTest>

#include <memory>
#include <sys/stat.h>

namespace {

/** Writes down what a walk hands over, by the places where it would come to lie. */
class CRecorder : public CDiskVisitor
{
public:
    explicit CRecorder(QString strRoot)
        : m_strRoot(std::move(strRoot))
    {
    }

    bool GoesOn() override { return true; }

    void BeginItem(const STTickedItem& stItem) override
    {
        m_listOpen.clear();
        m_listOpen.append(stItem.strPath.mid(m_strRoot.size()).section('/', 0, -2));
    }

    bool BeginFolder(const STDiskEntry& stFolder) override
    {
        Note(stFolder, "/");
        m_listOpen.append(QFile::decodeName(stFolder.baPlace));
        return true;
    }

    void EndFolder(const STDiskEntry& stFolder) override
    {
        m_listOpen.removeLast();
        Note(stFolder, " ends");
    }

    void File(const STDiskEntry& stFile) override { Note(stFile, QString()); }

    void Link(const STDiskEntry& stLink, const QByteArray& baTarget) override
    {
        Note(stLink, " -> " + QFile::decodeName(baTarget));
    }

    void LeftOut(const QString& strPath, const STCopyReason& stReason) override
    {
        const QString strLine
            = QStringLiteral("left out %1: %2").arg(strPath.mid(m_strRoot.size()), stReason.strText);
        m_listLine.append(stReason.nError == 0 ? strLine : strLine + ' ' + qt_error_string(stReason.nError));
    }

    /** Sorted, without the ends of folders. */
    QStringList Entries() const
    {
        QStringList listLine = m_listLine.filter(QRegularExpression("(?<! ends)$"));
        listLine.sort();
        return listLine;
    }

    QStringList m_listLine;

private:
    void Note(const STDiskEntry& stEntry, const QString& strEnd)
    {
        const QString strPlace = (m_listOpen + QStringList{QFile::decodeName(stEntry.baPlace)}).join('/');
        m_listLine.append(strPlace.mid(1) + strEnd);
    }

    const QString m_strRoot;
    QStringList m_listOpen;
};

} // namespace

class tst_CDiskWalk : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init();

    void handsOverEverything();

private:
    /** What the walk below these items hands over; without items below all of the volume. */
    QStringList Walk(const QStringList& listItem = {});

    std::unique_ptr<CTempTree> m_pTree;
};

void tst_CDiskWalk::init() { m_pTree = std::make_unique<CTempTree>(); }

QStringList tst_CDiskWalk::Walk(const QStringList& listItem)
{
    QVector<STTickedItem> listTicked;
    for (const QString& strItem : listItem) {
        listTicked.append({m_pTree->Path(strItem), m_pTree->Path()});
    }
    if (listItem.isEmpty()) {
        listTicked.append({m_pTree->Path(), m_pTree->Path()});
    }
    CRecorder recorder(m_pTree->Path());
    CDiskWalk(listTicked, recorder).Walk();
    return recorder.Entries();
}

void tst_CDiskWalk::handsOverEverything()
{
    m_pTree->Write("a", "12345");
    m_pTree->Write("home/x/.hidden");
    m_pTree->Write("out/y");
    m_pTree->Link("home/l", "../out");
    const QStringList listEntry = {"a", "home/", "home/l/", "home/l/y", "home/x/", "home/x/.hidden"};
    QCOMPARE(Walk({"home", "a"}), listEntry);
}

QTEST_GUILESS_MAIN(tst_CDiskWalk)
#include "tst_CDiskWalk.moc"
