#pragma once

#include "journeys/CJourney.h"
#include "support/CTreeCompare.h"
#include "support/CVolume.h"
#include "support/TestFiles.h"
#include "support/Texts.h"

#include <QDir>
#include <QTest>

#include <memory>

/**
 * What a journey stands on: a source with a folder "Users" to be rescued beside one
 * that is not, a stick that is too small for it and one that is not, and the program.
 */
class CJourneyBed : public QObject
{
protected:
    /** Before each test: the volumes, and a program that is not started yet. */
    void Make(const QString& strPictures = TestName())
    {
        m_pSource = std::make_unique<CVolume>("Macintosh HD", "/dev/nvme0n1p1", 200);
        m_pSmall = std::make_unique<CVolume>("SMALL", "/dev/sdb1", 4);
        PlugInLarge();
        QVERIFY2(m_pSource->IsValid() && m_pSmall->IsValid() && m_pLarge->IsValid(),
                 "volumes can be mounted");
        for (int n = 0; n < 24; ++n) {
            WriteFile(m_pSource->Path(QString("Users/anna/Pictures/IMG_%1.jpg").arg(n)),
                      QByteArray(1 << 20, char('a' + n)));
        }
        WriteFile(m_pSource->Path("Other/left.txt"), "not ticked");
        m_pJourney = std::make_unique<CJourney>(BuildPath("pictures/") + strPictures);
    }

    /** After each test. */
    void Clear()
    {
        m_pJourney.reset();
        m_pLarge.reset();
        m_pSmall.reset();
        m_pSource.reset();
    }

    /** Function and row. */
    static QString TestName()
    {
        const char* pRow = QTest::currentDataTag();
        return QString(QTest::currentTestFunction()) + (pRow ? QString("-") + pRow : QString());
    }

    void PlugInLarge() { m_pLarge = std::make_unique<CVolume>("LARGE", "/dev/sdc1", 500); }

    void Start() { QVERIFY(m_pJourney->Start(BuildPath("bin/TarnwickMacPE"))); }

    /** Answers the question whether to exit; the program has to end by it, and well. */
    void Exit()
    {
        QVERIFY(m_pJourney->AnswerBox(TEXT_EXIT, "Yes"));
        VerifyEnd();
    }

    void VerifyEnd()
    {
        QVERIFY(m_pJourney->WaitForEnd());
        QCOMPARE(m_pJourney->ExitCode(), 0);
    }

    /** The folder of the one rescue on the large stick; empty when there is none, or more. */
    QString Rescue() const
    {
        const QStringList listFolder = QDir(m_pLarge->Path()).entryList({"Tarnwick *  at  *"}, QDir::Dirs);
        return listFolder.size() == 1 ? m_pLarge->Path(listFolder.first()) : QString();
    }

    /** All that was ticked is there, byte for byte, and nothing else. */
    void VerifyRescued() const
    {
        QVERIFY(!Rescue().isEmpty());
        QCOMPARE(CTreeCompare::Differences(m_pSource->Path("Users"), Rescue() + "/Macintosh HD/Users"),
                 QStringList());
        QVERIFY(!QFile::exists(Rescue() + "/Macintosh HD/Other"));
    }

    const QStringList m_listVolume{"/Volumes/Macintosh HD"};
    const QStringList m_listUsers{"/Volumes/Macintosh HD", "Users"};
    std::unique_ptr<CVolume> m_pSource;
    std::unique_ptr<CVolume> m_pSmall;
    std::unique_ptr<CVolume> m_pLarge;
    std::unique_ptr<CJourney> m_pJourney;

    /** How long each block takes when a copy is to be met in its middle, in ms. */
    static constexpr int SLOW_MS = 20;
};
