#pragma once

#include <QImage>
#include <QList>
#include <QString>

#include <functional>

/** One state of a page or a dialog. */
struct STLook
{
    QString strName; ///< also that of its picture's file
    std::function<QImage()> fnPicture; ///< shows the state anew and takes its picture
};

/**
 * Every state whose look is held by a reference picture. Among them is each
 * control that takes the keyboard's focus, found in the windows themselves, so
 * that a new one asks for its picture. GUI thread, after CLookStage::Prepare.
 */
QList<STLook> AllLooks();
