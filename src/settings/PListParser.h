#pragma once

#include <QVariant>

class QDomElement;
class QIODevice;

/**
 * Reads XML property lists into nested QVariant values.
 *
 * Numbers are narrow on purpose: an integer is an int and reads as 0 when it
 * does not fit 32 bits, a real is a float. Stateless; any thread.
 */
class PListParser
{
public:
    /**
     * Value of the top element of the property list that the device holds.
     *
     * A device that is not open is opened for reading; a sequential one gives
     * what it holds at the time of the call. What is not well-formed, larger
     * than 4 MiB, nested deeper than 256 elements, or brings declarations of its
     * own gives an invalid value and four debug lines that say why.
     */
    static QVariant parsePList(QIODevice* device);

    /** Value of one element; an unknown name gives an invalid value and a debug line. */
    static QVariant parseElement(const QDomElement& element);

    /** Values of a dict by key. Of several values under one key the last one counts. */
    static QVariantMap parseDictElement(const QDomElement& element);

    /** Values of an array in document order; unknown elements are invalid entries. */
    static QVariantList parseArrayElement(const QDomElement& element);
};
