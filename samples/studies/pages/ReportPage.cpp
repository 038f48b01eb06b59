#include "ReportPage.h"

#include "ChartWidget.h"
#include "Errors.h"
#include "QtText.h"
#include "Shell.h"
#include "StudyContexts.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QVBoxLayout>

namespace studies {

using namespace corvane;

namespace {

constexpr QSize oPictureSize(620, 420);

// Pictures are resources of the document, under the names that the report gives them.
void Fill(QTextDocument& oDocument, const StudyReport& oReport) {
    for (const StudyReport::Picture& oPicture : oReport.aPictures)
        oDocument.addResource(QTextDocument::ImageResource, QUrl(Text(oPicture.sName)),
                              ChartPicture(oPicture.oScene, oPictureSize));
    oDocument.setHtml(Text(oReport.sHtml));
}

bool IsOnOnePage(const QTextDocument& oDocument, const QTextBlock& oFirst, const QTextBlock& oLast) {
    const auto fnPage = [&](qreal y) { return static_cast<int>(y / oDocument.pageSize().height()); };
    const auto* pLayout = oDocument.documentLayout();
    // A line that doesn't fit stands on the next page, though its block begins on this one.
    return fnPage(pLayout->blockBoundingRect(oFirst).top()) == fnPage(pLayout->blockBoundingRect(oLast).bottom() - 1);
}

void BeginPage(QTextDocument& oDocument, const QTextBlock& oBlock, bool bBegins) {
    QTextBlockFormat oFormat = oBlock.blockFormat();
    oFormat.setPageBreakPolicy(bBegins ? QTextFormat::PageBreak_AlwaysBefore : QTextFormat::PageBreak_Auto);
    QTextCursor(oBlock).setBlockFormat(oFormat);
    oDocument.markContentsDirty(0, oDocument.characterCount()); // pages behind it would stay as they were
}

// What stands below a heading goes to the next page as a whole. What is longer than a page is divided, but not just
// behind its heading.
void KeepTogether(QTextDocument& oDocument) {
    for (QTextBlock oBlock = oDocument.begin(); oBlock.isValid(); oBlock = oBlock.next()) {
        if (oBlock.blockFormat().headingLevel() == 0)
            continue;
        QTextBlock oLast = oBlock;
        while (oLast.next().isValid() && oLast.next().blockFormat().headingLevel() == 0)
            oLast = oLast.next();
        if (oLast == oBlock || IsOnOnePage(oDocument, oBlock, oLast))
            continue;
        const bool bIsCut = !IsOnOnePage(oDocument, oBlock, oBlock.next());
        BeginPage(oDocument, oBlock, true);
        if (!bIsCut && !IsOnOnePage(oDocument, oBlock, oLast))
            BeginPage(oDocument, oBlock, false);
    }
}

void SavePdf(const StudyReport& oReport, const QString& sPath) {
    constexpr int nResolution = 144; // dots an inch of text and pictures alike
    QPdfWriter oWriter(sPath);
    oWriter.setPageSize(QPageSize(QPageSize::A4));
    oWriter.setPageMargins(QMarginsF(18, 18, 18, 18), QPageLayout::Millimeter);
    oWriter.setResolution(nResolution);
    oWriter.setTitle(Text(oReport.sTitle));
    QTextDocument oDocument;
    oDocument.documentLayout()->setPaintDevice(&oWriter);
    Fill(oDocument, oReport);
    oDocument.setPageSize(oWriter.pageLayout().paintRectPixels(nResolution).size());
    KeepTogether(oDocument);
    oDocument.print(&oWriter);
}

// Pictures stand in the file itself, so that it can be handed on alone.
QByteArray Html(const StudyReport& oReport) {
    QString sHtml = Text(oReport.sHtml);
    for (const StudyReport::Picture& oPicture : oReport.aPictures) {
        QByteArray sPng;
        QBuffer oBuffer(&sPng);
        oBuffer.open(QIODevice::WriteOnly);
        ChartPicture(oPicture.oScene, oPictureSize).save(&oBuffer, "PNG");
        sHtml.replace("src=\"" + Text(oPicture.sName) + "\"",
                      "src=\"data:image/png;base64," + QString::fromLatin1(sPng.toBase64()) + "\"");
    }
    return sHtml.toUtf8();
}

} // namespace

void SaveReport(const StudyReport& oReport, const QString& sPath) {
    if (sPath.endsWith(".pdf", Qt::CaseInsensitive)) {
        QSaveFile oProbe(sPath); // the writer itself doesn't say why it couldn't
        if (!oProbe.open(QIODevice::WriteOnly))
            FailWith("The file “" + Utf8(sPath) + "” can't be written: " + Utf8(oProbe.errorString()) + ".");
        oProbe.cancelWriting();
        SavePdf(oReport, sPath);
        return;
    }
    QSaveFile oFile(sPath);
    const QByteArray sHtml = Html(oReport);
    if (!oFile.open(QIODevice::WriteOnly) || oFile.write(sHtml) != sHtml.size() || !oFile.commit())
        FailWith("The file “" + Utf8(sPath) + "” can't be written: " + Utf8(oFile.errorString()) + ".");
}

void ReportPage::OnInitialize() {
    Keep(About<StudyContext>()->Space()->Changed.Subscribe([this](const std::string&) {
        if (About<StudyContext>()->Exists())
            Write();
    }));
}

QWidget* ReportPage::MakeWidget(QWidget* pParent) {
    auto* pPage = new QWidget(pParent);
    m_pView = new QTextBrowser;
    m_pView->setAccessibleName("Report");
    m_pView->setOpenLinks(false);
    // As on paper, whatever the theme.
    QPalette oPaper = m_pView->palette();
    oPaper.setColor(QPalette::Base, Qt::white);
    oPaper.setColor(QPalette::Text, QColor(0x20, 0x24, 0x28));
    m_pView->setPalette(oPaper);
    auto* pLayout = new QVBoxLayout(pPage);
    pLayout->addWidget(m_pView);
    Write();
    return pPage;
}

QWidget* ReportPage::FirstFocus() {
    return m_pView;
}

void ReportPage::Write() {
    if (!m_pView)
        return;
    m_oReport =
        ReportOn(About<StudyContext>()->Space()->GetStore(), About<StudyContext>()->Number(), ReadPreferences());
    const int nScrolled = m_pView->verticalScrollBar()->value();
    m_pView->document()->clear();
    Fill(*m_pView->document(), m_oReport);
    m_pView->moveCursor(QTextCursor::Start); // or the keyboard's focus would show the end
    m_pView->verticalScrollBar()->setValue(nScrolled);
}

void ReportPage::OnExport() {
    const std::string sPath =
        AskForSavePath("Export", "HTML page (*.html)|*.html|PDF document (*.pdf)|*.pdf", m_oReport.sTitle + ".html");
    if (sPath.empty())
        return;
    SaveReport(m_oReport, Text(sPath));
    ShowStatus("Exported to " + sPath);
}

void ReportPage::OnCopy() {
    if (m_pView)
        m_pView->copy();
}

} // namespace studies
