#include "ask/CRecoveryKey.h"

#include <QTest>

class tst_CRecoveryKey : public QObject
{
    Q_OBJECT

private slots:
    void cleaned_data();
    void cleaned();
};

void tst_CRecoveryKey::cleaned_data()
{
    QTest::addColumn<QString>("strTyped");
    QTest::addColumn<QString>("strCleaned");
    const QString strKey("111111-222222-333333-444444-555555-666666-777777-888888");
    QString strDigits = strKey;
    strDigits.remove('-');
    QString strBlanks = strKey;
    strBlanks.replace('-', ' ');
    const QString strLong = strDigits + '8';
    const QString strShort = strDigits.left(47);
    QString strWide;
    for (const QChar ch : strDigits) {
        strWide += QChar(0xFF10 + ch.digitValue());
    }
    QTest::newRow("as it is printed") << strKey << strKey;
    QTest::newRow("digits alone") << strDigits << strKey;
    QTest::newRow("blanks") << strBlanks << strKey;
    QTest::newRow("blanks around") << "  " + strKey + "\t" << strKey;
    QTest::newRow("long dashes") << QString(strKey).replace('-', QChar(0x2013)) << strKey;
    QTest::newRow("dots") << QString(strKey).replace('-', '.') << strKey;
    QTest::newRow("two at once") << QString(strKey).replace('-', " - ") << strKey;
    QTest::newRow("groups of another size") << strDigits.left(4) + ' ' + strDigits.mid(4) << strKey;
    QTest::newRow("wide digits") << strWide << strKey;
    QTest::newRow("one digit more") << strLong << strLong;
    QTest::newRow("one digit less") << strShort << strShort;
    QTest::newRow("a letter") << strShort + 'a' << strShort + 'a';
    QTest::newRow("a password") << QString("my - pass 1") << QString("my - pass 1");
    QTest::newRow("a password of digits") << QString("12 34") << QString("12 34");
    QTest::newRow("nothing") << QString() << QString();
}

void tst_CRecoveryKey::cleaned()
{
    QFETCH(QString, strTyped);
    QTEST(CRecoveryKey::Cleaned(strTyped), "strCleaned");
}

QTEST_APPLESS_MAIN(tst_CRecoveryKey)
#include "tst_CRecoveryKey.moc"
