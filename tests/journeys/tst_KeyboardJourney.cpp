#include "journeys/CJourney.h"
#include "journeys/CReader.h"
#include "support/CTreeCompare.h"
#include "support/CVolume.h"
#include "support/TestFiles.h"
#include "support/Texts.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <memory>

static const QString PROGRAM = QStringLiteral("TarnwickMacPE");
static const QString VOLUME = QStringLiteral("/Volumes/Macintosh HD");

static const QString BUTTON = QStringLiteral("push button");
static const QString COMBO = QStringLiteral("combo box");
static const QString DIALOG = QStringLiteral("dialog");
static const QString LIST_ITEM = QStringLiteral("list item");
static const QString ROW = QStringLiteral("tree item");

static const QString SPACE = QStringLiteral("space");
static const QString TAB = QStringLiteral("Tab");

static const int SLOW_MS = 20;

/**
 * The whole program without a mouse, as a screen reader tells of it: nothing is
 * looked at but what comes over the accessibility bus, and the files at the end.
 */
class tst_KeyboardJourney : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void SelectionPageIsReadOut();
    void RowsTellTicksAndFolders();
    void ReaderTicksByItself();
    void DiskIsChosenFromTheList();
    void CopyPageIsReadOut();
    void HeldSpaceDoesNotCancel();
    void BoxesAreAnsweredByTabAndSpaceAlone();
    void RescueWithoutAMouse();

private:
    STHeard Find(const QString& strRole, const QString& strName) const;
    bool Is(const QString& strRole, const QString& strName, const QString& strState) const;
    QStringList ReadOut(const STHeard& stTop) const;
    QString FocusText() const;
    void PressTo(const QStringList& listKey, const QString& strRole, const QString& strName);
    void TickUsers();
    void ChooseLarge();
    void StartCopy(bool bSlow);
    QString Destination() const;

    std::unique_ptr<CReader> m_pReader;
    std::unique_ptr<CVolume> m_pSource;
    std::unique_ptr<CVolume> m_pSmall;
    std::unique_ptr<CVolume> m_pLarge;
    std::unique_ptr<CJourney> m_pJourney;
    STHeard m_stProgram;
};

void tst_KeyboardJourney::init()
{
    m_pReader = std::make_unique<CReader>();
    QVERIFY2(m_pReader->IsConnected(), "there is no accessibility bus");
    m_pSource
        = std::make_unique<CVolume>(QStringLiteral("Macintosh HD"), QStringLiteral("/dev/nvme0n1p1"), 200);
    m_pSmall = std::make_unique<CVolume>(QStringLiteral("SMALL"), QStringLiteral("/dev/sdb1"), 4);
    m_pLarge = std::make_unique<CVolume>(QStringLiteral("LARGE"), QStringLiteral("/dev/sdc1"), 500);
    QVERIFY2(m_pSource->IsValid() && m_pSmall->IsValid() && m_pLarge->IsValid(), "volumes can be mounted");
    WriteFile(m_pSource->Path(QStringLiteral("<b>bold.txt")), "on top");
    WriteFile(m_pSource->Path(QStringLiteral("Users/anna/写真.txt")), "Dear grandma,\n");
    for (int n = 0; n < 24; ++n) {
        WriteFile(m_pSource->Path(QStringLiteral("Users/anna/IMG_%1.jpg").arg(n)),
                  QByteArray(1 << 20, char('a' + n)));
    }
    WriteFile(m_pSource->Path(QStringLiteral("Other/left.txt")), "not ticked");

    m_pJourney = std::make_unique<CJourney>(
        BuildPath(QStringLiteral("pictures/") + QLatin1String(QTest::currentTestFunction())));
    QVERIFY(m_pJourney->Start(BuildPath(QStringLiteral("bin/") + PROGRAM)));
    QVERIFY(CJourney::WaitFor([this] {
        m_stProgram = m_pReader->Program(PROGRAM);
        return m_stProgram.IsValid();
    }));
    // The first key goes to the first row of the tree.
    QVERIFY(CJourney::WaitFor([this] { return FocusText() == ROW + QStringLiteral(": ") + VOLUME; }));
}

