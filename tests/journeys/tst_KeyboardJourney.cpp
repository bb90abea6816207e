#include "journeys/CJourneyBed.h"
#include "journeys/CReader.h"

#include <QRegularExpression>

static const QString PROGRAM = "TarnwickMacPE";
static const QString VOLUME = "/Volumes/Macintosh HD";

static const QString BUTTON = "push button";
static const QString CHECK_BOX = "check box";
static const QString COMBO = "combo box";
static const QString DIALOG = "dialog";
static const QString LIST_ITEM = "list item";
static const QString ROW = "tree item";
static const QString PROMPT = "Select Destination Disk";

static const QString SPACE = "space";
static const QString TAB = "Tab";

/**
 * The whole program without a mouse, as a screen reader tells of it: nothing is
 * looked at but what comes over the accessibility bus, and the files at the end.
 */
class tst_KeyboardJourney : public CJourneyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void selectionPageIsReadOut();
    void rowsTellTicksAndFolders();
    void readerTicksByItself();
    void diskIsChosenFromTheList();
    void copyPageIsReadOut();
    void heldSpaceDoesNotCancel();
    void boxesAreAnsweredByTabAndSpaceAlone();
    void rescueWithoutAMouse();

private:
    STHeard Find(const QString& strRole, const QString& strName) const;
    bool Is(const QString& strRole, const QString& strName, const QString& strState) const;
    bool Becomes(const QString& strRole, const QString& strName, const QString& strState) const;
    bool Comes(const QString& strRole, const QString& strName) const;
    bool Goes(const QString& strRole, const QString& strName) const;
    QStringList ReadOut(const STHeard& stTop) const;
    QString ChosenDisk() const;
    double Progress() const;
    QString FocusText() const;
    bool FocusComesTo(const QString& strRole, const QString& strName) const;
    void PressTo(const QStringList& listKey, const QString& strRole, const QString& strName);
    void TickUsers();
    void ChooseLarge();
    void StartCopy();

    std::unique_ptr<CReader> m_pReader;
    STHeard m_stProgram;
};

void tst_KeyboardJourney::init()
{
    m_pReader = std::make_unique<CReader>();
    QVERIFY2(m_pReader->IsConnected(), "there is no accessibility bus");
    Make();
    WriteFile(m_pSource->Path("<b>bold.txt"), "on top");
    WriteFile(m_pSource->Path("Users/anna/写真.txt"), "Dear grandma,\n");
    Start();
    QVERIFY(CJourney::WaitFor([this] {
        m_stProgram = m_pReader->Program(PROGRAM);
        return m_stProgram.IsValid();
    }));
    // The first key goes to the first row of the tree.
    QVERIFY(FocusComesTo(ROW, VOLUME));
}

