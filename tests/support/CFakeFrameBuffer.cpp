#include "support/CFakeFrameBuffer.h"

#include <cstdarg>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/fb.h>
#include <sys/mman.h>
#include <unistd.h>

static const char DEVICE[] = "/dev/fb0";
static const int PIXEL_BYTES = 4;

static int s_nMemory = -1;
static QSize s_size;

void CFakeFrameBuffer::Make(const QSize& size, QRgb nLeftOver)
{
    s_size = size;
    s_nMemory = memfd_create("frame buffer", MFD_CLOEXEC);
    QImage image(size, QImage::Format_RGB32);
    image.fill(nLeftOver);
    if (write(s_nMemory, image.constBits(), size_t(image.sizeInBytes())) != image.sizeInBytes()) {
        qFatal("no room for a frame buffer");
    }
}

QImage CFakeFrameBuffer::Picture()
{
    QImage image(s_size, QImage::Format_RGB32);
    if (pread(s_nMemory, image.bits(), size_t(image.sizeInBytes()), 0) != image.sizeInBytes()) {
        return QImage();
    }
    return image;
}

static bool IsOurs(const char* pszPath) { return s_nMemory >= 0 && pszPath && strcmp(pszPath, DEVICE) == 0; }

static bool IsOurs(int nDescriptor) { return s_nMemory >= 0 && nDescriptor == s_nMemory; }

static void Describe(fb_fix_screeninfo* pInfo)
{
    *pInfo = {};
    strcpy(pInfo->id, "memory");
    pInfo->smem_len = __u32(s_size.width() * s_size.height() * PIXEL_BYTES);
    pInfo->line_length = __u32(s_size.width() * PIXEL_BYTES);
    pInfo->visual = FB_VISUAL_TRUECOLOR;
}

static void Describe(fb_var_screeninfo* pInfo)
{
    *pInfo = {};
    pInfo->xres = pInfo->xres_virtual = __u32(s_size.width());
    pInfo->yres = pInfo->yres_virtual = __u32(s_size.height());
    pInfo->bits_per_pixel = PIXEL_BYTES * 8;
    pInfo->red = {16, 8, 0};
    pInfo->green = {8, 8, 0};
    pInfo->blue = {0, 8, 0};
}

extern "C" {

int open64(const char* pszPath, int nFlags, ...)
{
    va_list arguments;
    va_start(arguments, nFlags);
    const mode_t nMode = (nFlags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (IsOurs(pszPath)) {
        return s_nMemory;
    }
    static const auto s_pfnReal = reinterpret_cast<decltype(&open64)>(dlsym(RTLD_NEXT, "open64"));
    return s_pfnReal(pszPath, nFlags, nMode);
}

int access(const char* pszPath, int nMode) noexcept
{
    static const auto s_pfnReal = reinterpret_cast<decltype(&access)>(dlsym(RTLD_NEXT, "access"));
    return IsOurs(pszPath) ? 0 : s_pfnReal(pszPath, nMode);
}

int ioctl(int nDescriptor, unsigned long nRequest, ...) noexcept
{
    va_list arguments;
    va_start(arguments, nRequest);
    void* pArgument = va_arg(arguments, void*);
    va_end(arguments);
    if (!IsOurs(nDescriptor)) {
        static const auto s_pfnReal = reinterpret_cast<decltype(&ioctl)>(dlsym(RTLD_NEXT, "ioctl"));
        return s_pfnReal(nDescriptor, nRequest, pArgument);
    }
    if (nRequest == FBIOGET_FSCREENINFO) {
        Describe(static_cast<fb_fix_screeninfo*>(pArgument));
    } else if (nRequest == FBIOGET_VSCREENINFO) {
        Describe(static_cast<fb_var_screeninfo*>(pArgument));
    }
    return 0;
}

} // extern "C"