void tst_KeyboardJourney::cleanup()
{
    if (QTest::currentTestFailed() && m_pJourney) {
        m_pJourney->Picture(QStringLiteral("failed"));
        qWarning().noquote() << m_pReader->Outline(m_stProgram) << m_pJourney->Errors();
    }
    m_pJourney.reset();
    m_pLarge.reset();
    m_pSmall.reset();
    m_pSource.reset();
    m_pReader.reset();
}

STHeard tst_KeyboardJourney::Find(const QString& strRole, const QString& strName) const
{
    return m_pReader->Find(m_stProgram, strRole, strName);
}

bool tst_KeyboardJourney::Is(const QString& strRole, const QString& strName, const QString& strState) const
{
    return m_pReader->Is(Find(strRole, strName), strState);
}

/** Role and name of what has the focus. */
QString tst_KeyboardJourney::FocusText() const
{
    const STHeard stFocus = m_pReader->Focus(m_stProgram);
    return m_pReader->Role(stFocus) + QStringLiteral(": ") + m_pReader->Name(stFocus);
}

/** Presses keys and waits until the focus is on what they lead to. */
void tst_KeyboardJourney::PressTo(const QStringList& listKey, const QString& strRole, const QString& strName)
{
    if (QTest::currentTestFailed()) {
        return; // an earlier step has, and no later one can do better
    }
    CJourney::PressKeys(listKey);
    const QString strExpected = strRole + QStringLiteral(": ") + strName;
    QVERIFY2(CJourney::WaitFor([&] { return FocusText() == strExpected; }, 5000),
             qPrintable(strExpected + QStringLiteral(" expected, not ") + FocusText()));
}

/** What a reader says of all that is more than a frame for other things, numbers aside. */
QStringList tst_KeyboardJourney::ReadOut(const STHeard& stTop) const
{
    static const QStringList s_listFrame{QStringLiteral("application"), QStringLiteral("filler"),
                                         QStringLiteral("frame"), QStringLiteral("layered pane")};
    QStringList listSaid;
    const QList<STHeard> listHeard = m_pReader->Showing(stTop);
    for (const STHeard& stHeard : listHeard) {
        const QString strRole = m_pReader->Role(stHeard);
        const QString strName = m_pReader->Name(stHeard);
        if (strName.isEmpty() && s_listFrame.contains(strRole)) {
            continue;
        }
        const QString strDescription = m_pReader->Description(stHeard);
        QString strSaid = strRole + QStringLiteral(": ") + strName;
        if (!strDescription.isEmpty() && strRole != QLatin1String("application")) {
            strSaid += QStringLiteral(" (%1)").arg(strDescription);
        }
        listSaid.append(strSaid.replace(QRegularExpression(QStringLiteral("\\d+")), QStringLiteral("#")));
    }
    return listSaid;
}

void tst_KeyboardJourney::TickUsers()
{
    PressTo({QStringLiteral("Right"), QStringLiteral("u")}, ROW, QStringLiteral("Users"));
    CJourney::PressKeys({SPACE});
    QVERIFY(
        CJourney::WaitFor([this] { return Is(ROW, QStringLiteral("Users"), QStringLiteral("checked")); }));
}

void tst_KeyboardJourney::ChooseLarge()
{
    const QString strPrompt = QStringLiteral("Select Destination Disk");
    PressTo({TAB}, COMBO, strPrompt);
    CJourney::PressKeys({QStringLiteral("alt+Down")});
    QVERIFY(CJourney::WaitFor([this] { return FocusText().startsWith(LIST_ITEM); }));
    PressTo({QStringLiteral("l")}, LIST_ITEM, QStringLiteral("LARGE"));
    PressTo({QStringLiteral("Return")}, COMBO, strPrompt);
    QVERIFY(CJourney::WaitFor(
        [&] { return m_pReader->Description(Find(COMBO, strPrompt)) == QLatin1String("LARGE"); }));
}

