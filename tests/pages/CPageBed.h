#pragma once

#include "copy/CGetFileSizeThread.h"
#include "kit/CClickableLabel.h"
#include "log/CClock.h"
#include "pages/CPageTree.h"
#include "pages/CSearchWaitView.h"
#include "pages/CSelFileWidget.h"
#include "support/CFakeCommands.h"
#include "support/CVolume.h"
#include "support/LogFile.h"
#include "support/TestFiles.h"
#include "support/Texts.h"
#include "support/Widgets.h"
#include "tree/CFileTreeView.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <map>
#include <memory>

/**
 * What the tests of the selection page stand on: the page in a window over a
 * source volume, "Macintosh HD" with docs/a.txt (1000 bytes), docs/b.txt (500)
 * and pics/large.jpg (3 MiB), and as many sticks as a test plugs in.
 */
class CPageBed : public QObject
{
    Q_OBJECT

protected slots:
    void init()
    {
        NEEDS_VOLUMES();
        UseLogFile();
        m_cNextNode = 'b';
        m_pCommands = std::make_unique<CFakeCommands>();
        m_pCommands->AddDiskutil();
        m_pSource = std::make_unique<CVolume>("Macintosh HD", "/dev/nvme0n1p1", 20);
        WriteFile(m_pSource->Path("docs/a.txt"), QByteArray(1000, 'x'));
        WriteFile(m_pSource->Path("docs/b.txt"), QByteArray(500, 'x'));
        WriteFile(m_pSource->Path("pics/large.jpg"), QByteArray(3 * 1024 * 1024, 'x'));
    }

    void cleanup()
    {
        const int nDiskChange = m_pDiskChange ? m_pDiskChange->count() : 0;
        m_pDiskChange.reset();
        m_pHost.reset();
        CPageTree::Clear();
        m_mapStick.clear();
        m_pSource.reset();
        m_pCommands.reset();
        CClock::SetSource(std::function<qint64()>());
        QCOMPARE(nDiskChange, 0); // this signal is never sent, whatever happens
    }

protected:
    /** Mounts a stick, each time on a device node of its own; the page is not told. */
    CVolume& Plug(const QString& strName, int nMiB = 10)
    {
        const QString strNode = QString("/dev/sd%1").arg(m_cNextNode++);
        m_mapStick[strName] = std::make_unique<CVolume>(strName, strNode, nMiB);
        return Stick(strName);
    }

    /** A stick that was plugged in. */
    CVolume& Stick(const QString& strName) const { return *m_mapStick.at(strName); }

    /** Makes and shows the page, which finds the sticks; those named here are plugged in first. */
    void MakePage(const QStringList& listStick = QStringList())
    {
        for (const QString& strName : listStick) {
            Plug(strName);
        }
        m_pHost = std::make_unique<QWidget>();
        m_pHost->setFixedSize(1120, 649);
        m_pPage = new CSelFileWidget(m_pHost.get());
        m_pPage->resize(1120, 649);
        m_pDiskChange = std::make_unique<QSignalSpy>(m_pPage, &CSelFileWidget::SignalDiskChange);
        QVERIFY(ShowActive(m_pHost.get()));
    }

    /** Tells the page that a disk has appeared, as the window does. */
    void Arrive(const QString& strName)
    {
        m_pPage->AddDisk(QFileInfo("/Volumes/" + strName));
        m_pPage->OnRefreshUSB();
    }

    /** Tells the page that a disk has gone. */
    void Leave(const QString& strName)
    {
        m_pPage->RemoveDisk("/Volumes/" + strName);
        m_pPage->OnRefreshUSB();
    }

    /** Ticks or unticks an entry of the source and tells the page; false when there is none. */
    bool Tick(const QString& strRelative = "docs/a.txt", Qt::CheckState enState = Qt::Checked) const
    {
        const bool bTicked = CPageTree::Tick(m_pSource->Path(strRelative), enState);
        m_pPage->SlotCheckFileSelected();
        return bTicked;
    }

    /** Chooses a disk of the list. */
    void Choose(const QString& strName) const
    {
        m_pPage->SlotListWidgetItemClick(List()->findItems(strName, Qt::MatchExactly).value(0));
    }

    /** The names in the drop-down. */
    QStringList Listed() const
    {
        QStringList listName;
        for (int i = 0; i < List()->count(); ++i) {
            listName.append(List()->item(i)->text());
        }
        return listName;
    }

    /** How often "diskutil" was asked. */
    int Asked() const { return m_pCommands->Calls("diskutil").size(); }

    /** Whether a label shows that picture. */
    static bool Shows(const QLabel* pLabel, const char* pResource)
    {
        return pLabel->pixmap(Qt::ReturnByValue).toImage() == QPixmap(pResource).toImage();
    }

    QLabel* Label(const char* pName) const { return m_pPage->findChild<QLabel*>(pName); }
    CClickableLabel* Refresh() const { return m_pPage->findChild<CClickableLabel*>("RefreshLab"); }
    CFileTreeView* Tree() const { return m_pPage->findChild<CFileTreeView*>(); }
    QPushButton* DropBtn() const { return m_pPage->findChild<QPushButton*>("m_pDropBtn"); }
    QCheckBox* CompleteBox() const { return m_pPage->findChild<QCheckBox*>("m_pCompleteBox"); }
    QPushButton* CopyBtn() const { return m_pPage->findChild<QPushButton*>("toolBtn"); }
    QListWidget* List() const { return m_pPage->findChild<QListWidget*>(); }
    CSearchWaitView* WaitView() const { return m_pPage->findChild<CSearchWaitView*>(); }
    CGetFileSizeThread* SizeThread() const { return m_pPage->findChild<CGetFileSizeThread*>(); }

    std::unique_ptr<CFakeCommands> m_pCommands;
    std::unique_ptr<CVolume> m_pSource;
    std::unique_ptr<QWidget> m_pHost;
    CSelFileWidget* m_pPage = nullptr;

private:
    std::unique_ptr<QSignalSpy> m_pDiskChange;
    std::map<QString, std::unique_ptr<CVolume>> m_mapStick;
    char m_cNextNode = 'b';
};
