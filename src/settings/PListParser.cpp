#include "settings/PListParser.h"

#include <QDateTime>
#include <QDebug>
#include <QDomDocument>
#include <QIODevice>
#include <QRegularExpression>
#include <QTextCodec>

#include <optional>

// Property lists come from outside. The parser of the document recurses once per
// level, and expands entities; these bounds keep it from running out of stack,
// memory or time. Real lists are some kilobytes and a handful of levels.
static const qint64 MOST_BYTES = qint64(4) * 1024 * 1024;
static const int MOST_LEVELS = 256;

namespace {

// Why and where a text cannot be read.
struct STPListError
{
    QString strMessage;
    int nLine = 0;
    int nColumn = 0;
};

} // namespace

static QVariant Refuse(const STPListError& error)
{
    qDebug().noquote() << "PListParser Warning: Could not parse PList file!";
    qDebug().noquote().nospace() << "Error message: " << error.strMessage;
    qDebug().noquote().nospace() << "Error line: " << error.nLine;
    qDebug().noquote().nospace() << "Error column: " << error.nColumn;
    return QVariant();
}

// What the device holds, but no more than one byte above the bound.
static QByteArray ReadBounded(QIODevice* device)
{
    QByteArray baContent;
    if (device == nullptr || (!device->isOpen() && !device->open(QIODevice::ReadOnly))) {
        return baContent;
    }
    while (baContent.size() <= MOST_BYTES) {
        const QByteArray baPiece = device->read(MOST_BYTES + 1 - baContent.size());
        if (baPiece.isEmpty()) {
            break;
        }
        baContent += baPiece;
    }
    return baContent;
}

// The text of the bytes: by the byte-order mark, else by the encoding that the
// XML declaration names, else UTF-8. It is decoded here so that the check and the
// parser see the very same characters.
static QString Decode(const QByteArray& baContent)
{
    static const QRegularExpression s_declared(
        QStringLiteral("^<\\?xml[^>]*\\sencoding\\s*=\\s*[\"']([A-Za-z0-9._-]+)[\"']"));
    const QTextCodec* pCodec = QTextCodec::codecForUtfText(baContent, nullptr);
    if (pCodec == nullptr) {
        const QString strHead = QString::fromLatin1(baContent.left(256));
        pCodec = QTextCodec::codecForName(s_declared.match(strHead).captured(1).toLatin1());
    }
    return pCodec != nullptr ? pCodec->toUnicode(baContent) : QString::fromUtf8(baContent);
}

static STPListError ErrorAt(const QString& strMessage, const QString& strText, int nPos)
{
    const QStringRef before = strText.leftRef(nPos);
    return {strMessage, before.count(QLatin1Char('\n')) + 1, nPos - before.lastIndexOf(QLatin1Char('\n'))};
}

// Position of the first of two characters from nPos on that stands outside quotes; -1 when there is none.
static int FindUnquoted(const QString& strText, int nPos, QChar first, QChar second)
{
    QChar quote;
    for (; nPos < strText.size(); ++nPos) {
        const QChar ch = strText.at(nPos);
        if (!quote.isNull()) {
            quote = ch == quote ? QChar() : quote;
        } else if (ch == QLatin1Char('"') || ch == QLatin1Char('\'')) {
            quote = ch;
        } else if (ch == first || ch == second) {
            return nPos;
        }
    }
    return -1;
}

// Position behind a comment, a CDATA section or an instruction at nPos; -1 without
// its end, nPos when it is none.
static int SkipLiteral(const QString& strText, int nPos)
{
    static const struct
    {
        QLatin1String strBegin;
        QLatin1String strEnd;
    } s_literals[] = {
        {QLatin1String("<!--"), QLatin1String("-->")},
        {QLatin1String("<![CDATA["), QLatin1String("]]>")},
        {QLatin1String("<?"), QLatin1String("?>")},
    };
    for (const auto& literal : s_literals) {
        if (strText.midRef(nPos).startsWith(literal.strBegin)) {
            const int nEnd = strText.indexOf(literal.strEnd, nPos + literal.strBegin.size());
            return nEnd < 0 ? -1 : nEnd + literal.strEnd.size();
        }
    }
    return nPos;
}