void tst_KeyboardJourney::StartCopy(bool bSlow)
{
    TickUsers();
    ChooseLarge();
    m_pJourney->SlowWrites(bSlow ? SLOW_MS : 0);
    PressTo({TAB}, BUTTON, QStringLiteral("Refresh List of Disks"));
    PressTo({TAB}, BUTTON, QStringLiteral("Copy"));
    CJourney::PressKeys({SPACE});
}

QString tst_KeyboardJourney::Destination() const
{
    const QDir dir(m_pLarge->Path());
    const QStringList listFolder = dir.entryList({QStringLiteral("Tarnwick *  at  *")}, QDir::Dirs);
    return listFolder.size() == 1 ? dir.filePath(listFolder.first()) : QString();
}

void tst_KeyboardJourney::SelectionPageIsReadOut()
{
    ChooseLarge();
    QCOMPARE(ReadOut(m_stProgram),
             QStringList({
                 QStringLiteral("application: TarnwickMacPE"),
                 QStringLiteral("frame: Kelvane Tarnwick"),
                 QStringLiteral("push button: Close"),
                 QStringLiteral("push button: Minimize"),
                 QStringLiteral("push button: Zoom"),
                 QStringLiteral("label: Kelvane Tarnwick"),
                 QStringLiteral("label: Source"),
                 QStringLiteral("label: Select File to Copy:"),
                 QStringLiteral("tree: Select File to Copy"),
                 QStringLiteral("tree item: /Volumes/Macintosh HD (/Volumes/Macintosh HD)"),
                 QStringLiteral("graphic: No files selected"),
                 QStringLiteral("label: Destination"),
                 QStringLiteral("label: LARGE"),
                 QStringLiteral("combo box: Select Destination Disk (LARGE)"),
                 QStringLiteral("push button: Refresh List of Disks"),
                 QStringLiteral("label: #.#GB Available, #.#GB Total"),
                 QStringLiteral("push button: Copy"),
             }));
    QVERIFY(!Is(BUTTON, QStringLiteral("Minimize"), QStringLiteral("enabled")));
    QVERIFY(!Is(BUTTON, QStringLiteral("Copy"), QStringLiteral("enabled")));
    QVERIFY(m_pReader->Actions(Find(BUTTON, QStringLiteral("Refresh List of Disks")))
                .contains(QStringLiteral("Press")));
}

