#include "support/probe/CProbe.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QListWidget>
#include <QLocalSocket>
#include <QTextDocument>
#include <QTreeView>

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

CProbe::CProbe(const QString& strSocket)
    : QObject(QCoreApplication::instance())
{
    QLocalServer::removeServer(strSocket);
    connect(&m_server, &QLocalServer::newConnection, this, &CProbe::SlotConnected);
    if (!m_server.listen(strSocket)) {
        qFatal("probe: %s", qPrintable(m_server.errorString()));
    }
}

void CProbe::SlotConnected()
{
    while (QLocalSocket* pSocket = m_server.nextPendingConnection()) {
        connect(pSocket, &QLocalSocket::disconnected, pSocket, &QObject::deleteLater);
        connect(pSocket, &QLocalSocket::readyRead, this, [this, pSocket] {
            while (pSocket->canReadLine()) {
                const QJsonObject objQuestion = QJsonDocument::fromJson(pSocket->readLine()).object();
                pSocket->write(QJsonDocument(Answer(objQuestion)).toJson(QJsonDocument::Compact) + '\n');
            }
        });
    }
}

// Where a window really is. The window's own idea of it lags behind while the
// window manager is still putting it in its place.
static QPoint PlaceOnScreen(const QWidget* pWindow)
{
    static xcb_connection_t* s_pConnection = xcb_connect(nullptr, nullptr);
    const xcb_window_t nRoot = xcb_setup_roots_iterator(xcb_get_setup(s_pConnection)).data->root;
    const std::unique_ptr<xcb_translate_coordinates_reply_t, decltype(&std::free)> pReply(
        xcb_translate_coordinates_reply(
            s_pConnection,
            xcb_translate_coordinates(s_pConnection, xcb_window_t(pWindow->winId()), nRoot, 0, 0), nullptr),
        &std::free);
    return pReply ? QPoint(pReply->dst_x, pReply->dst_y) : QPoint();
}

// A rectangle in the pixels of the screen, which a scaled window does not count in.
static QJsonObject ScreenRect(const QWidget* pWidget, const QRect& rect)
{
    const qreal fRatio = pWidget->devicePixelRatioF();
    const QPoint ptInWindow = pWidget->mapTo(pWidget->window(), rect.topLeft());
    const QPoint ptWindow = PlaceOnScreen(pWidget->window());
    return {
        {"x", ptWindow.x() + qRound(ptInWindow.x() * fRatio)},
        {"y", ptWindow.y() + qRound(ptInWindow.y() * fRatio)},
        {"w", qRound(rect.width() * fRatio)},
        {"h", qRound(rect.height() * fRatio)},
        {"ratio", fRatio},
    };
}

static QWidget* FindVisible(const QString& strName, const QString& strParent)
{
    for (QWidget* pWidget : QApplication::allWidgets()) {
        if (pWidget->objectName() != strName || !pWidget->isVisible()) {
            continue;
        }
        const QWidget* pParent = pWidget->parentWidget();
        while (!strParent.isEmpty() && pParent && pParent->objectName() != strParent) {
            pParent = pParent->parentWidget();
        }
        if (strParent.isEmpty() || pParent) {
            return pWidget;
        }
    }
    return nullptr;
}

static QJsonObject DescribeWidget(const QWidget* pWidget)
{
    if (!pWidget) {
        return {{"visible", false}};
    }
    QJsonObject obj = ScreenRect(pWidget, pWidget->rect());
    obj["visible"] = true;
    obj["enabled"] = pWidget->isEnabled();
    obj["focus"] = pWidget->hasFocus();
    for (const char* pName : {"text", "value", "currentIndex", "checked"}) {
        const QVariant value = pWidget->property(pName);
        if (value.isValid()) {
            obj[QLatin1String(pName)] = QJsonValue::fromVariant(value);
        }
    }
    return obj;
}

static QJsonObject DescribeModal()
{
    const QWidget* pModal = QApplication::activeModalWidget();
    if (!pModal || !pModal->isVisible()) {
        return {{"open", false}};
    }
    QJsonObject obj = ScreenRect(pModal, pModal->rect());
    obj["open"] = true;
    if (const auto* pLabel = pModal->findChild<QLabel*>("label_text")) {
        QTextDocument document;
        document.setHtml(pLabel->text());
        obj["text"] = document.toPlainText();
    }
    if (const auto* pDetail = pModal->findChild<QLabel*>("label_detail")) {
        obj["detail"] = pDetail->isVisible() ? pDetail->text() : QString();
    }
    QJsonObject objButton;
    for (const QAbstractButton* pButton : pModal->findChildren<QAbstractButton*>()) {
        if (pButton->isVisible()) {
            const QString strKey = pButton->text().isEmpty() ? pButton->objectName() : pButton->text();
            objButton[strKey] = DescribeWidget(pButton);
        }
    }
    obj["buttons"] = objButton;
    return obj;
}

