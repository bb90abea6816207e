#pragma once

#include <QColor>
#include <QImage>
#include <QString>
#include <QVector>

/** A place at which two pictures differ. */
struct STDifferentCell
{
    QRect rect; ///< in pixels of the pictures
    double dTimes = 0; ///< how many times the difference that is allowed there; more than 1
};

/**
 * Whether two pictures of one window show the same, however its letters were smoothed.
 *
 * Another version of the font renderer draws the same text with other shades at
 * the edges of its letters and up to half a pixel aside; no pixel of a text needs
 * to be the same. What the eye takes for the same is found so:
 *
 * 1. Both pictures are softened a little (a bell of about one pixel), so that an
 *    edge that is drawn hard or soft looks alike.
 * 2. They are looked at in cells of 8 x 8 pixels, which overlap by half, so that
 *    a thing of the size of a letter or of a mark in a check box fills one.
 * 3. A cell may be shifted as a whole, by up to half a pixel in each direction,
 *    to where it fits best.
 * 4. The mean difference that then is left in a cell, in the colour channel in
 *    which it is largest, may be a small fixed amount, and a share of the detail
 *    that the cell and its edges have in BOTH pictures. Text over text has room for another
 *    smoothing; where one of the two pictures is plain there is no detail in
 *    common, and what appeared or vanished counts in full, be it one grey line.
 *
 * All lengths are those of the window, so that each scale is judged alike. A
 * thing that has moved by two pixels, has vanished, has another colour or another
 * state is found; the same thing smoothed otherwise is not. The tests of this
 * class hold both sides.
 *
 * Any thread, no state but its result.
 */
class CPictureCompare
{
public:
    /** Of the frames in a marked picture; nothing in the window has it. */
    static const QColor FRAME_COLOR;

    /**
     * Compares at once.
     * @param imgReference what it should look like
     * @param imgActual what it looks like
     * @param dScale pixels of the pictures for one pixel of the window, 1 or more
     */
    CPictureCompare(const QImage& imgReference, const QImage& imgActual, double dScale);

    /** True when no cell differs and both are of one size. */
    bool IsSame() const;

    /** What differs, in one line that says where; empty when nothing does. */
    QString Message() const;

    /** The cells that differ, from top to bottom; none when the sizes are not the same. */
    const QVector<STDifferentCell>& Cells() const;

    /** The actual picture, pale, with the different cells in full colour and framed. */
    QImage Marked() const;

private:
    void Compare(const QImage& imgReference, double dScale);

    QImage m_imgActual;
    QSize m_sizeReference;
    QVector<STDifferentCell> m_listCell;
};
