#include "visual/CLookStage.h"

#include "app/CFontFallback.h"
#include "app/CTarnwickMacPE.h"
#include "disk/CDiskListener.h"
#include "files/CFileNameCodec.h"
#include "pages/CCopyFileWidget.h"
#include "pages/CPageTree.h"
#include "pages/CSelFileWidget.h"
#include "support/CModalAnswerer.h"
#include "support/TestFiles.h"
#include "tree/CDirModel.h"
#include "tree/CDirNode.h"
#include "tree/CFileTreeView.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMovie>
#include <QPainter>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QWindow>

static const int GROUND_MARGIN = 8;
// So pale that the edge of a white panel does not drown its shadow.
static const QColor GROUND_COLOR(208, 208, 208);
// What is seen around a part, in pixels of the window.
static const int AROUND = 12;
// In the middle of a check box, from the left edge of its row.
static const int BOX_X = 7;

STScale CLookStage::PrepareScale(int nWidth)
{
    // What somebody has set for other programs on this machine.
    for (const char* pName : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_AUTO_SCREEN_SCALE_FACTOR",
                              "QT_ENABLE_HIGHDPI_SCALING", "QT_SCALE_FACTOR_ROUNDING_POLICY", "QT_FONT_DPI",
                              "QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME"}) {
        qunsetenv(pName);
    }
    return CStartUp::ApplyScale(nWidth);
}

void CLookStage::Prepare()
{
    CFileNameCodec::Install();
    CFontFallback::Install();
    qApp->setStyleSheet(CStartUp::StyleSheetText(Content(":/res/TarnwickMacPE.qss")));
    // The listener keeps its first receiver: no window here hears of real mounts.
    CDiskListener::GetInstance().StartListener([](STDiskNotication*, void*) {}, nullptr);
}

CLookStage::CLookStage()
    : m_source("Macintosh HD", "/dev/nvme0n1p1", 100)
{
    if (!m_source.IsValid()) {
        qFatal("fixture failed: volumes cannot be mounted here");
    }
    m_commands.Add("bash", "cat >/dev/null");
    m_commands.Add("rm");
    m_commands.Add("diskutil");
    FillSource();
    CPageTree::Clear();
    m_pWindow = std::make_unique<CTarnwickMacPE>();
    m_pWindow->show();
    if (!QTest::qWaitForWindowActive(m_pWindow.get())) {
        qFatal("fixture failed: the window does not become active");
    }
}

CLookStage::~CLookStage()
{
    const QWidgetList listTop = QApplication::topLevelWidgets();
    for (QWidget* pTop : listTop) {
        if (pTop != m_pWindow.get()) {
            pTop->hide();
        }
    }
    m_pWindow.reset();
    CPageTree::Clear();
}

void CLookStage::FillSource() const
{
    QString strDeep = "Deep";
    for (int n = 1; n <= 24; ++n) {
        strDeep += QString("/level %1").arg(n);
        WriteFile(m_source.Path(strDeep + "/photo.jpg"));
    }
    const QString strNames = "Names/of a folder whose name is nearly as long as the names that are in it/";
    for (const char* pName :
         {"Minutes of the meeting of the tenants of the house at the river, with all its annexes.pdf",
          "Résumé, naïve façade, Größe, żółć, őrült.txt",
          "Письмо бабушке о летних каникулах у моря и в горах.doc", "家族の写真と動画の保存用フォルダー.zip",
          "<b>bold<b> &amp; \"quoted\".txt", "x"}) {
        WriteFile(m_source.Path(strNames + pName));
    }
    for (const char* pPath :
         {"Applications/Notes.txt", "Library/Caches/cache.db", "Users/anna/Desktop/To do.txt",
          "Users/anna/Documents/Letter to the bank.odt", "Users/anna/Documents/Taxes 2025.pdf",
          "Users/anna/Music/Lullaby.mp3", "Users/anna/Pictures/IMG_0001.jpg",
          "Users/anna/Pictures/IMG_0002.jpg", "Users/anna/Pictures/IMG_0003.jpg",
          "Users/anna/Pictures/Summer/IMG_0104.jpg", "Users/bernd/Documents/Contract.pdf"}) {
        WriteFile(m_source.Path(pPath));
    }
}

CVolume& CLookStage::AddStick(const QString& strName, int nMiB)
{
    const QString strNode = QString("/dev/sd%1").arg(QChar('b' + int(m_listStick.size())));
    m_listStick.push_back(std::make_unique<CVolume>(strName, strNode, nMiB));
    // In the order in which they are plugged in; the folder of volumes has an order of its own.
    SelectPage()->AddDisk(QFileInfo(m_listStick.back()->Path()));
    SelectPage()->OnRefreshUSB();
    return *m_listStick.back();
}

CTarnwickMacPE* CLookStage::Window() const { return m_pWindow.get(); }

CSelFileWidget* CLookStage::SelectPage() const
{
    return m_pWindow->findChild<CSelFileWidget*>("m_pSelFilePage");
}

CCopyFileWidget* CLookStage::CopyPage() const
{
    return m_pWindow->findChild<CCopyFileWidget*>("m_pCopyFilePage");
}

