#pragma once

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTextCodec>
#include <QtTest>

#include <cerrno>
#include <cstring>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

/**
 * Mounts of a test's own, seen by nobody else.
 *
 * Enter() runs first in main(), before there is a second thread. Names are
 * bytes, so that any name can be tried.
 */
class CPrivateMounts
{
public:
    /** Steps into a private view of the mounts with an empty folder of volumes. */
    static bool Enter()
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
        // The sandbox has made a private view already. A second one would part the
        // process from its own executable, whose path then leads nowhere in a change-root.
        const bool bPrivate = qEnvironmentVariableIsSet("TARNWICK_SANDBOX")
            || (::unshare(CLONE_NEWNS) == 0
                && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0);
        s_bEntered = bPrivate && ::mount("volumes", "/Volumes", "tmpfs", 0, nullptr) == 0;
        return s_bEntered;
    }

    /** False where the system lets us mount nothing: the test is then skipped. */
    static bool Allowed() { return s_bEntered; }

    /** Mounts an empty volume with that device node text, making its folder. */
    static bool Mount(const QByteArray& baSource, const QByteArray& baPoint)
    {
        ::mkdir(baPoint.constData(), 0755);
        return Done(::mount(baSource.constData(), baPoint.constData(), "tmpfs", 0, nullptr), baPoint);
    }

    static bool Remount(const QByteArray& baPoint, unsigned long nFlags)
    {
        return Done(::mount("none", baPoint.constData(), nullptr, MS_REMOUNT | nFlags, nullptr), baPoint);
    }

    static bool Bind(const QByteArray& baFrom, const QByteArray& baPoint)
    {
        ::mkdir(baPoint.constData(), 0755);
        return Done(::mount(baFrom.constData(), baPoint.constData(), nullptr, MS_BIND, nullptr), baPoint);
    }

    static bool Move(const QByteArray& baFrom, const QByteArray& baTo)
    {
        ::mkdir(baTo.constData(), 0755);
        return Done(::mount(baFrom.constData(), baTo.constData(), nullptr, MS_MOVE, nullptr), baTo);
    }

    static bool Unmount(const QByteArray& baPoint)
    {
        return Done(::umount2(baPoint.constData(), MNT_DETACH), baPoint);
    }

    /** Empties the folder of volumes, mounts included. */
    static bool Clear()
    {
        while (::umount2("/Volumes", MNT_DETACH) == 0) { }
        return Done(::mount("volumes", "/Volumes", "tmpfs", 0, nullptr), "/Volumes");
    }

private:
    static bool Done(int nResult, const QByteArray& baWhere)
    {
        if (nResult != 0) {
            qWarning("mounting at %s: %s", baWhere.constData(), std::strerror(errno));
        }
        return nResult == 0;
    }

    static inline bool s_bEntered = false;
};

/** Rows of a test's data: names that a volume may have and that a careless reader of the table gets wrong. */
inline void AddVolumeNames()
{
    QTest::addColumn<QByteArray>("baName");
    QTest::newRow("plain") << QByteArray("STICK");
    QTest::newRow("blank") << QByteArray("STICK A");
    QTest::newRow("trailing blank") << QByteArray("STICK ");
    QTest::newRow("newline") << QByteArray("line\nbreak");
    QTest::newRow("tab") << QByteArray("a\tb");
    QTest::newRow("hash") << QByteArray("#1");
    QTest::newRow("backslash") << QByteArray("a\\b");
    QTest::newRow("backslash and digits") << QByteArray("a\\040b");
    QTest::newRow("percent sign and markup") << QByteArray("%1 <b>x");
    QTest::newRow("leading dash") << QByteArray("-rf");
    QTest::newRow("several scripts") << QByteArray("Größe 磁盘");
    QTest::newRow("255 bytes") << QByteArray(255, 'n');
}

/** Skips the test function where nothing can be mounted. */
#define NEEDS_MOUNTS()                                                                                       \
    do {                                                                                                     \
        if (!CPrivateMounts::Allowed()) {                                                                    \
            QSKIP("mounting is not permitted here");                                                         \
        }                                                                                                    \
    } while (false)

/** The main function of a test that mounts; 77 says that some of it had to be skipped. */
#define PRIVATE_MOUNTS_TEST_MAIN(TestClass)                                                                  \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        CPrivateMounts::Enter();                                                                             \
        QCoreApplication app(argc, argv);                                                                    \
        TestClass test;                                                                                      \
        const int nFailures = QTest::qExec(&test, argc, argv);                                               \
        return nFailures == 0 && !CPrivateMounts::Allowed() ? 77 : nFailures;                                \
    }
