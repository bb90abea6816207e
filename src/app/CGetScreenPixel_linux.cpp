#include "app/CGetScreenPixel.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>
#include <QWidget>

#include <cstdlib>
#include <memory>
#include <xcb/randr.h>
#include <xcb/xcb.h>

namespace {

struct STFree
{
    void operator()(void* pReply) const { std::free(pReply); }
};

template <typename TReply> using TReplyPtr = std::unique_ptr<TReply, STFree>;

struct STDisconnect
{
    void operator()(xcb_connection_t* pConnection) const { xcb_disconnect(pConnection); }
};

// The screen's width as the window system reports it. The application object
// does not exist yet when this is asked, so Qt's own screen list is of no use.
class ScreenPixelClass
{
public:
    int GetScreenResolution() const;
};

} // namespace

static int WidthOfOutput(xcb_connection_t* pConnection, xcb_randr_output_t nOutput)
{
    const TReplyPtr<xcb_randr_get_output_info_reply_t> pOutput(xcb_randr_get_output_info_reply(
        pConnection, xcb_randr_get_output_info(pConnection, nOutput, XCB_CURRENT_TIME), nullptr));
    if (!pOutput || pOutput->crtc == XCB_NONE) {
        return 0;
    }
    const TReplyPtr<xcb_randr_get_crtc_info_reply_t> pCrtc(xcb_randr_get_crtc_info_reply(
        pConnection, xcb_randr_get_crtc_info(pConnection, pOutput->crtc, XCB_CURRENT_TIME), nullptr));
    return pCrtc ? pCrtc->width : 0;
}

static int WidthFromXServer()
{
    int nScreen = 0;
    const std::unique_ptr<xcb_connection_t, STDisconnect> pConnection(xcb_connect(nullptr, &nScreen));
    if (xcb_connection_has_error(pConnection.get())) {
        return 0;
    }
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(pConnection.get()));
    for (; nScreen > 0 && it.rem > 1; --nScreen) {
        xcb_screen_next(&it);
    }
    if (it.rem == 0) {
        return 0;
    }
    const xcb_screen_t* pRoot = it.data;
    const TReplyPtr<xcb_randr_get_output_primary_reply_t> pPrimary(xcb_randr_get_output_primary_reply(
        pConnection.get(), xcb_randr_get_output_primary(pConnection.get(), pRoot->root), nullptr));
    const int nPrimary
        = pPrimary && pPrimary->output != XCB_NONE ? WidthOfOutput(pConnection.get(), pPrimary->output) : 0;
    // Without a primary output the one screen that the server has is the main one.
    return nPrimary > 0 ? nPrimary : pRoot->width_in_pixels;
}

static int WidthFromFrameBuffer()
{
    QFile file(QStringLiteral("/sys/class/graphics/fb0/virtual_size"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    return file.readAll().split(',').value(0).trimmed().toInt();
}

int ScreenPixelClass::GetScreenResolution() const
{
    const int nWidth = WidthFromXServer();
    return CGetScreenPixel::WholePoints(nWidth > 0 ? nWidth : WidthFromFrameBuffer());
}

int CGetScreenPixel::GetScreen() { return ScreenPixelClass().GetScreenResolution(); }

void CGetScreenPixel::SetFourKFunciton(unsigned long long nWindowId)
{
    if (const QWidget* pView = QWidget::find(WId(nWindowId))) {
        (void)pView->window();
    }
}

void CGetScreenPixel::OpenSysSecurity()
{
    QDesktopServices::openUrl(
        QUrl::fromLocalFile(QStringLiteral("/System/Library/PreferencePanes/Security.prefPane")));
}
