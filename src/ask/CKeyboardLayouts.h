#pragma once

#include <QString>
#include <QVector>

/** A layout of the keyboard. */
struct STKeyboardLayout
{
    QString strCode; ///< name for XKB_DEFAULT_LAYOUT, such as "de" or "ch(fr)"
    QString strName; ///< in the words of those who type on it
};

/** The layouts that a user may choose from. Any thread. */
class CKeyboardLayouts
{
public:
    /** All of them, in the order of their names. */
    static const QVector<STKeyboardLayout>& All();

    /** Whether that may be the name of a layout, be it in the list or not. */
    static bool IsName(const QString& strCode);
};
