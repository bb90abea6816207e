#include "tree/CDirNode.h"
#include "tree/CEntryIcon.h"

#include <QApplication>
#include <QFileInfo>
#include <QTest>

#include <thread>

static const ENEntryKind ALL_KINDS[] = {ENEntryKind::FILE, ENEntryKind::FOLDER, ENEntryKind::VOLUME,
                                        ENEntryKind::FILE_LINK, ENEntryKind::FOLDER_LINK};

/** Takes the icon of `enKind` on a thread of its own. */
static QIcon IconFromWorker(ENEntryKind enKind)
{
    QIcon icon;
    std::thread worker([&icon, enKind] { icon = CEntryIcon::Of(enKind); });
    worker.join();
    return icon;
}

/** The application comes and goes inside the tests. */
class tst_CEntryIcon : public QObject
{
    Q_OBJECT

private slots:
    void nullWithoutApplication();
    void workersTakeCopies();
    void onePerKind();
    void nodesShareThem();

private:
    int m_nArgs = 1;
    char m_szName[5] = "test";
    char* m_pArgs[2] = {m_szName, nullptr};
};

void tst_CEntryIcon::nullWithoutApplication()
{
    QVERIFY(CEntryIcon::Of(ENEntryKind::FILE).isNull());
    QVERIFY(CDirNode(QFileInfo("/"), nullptr).m_icon.isNull());
    {
        QApplication app(m_nArgs, m_pArgs);
        QVERIFY(!CEntryIcon::Of(ENEntryKind::FILE).isNull());
    }
    QVERIFY(CEntryIcon::Of(ENEntryKind::FILE).isNull());
}

void tst_CEntryIcon::workersTakeCopies()
{
    QApplication app(m_nArgs, m_pArgs);
    // None are there before the GUI thread has asked.
    QVERIFY(IconFromWorker(ENEntryKind::FOLDER_LINK).isNull());
    const QIcon icon = CEntryIcon::Of(ENEntryKind::FOLDER_LINK);
    QVERIFY(!icon.isNull());
    QCOMPARE(IconFromWorker(ENEntryKind::FOLDER_LINK).cacheKey(), icon.cacheKey());
}

void tst_CEntryIcon::onePerKind()
{
    QApplication app(m_nArgs, m_pArgs);
    for (const ENEntryKind enKind : ALL_KINDS) {
        const QIcon icon = CEntryIcon::Of(enKind);
        // Sharp on a screen of either resolution.
        QCOMPARE(icon.actualSize(QSize(16, 16)), QSize(16, 16));
        QCOMPARE(icon.actualSize(QSize(32, 32)), QSize(32, 32));
        QCOMPARE(CEntryIcon::Of(enKind).cacheKey(), icon.cacheKey());
        for (const ENEntryKind enOther : ALL_KINDS) {
            QCOMPARE(CEntryIcon::Of(enOther).cacheKey() == icon.cacheKey(), enOther == enKind);
            const QImage other = CEntryIcon::Of(enOther).pixmap(32, 32).toImage();
            QCOMPARE(other == icon.pixmap(32, 32).toImage(), enOther == enKind);
        }
    }
}

void tst_CEntryIcon::nodesShareThem()
{
    QApplication app(m_nArgs, m_pArgs);
    CDirNode first(QFileInfo("/"), nullptr);
    CDirNode second(QFileInfo("/usr"), &first);
    CDirNode root;
    const CDirNode volume(QFileInfo("/usr"), &root);
    const CDirNode file(QFileInfo(QCoreApplication::applicationFilePath()), &first);
    QCOMPARE(first.m_icon.cacheKey(), CEntryIcon::Of(ENEntryKind::FOLDER).cacheKey());
    QCOMPARE(second.m_icon.cacheKey(), first.m_icon.cacheKey());
    QCOMPARE(volume.m_icon.cacheKey(), CEntryIcon::Of(ENEntryKind::VOLUME).cacheKey());
    QCOMPARE(file.m_icon.cacheKey(), CEntryIcon::Of(ENEntryKind::FILE).cacheKey());
}

QTEST_APPLESS_MAIN(tst_CEntryIcon)
#include "tst_CEntryIcon.moc"