void tst_KeyboardJourney::RowsTellTicksAndFolders()
{
    const QString strChecked = QStringLiteral("checked");
    const QString strMixed = QStringLiteral("indeterminate");
    const QString strUsers = QStringLiteral("Users");
    QVERIFY(Is(ROW, VOLUME, QStringLiteral("expandable")) && Is(ROW, VOLUME, QStringLiteral("collapsed")));
    QVERIFY(!Is(ROW, VOLUME, strChecked) && !Is(ROW, VOLUME, strMixed));
    QVERIFY(!Find(ROW, strUsers).IsValid());

    CJourney::PressKeys({QStringLiteral("Right")});
    QVERIFY(CJourney::WaitFor([&] { return Is(ROW, VOLUME, QStringLiteral("expanded")); }));
    QVERIFY(!Is(ROW, VOLUME, QStringLiteral("collapsed")));
    QVERIFY(!Is(ROW, strUsers, strChecked));
    QCOMPARE(m_pReader->Description(Find(ROW, strUsers)), VOLUME + QStringLiteral("/Users"));
    QVERIFY(!Is(ROW, QStringLiteral("<b>bold.txt"), QStringLiteral("expandable")));

    TickUsers();
    QVERIFY(!Is(ROW, strUsers, strMixed));
    QVERIFY(!Is(ROW, QStringLiteral("Other"), strChecked));
    QVERIFY(Is(ROW, VOLUME, strMixed) && !Is(ROW, VOLUME, strChecked));
    QVERIFY(Find(QStringLiteral("graphic"), QStringLiteral("Files selected")).IsValid());
    QVERIFY(Is(BUTTON, QStringLiteral("Copy"), QStringLiteral("enabled")));

    CJourney::PressKeys({QStringLiteral("Home"), SPACE});
    QVERIFY(CJourney::WaitFor([&] { return Is(ROW, VOLUME, strChecked); }));
    QVERIFY(!Is(ROW, VOLUME, strMixed));
    QVERIFY(Is(ROW, QStringLiteral("Other"), strChecked));
    CJourney::PressKeys({SPACE});
    QVERIFY(CJourney::WaitFor([&] { return !Is(ROW, VOLUME, strChecked); }));
    QVERIFY(!Is(ROW, strUsers, strChecked));
    QVERIFY(Find(QStringLiteral("graphic"), QStringLiteral("No files selected")).IsValid());
    QVERIFY(!Is(BUTTON, QStringLiteral("Copy"), QStringLiteral("enabled")));

    CJourney::PressKeys({QStringLiteral("Left")});
    QVERIFY(CJourney::WaitFor([&] { return Is(ROW, VOLUME, QStringLiteral("collapsed")); }));
    QVERIFY(!Find(ROW, strUsers).IsValid());
}

void tst_KeyboardJourney::ReaderTicksByItself()
{
    QVERIFY(m_pReader->Do(Find(ROW, VOLUME), QStringLiteral("Press")));
    QVERIFY(CJourney::WaitFor([&] { return Find(ROW, QStringLiteral("Users")).IsValid(); }));
    QVERIFY(m_pReader->Do(Find(ROW, QStringLiteral("Users")), QStringLiteral("Toggle")));
    QVERIFY(CJourney::WaitFor([&] { return Is(ROW, QStringLiteral("Users"), QStringLiteral("checked")); }));
    QVERIFY(Is(BUTTON, QStringLiteral("Copy"), QStringLiteral("enabled")));
}

void tst_KeyboardJourney::DiskIsChosenFromTheList()
{
    const QString strPrompt = QStringLiteral("Select Destination Disk");
    PressTo({TAB}, COMBO, strPrompt);
    const QString strBefore = m_pReader->Description(Find(COMBO, strPrompt));
    QVERIFY(Is(COMBO, strPrompt, QStringLiteral("collapsed")));
    CJourney::PressKeys({QStringLiteral("Down")});
    QVERIFY(CJourney::WaitFor([&] { return Is(COMBO, strPrompt, QStringLiteral("expanded")); }));
    QVERIFY(CJourney::WaitFor([&] { return FocusText() == LIST_ITEM + QStringLiteral(": ") + strBefore; }));
    QVERIFY(Find(QStringLiteral("list"), strPrompt).IsValid());
    // Looked at, and left as it was.
    PressTo({QStringLiteral("End"), QStringLiteral("Home"), QStringLiteral("Escape")}, COMBO, strPrompt);
    QCOMPARE(m_pReader->Description(Find(COMBO, strPrompt)), strBefore);
    QVERIFY(!Find(QStringLiteral("list"), strPrompt).IsValid());

    const QString strOther
        = strBefore == QLatin1String("LARGE") ? QStringLiteral("SMALL") : QStringLiteral("LARGE");
    CJourney::PressKeys({QStringLiteral("Return")});
    QVERIFY(CJourney::WaitFor([&] { return FocusText() == LIST_ITEM + QStringLiteral(": ") + strBefore; }));
    PressTo({strOther.left(1).toLower()}, LIST_ITEM, strOther);
    PressTo({SPACE}, COMBO, strPrompt);
    QCOMPARE(m_pReader->Description(Find(COMBO, strPrompt)), strOther);
    QVERIFY(Find(QStringLiteral("label"), strOther).IsValid());
}

