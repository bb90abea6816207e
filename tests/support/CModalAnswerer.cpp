#include "support/CModalAnswerer.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTextDocument>

#include <algorithm>
#include <utility>

CModalAnswerer::CModalAnswerer(const QString& strButton)
    : m_strButton(strButton)
{
    connect(&m_timer, &QTimer::timeout, this, &CModalAnswerer::Look);
    m_timer.start(5);
}

QString CModalAnswerer::TitleButton() { return "btnClose"; }

void CModalAnswerer::Meanwhile(std::function<void()> fnMeanwhile) { m_fnMeanwhile = std::move(fnMeanwhile); }

bool CModalAnswerer::Answered() const { return m_bAnswered; }

QString CModalAnswerer::Text() const { return m_strText; }

QStringList CModalAnswerer::Buttons() const { return m_listButton; }

QPixmap CModalAnswerer::Icon() const { return m_pixIcon; }

QList<QPushButton*> CModalAnswerer::VisibleButtons(const QWidget* pBox)
{
    QList<QPushButton*> listButton;
    for (QPushButton* pButton : pBox->findChildren<QPushButton*>()) {
        if (pButton->isVisible() && !pButton->text().isEmpty()) {
            listButton.append(pButton);
        }
    }
    std::sort(listButton.begin(), listButton.end(),
              [pBox](const QPushButton* pLeft, const QPushButton* pRight) {
                  return pLeft->mapTo(pBox, QPoint()).x() < pRight->mapTo(pBox, QPoint()).x();
              });
    return listButton;
}

void CModalAnswerer::Note(QWidget* pBox)
{
    if (const auto* pLabel = pBox->findChild<QLabel*>("label_text")) {
        QTextDocument document;
        document.setHtml(pLabel->text());
        m_strText = document.toPlainText();
    }
    if (const auto* pIcon = pBox->findChild<QLabel*>("label_icon")) {
        m_pixIcon = pIcon->pixmap(Qt::ReturnByValue);
    }
    for (const QPushButton* pButton : VisibleButtons(pBox)) {
        m_listButton.append(pButton->text());
    }
}

void CModalAnswerer::Look()
{
    QWidget* pBox = QApplication::activeModalWidget();
    if (!pBox || !pBox->isVisible() || m_bSeen) {
        return;
    }
    m_bSeen = true;
    m_timer.stop();
    Note(pBox);
    if (m_fnMeanwhile) {
        m_fnMeanwhile();
    }
    if (m_strButton == TitleButton()) {
        QTest::mouseClick(pBox->findChild<QPushButton*>(TitleButton()), Qt::LeftButton);
        m_bAnswered = true;
        return;
    }
    for (QPushButton* pButton : VisibleButtons(pBox)) {
        if (pButton->text() == m_strButton) {
            m_bAnswered = true;
            QTest::mouseClick(pButton, Qt::LeftButton);
            return;
        }
    }
    // No such button: close the box, so that the test fails instead of hanging.
    pBox->close();
}