CFileTreeView* CLookStage::Tree() const { return m_pWindow->findChild<CFileTreeView*>(); }

QWidget* CLookStage::Part(const char* pName) const
{
    const QList<QWidget*> listWidget = m_pWindow->findChildren<QWidget*>(pName);
    for (QWidget* pWidget : listWidget) {
        if (pWidget->isVisible() && pWidget->window() == m_pWindow.get()) {
            return pWidget;
        }
    }
    qFatal("the window shows no part %s", pName);
}

QPushButton* CLookStage::Button(const char* pName) const
{
    auto* pButton = qobject_cast<QPushButton*>(Part(pName));
    if (!pButton) {
        qFatal("%s is no button", pName);
    }
    return pButton;
}

QModelIndex CLookStage::Row(const QString& strPath) const
{
    const CDirModel* pModel = CDirModel::GetInstence();
    const QString strFull = strPath.isEmpty() ? m_source.Path() : m_source.Path(strPath);
    QModelIndex parent;
    for (int n = 0; n < pModel->rowCount(parent);) {
        const QModelIndex index = pModel->index(n, 0, parent);
        const QString strEntry = pModel->nodeFromIndex(index)->m_fileInfo.absoluteFilePath();
        if (strEntry == strFull) {
            return index;
        }
        if (strFull.startsWith(strEntry + '/')) {
            Tree()->expand(index);
            parent = index;
            n = 0;
            continue;
        }
        ++n;
    }
    qFatal("the tree has no row %s", qPrintable(strFull));
}

void CLookStage::Expand(const QString& strPath) const { Tree()->expand(Row(strPath)); }

void CLookStage::Tick(const QString& strPath) const
{
    const QModelIndex index = Row(strPath);
    Tree()->scrollTo(index);
    const QRect rect = Tree()->visualRect(index);
    QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(rect.left() + BOX_X, rect.center().y()));
}

void CLookStage::BeginCopy() const
{
    emit SelectPage()->SignalCopyFile();
    // Nothing is ticked and no event is handled before the picture: the worker's end stays unheard.
    CopyPage()->SetCopyStatus(COPY_STATUS_PAUSE);
}

void CLookStage::Hover(QWidget* pWidget, const QPoint& pt)
{
    QWindow* pWindow = pWidget->window()->windowHandle();
    QTest::mouseMove(pWindow, QPoint(1, 1));
    QTest::mouseMove(pWindow, pWidget->mapTo(pWidget->window(), pt));
    if (!pWidget->underMouse()) {
        qFatal("the mouse is not over %s", qPrintable(pWidget->objectName()));
    }
}

void CLookStage::Hover(QWidget* pWidget) { Hover(pWidget, pWidget->rect().center()); }

// Animations stand at their first picture, and what has changed has found its place.
static void HoldStill(QWidget* pWidget)
{
    for (const QLabel* pLabel : pWidget->findChildren<QLabel*>()) {
        if (QMovie* pMovie = pLabel->movie()) {
            pMovie->stop();
            pMovie->jumpToFrame(0);
        }
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

QImage CLookStage::Picture() const
{
    HoldStill(m_pWindow.get());
    QImage img = m_pWindow->grab().toImage().convertToFormat(QImage::Format_RGB32);
    QPainter painter(&img);
    const QWidgetList listTop = QApplication::topLevelWidgets();
    for (QWidget* pTop : listTop) {
        if (pTop->isVisible() && pTop->windowType() == Qt::Popup) {
            painter.drawPixmap(pTop->pos() - m_pWindow->pos(), pTop->grab());
        }
    }
    return img;
}

QImage CLookStage::Picture(const QWidget* pWidget) const
{
    const QImage img = Picture();
    const double dScale = img.devicePixelRatioF();
    const QRect rect(pWidget->mapTo(m_pWindow.get(), QPoint()), pWidget->size());
    const QRect rectSeen = rect.adjusted(-AROUND, -AROUND, AROUND, AROUND) & m_pWindow->rect();
    return img.copy(QRectF(QPointF(rectSeen.topLeft()) * dScale, QSizeF(rectSeen.size()) * dScale).toRect());
}

QImage CLookStage::OnGround(QWidget* pDialog)
{
    HoldStill(pDialog);
    const QPixmap pixmap = pDialog->grab();
    const double dScale = pixmap.devicePixelRatioF();
    const QSize size = pDialog->size() + QSize(2 * GROUND_MARGIN, 2 * GROUND_MARGIN);
    QImage img(size * dScale, QImage::Format_RGB32);
    img.setDevicePixelRatio(dScale);
    img.fill(GROUND_COLOR);
    QPainter(&img).drawPixmap(GROUND_MARGIN, GROUND_MARGIN, pixmap);
    return img;
}

QImage CLookStage::DuringModal(const std::function<void()>& fnOpen, const QString& strAnswer,
                               const std::function<QImage(QWidget*)>& fnSee)
{
    QImage img;
    CModalAnswerer answerer(strAnswer);
    answerer.Meanwhile([&] {
        QWidget* pDialog = QApplication::activeModalWidget();
        if (QTest::qWaitForWindowActive(pDialog)) {
            img = fnSee(pDialog);
        }
    });
    fnOpen();
    return img;
}
