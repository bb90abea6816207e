#pragma once

#include <QByteArray>
#include <QTest>

/** File names that programs stumble over, as rows of a table with one column `name` (QByteArray). */
inline void AddHostileNames()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("255 bytes") << QByteArray(255, 'n');
    QTest::newRow("255 bytes of three-byte characters") << QByteArray("\xe6\xbc\xa2").repeated(85);
    QTest::newRow("line break") << QByteArray("two\nlines");
    QTest::newRow("html") << QByteArray("<b>bold<img src=x>");
    QTest::newRow("percent") << QByteArray("%1 %2 %s %n");
    QTest::newRow("leading dash") << QByteArray("-rf");
    QTest::newRow("trailing blank") << QByteArray("blank ");
    QTest::newRow("leading blank") << QByteArray(" blank");
    QTest::newRow("only a blank") << QByteArray(" ");
    QTest::newRow("three dots") << QByteArray("...");
    QTest::newRow("backslash") << QByteArray("back\\slash");
    QTest::newRow("quotes") << QByteArray("\"'`$(x)");
    QTest::newRow("wildcards") << QByteArray("*[a]?");
    QTest::newRow("colon") << QByteArray(":resource:name");
    QTest::newRow("control characters") << QByteArray("\x01\x1b[31m\x7f");
    QTest::newRow("latin 1") << QByteArray("caf\xe9.txt");
    QTest::newRow("cut-off character") << QByteArray("end\xe6\xbc");
    QTest::newRow("overlong slash") << QByteArray("a\xc0\xaf"
                                                  "b");
    QTest::newRow("surrogate as utf-8") << QByteArray("\xed\xb2\x80");
    QTest::newRow("no utf-8 at all") << QByteArray("\x80\xff\xfe\xa0");
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbfname");
    QTest::newRow("arabic") << QByteArray("\xd9\x85\xd9\x84\xd9\x81");
    QTest::newRow("beyond 16 bits") << QByteArray("\xf0\x9f\x93\x81");
    QTest::newRow("decomposed") << QByteArray("u\xcc\x88"
                                              "ber");
}
