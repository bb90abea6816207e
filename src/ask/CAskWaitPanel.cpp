#include "ask/CAskWaitPanel.h"

#include "kit/CDecorationAccess.h"
#include "kit/CSkinPicture.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMovie>
#include <QVBoxLayout>

static const int GIF_SPACING = 20;

CAskWaitPanel::CAskWaitPanel()
    : CAskPanel(tr("Looking for your disks…"))
{
    QLabel* pText = AddText(tr("This can take a minute."));
    auto* pGif = new QLabel;
    auto* pMovie
        = new QMovie(CSkinPicture::MoviePath(QStringLiteral(":/res/Gif/searching.gif")), QByteArray(), pGif);
    pGif->setMovie(pMovie);
    CDecorationAccess::Mark({pGif});
    pMovie->start();
    Body()->removeWidget(pText);
    auto* pRow = new QHBoxLayout;
    pRow->setSpacing(GIF_SPACING);
    pRow->addWidget(pGif);
    pRow->addWidget(pText, 1);
    Body()->addLayout(pRow);
}