static QModelIndex FindRow(const QTreeView* pView, const QJsonArray& arrPath)
{
    QModelIndex index;
    for (const QJsonValue& name : arrPath) {
        const QModelIndex parent = index;
        index = QModelIndex();
        for (int nRow = 0; nRow < pView->model()->rowCount(parent) && !index.isValid(); ++nRow) {
            const QModelIndex child = pView->model()->index(nRow, 0, parent);
            if (child.data().toString() == name.toString()) {
                index = child;
            }
        }
        if (!index.isValid()) {
            return index;
        }
    }
    return index;
}

static QJsonObject DescribeRow(const QJsonArray& arrPath)
{
    auto* pView = qobject_cast<QTreeView*>(FindVisible("m_pFileTree", QString()));
    const QModelIndex index = pView ? FindRow(pView, arrPath) : QModelIndex();
    if (!index.isValid()) {
        return {{"visible", false}};
    }
    pView->scrollTo(index);
    QJsonObject obj = ScreenRect(pView->viewport(), pView->visualRect(index));
    obj["visible"] = pView->viewport()->rect().intersects(pView->visualRect(index));
    obj["expanded"] = pView->isExpanded(index);
    obj["state"] = index.data(Qt::CheckStateRole).toInt();
    return obj;
}

static QJsonObject DescribeList()
{
    QJsonArray arrItem;
    bool bVisible = false;
    for (const QWidget* pWidget : QApplication::allWidgets()) {
        const auto* pList = qobject_cast<const QListWidget*>(pWidget);
        if (!pList) {
            continue;
        }
        bVisible = pList->isVisible();
        for (int nRow = 0; nRow < pList->count(); ++nRow) {
            QJsonObject obj = ScreenRect(pList->viewport(), pList->visualItemRect(pList->item(nRow)));
            obj["text"] = pList->item(nRow)->text();
            arrItem.append(obj);
        }
    }
    return {{"visible", bVisible}, {"items", arrItem}};
}

static QJsonObject PointerOver(const QWidget* pWidget)
{
    const QPoint pt = QCursor::pos() * pWidget->devicePixelRatioF();
    return {{"over", true}, {"x", pt.x()}, {"y", pt.y()}};
}

// Whether a widget has been told that the pointer is over it: before that a
// click would still go to what was there before.
static QJsonObject DescribePointer()
{
    // A popup gets the mouse wherever it is, and nothing below counts as under it.
    if (const QWidget* pPopup = QApplication::activePopupWidget()) {
        return PointerOver(pPopup);
    }
    const QWidget* pModal = QApplication::activeModalWidget();
    for (const QWidget* pWidget : QApplication::allWidgets()) {
        const QWidget* pWindow = pWidget->window();
        if (!pWidget->isVisible() || !pWidget->underMouse() || (pModal && pWindow != pModal)) {
            continue;
        }
        const qreal fRatio = pWidget->devicePixelRatioF();
        if (QRect(PlaceOnScreen(pWindow), pWindow->size() * fRatio).contains(QCursor::pos() * fRatio)) {
            return PointerOver(pWidget);
        }
    }
    return {{"over", false}};
}

QJsonObject CProbe::Answer(const QJsonObject& objQuestion) const
{
    const QString strAsk = objQuestion["ask"].toString();
    if (strAsk == "widget") {
        return DescribeWidget(FindVisible(objQuestion["name"].toString(), objQuestion["in"].toString()));
    }
    if (strAsk == "modal") {
        return DescribeModal();
    }
    if (strAsk == "row") {
        return DescribeRow(objQuestion["path"].toArray());
    }
    if (strAsk == "pointer") {
        return DescribePointer();
    }
    if (strAsk == "list") {
        return DescribeList();
    }
    return {{"error", "unknown question"}};
}

static void StartProbe()
{
    const QString strSocket = QFile::decodeName(qgetenv("TARNWICK_PROBE"));
    // Children of the program inherit the preloading but have no window to tell of.
    if (!strSocket.isEmpty() && qobject_cast<QApplication*>(QCoreApplication::instance())) {
        new CProbe(strSocket);
    }
}

Q_COREAPP_STARTUP_FUNCTION(StartProbe)
