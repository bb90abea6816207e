#include "tree/CEntryIcon.h"

#include <QApplication>
#include <QFileIconProvider>
#include <QProxyStyle>
#include <QTest>

static QPixmap Plain(const QColor& color)
{
    QPixmap pixmap(32, 32);
    pixmap.fill(color);
    return pixmap;
}

/** A style with a picture of one colour for each of the icons that are asked of it. */
class CColourStyle : public QProxyStyle
{
public:
    QIcon standardIcon(StandardPixmap enIcon, const QStyleOption*, const QWidget*) const override
    {
        return QIcon(Plain(ColourOf(enIcon)));
    }

    static QColor ColourOf(StandardPixmap enIcon) { return QColor(int(enIcon) * 2, 100, 200); }
};

Q_DECLARE_METATYPE(ENEntryKind)
Q_DECLARE_METATYPE(QStyle::StandardPixmap)

/** Which icons a Mac's source takes from Qt. */
class tst_MacIcons : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void iconOfAKind_data();
    void iconOfAKind();
    void onePerKind();
};

void tst_MacIcons::initTestCase() { QApplication::setStyle(new CColourStyle); }

void tst_MacIcons::iconOfAKind_data()
{
    QTest::addColumn<ENEntryKind>("enKind");
    QTest::addColumn<QStyle::StandardPixmap>("enIcon");
    QTest::newRow("file") << ENEntryKind::FILE << QStyle::SP_FileIcon;
    QTest::newRow("folder") << ENEntryKind::FOLDER << QStyle::SP_DirIcon;
    QTest::newRow("volume") << ENEntryKind::VOLUME << QStyle::SP_DriveHDIcon;
    QTest::newRow("link to a file") << ENEntryKind::FILE_LINK << QStyle::SP_FileLinkIcon;
    QTest::newRow("link to a folder") << ENEntryKind::FOLDER_LINK << QStyle::SP_DirLinkIcon;
}

/** Where the platform has no icons for files, Qt's provider takes them from the style. */
void tst_MacIcons::iconOfAKind()
{
    QFETCH(ENEntryKind, enKind);
    QFETCH(QStyle::StandardPixmap, enIcon);
    const QImage image = CEntryIcon::Make(enKind).pixmap(32, 32).toImage();
    QCOMPARE(image.pixelColor(16, 16), CColourStyle::ColourOf(enIcon));
}

void tst_MacIcons::onePerKind()
{
    for (const ENEntryKind enKind : {ENEntryKind::FILE, ENEntryKind::FOLDER, ENEntryKind::VOLUME,
                                     ENEntryKind::FILE_LINK, ENEntryKind::FOLDER_LINK}) {
        QVERIFY(!CEntryIcon::Of(enKind).isNull());
        QCOMPARE(CEntryIcon::Of(enKind).cacheKey(), CEntryIcon::Of(enKind).cacheKey());
    }
}

QTEST_MAIN(tst_MacIcons)
#include "tst_MacIcons.moc"
