#include "support/TestFiles.h"
#include "visual/CLookStage.h"
#include "visual/CPictureCompare.h"
#include "visual/Looks.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QtTest>

// Widest picture in the sheet of changes, in pixels.
static const int SHEET_WIDTH = 800;
static const int SHEET_GAP = 12;
static const int SHEET_TITLE = 24;

/**
 * Each state of the pages and dialogs against its reference picture, at the
 * scale of the screen's width that the environment gives.
 *
 * The pictures as they are now, what differs, and a sheet of all changes are left
 * in the build folder, with a list for the script that takes them over. Nothing
 * here writes to the references.
 */
class tst_Looks : public QObject
{
    Q_OBJECT

public:
    explicit tst_Looks(const STScale& scale);

private slots:
    void initTestCase();
    void cleanupTestCase();

    void windowHasTheScale();
    void look_data();
    void look();
    void eachReferenceHasAState();

private:
    QString Reference(const QString& strName) const { return m_dirReference.filePath(strName + ".png"); }
    QString Built(const QString& strName) const { return m_dirBuilt.filePath(strName + ".png"); }
    void Note(const char* pWhat, const QString& strName);
    /** Reference, difference and picture of each changed state, side by side. */
    void SaveSheet() const;

    QString m_strScale;
    QDir m_dirReference;
    QDir m_dirBuilt;
    QList<STLook> m_listLook;
    QStringList m_listDifferent;
    int m_nLooked = 0;
};

tst_Looks::tst_Looks(const STScale& scale)
    : m_strScale(scale.baFactor.isEmpty() ? "1" : scale.baFactor)
    , m_dirReference(QFile::decodeName(qgetenv("TARNWICK_SOURCE_DIR")) + "/tests/visual/reference/"
                     + m_strScale)
    , m_dirBuilt(BuildPath("pictures/looks/") + m_strScale)
{
}

void tst_Looks::initTestCase()
{
    if (!CVolume("STICK", "/dev/sdb1", 1).IsValid()) {
        QSKIP("volumes cannot be mounted here");
    }
    m_dirBuilt.removeRecursively();
    QVERIFY2(QDir().mkpath(m_dirBuilt.path()), qPrintable(m_dirBuilt.path()));
    CLookStage::Prepare();
    m_listLook = AllLooks();
}

void tst_Looks::cleanupTestCase()
{
    SaveSheet();
    // The script takes over nothing of a run that did not come to its end.
    if (m_nLooked > 0 && m_nLooked == m_listLook.size()) {
        Note("complete", QString());
    }
}

void tst_Looks::Note(const char* pWhat, const QString& strName)
{
    QFile file(m_dirBuilt.filePath("outcome"));
    QVERIFY(file.open(QIODevice::Append));
    const QByteArray baLine = strName.isEmpty() ? QByteArray(pWhat) : pWhat + (' ' + strName.toUtf8());
    file.write(baLine + '\n');
}

void tst_Looks::windowHasTheScale()
{
    const CLookStage stage;
    QCOMPARE(stage.Picture().size(), (QSizeF(1120, 690) * m_strScale.toDouble()).toSize());
}

void tst_Looks::look_data()
{
    QTest::addColumn<int>("nLook");
    for (int nLook = 0; nLook < m_listLook.size(); ++nLook) {
        QTest::newRow(qPrintable(m_listLook.at(nLook).strName)) << nLook;
    }
}