void tst_KeyboardJourney::CopyPageIsReadOut()
{
    StartCopy(true);
    const QString strBar = QStringLiteral("progress bar");
    const QString strProgress = QStringLiteral("Copy Progress");
    QVERIFY(CJourney::WaitFor([&] { return m_pReader->Value(Find(strBar, strProgress)) > 5; }));
    QStringList listSaid = ReadOut(m_stProgram);
    QVERIFY(listSaid
                .replaceInStrings(
                    QRegularExpression(QStringLiteral("^(label: Copying files to \\(LARGE\\): ).+")),
                    QStringLiteral("\\1…"))
                .contains(QStringLiteral("label: Copying files to (LARGE): …")));
    listSaid.replaceInStrings(QRegularExpression(QStringLiteral("^(label: Remaining Time: ).+")),
                              QStringLiteral("\\1…"));
    QCOMPARE(listSaid,
             QStringList({
                 QStringLiteral("application: TarnwickMacPE"),
                 QStringLiteral("frame: Kelvane Tarnwick"),
                 QStringLiteral("push button: Close"),
                 QStringLiteral("push button: Minimize"),
                 QStringLiteral("push button: Zoom"),
                 QStringLiteral("label: Kelvane Tarnwick"),
                 QStringLiteral("filler: Copy Progress"),
                 QStringLiteral("label: Copying files to (LARGE): …"),
                 QStringLiteral("progress bar: Copy Progress"),
                 QStringLiteral("label: Remaining Time: …"),
                 QStringLiteral("push button: Cancel"),
             }));
    QCOMPARE(FocusText(), QStringLiteral("filler: Copy Progress"));
    const double rBefore = m_pReader->Value(Find(strBar, strProgress));
    QVERIFY(CJourney::WaitFor([&] { return m_pReader->Value(Find(strBar, strProgress)) > rBefore; }));
    PressTo({TAB}, BUTTON, QStringLiteral("Cancel"));
}

void tst_KeyboardJourney::HeldSpaceDoesNotCancel()
{
    StartCopy(true);
    const QString strBar = QStringLiteral("progress bar");
    const auto fnValue = [&] { return m_pReader->Value(Find(strBar, QStringLiteral("Copy Progress"))); };
    // Held from before the page comes up until the key has repeated for a while.
    CJourney::HoldKey(SPACE, true);
    QVERIFY(CJourney::WaitFor([&] { return fnValue() > 5; }));
    const double rBefore = fnValue();
    QVERIFY(CJourney::WaitFor([&] { return fnValue() > rBefore + 30; }));
    QVERIFY(!Find(DIALOG, TEXT_STOP).IsValid());
    CJourney::HoldKey(SPACE, false);
    QVERIFY(CJourney::WaitFor([&] { return fnValue() > rBefore + 31; }));
    QVERIFY(!Find(DIALOG, TEXT_STOP).IsValid());
}

