#include "settings/PListParser.h"
#include "settings/PListSerializer.h"

#include <QBuffer>
#include <QDomDocument>

#include <cstddef>
#include <cstdint>

static void Ignore(QtMsgType, const QMessageLogContext&, const QString&) { }

/**
 * Gives the reader whatever the fuzzer has thought of, and the writer what the
 * reader made of it. Run by hand for as long as one likes:
 *
 *   build/release/tests/fuzz_PListParser/fuzz_PListParser FOLDER tests/settings/corpus
 */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    static const QtMessageHandler s_pfnBefore = qInstallMessageHandler(Ignore);
    Q_UNUSED(s_pfnBefore)
    QByteArray baText(reinterpret_cast<const char*>(pData), int(nSize));
    QBuffer buffer(&baText);
    const QVariant value = PListParser::parsePList(&buffer);
    QDomDocument doc;
    doc.appendChild(PListSerializer::serializeElement(doc, value));
    doc.toString(1);
    return 0;
}
