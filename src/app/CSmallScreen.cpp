#include "app/CSmallScreen.h"

#include <QLayout>
#include <QMainWindow>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>

#include <algorithm>

// What the pages have of the window, below title strip and line.
static const QSize PAGES_SIZE(1120, 649);

// Wider than the bars inside the pages, as these are on the way to every control.
static const int BAR_WIDTH = 10;
static const char BAR_STYLE[] = "QScrollBar:horizontal{height:10px;}QScrollBar:vertical{width:10px;}"
                                "QScrollBar::handle{border-radius:5px;}";

static QScrollArea* AreaOf(QStackedWidget* pPages)
{
    auto* pArea = new QScrollArea;
    pArea->setObjectName(QStringLiteral("m_pPagesArea"));
    pArea->setFrameShape(QFrame::NoFrame);
    // Tab goes to the controls; the area follows them by itself.
    pArea->setFocusPolicy(Qt::NoFocus);
    pArea->horizontalScrollBar()->setObjectName(QStringLiteral("m_pPagesHorizontalBar"));
    pArea->verticalScrollBar()->setObjectName(QStringLiteral("m_pPagesVerticalBar"));
    for (QScrollBar* pBar : {pArea->horizontalScrollBar(), pArea->verticalScrollBar()}) {
        pBar->setStyleSheet(QLatin1String(BAR_STYLE));
    }
    pPages->setFixedSize(PAGES_SIZE);
    return pArea;
}

/** As large as the window with the bar that one way takes, so that it needs none for the other. */
static QSize SizeOn(const QSize& sizeScreen, const QSize& sizeWindow)
{
    const QSize sizeBar(sizeScreen.height() < sizeWindow.height() ? BAR_WIDTH : 0,
                        sizeScreen.width() < sizeWindow.width() ? BAR_WIDTH : 0);
    return (sizeWindow + sizeBar).boundedTo(sizeScreen);
}

void CSmallScreen::Fit(QMainWindow& window, QStackedWidget* pPages, const QSize& sizeScreen)
{
    if (sizeScreen.isEmpty() || window.maximumSize().boundedTo(sizeScreen) == window.maximumSize()) {
        return;
    }
    const QSize size = SizeOn(sizeScreen, window.maximumSize());
    // What is moved to another parent loses the focus, and the first key would go to the close button.
    QWidget* pFocus = window.focusWidget();
    QScrollArea* pArea = AreaOf(pPages);
    delete window.centralWidget()->layout()->replaceWidget(pPages, pArea);
    pArea->setWidget(pPages);
    window.centralWidget()->setFixedSize(size);
    window.setFixedSize(size);
    if (pFocus) {
        pFocus->setFocus();
    }
    // Each page is read from its beginning.
    QObject::connect(pPages, &QStackedWidget::currentChanged, pArea, [pArea] {
        pArea->horizontalScrollBar()->setValue(0);
        pArea->verticalScrollBar()->setValue(0);
    });
}

/** The number of "1.5" and of "eDP-1=1.5"; 1 for all else. */
static double FactorOf(const QByteArray& baPart)
{
    bool bNumber = false;
    const double fFactor = baPart.mid(baPart.lastIndexOf('=') + 1).trimmed().toDouble(&bNumber);
    return bNumber ? fFactor : 1.0;
}

bool CSmallScreen::IsBelowOne(const QByteArray& baFactors)
{
    const QList<QByteArray> listPart = baFactors.split(';');
    return std::any_of(listPart.begin(), listPart.end(), [](const QByteArray& baPart) {
        const double fFactor = FactorOf(baPart);
        return fFactor > 0 && fFactor < 1;
    });
}
