#pragma once

#include <QByteArray>
#include <QTest>

/** Rows of a test's data: names that a volume may have and that a careless reader gets wrong. */
inline void AddVolumeNames()
{
    QTest::addColumn<QByteArray>("baName");
    QTest::newRow("plain") << QByteArray("STICK");
    QTest::newRow("blanks") << QByteArray("STICK  A");
    QTest::newRow("trailing blank") << QByteArray("STICK ");
    QTest::newRow("newline") << QByteArray("line\nbreak");
    QTest::newRow("tab") << QByteArray("a\tb");
    QTest::newRow("hash") << QByteArray("#1");
    QTest::newRow("backslash") << QByteArray("a\\b");
    QTest::newRow("backslash and digits") << QByteArray("a\\040b");
    QTest::newRow("percent sign and markup") << QByteArray("%1 <b>x");
    QTest::newRow("quotation marks") << QByteArray("a\"b'c");
    QTest::newRow("shell signs") << QByteArray("$(id);`id`|x>y*");
    QTest::newRow("leading dash") << QByteArray("-rf");
    QTest::newRow("several scripts") << QByteArray("Größe 磁盘");
    QTest::newRow("not UTF-8") << QByteArray("caf\xe9\xff");
    QTest::newRow("255 bytes") << QByteArray(255, 'n');
}
