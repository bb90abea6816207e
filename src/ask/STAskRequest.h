#pragma once

#include "ask/STMissingVolume.h"

#include <QString>
#include <QVector>

/** What is to be shown. */
enum class ENAskScreen
{
    WAIT, ///< that the disks are being looked for
    PASSWORD, ///< the question for the password of an encrypted volume
    MISSING, ///< which volumes cannot be shown
    SOURCE, ///< whether a disk on USB is to be rescued from or copied to
    END, ///< that everything is at rest, and whether to restart or to power off
    AGAIN ///< that the program has ended by itself
};

/** How a volume is encrypted. */
enum class ENEncryption
{
    LUKS, ///< Linux
    BITLOCKER, ///< Windows
    FILE_VAULT ///< macOS
};

/** One question, as the command line has it. */
struct STAskRequest
{
    ENAskScreen enScreen = ENAskScreen::WAIT; ///< the question
    QString strName; ///< name of the volume or disk, as it is
    QString strDisk; ///< model of the disk, may be empty
    QString strSystems; ///< the systems that are on the disk, may be empty
    qint64 nSize = -1; ///< in bytes, -1 when it is not known
    ENEncryption enKind = ENEncryption::LUKS; ///< of the volume whose password is asked for
    int nTry = 1; ///< from 1 on
    QString strLayout = QStringLiteral("us"); ///< name of the keyboard's layout
    bool bWritable = false; ///< the volume is opened for copying to it
    bool bUnsaved = false; ///< a disk has not taken all that was to be written to it
    bool bReadsMedium = false; ///< the session still runs from the stick that it was started from
    QVector<STMissingVolume> listMissing; ///< what cannot be shown, from the standard input
};
