#pragma once

#include <QByteArray>
#include <QString>
#include <QTextCodec>

/**
 * UTF-8 for file names that may not be UTF-8.
 *
 * A file name is any row of bytes. A byte that is no part of valid UTF-8 becomes
 * the lone surrogate U+DC80..U+DCFF that carries its value and turns back into
 * the same byte, so QFile::decodeName followed by QFile::encodeName gives the name
 * on the disk again, whatever it is. Every piece is converted as a whole: it is
 * meant for names, not for streams cut at arbitrary places.
 *
 * Stateless, hence safe on any thread.
 */
class CFileNameCodec : public QTextCodec
{
public:
    /**
     * Makes this the codec of file names and of local 8-bit text for the whole
     * process; further calls change nothing. Call it on the main thread before
     * the first file name is met. Qt owns the codec.
     */
    static void Install();

    /** What the codec makes of a name, installed or not. */
    static QByteArray ToBytes(const QString& strName);

    /** The name that the codec makes of these bytes, installed or not. */
    static QString FromBytes(const QByteArray& baName);

    /** "TarnwickFileNames". */
    QByteArray name() const override;

    /** A number that is no registered one, so that nobody takes this for plain UTF-8. */
    int mibEnum() const override;

protected:
    CFileNameCodec() = default;
    ~CFileNameCodec() override = default;

    QString convertToUnicode(const char* pBytes, int nLength, ConverterState* pState) const override;
    QByteArray convertFromUnicode(const QChar* pChars, int nLength, ConverterState* pState) const override;
};
