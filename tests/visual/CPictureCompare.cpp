#include "visual/CPictureCompare.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

// Lengths in pixels of the window.
static const double CELL_SIDE = 8;
static const double CELL_STEP = 4;
static const double BELL_SIGMA = 0.8;
static const double DETAIL_REACH = 2; ///< beyond a cell: a letter at its edge may stand on either side of it
static const double SHIFTS[] = {0, -0.25, 0.25, -0.5, 0.5};

// Of 255 shades: what may differ in a plain cell, and the share of the common detail on top of it.
static const double ALLOWED_PLAIN = 1.4;
static const double ALLOWED_SHARE = 0.45;

static const int CHANNELS = 3;

const QColor CPictureCompare::FRAME_COLOR(220, 0, 90);

namespace {

/** One colour channel of a part of a picture, with a border of repeated edge pixels read as needed. */
class CPlane
{
public:
    CPlane() = default;
    CPlane(int nWidth, int nHeight)
        : m_nWidth(nWidth)
        , m_nHeight(nHeight)
        , m_listValue(size_t(nWidth) * size_t(nHeight))
    {
    }

    int Width() const { return m_nWidth; }
    int Height() const { return m_nHeight; }
    float& At(int nX, int nY) { return m_listValue[size_t(nY) * size_t(m_nWidth) + size_t(nX)]; }

    float Near(int nX, int nY) const
    {
        const int nColumn = qBound(0, nX, m_nWidth - 1);
        const int nRow = qBound(0, nY, m_nHeight - 1);
        return m_listValue[size_t(nRow) * size_t(m_nWidth) + size_t(nColumn)];
    }

    /** The value between pixels. */
    float Between(double dX, double dY) const
    {
        const int nX = int(std::floor(dX));
        const int nY = int(std::floor(dY));
        const auto fX = float(dX - nX);
        const auto fY = float(dY - nY);
        const float fTop = Near(nX, nY) * (1 - fX) + Near(nX + 1, nY) * fX;
        const float fBottom = Near(nX, nY + 1) * (1 - fX) + Near(nX + 1, nY + 1) * fX;
        return fTop * (1 - fY) + fBottom * fY;
    }

private:
    int m_nWidth = 0;
    int m_nHeight = 0;
    std::vector<float> m_listValue;
};

using CPlanes = std::array<CPlane, CHANNELS>;

} // namespace

static std::vector<float> Bell(double dSigma)
{
    const int nReach = std::max(1, int(std::ceil(2 * dSigma)));
    std::vector<float> listWeight;
    float fSum = 0;
    for (int n = -nReach; n <= nReach; ++n) {
        listWeight.push_back(float(std::exp(-n * n / (2 * dSigma * dSigma))));
        fSum += listWeight.back();
    }
    for (float& fWeight : listWeight) {
        fWeight /= fSum;
    }
    return listWeight;
}

static CPlane Softened(const CPlane& plane, const std::vector<float>& listWeight, int nStepX, int nStepY)
{
    const int nReach = int(listWeight.size() / 2);
    CPlane planeSoft(plane.Width(), plane.Height());
    for (int nY = 0; nY < plane.Height(); ++nY) {
        for (int nX = 0; nX < plane.Width(); ++nX) {
            float fSum = 0;
            for (int n = -nReach; n <= nReach; ++n) {
                fSum += listWeight[size_t(n + nReach)] * plane.Near(nX + n * nStepX, nY + n * nStepY);
            }
            planeSoft.At(nX, nY) = fSum;
        }
    }
    return planeSoft;
}