void tst_KeyboardJourney::BoxesAreAnsweredByTabAndSpaceAlone()
{
    const QStringList listNoAnswer{QStringLiteral("Return"), QStringLiteral("KP_Enter"),
                                   QStringLiteral("Escape")};
    PressTo({QStringLiteral("shift+Tab")}, BUTTON, QStringLiteral("Close"));
    CJourney::PressKeys({SPACE});
    QVERIFY(CJourney::WaitFor([&] { return Find(DIALOG, TEXT_EXIT).IsValid(); }));
    const STHeard stBox = Find(DIALOG, TEXT_EXIT);
    QCOMPARE(ReadOut(stBox),
             QStringList({
                 QStringLiteral("dialog: ") + TEXT_EXIT,
                 QStringLiteral("push button: Close"),
                 QStringLiteral("push button: Minimize"),
                 QStringLiteral("push button: Zoom"),
                 QStringLiteral("label: ") + TEXT_EXIT,
                 QStringLiteral("push button: Cancel"),
                 QStringLiteral("push button: Yes"),
             }));
    QVERIFY(CJourney::WaitFor([&] { return FocusText() == DIALOG + QStringLiteral(": ") + TEXT_EXIT; }));
    CJourney::PressKeys(listNoAnswer);
    for (const char* pName : {"Cancel", "Yes", "Close", "Cancel"}) {
        PressTo({TAB}, BUTTON, QLatin1String(pName));
        CJourney::PressKeys(listNoAnswer);
    }
    PressTo({QStringLiteral("shift+Tab")}, BUTTON, QStringLiteral("Close"));
    PressTo({QStringLiteral("shift+Tab")}, BUTTON, QStringLiteral("Yes"));
    PressTo({QStringLiteral("shift+Tab")}, BUTTON, QStringLiteral("Cancel"));
    QVERIFY(m_pReader->Is(stBox, QStringLiteral("showing")));
    CJourney::PressKeys({SPACE});
    QVERIFY(CJourney::WaitFor([&] { return !Find(DIALOG, TEXT_EXIT).IsValid(); }));
    QVERIFY(m_pJourney->IsRunning());

    // And the other answer, which is the end of the program.
    CJourney::PressKeys({SPACE});
    QVERIFY(CJourney::WaitFor([&] { return Find(DIALOG, TEXT_EXIT).IsValid(); }));
    PressTo({TAB, TAB}, BUTTON, QStringLiteral("Yes"));
    CJourney::PressKeys({SPACE});
    QVERIFY(m_pJourney->WaitForEnd());
    QCOMPARE(m_pJourney->ExitCode(), 0);
}

void tst_KeyboardJourney::RescueWithoutAMouse()
{
    StartCopy(true);
    // Ask to stop, think better of it, and go on to the end.
    const QString strBar = QStringLiteral("progress bar");
    QVERIFY(CJourney::WaitFor(
        [&] { return m_pReader->Value(Find(strBar, QStringLiteral("Copy Progress"))) > 5; }));
    PressTo({TAB}, BUTTON, QStringLiteral("Cancel"));
    CJourney::PressKeys({SPACE});
    QVERIFY(CJourney::WaitFor([&] { return Find(DIALOG, TEXT_STOP).IsValid(); }));
    m_pJourney->Picture(QStringLiteral("question"));
    PressTo({TAB, SPACE}, BUTTON, QStringLiteral("Cancel"));
    QVERIFY(CJourney::WaitFor([&] { return !Find(DIALOG, TEXT_STOP).IsValid(); }));
    m_pJourney->SlowWrites(0);

    QVERIFY(CJourney::WaitFor([&] { return Find(DIALOG, TEXT_COMPLETED).IsValid(); }));
    CJourney::PressKeys({QStringLiteral("Return"), QStringLiteral("Escape")});
    PressTo({TAB}, BUTTON, QStringLiteral("OK"));
    m_pJourney->Picture(QStringLiteral("completed"));
    CJourney::PressKeys({SPACE});
    // Back where it began, with the focus in the tree.
    QVERIFY(CJourney::WaitFor([&] { return FocusText() == ROW + QStringLiteral(": Users"); }));
    QVERIFY(!Find(DIALOG, TEXT_COMPLETED).IsValid());

    const QString strCopy = Destination();
    QVERIFY(!strCopy.isEmpty());
    QCOMPARE(CTreeCompare::Differences(m_pSource->Path(QStringLiteral("Users")),
                                       strCopy + QStringLiteral("/Macintosh HD/Users")),
             QStringList());
    QVERIFY(!QFile::exists(strCopy + QStringLiteral("/Macintosh HD/Other")));
}

QTEST_MAIN(tst_KeyboardJourney)
#include "tst_KeyboardJourney.moc"
