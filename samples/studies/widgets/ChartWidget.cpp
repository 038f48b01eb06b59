#include "ChartWidget.h"

#include "Errors.h"
#include "QtText.h"

#include <QFileInfo>
#include <QHelpEvent>
#include <QPainter>
#include <QSvgGenerator>
#include <QToolTip>

namespace studies {
namespace {

QFont PaperFont() {
    QFont oFont;
    oFont.setPixelSize(13);
    return oFont;
}

void SaveSvg(const ChartScene& oScene, const QSize& oSize, const QString& sPath) {
    QSvgGenerator oGenerator;
    oGenerator.setFileName(sPath);
    oGenerator.setSize(oSize);
    oGenerator.setViewBox(QRect(QPoint(), oSize));
    oGenerator.setTitle(QFileInfo(sPath).completeBaseName());
    QPainter oPainter;
    if (!oPainter.begin(&oGenerator))
        FailWith("The file “" + Utf8(sPath) + "” can't be written.");
    PaintChart(oPainter, QRectF(QPointF(), oSize), oScene, ChartStyle::ForPaper(PaperFont()));
}

} // namespace

ChartWidget::ChartWidget(QWidget* pParent) : QWidget(pParent) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName("Chart");
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ChartWidget::SetScene(ChartScene oScene) {
    m_oScene = std::move(oScene);
    m_oDrawn = {};
    // For those who don't see it.
    setAccessibleDescription(m_oScene.sEmpty.empty()
                                 ? Text(m_oScene.oY.sLabel + " over " + m_oScene.oX.sLabel + ". " + m_oScene.sNote)
                                 : Text(m_oScene.sEmpty));
    update();
}

void ChartWidget::Draw() {
    const double dblRatio = devicePixelRatioF();
    if (!m_oDrawn.isNull() && m_oDrawn.size() == size() * dblRatio)
        return;
    m_oDrawn = QPixmap(size() * dblRatio);
    m_oDrawn.setDevicePixelRatio(dblRatio);
    QPainter oPainter(&m_oDrawn);
    m_oLayout = PaintChart(oPainter, rect(), m_oScene, ChartStyle::Of(palette(), font()));
}

QString ChartWidget::TipAt(const QPoint& oPoint) {
    Draw();
    return ChartTip(m_oScene, m_oLayout, oPoint);
}

bool ChartWidget::event(QEvent* pEvent) {
    switch (pEvent->type()) {
    case QEvent::ToolTip: {
        const auto& oHelp = *static_cast<QHelpEvent*>(pEvent);
        const QString sTip = TipAt(oHelp.pos());
        if (sTip.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(oHelp.globalPos(), sTip, this);
        return true;
    }
    case QEvent::PaletteChange:
    case QEvent::FontChange:
        m_oDrawn = {};
        update();
        break;
    default:
        break;
    }
    return QWidget::event(pEvent);
}

void ChartWidget::paintEvent(QPaintEvent* /*pEvent*/) {
    if (size().isEmpty())
        return;
    Draw();
    QPainter(this).drawPixmap(0, 0, m_oDrawn);
}

QImage ChartPicture(const ChartScene& oScene, const QSize& oSize) {
    constexpr double dblRatio = 2;
    QImage oImage(oSize * dblRatio, QImage::Format_RGB32);
    oImage.setDevicePixelRatio(dblRatio);
    QPainter oPainter(&oImage);
    PaintChart(oPainter, QRectF(QPointF(), oSize), oScene, ChartStyle::ForPaper(PaperFont()));
    return oImage;
}

void SaveChart(const ChartScene& oScene, const QSize& oSize, const QString& sPath) {
    if (sPath.endsWith(".svg", Qt::CaseInsensitive)) {
        SaveSvg(oScene, oSize, sPath);
        return;
    }
    if (!ChartPicture(oScene, oSize).save(sPath, "PNG"))
        FailWith("The file “" + Utf8(sPath) + "” can't be written.");
}

} // namespace studies