void tst_Looks::look()
{
    QFETCH(int, nLook);
    const QString strName = m_listLook.at(nLook).strName;
    const QImage img = m_listLook.at(nLook).fnPicture().convertToFormat(QImage::Format_RGB888);
    QVERIFY2(!img.isNull(), "the state does not come up");
    // Of least size: the references are kept for good.
    QVERIFY2(img.save(Built(strName), "PNG", 0), qPrintable(Built(strName)));
    ++m_nLooked;

    const QImage imgReference(Reference(strName));
    if (imgReference.isNull()) {
        Note("new", strName);
        QFAIL(qPrintable(QString("no reference %1; the picture is %2; scripts/looks takes it over")
                             .arg(Reference(strName), Built(strName))));
    }
    const CPictureCompare compare(imgReference, img, m_strScale.toDouble());
    if (compare.IsSame()) {
        Note("same", strName);
        return;
    }
    Note("changed", strName);
    m_listDifferent.append(strName);
    imgReference.save(Built(strName + "-reference"));
    compare.Marked().save(Built(strName + "-difference"));
    QFAIL(qPrintable(
        QString("%1\n   picture    %2\n   reference  %3\n   difference %4")
            .arg(compare.Message(), Built(strName), Reference(strName), Built(strName + "-difference"))));
}

void tst_Looks::eachReferenceHasAState()
{
    QStringList listState;
    for (const STLook& look : qAsConst(m_listLook)) {
        QVERIFY2(!listState.contains(look.strName), qPrintable(look.strName));
        listState.append(look.strName);
    }
    QStringList listUnused;
    for (const QFileInfo& file : m_dirReference.entryInfoList(QDir::Files)) {
        if (file.suffix() != "png" || !listState.contains(file.completeBaseName())) {
            listUnused.append(file.fileName());
            Note("unused", file.fileName());
        }
    }
    QVERIFY2(listUnused.isEmpty(), qPrintable(listUnused.join(' ')));
}

/** One changed state in the sheet: its pictures in one line below its name. */
static QImage SheetRow(const QString& strName, const QList<QImage>& listPicture)
{
    QList<QImage> listScaled;
    int nHeight = 0;
    for (const QImage& imgPicture : listPicture) {
        const int nWidth = qMin(imgPicture.width(), SHEET_WIDTH);
        listScaled.append(imgPicture.scaledToWidth(nWidth, Qt::SmoothTransformation));
        nHeight = qMax(nHeight, listScaled.last().height());
    }
    QImage imgRow(listPicture.size() * (SHEET_WIDTH + SHEET_GAP), nHeight + SHEET_TITLE,
                  QImage::Format_RGB32);
    imgRow.fill(Qt::lightGray);
    QPainter painter(&imgRow);
    painter.drawText(QRect(0, 0, imgRow.width(), SHEET_TITLE), Qt::AlignVCenter,
                     strName + ": reference, difference, now");
    for (int n = 0; n < listScaled.size(); ++n) {
        painter.drawImage(n * (SHEET_WIDTH + SHEET_GAP), SHEET_TITLE, listScaled.at(n));
    }
    return imgRow;
}

void tst_Looks::SaveSheet() const
{
    QList<QImage> listRow;
    QSize size(0, SHEET_GAP);
    for (const QString& strName : m_listDifferent) {
        listRow.append(SheetRow(strName,
                                {QImage(Built(strName + "-reference")),
                                 QImage(Built(strName + "-difference")), QImage(Built(strName))}));
        size = QSize(qMax(size.width(), listRow.last().width()),
                     size.height() + listRow.last().height() + SHEET_GAP);
    }
    if (listRow.isEmpty()) {
        return;
    }
    QImage imgSheet(size, QImage::Format_RGB32);
    imgSheet.fill(Qt::lightGray);
    QPainter painter(&imgSheet);
    int nTop = SHEET_GAP;
    for (const QImage& img : qAsConst(listRow)) {
        painter.drawImage(0, nTop, img);
        nTop += img.height() + SHEET_GAP;
    }
    painter.end();
    imgSheet.save(m_dirBuilt.filePath("changes.png"));
}

int main(int argc, char** argv)
{
    const STScale scale = CLookStage::PrepareScale(qEnvironmentVariableIntValue("TARNWICK_SCREEN_WIDTH"));
    QApplication application(argc, argv);
    tst_Looks test(scale);
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_Looks.moc"
