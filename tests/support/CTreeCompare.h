#pragma once

#include <QStringList>

/** Compares a copied folder with its source. */
class CTreeCompare
{
public:
    /**
     * What differs below two folders, one line each; empty when the copy holds
     * every folder and every regular file of the source with the same bytes and
     * modification time (to the second), and nothing else. Links are followed.
     */
    static QStringList Differences(const QString& strSource, const QString& strCopy);

    /** Number of regular files below a folder, links followed. */
    static int FileCount(const QString& strFolder);
};
