#include "desktop/explorer/PictureIcon.h"

#include <QBuffer>
#include <QIconEngine>
#include <QImageReader>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>
#include <memory>

namespace corvane::desktop {

namespace {

class SvgEngine final : public QIconEngine {
public:
    explicit SvgEngine(std::shared_ptr<QSvgRenderer> pRenderer) : m_pRenderer(std::move(pRenderer)) {}

    void paint(QPainter* pPainter, const QRect& oRect, QIcon::Mode eMode, QIcon::State eState) override {
        const qreal fScale = pPainter->device()->devicePixelRatioF();
        QPixmap oPixmap = pixmap((QSizeF(oRect.size()) * fScale).toSize(), eMode, eState);
        oPixmap.setDevicePixelRatio(fScale);
        if (eMode == QIcon::Disabled)
            pPainter->setOpacity(0.4);
        pPainter->drawPixmap(oRect, oPixmap);
        if (eMode == QIcon::Disabled)
            pPainter->setOpacity(1);
    }

    QPixmap pixmap(const QSize& oSize, QIcon::Mode, QIcon::State) override {
        if (m_oPixmap.size() != oSize) {
            m_oPixmap = QPixmap(oSize);
            m_oPixmap.fill(Qt::transparent);
            QPainter oPainter(&m_oPixmap);
            const QSizeF oDrawn = QSizeF(m_pRenderer->defaultSize()).scaled(oSize, Qt::KeepAspectRatio);
            const QPointF oCorner((oSize.width() - oDrawn.width()) / 2, (oSize.height() - oDrawn.height()) / 2);
            m_pRenderer->render(&oPainter, QRectF(oCorner, oDrawn));
        }
        return m_oPixmap;
    }

    QIconEngine* clone() const override { return new SvgEngine(*this); }

private:
    std::shared_ptr<QSvgRenderer> m_pRenderer;
    QPixmap m_oPixmap;
};

const char* NameOf(Picture::Format eFormat) {
    switch (eFormat) {
    case Picture::Format::Png:
        return "png";
    case Picture::Format::Bmp:
        return "bmp";
    case Picture::Format::Ico:
        return "ico";
    case Picture::Format::Gif:
        return "gif";
    case Picture::Format::Jpeg:
        return "jpeg";
    case Picture::Format::Svg:
        break;
    }
    return "";
}

} // namespace

QIcon IconOf(const Ref<Picture>& oPicture) {
    if (!oPicture)
        return {};
    QByteArray aBytes = QByteArray::fromStdString(oPicture->Bytes());
    if (oPicture->FileFormat() == Picture::Format::Svg) {
        auto pRenderer = std::make_shared<QSvgRenderer>(aBytes);
        return pRenderer->isValid() ? QIcon(new SvgEngine(std::move(pRenderer))) : QIcon();
    }
    QBuffer oBuffer(&aBytes);
    oBuffer.open(QIODevice::ReadOnly);
    QImageReader oReader(&oBuffer, NameOf(oPicture->FileFormat()));
    oReader.setAutoTransform(true);
    QIcon oIcon;
    // An icon file holds sizes, a moving picture frames, of which the first stands for all.
    const int nImages = oPicture->FileFormat() == Picture::Format::Ico ? qMax(1, oReader.imageCount()) : 1;
    for (int i = 0; i < nImages; ++i) {
        if (i > 0 && !oReader.jumpToImage(i))
            break;
        const QImage oImage = oReader.read();
        if (!oImage.isNull())
            oIcon.addPixmap(QPixmap::fromImage(oImage));
    }
    return oIcon;
}

const QIcon& ImageIcons::Icon(const Ref<ImageList>& oImageList, Long lImage) {
    if (!oImageList || oImageList->ListImages().empty())
        return m_oNone;
    Icons& oIcons = m_mapIcons[oImageList.Get()];
    oIcons.oImageList = oImageList;
    const auto& aImages = oImageList->ListImages();
    for (std::size_t i = oIcons.aIcons.size(); i < aImages.size(); ++i)
        oIcons.aIcons.push_back(IconOf(aImages[i].oPicture));
    const auto i = static_cast<std::size_t>(lImage);
    if (lImage >= 0 && i < oIcons.aIcons.size() && !oIcons.aIcons[i].isNull())
        return oIcons.aIcons[i];
    return oIcons.aIcons.front();
}

} // namespace corvane::desktop
