#pragma once

#include <QAbstractItemModel>
#include <QStringList>

/** The names of the rows below an index. */
inline QStringList RowNames(const QAbstractItemModel& model, const QModelIndex& parent)
{
    QStringList listName;
    for (int i = 0; i < model.rowCount(parent); ++i) {
        listName.append(model.index(i, 0, parent).data().toString());
    }
    return listName;
}

/** The row that a path of names leads to from a volume; "." is the volume. Invalid when it is not listed. */
inline QModelIndex RowBelow(const QModelIndex& volume, const QString& strPath)
{
    QModelIndex index = volume;
    const QStringList listPart = strPath == "." ? QStringList() : strPath.split('/');
    for (const QString& strPart : listPart) {
        index = index.isValid()
            ? index.model()->index(RowNames(*index.model(), index).indexOf(strPart), 0, index)
            : QModelIndex();
    }
    return index;
}
