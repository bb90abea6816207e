#include "pages/CPageBed.h"

#include <QMovie>

/** What the page looks like: names, texts, fonts, pictures and places. */
class tst_CSelFileForm : public CPageBed
{
    Q_OBJECT

private slots:
    void texts_data();
    void texts();
    void objects_data();
    void objects();
    void bothSidesStandOnOneGrid();
    void nothingMovesWhenADiskComesOrGoes();
    void fontsAndFirstPictures();

private:
    QMap<QString, QRect> Places() const;
};

void tst_CSelFileForm::texts_data()
{
    QTest::addColumn<QString>("strText");
    QTest::newRow("m_pSrcLab") << "Source";
    QTest::newRow("m_pMacTitleLab") << "Select File to Copy:";
    QTest::newRow("m_pDstLab") << "Destination";
    QTest::newRow("m_pUSBTitleLab") << TEXT_PROMPT;
    QTest::newRow("bottomLab") << TEXT_PROMPT;
    QTest::newRow("m_pCopyLab") << "";
    QTest::newRow("m_pUSBPicLab") << "";
    QTest::newRow("RefreshLab") << "";
}

void tst_CSelFileForm::texts()
{
    MakePage();
    const QLabel* pLabel = Label(QTest::currentDataTag());
    QVERIFY(pLabel);
    QTEST(pLabel->text(), "strText");
}

void tst_CSelFileForm::objects_data()
{
    QTest::addColumn<QByteArray>("baClass");
    QTest::addColumn<int>("nCount");
    const auto row = [](const char* pClass, int nCount, std::initializer_list<const char*> listName) {
        for (const char* pName : listName) {
            QTest::newRow(pName) << QByteArray(pClass) << nCount;
        }
    };
    row("QWidget", 2, {"driveWidget"});
    row("QWidget", 1, {"m_pBottomWidget"});
    row("QLabel", 2, {"m_pLineLab"});
    row("QLabel", 1, {"bottomLab"});
    row("QPushButton", 1, {"toolBtn", "m_pDropBtn"});
    row("QFrame", 1, {"m_pTreeFrame", "m_pUSBPicFrame"});
    row("CFileTreeView", 1, {"m_pFileTree"});
    row("CClickableLabel", 1, {"m_pUSBTitleLab", "RefreshLab"});
    row("QVBoxLayout", 1,
        {"verticalLayout_6", "verticalLayout_3", "verticalLayout_4", "verticalLayout", "verticalLayout_9",
         "verticalLayout_7", "verticalLayout_5", "verticalLayout_10", "verticalLayout_2",
         "verticalLayout_8"});
    row("QHBoxLayout", 1,
        {"horizontalLayout_3", "horizontalLayout", "horizontalLayout_5", "horizontalLayout_4"});
    row("QGridLayout", 1, {"gridLayout"});
}

static bool IsPartOf(const QObject* pAncestor, const QObject* pObject)
{
    return pObject && (pObject == pAncestor || IsPartOf(pAncestor, pObject->parent()));
}

void tst_CSelFileForm::objects()
{
    MakePage();
    QFETCH(QByteArray, baClass);
    int nCount = 0;
    for (const QObject* pObject : m_pPage->findChildren<QObject*>(QTest::currentDataTag())) {
        if (!IsPartOf(WaitView(), pObject)) {
            QVERIFY(pObject->inherits(baClass.constData()));
            ++nCount;
        }
    }
    QTEST(nCount, "nCount");
}

void tst_CSelFileForm::bothSidesStandOnOneGrid()
{
    MakePage();
    const auto fnPlace = [this](const QWidget* pWidget) { return PlaceIn(m_pPage, pWidget); };
    const QList<QWidget*> listSide = m_pPage->findChildren<QWidget*>("driveWidget");
    QCOMPARE(listSide.size(), 2);
    const QRect rectSource = fnPlace(listSide.at(0));
    const QRect rectTarget = fnPlace(listSide.at(1));
    QCOMPARE(rectSource.top(), rectTarget.top());
    QCOMPARE(rectSource.bottom(), rectTarget.bottom());
    QCOMPARE(rectSource.left(), m_pPage->width() - 1 - rectTarget.right());

    const QRect rectTick = fnPlace(Label("m_pCopyLab"));
    QCOMPARE(rectTick.size(), QSize(88, 33));
    QCOMPARE(rectTick.left() - rectSource.right(), rectTarget.left() - rectTick.right());
    QVERIFY(qAbs(rectTick.center().y() - rectSource.center().y()) <= 1);

    QCOMPARE(fnPlace(Label("m_pSrcLab")).left(), rectSource.left());
    QCOMPARE(fnPlace(Label("m_pDstLab")).left(), rectTarget.left());
    QCOMPARE(CopyBtn()->size(), QSize(120, 32));
    QCOMPARE(fnPlace(CopyBtn()).right(), rectTarget.right());
    QVERIFY(fnPlace(CopyBtn()).bottom() < m_pPage->height());
}

// Several widgets share a name, so the place in the list belongs to the key.
QMap<QString, QRect> tst_CSelFileForm::Places() const
{
    QCoreApplication::sendPostedEvents();
    m_pPage->grab();
    QMap<QString, QRect> mapPlace;
    for (const QWidget* pWidget : m_pPage->findChildren<QWidget*>()) {
        if (!pWidget->isWindow() && pWidget->window() == m_pHost.get()
            && !pWidget->objectName().startsWith("qt_")) {
            mapPlace.insert(QString("%1 %2").arg(QString::number(mapPlace.size()), pWidget->objectName()),
                            PlaceIn(m_pPage, pWidget));
        }
    }
    return mapPlace;
}

void tst_CSelFileForm::nothingMovesWhenADiskComesOrGoes()
{
    MakePage();
    const QMap<QString, QRect> mapEmpty = Places();
    QVERIFY(mapEmpty.size() > 15);
    for (const QString& strName : {QString("A"), QString(200, 'W')}) {
        Plug(strName);
        Arrive(strName);
        QCOMPARE(m_pPage->GetUsbName(), strName);
        QCOMPARE(Places(), mapEmpty);
        Leave(strName);
        QCOMPARE(Places(), mapEmpty);
    }
}

void tst_CSelFileForm::fontsAndFirstPictures()
{
    MakePage();
    for (const char* pName : {"m_pSrcLab", "m_pDstLab", "m_pMacTitleLab", "m_pUSBTitleLab", "bottomLab"}) {
        QCOMPARE(Label(pName)->font().family(), "Avenir");
        QVERIFY(Label(pName)->styleSheet().contains("color:rgb("));
    }
    QCOMPARE(CopyBtn()->font().family(), "Avenir");
    QCOMPARE(CopyBtn()->text(), "Copy");
    QVERIFY(!CopyBtn()->isEnabled());
    const QMovie* pMovie = Refresh()->movie();
    QCOMPARE(pMovie->fileName(), ":/res/Gif/refalsh.gif");
    QCOMPARE(pMovie->state(), QMovie::NotRunning);
    QCOMPARE(pMovie->currentFrameNumber(), 0);
    QVERIFY(!pMovie->currentPixmap().isNull());
}

QTEST_MAIN(tst_CSelFileForm)
#include "tst_CSelFileForm.moc"