void tst_KeyboardJourney::cleanup()
{
    if (QTest::currentTestFailed() && m_pJourney) {
        m_pJourney->Picture("failed");
        qWarning().noquote() << m_pReader->Outline(m_stProgram) << m_pJourney->Errors();
    }
    Clear();
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

bool tst_KeyboardJourney::Becomes(const QString& strRole, const QString& strName,
                                  const QString& strState) const
{
    return CJourney::WaitFor([&] { return Is(strRole, strName, strState); });
}

bool tst_KeyboardJourney::Comes(const QString& strRole, const QString& strName) const
{
    return CJourney::WaitFor([&] { return Find(strRole, strName).IsValid(); });
}

bool tst_KeyboardJourney::Goes(const QString& strRole, const QString& strName) const
{
    return CJourney::WaitFor([&] { return !Find(strRole, strName).IsValid(); });
}

QString tst_KeyboardJourney::ChosenDisk() const { return m_pReader->Description(Find(COMBO, PROMPT)); }

double tst_KeyboardJourney::Progress() const
{
    return m_pReader->Value(Find("progress bar", "Copy Progress"));
}

/** Role and name of what has the focus. */
QString tst_KeyboardJourney::FocusText() const
{
    const STHeard stFocus = m_pReader->Focus(m_stProgram);
    return m_pReader->Role(stFocus) + ": " + m_pReader->Name(stFocus);
}

bool tst_KeyboardJourney::FocusComesTo(const QString& strRole, const QString& strName) const
{
    return CJourney::WaitFor([&] { return FocusText() == strRole + ": " + strName; }, 5000);
}

/** Presses keys and waits until the focus is on what they lead to. */
void tst_KeyboardJourney::PressTo(const QStringList& listKey, const QString& strRole, const QString& strName)
{
    if (QTest::currentTestFailed()) {
        return; // an earlier step has, and no later one can do better
    }
    CJourney::PressKeys(listKey);
    QVERIFY2(FocusComesTo(strRole, strName),
             qPrintable(strRole + ": " + strName + " expected, not " + FocusText()));
}

/** What a reader says of all that is more than a frame for other things, numbers aside. */
QStringList tst_KeyboardJourney::ReadOut(const STHeard& stTop) const
{
    static const QStringList s_listFrame{"application", "filler", "frame", "layered pane"};
    QStringList listSaid;
    const QList<STHeard> listHeard = m_pReader->Showing(stTop);
    for (const STHeard& stHeard : listHeard) {
        const QString strRole = m_pReader->Role(stHeard);
        const QString strName = m_pReader->Name(stHeard);
        if (strName.isEmpty() && s_listFrame.contains(strRole)) {
            continue;
        }
        const QString strDescription = m_pReader->Description(stHeard);
        QString strSaid = strRole + ": " + strName;
        if (!strDescription.isEmpty() && strRole != "application") {
            strSaid += " (" + strDescription + ')';
        }
        listSaid.append(strSaid.replace(QRegularExpression("\\d+"), "#"));
    }
    return listSaid;
}

void tst_KeyboardJourney::TickUsers()
{
    PressTo({"Right", "u"}, ROW, "Users");
    CJourney::PressKeys({SPACE});
    QVERIFY(Becomes(ROW, "Users", "checked"));
}

void tst_KeyboardJourney::ChooseLarge()
{
    PressTo({TAB}, COMBO, PROMPT);
    CJourney::PressKeys({"alt+Down"});
    QVERIFY(CJourney::WaitFor([this] { return FocusText().startsWith(LIST_ITEM); }));
    PressTo({"l"}, LIST_ITEM, "LARGE");
    PressTo({"Return"}, COMBO, PROMPT);
    QVERIFY(CJourney::WaitFor([&] { return ChosenDisk() == "LARGE"; }));
}

void tst_KeyboardJourney::StartCopy()
{
    TickUsers();
    ChooseLarge();
    m_pJourney->SlowWrites(SLOW_MS);
    PressTo({TAB}, BUTTON, "Refresh List of Disks");
    PressTo({TAB}, CHECK_BOX, "Complete rescue");
    PressTo({TAB}, BUTTON, "Copy");
    CJourney::PressKeys({SPACE});
}

void tst_KeyboardJourney::selectionPageIsReadOut()
{
    ChooseLarge();
    QCOMPARE(ReadOut(m_stProgram),
             QStringList({
                 "application: TarnwickMacPE",
                 "frame: Kelvane Tarnwick",
                 "push button: Close",
                 "push button: Minimize",
                 "push button: Zoom",
                 "label: Kelvane Tarnwick",
                 "label: Source",
                 "label: Select File to Copy:",
                 "tree: Select File to Copy",
                 "tree item: /Volumes/Macintosh HD (/Volumes/Macintosh HD)",
                 "graphic: No files selected",
                 "label: Destination",
                 "label: LARGE",
                 "combo box: Select Destination Disk (LARGE)",
                 "push button: Refresh List of Disks",
                 "label: #.#GB Available, #.#GB Total",
                 "check box: Complete rescue (Copies everything in what is ticked, whether the list shows it "
                 "or not.)",
                 "push button: Copy",
             }));
    QVERIFY(!Is(BUTTON, "Minimize", "enabled"));
    QVERIFY(!Is(BUTTON, "Copy", "enabled"));
    QVERIFY(m_pReader->Actions(Find(BUTTON, "Refresh List of Disks")).contains("Press"));
}

void tst_KeyboardJourney::rowsTellTicksAndFolders()
{
    const QString strChecked = "checked";
    const QString strMixed = "indeterminate";
    const QString strUsers = "Users";
    QVERIFY(Is(ROW, VOLUME, "expandable") && Is(ROW, VOLUME, "collapsed"));
    QVERIFY(!Is(ROW, VOLUME, strChecked) && !Is(ROW, VOLUME, strMixed));
    QVERIFY(!Find(ROW, strUsers).IsValid());

    CJourney::PressKeys({"Right"});
    QVERIFY(Becomes(ROW, VOLUME, "expanded"));
    QVERIFY(!Is(ROW, VOLUME, "collapsed"));
    QVERIFY(!Is(ROW, strUsers, strChecked));
    QCOMPARE(m_pReader->Description(Find(ROW, strUsers)), VOLUME + "/Users");
    QVERIFY(!Is(ROW, "<b>bold.txt", "expandable"));

    TickUsers();
    QVERIFY(!Is(ROW, strUsers, strMixed));
    QVERIFY(!Is(ROW, "Other", strChecked));
    QVERIFY(Is(ROW, VOLUME, strMixed) && !Is(ROW, VOLUME, strChecked));
    QVERIFY(Find("graphic", "Files selected").IsValid());
    QVERIFY(Is(BUTTON, "Copy", "enabled"));

    CJourney::PressKeys({"Home", SPACE});
    QVERIFY(Becomes(ROW, VOLUME, strChecked));
    QVERIFY(!Is(ROW, VOLUME, strMixed));
    QVERIFY(Is(ROW, "Other", strChecked));
    CJourney::PressKeys({SPACE});
    QVERIFY(CJourney::WaitFor([&] { return !Is(ROW, VOLUME, strChecked); }));
    QVERIFY(!Is(ROW, strUsers, strChecked));
    QVERIFY(Find("graphic", "No files selected").IsValid());
    QVERIFY(!Is(BUTTON, "Copy", "enabled"));

    CJourney::PressKeys({"Left"});
    QVERIFY(Becomes(ROW, VOLUME, "collapsed"));
    QVERIFY(!Find(ROW, strUsers).IsValid());
}

void tst_KeyboardJourney::readerTicksByItself()
{
    QVERIFY(m_pReader->Do(Find(ROW, VOLUME), "Press"));
    QVERIFY(Comes(ROW, "Users"));
    QVERIFY(m_pReader->Do(Find(ROW, "Users"), "Toggle"));
    QVERIFY(Becomes(ROW, "Users", "checked"));
    QVERIFY(Is(BUTTON, "Copy", "enabled"));
}

void tst_KeyboardJourney::diskIsChosenFromTheList()
{
    PressTo({TAB}, COMBO, PROMPT);
    const QString strBefore = ChosenDisk();
    QVERIFY(Is(COMBO, PROMPT, "collapsed"));
    CJourney::PressKeys({"Down"});
    QVERIFY(Becomes(COMBO, PROMPT, "expanded"));
    QVERIFY(FocusComesTo(LIST_ITEM, strBefore));
    QVERIFY(Find("list", PROMPT).IsValid());
    // Looked at, and left as it was.
    PressTo({"End", "Home", "Escape"}, COMBO, PROMPT);
    QCOMPARE(ChosenDisk(), strBefore);
    QVERIFY(!Find("list", PROMPT).IsValid());

    const QString strOther = strBefore == "LARGE" ? "SMALL" : "LARGE";
    CJourney::PressKeys({"Return"});
    QVERIFY(FocusComesTo(LIST_ITEM, strBefore));
    PressTo({strOther.left(1).toLower()}, LIST_ITEM, strOther);
    PressTo({SPACE}, COMBO, PROMPT);
    QCOMPARE(ChosenDisk(), strOther);
    QVERIFY(Find("label", strOther).IsValid());
}

void tst_KeyboardJourney::copyPageIsReadOut()
{
    StartCopy();
    QVERIFY(CJourney::WaitFor([&] { return Progress() > 5; }));
    const QRegularExpression figures("^(label: ).+( MB/s)$");
    QStringList listSaid;
    QVERIFY(CJourney::WaitFor([&] {
        listSaid = ReadOut(m_stProgram);
        return listSaid.indexOf(figures) >= 0;
    }));
    listSaid.replaceInStrings(figures, "\\1…\\2");
    QVERIFY(
        listSaid.replaceInStrings(QRegularExpression("^(label: Copying files to \\(LARGE\\): ).+"), "\\1…")
            .contains("label: Copying files to (LARGE): …"));
    listSaid.replaceInStrings(QRegularExpression("^(label: Remaining Time: ).+"), "\\1…");
    QCOMPARE(listSaid,
             QStringList({
                 "application: TarnwickMacPE",
                 "frame: Kelvane Tarnwick",
                 "push button: Close",
                 "push button: Minimize",
                 "push button: Zoom",
                 "label: Kelvane Tarnwick",
                 "filler: Copy Progress",
                 "label: Copying files to (LARGE): …",
                 "progress bar: Copy Progress",
                 "label: Remaining Time: …",
                 "label: … MB/s",
                 "push button: Cancel",
             }));
    QCOMPARE(FocusText(), QString("filler: Copy Progress"));
    const double rBefore = Progress();
    QVERIFY(CJourney::WaitFor([&] { return Progress() > rBefore; }));
    PressTo({TAB}, BUTTON, "Cancel");
}

void tst_KeyboardJourney::heldSpaceDoesNotCancel()
{
    StartCopy();
    // Held from before the page comes up until the key has repeated for a while.
    CJourney::HoldKey(SPACE, true);
    QVERIFY(CJourney::WaitFor([&] { return Progress() > 5; }));
    const double rBefore = Progress();
    QVERIFY(CJourney::WaitFor([&] { return Progress() > rBefore + 30; }));
    QVERIFY(!Find(DIALOG, TEXT_STOP).IsValid());
    CJourney::HoldKey(SPACE, false);
    QVERIFY(CJourney::WaitFor([&] { return Progress() > rBefore + 31; }));
    QVERIFY(!Find(DIALOG, TEXT_STOP).IsValid());
}

void tst_KeyboardJourney::boxesAreAnsweredByTabAndSpaceAlone()
{
    const QStringList listNoAnswer{"Return", "KP_Enter", "Escape"};
    PressTo({"shift+Tab"}, BUTTON, "Close");
    CJourney::PressKeys({SPACE});
    QVERIFY(Comes(DIALOG, TEXT_EXIT));
    const STHeard stBox = Find(DIALOG, TEXT_EXIT);
    QCOMPARE(ReadOut(stBox),
             QStringList({
                 "dialog: " + TEXT_EXIT,
                 "push button: Close",
                 "push button: Minimize",
                 "push button: Zoom",
                 "label: " + TEXT_EXIT,
                 "push button: Cancel",
                 "push button: Yes",
             }));
    QVERIFY(FocusComesTo(DIALOG, TEXT_EXIT));
    CJourney::PressKeys(listNoAnswer);
    for (const char* pName : {"Cancel", "Yes", "Close", "Cancel"}) {
        PressTo({TAB}, BUTTON, pName);
        CJourney::PressKeys(listNoAnswer);
    }
    PressTo({"shift+Tab"}, BUTTON, "Close");
    PressTo({"shift+Tab"}, BUTTON, "Yes");
    PressTo({"shift+Tab"}, BUTTON, "Cancel");
    QVERIFY(m_pReader->Is(stBox, "showing"));
    CJourney::PressKeys({SPACE});
    QVERIFY(Goes(DIALOG, TEXT_EXIT));
    QVERIFY(m_pJourney->IsRunning());

    // And the other answer, which is the end of the program.
    CJourney::PressKeys({SPACE});
    QVERIFY(Comes(DIALOG, TEXT_EXIT));
    PressTo({TAB, TAB}, BUTTON, "Yes");
    CJourney::PressKeys({SPACE});
    VerifyEnd();
}

void tst_KeyboardJourney::rescueWithoutAMouse()
{
    StartCopy();
    // Ask to stop, think better of it, and go on to the end.
    QVERIFY(CJourney::WaitFor([&] { return Progress() > 5; }));
    PressTo({TAB}, BUTTON, "Cancel");
    CJourney::PressKeys({SPACE});
    QVERIFY(Comes(DIALOG, TEXT_STOP));
    m_pJourney->Picture("question");
    PressTo({TAB, SPACE}, BUTTON, "Cancel");
    QVERIFY(Goes(DIALOG, TEXT_STOP));
    m_pJourney->SlowWrites(0);

    QVERIFY(Comes(DIALOG, TEXT_COMPLETED));
    CJourney::PressKeys({"Return", "Escape"});
    PressTo({TAB}, BUTTON, "OK");
    m_pJourney->Picture("completed");
    CJourney::PressKeys({SPACE});
    // Back where it began, with the focus in the tree.
    QVERIFY(FocusComesTo(ROW, "Users"));
    QVERIFY(!Find(DIALOG, TEXT_COMPLETED).IsValid());
    VerifyRescued();
}

QTEST_MAIN(tst_KeyboardJourney)
#include "tst_KeyboardJourney.moc"