static CPlanes SoftPlanes(const QImage& img, double dScale)
{
    const std::vector<float> listWeight = Bell(BELL_SIGMA * dScale);
    CPlanes planes;
    for (size_t nChannel = 0; nChannel < CHANNELS; ++nChannel) {
        CPlane plane(img.width(), img.height());
        for (int nY = 0; nY < img.height(); ++nY) {
            const auto* pLine = reinterpret_cast<const QRgb*>(img.constScanLine(nY));
            for (int nX = 0; nX < img.width(); ++nX) {
                plane.At(nX, nY) = float((pLine[nX] >> (8 * nChannel)) & 0xFF);
            }
        }
        planes[nChannel] = Softened(Softened(plane, listWeight, 1, 0), listWeight, 0, 1);
    }
    return planes;
}

/** Mean of what fnValue gives for each pixel of a rectangle. */
template <class Function> static double Mean(const QRect& rect, const Function& fnValue)
{
    double dSum = 0;
    for (int nY = rect.top(); nY <= rect.bottom(); ++nY) {
        for (int nX = rect.left(); nX <= rect.right(); ++nX) {
            dSum += double(fnValue(nX, nY));
        }
    }
    return dSum / (double(rect.width()) * rect.height());
}

/** Mean distance of the values in a rectangle from their mean: 0 for a plain one. */
static double Detail(const CPlane& plane, const QRect& rect)
{
    const double dMean = Mean(rect, [&plane](int nX, int nY) { return plane.Near(nX, nY); });
    return Mean(rect, [&](int nX, int nY) { return std::abs(double(plane.Near(nX, nY)) - dMean); });
}

static double MeanDifference(const CPlane& planeReference, const CPlane& planeActual, const QRect& rect,
                             const QPointF& ptShift)
{
    return Mean(rect, [&](int nX, int nY) {
        const float fReference = planeReference.Between(nX + ptShift.x(), nY + ptShift.y());
        return std::abs(fReference - planeActual.Near(nX, nY));
    });
}

/** How often the allowed difference a cell has, at the shift at which it fits best. */
static double TimesAllowed(const CPlanes& reference, const CPlanes& actual, const QRect& rect, double dScale)
{
    const int nReach = qRound(DETAIL_REACH * dScale);
    const QRect rectDetail = rect.adjusted(-nReach, -nReach, nReach, nReach);
    std::array<double, CHANNELS> listAllowed{};
    for (size_t n = 0; n < CHANNELS; ++n) {
        const double dCommon = std::min(Detail(reference[n], rectDetail), Detail(actual[n], rectDetail));
        listAllowed[n] = ALLOWED_PLAIN + ALLOWED_SHARE * dCommon;
    }
    double dBest = std::numeric_limits<double>::max();
    for (const double dX : SHIFTS) {
        for (const double dY : SHIFTS) {
            double dTimes = 0;
            for (size_t n = 0; n < CHANNELS; ++n) {
                const double dDifference
                    = MeanDifference(reference[n], actual[n], rect, QPointF(dX, dY) * dScale);
                dTimes = std::max(dTimes, dDifference / listAllowed[n]);
            }
            dBest = std::min(dBest, dTimes);
            if (dBest <= 1) {
                return dBest; // good enough: most cells end here, at the first place
            }
        }
    }
    return dBest;
}

/** The smallest rectangle outside of which the pictures, of one size, are equal in each pixel. */
static QRect UnequalPart(const QImage& imgLeft, const QImage& imgRight)
{
    int nLeft = imgLeft.width();
    int nRight = -1;
    int nTop = imgLeft.height();
    int nBottom = -1;
    for (int nY = 0; nY < imgLeft.height(); ++nY) {
        const auto* pLeft = reinterpret_cast<const QRgb*>(imgLeft.constScanLine(nY));
        const auto* pRight = reinterpret_cast<const QRgb*>(imgRight.constScanLine(nY));
        for (int nX = 0; nX < imgLeft.width(); ++nX) {
            if (pLeft[nX] != pRight[nX]) {
                nLeft = std::min(nLeft, nX);
                nRight = std::max(nRight, nX);
                nTop = std::min(nTop, nY);
                nBottom = nY;
            }
        }
    }
    return QRect(QPoint(nLeft, nTop), QPoint(nRight, nBottom));
}

