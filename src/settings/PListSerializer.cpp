#include "settings/PListSerializer.h"

#include <QDate>
#include <QDateTime>
#include <QDomDocument>
#include <QFile>
#include <QTextStream>

static const char LANGUAGE_PATH[] = "/Library/Preferences/com.Kelvane.Brisalo.language.plist";
static const char KEY_LANGUAGE_PATH[] = "/Library/Preferences/com.Kelvane.Brisalo.key.language.plist";
static const char PUBLIC_ID[] = "-//Apple//DTD PLIST 1.0//EN";
static const char SYSTEM_ID[] = "http://www.apple.com/DTDs/PropertyList-1.0.dtd";
static const int INDENT = 1;

// The text without the control characters that XML cannot hold in any form, and
// with a mark for each half of a character: one of them would make the whole
// file unreadable.
static QString WithoutForbidden(const QString& strText)
{
    const QVector<uint> listCode = strText.toUcs4();
    QString strKept;
    for (const uint nCode : listCode) {
        const bool bControl = nCode < 0x20 && nCode != '\t' && nCode != '\n' && nCode != '\r';
        if (!bControl && nCode != 0xFFFE && nCode != 0xFFFF) {
            strKept += QString::fromUcs4(&nCode, 1);
        }
    }
    return strKept;
}

static QDomElement TextElement(QDomDocument& doc, const char* pTag, const QString& strText)
{
    QDomElement element = doc.createElement(QLatin1String(pTag));
    element.appendChild(doc.createTextNode(WithoutForbidden(strText)));
    return element;
}

QDomElement PListSerializer::serializeElement(QDomDocument& doc, const QVariant& value)
{
    switch (value.type()) {
    case QVariant::Map:
        return serializeMap(doc, value.toMap());
    case QVariant::List:
        return serializeList(doc, value.toList());
    case QVariant::Bool:
        return doc.createElement(value.toBool() ? QStringLiteral("true") : QStringLiteral("false"));
    case QVariant::Date:
        return TextElement(doc, "date", value.toDate().toString(Qt::ISODate));
    case QVariant::DateTime:
        return TextElement(doc, "date", value.toDateTime().toString(Qt::ISODate));
    case QVariant::ByteArray:
        return TextElement(doc, "data", QString::fromLatin1(value.toByteArray().toBase64()));
    case QVariant::String:
        return TextElement(doc, "string", value.toString());
    case QVariant::Int:
        return TextElement(doc, "integer", QString::number(value.toInt(), 10));
    default:
        break;
    }
    // Wider integers, too: the reader has 32 bits for an integer and would make 0 of them.
    if (value.canConvert(QMetaType::Double)) {
        return TextElement(doc, "real", QString().setNum(value.toDouble(), 'g', 6));
    }
    return QDomElement();
}

QDomElement PListSerializer::serializeMap(QDomDocument& doc, const QMap<QString, QVariant>& map)
{
    QDomElement dict = doc.createElement(QStringLiteral("dict"));
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        // The key is there even when its value is not: a reader that knows more
        // types may have put the value in, and the key shows what was lost.
        dict.appendChild(TextElement(doc, "key", it.key()));
        dict.appendChild(serializeElement(doc, it.value()));
    }
    return dict;
}

QDomElement PListSerializer::serializeList(QDomDocument& doc, const QList<QVariant>& list)
{
    QDomElement array = doc.createElement(QStringLiteral("array"));
    for (const QVariant& value : list) {
        array.appendChild(serializeElement(doc, value));
    }
    return array;
}

static QString DocumentText(const QVariant& value)
{
    QDomImplementation implementation;
    QDomDocument doc(implementation.createDocumentType(
        QStringLiteral("plist"), QString::fromLatin1(PUBLIC_ID), QString::fromLatin1(SYSTEM_ID)));
    // First of all, so that it comes out before the document type.
    doc.appendChild(doc.createProcessingInstruction(QStringLiteral("xml"),
                                                    QStringLiteral("version=\"1.0\" encoding=\"UTF-8\"")));
    QDomElement root = doc.createElement(QStringLiteral("plist"));
    root.setAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
    root.appendChild(PListSerializer::serializeElement(doc, value));
    doc.appendChild(root);
    return doc.toString(INDENT);
}

void PListSerializer::WriteRecordPList(const QVariant& value, QString strPath)
{
    const QString strText = DocumentText(value);
    QFile file(strPath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        return;
    }
    QTextStream stream(&file);
    // The locale's encoding. The declaration says UTF-8, which the locale of
    // the target system is.
    stream.setCodec("System");
    stream << strText;
}

void PListSerializer::WriteLanguageToPList(const QVariant& value)
{
    WriteRecordPList(value, QString::fromLatin1(LANGUAGE_PATH));
}

void PListSerializer::WriteKeyLanguageToPList(const QVariant& value)
{
    WriteRecordPList(value, QString::fromLatin1(KEY_LANGUAGE_PATH));
}
