#include "app/CGetScreenPixel.h"
#include "support/TestFiles.h"

#include <QApplication>
#include <QDesktopServices>
#include <QTest>
#include <QUrl>
#include <QWidget>

#include <sys/mount.h>

/** Receives what the program asks the desktop to open. */
class CUrlReceiver : public QObject
{
    Q_OBJECT

public:
    QUrl m_url;

public slots:
    void SlotUrl(const QUrl& url) { m_url = url; }
};

// Runs on a virtual screen 1712 pixels wide.
class tst_CGetScreenPixel : public QObject
{
    Q_OBJECT

private slots:
    void widthOfTheXServer();
    void widthOfTheFrameBufferWithoutXServer();
    void noScreenAtAll();
    void wholePoints_data();
    void wholePoints();
    void windowHooksLeaveTheWidgetAlone();
    void securityPaneIsAskedOfTheDesktop();

private:
    void WithoutXServer(const QByteArray& baFrameBufferSize, int nExpected);
};

void tst_CGetScreenPixel::widthOfTheXServer() { QCOMPARE(CGetScreenPixel().GetScreen(), 1712); }

void tst_CGetScreenPixel::WithoutXServer(const QByteArray& baFrameBufferSize, int nExpected)
{
    if (mount("fake", "/sys", "tmpfs", 0, nullptr) != 0) {
        QSKIP("nothing can be mounted here");
    }
    if (!baFrameBufferSize.isEmpty()) {
        WriteFile("/sys/class/graphics/fb0/virtual_size", baFrameBufferSize);
    }
    const QByteArray baDisplay = qgetenv("DISPLAY");
    qunsetenv("DISPLAY");
    const int nWidth = CGetScreenPixel().GetScreen();
    qputenv("DISPLAY", baDisplay);
    QCOMPARE(umount2("/sys", MNT_DETACH), 0);
    QCOMPARE(nWidth, nExpected);
}

void tst_CGetScreenPixel::widthOfTheFrameBufferWithoutXServer() { WithoutXServer("1280,1600\n", 1280); }

void tst_CGetScreenPixel::noScreenAtAll() { WithoutXServer(QByteArray(), 0); }

void tst_CGetScreenPixel::wholePoints_data()
{
    QTest::addColumn<double>("fWidth");
    QTest::addColumn<int>("nPoints");

    QTest::newRow("whole") << 2560.0 << 2560;
    QTest::newRow("fraction is cut") << 2560.9 << 2560;
    QTest::newRow("none") << 0.0 << 0;
    QTest::newRow("what single precision cannot hold") << 16777217.0 << 16777216;
}

void tst_CGetScreenPixel::wholePoints()
{
    QFETCH(double, fWidth);
    QTEST(CGetScreenPixel::WholePoints(fWidth), "nPoints");
}

void tst_CGetScreenPixel::windowHooksLeaveTheWidgetAlone()
{
    QWidget widget;
    const Qt::WindowFlags flags = widget.windowFlags();
    const unsigned long long nId = widget.winId();
    CGetScreenPixel screenPixel;
    screenPixel.HideWindowTitle(nId);
    screenPixel.SetFourKFunciton(nId);
    screenPixel.SetFourKFunciton(0);
    QCOMPARE(widget.windowFlags(), flags);
    QVERIFY(!widget.isVisible());
}

void tst_CGetScreenPixel::securityPaneIsAskedOfTheDesktop()
{
    CUrlReceiver receiver;
    QDesktopServices::setUrlHandler("file", &receiver, "SlotUrl");
    CGetScreenPixel().OpenSysSecurity();
    QDesktopServices::unsetUrlHandler("file");
    QCOMPARE(receiver.m_url.toLocalFile(), "/System/Library/PreferencePanes/Security.prefPane");
}

int main(int argc, char** argv)
{
    // The X server is asked by the program itself, before Qt; the widgets of this test need none.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    tst_CGetScreenPixel test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_CGetScreenPixel.moc"
