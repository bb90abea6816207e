#pragma once

#include <QDomElement>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>

class QDomDocument;

/**
 * Writes QVariant values as XML property lists, the counterpart of PListParser.
 *
 * As narrow as the reader: only an int is an integer, every other number is a
 * real of six significant digits. Stateless; any thread.
 */
class PListSerializer
{
public:
    /** Element of one value; a null element for a type that property lists do not have. */
    static QDomElement serializeElement(QDomDocument& doc, const QVariant& value);

    /** A dict, keys in ascending order. A key whose value has no element stands alone. */
    static QDomElement serializeMap(QDomDocument& doc, const QMap<QString, QVariant>& map);

    /** An array; items that have no element are left out. */
    static QDomElement serializeList(QDomDocument& doc, const QList<QVariant>& list);

    /**
     * Writes a whole property list to a file in the encoding of the locale. A
     * file that cannot be opened stays as it is, and nobody is told.
     */
    static void WriteRecordPList(const QVariant& value, QString strPath);

    /** WriteRecordPList to the system's preference file of the interface language. */
    static void WriteLanguageToPList(const QVariant& value);

    /** WriteRecordPList to the system's preference file of the keyboard's language. */
    static void WriteKeyLanguageToPList(const QVariant& value);
};