// Looks for what the parser of the document must not be given: too many levels,
// or declarations inside the document type (entities that expand without end,
// content models that nest without end). What is merely not well-formed is left
// to the parser, which stops there.
static std::optional<STPListError> Check(const QString& strText)
{
    int nLevel = 0;
    int nPos = strText.indexOf(QLatin1Char('<'));
    while (nPos >= 0) {
        const int nBehind = SkipLiteral(strText, nPos);
        if (nBehind != nPos) {
            nPos = nBehind < 0 ? -1 : strText.indexOf(QLatin1Char('<'), nBehind);
            continue;
        }
        const QChar kind = strText.size() > nPos + 1 ? strText.at(nPos + 1) : QChar();
        const bool bDeclaration = kind == QLatin1Char('!');
        const QChar stop = bDeclaration ? QLatin1Char('[') : QLatin1Char('>');
        const int nEnd = FindUnquoted(strText, nPos + 1, QLatin1Char('>'), stop);
        if (nEnd >= 0 && strText.at(nEnd) == QLatin1Char('[')) {
            return ErrorAt(QStringLiteral("declarations inside the document are not read"), strText, nPos);
        }
        if (kind == QLatin1Char('/')) {
            --nLevel;
        } else if (!bDeclaration) {
            // The top element is not counted: the levels are those of the values in it.
            if (nLevel > MOST_LEVELS) {
                return ErrorAt(QStringLiteral("nested deeper than %1 elements").arg(MOST_LEVELS), strText,
                               nPos);
            }
            nLevel += nEnd > 0 && strText.at(nEnd - 1) == QLatin1Char('/') ? 0 : 1;
        }
        nPos = nEnd < 0 ? -1 : strText.indexOf(QLatin1Char('<'), nEnd);
    }
    return std::nullopt;
}

QVariant PListParser::parsePList(QIODevice* device)
{
    const QByteArray baContent = ReadBounded(device);
    if (baContent.size() > MOST_BYTES) {
        return Refuse({QStringLiteral("larger than %1 bytes").arg(MOST_BYTES), 1, 1});
    }
    const QString strText = Decode(baContent);
    if (const std::optional<STPListError> refusal = Check(strText)) {
        return Refuse(*refusal);
    }
    QDomDocument document;
    STPListError error;
    if (!document.setContent(strText, false, &error.strMessage, &error.nLine, &error.nColumn)) {
        return Refuse(error);
    }
    const QDomElement top = document.documentElement();
    if (top.attribute(QStringLiteral("version")) != QLatin1String("1.0")) {
        qDebug().noquote() << "PListParser Warning: plist is using an unknown format version, parsing might "
                              "fail unexpectedly";
    }
    // Only the first child counts, even when it is a comment: a property list has one value.
    return parseElement(top.firstChild().toElement());
}

QVariant PListParser::parseElement(const QDomElement& element)
{
    const QString strTag = element.tagName();
    if (strTag == QLatin1String("dict")) {
        return parseDictElement(element);
    }
    if (strTag == QLatin1String("array")) {
        return parseArrayElement(element);
    }
    if (strTag == QLatin1String("string")) {
        return element.text();
    }
    if (strTag == QLatin1String("data")) {
        return QByteArray::fromBase64(element.text().toUtf8());
    }
    if (strTag == QLatin1String("integer")) {
        return element.text().toInt();
    }
    if (strTag == QLatin1String("real")) {
        return element.text().toFloat();
    }
    if (strTag == QLatin1String("true")) {
        return true;
    }
    if (strTag == QLatin1String("false")) {
        return false;
    }
    if (strTag == QLatin1String("date")) {
        return QDateTime::fromString(element.text(), Qt::ISODate);
    }
    qDebug().noquote().nospace() << "PListParser Warning: Invalid tag found: " << strTag;
    return QVariant();
}

QVariantMap PListParser::parseDictElement(const QDomElement& element)
{
    QVariantMap map;
    QString strKey;
    const QDomNodeList children = element.childNodes();
    for (int i = 0; i < children.length(); ++i) {
        const QDomElement child = children.at(i).toElement();
        if (child.isNull()) {
            continue;
        }
        if (child.tagName() == QLatin1String("key")) {
            strKey = child.text();
        } else if (!strKey.isEmpty()) {
            // The key stays in force, so that of several values behind one key the last one wins.
            map[strKey] = parseElement(child);
        }
    }
    return map;
}

QVariantList PListParser::parseArrayElement(const QDomElement& element)
{
    QVariantList list;
    const QDomNodeList children = element.childNodes();
    for (int i = 0; i < children.length(); ++i) {
        const QDomElement child = children.at(i).toElement();
        if (!child.isNull()) {
            // append, not <<: an array inside the array stays one entry.
            list.append(parseElement(child));
        }
    }
    return list;
}