CPictureCompare::CPictureCompare(const QImage& imgReference, const QImage& imgActual, double dScale)
    : m_imgActual(imgActual.convertToFormat(QImage::Format_RGB32))
    , m_sizeReference(imgReference.size())
{
    m_imgActual.setDevicePixelRatio(1);
    if (m_sizeReference == imgActual.size()) {
        Compare(imgReference.convertToFormat(QImage::Format_RGB32), dScale);
    }
}

void CPictureCompare::Compare(const QImage& imgReference, double dScale)
{
    const QRect rectUnequal = UnequalPart(imgReference, m_imgActual);
    if (rectUnequal.isEmpty()) {
        return;
    }
    const int nSide = qRound(CELL_SIDE * dScale);
    const int nStep = qRound(CELL_STEP * dScale);
    // Softening and shifting reach a little over the part; a cell reaches over it by less than its side.
    const QRect rectPart
        = rectUnequal.adjusted(-2 * nSide, -2 * nSide, 2 * nSide, 2 * nSide) & imgReference.rect();
    const CPlanes reference = SoftPlanes(imgReference.copy(rectPart), dScale);
    const CPlanes actual = SoftPlanes(m_imgActual.copy(rectPart), dScale);
    // The grid is that of the whole picture, so that a cell is the same wherever the part begins.
    const QPoint ptFirst(-(rectPart.left() % nStep), -(rectPart.top() % nStep));
    const QRect rectPlanes(QPoint(), rectPart.size());
    for (int nY = ptFirst.y(); nY < rectPart.height(); nY += nStep) {
        for (int nX = ptFirst.x(); nX < rectPart.width(); nX += nStep) {
            QRect rectCell(nX, nY, nSide, nSide);
            // Whole cells at the edges, too: a narrow one would be judged more strictly.
            rectCell.moveRight(std::min(rectCell.right(), rectPlanes.right()));
            rectCell.moveBottom(std::min(rectCell.bottom(), rectPlanes.bottom()));
            rectCell &= rectPlanes;
            const double dTimes = TimesAllowed(reference, actual, rectCell, dScale);
            if (dTimes > 1) {
                m_listCell.append({rectCell.translated(rectPart.topLeft()), dTimes});
            }
        }
    }
}

bool CPictureCompare::IsSame() const { return Message().isEmpty(); }

const QVector<STDifferentCell>& CPictureCompare::Cells() const { return m_listCell; }

QString CPictureCompare::Message() const
{
    if (m_sizeReference != m_imgActual.size()) {
        return QString::asprintf("the picture is %d x %d pixels, the reference %d x %d", m_imgActual.width(),
                                 m_imgActual.height(), m_sizeReference.width(), m_sizeReference.height());
    }
    if (m_listCell.isEmpty()) {
        return QString();
    }
    QRect rectAll;
    STDifferentCell worst;
    for (const STDifferentCell& cell : m_listCell) {
        rectAll |= cell.rect;
        worst = cell.dTimes > worst.dTimes ? cell : worst;
    }
    return QString::asprintf(
        "%d cells differ, all between (%d, %d) and (%d, %d), most at (%d, %d): %.1f times "
        "what is allowed",
        m_listCell.size(), rectAll.left(), rectAll.top(), rectAll.right(), rectAll.bottom(),
        worst.rect.left(), worst.rect.top(), worst.dTimes);
}

QImage CPictureCompare::Marked() const
{
    QImage img = m_imgActual;
    QPainter painter(&img);
    painter.fillRect(img.rect(), QColor(255, 255, 255, 170));
    QRegion region;
    for (const STDifferentCell& cell : m_listCell) {
        region += cell.rect;
        painter.drawImage(cell.rect.topLeft(), m_imgActual, cell.rect);
    }
    painter.setPen(QPen(FRAME_COLOR, 2));
    for (const QRect& rect : region) {
        painter.drawRect(rect.adjusted(-1, -1, 1, 1));
    }
    return img;
}
