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
    explicit SvgEngine(std::shared_ptr<QSvgRenderer> renderer) : m_renderer(std::move(renderer)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const qreal scale = painter->device()->devicePixelRatioF();
        QPixmap scaled = pixmap((QSizeF(rect.size()) * scale).toSize(), mode, state);
        scaled.setDevicePixelRatio(scale);
        if (mode == QIcon::Disabled)
            painter->setOpacity(0.4);
        painter->drawPixmap(rect, scaled);
        if (mode == QIcon::Disabled)
            painter->setOpacity(1);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode, QIcon::State) override {
        if (m_pixmap.size() != size) {
            m_pixmap = QPixmap(size);
            m_pixmap.fill(Qt::transparent);
            QPainter painter(&m_pixmap);
            const QSizeF drawn = QSizeF(m_renderer->defaultSize()).scaled(size, Qt::KeepAspectRatio);
            const QPointF corner((size.width() - drawn.width()) / 2, (size.height() - drawn.height()) / 2);
            m_renderer->render(&painter, QRectF(corner, drawn));
        }
        return m_pixmap;
    }

    QIconEngine* clone() const override { return new SvgEngine(*this); }

private:
    std::shared_ptr<QSvgRenderer> m_renderer;
    QPixmap m_pixmap;
};

const char* NameOf(Picture::Format format) {
    switch (format) {
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

QIcon IconOf(const Ref<Picture>& picture) {
    if (!picture)
        return {};
    QByteArray bytes = QByteArray::fromStdString(picture->Bytes());
    if (picture->FileFormat() == Picture::Format::Svg) {
        auto renderer = std::make_shared<QSvgRenderer>(bytes);
        return renderer->isValid() ? QIcon(new SvgEngine(std::move(renderer))) : QIcon();
    }
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, NameOf(picture->FileFormat()));
    reader.setAutoTransform(true);
    QIcon icon;
    // An icon file holds sizes, a moving picture frames, of which the first represents all.
    const int images = picture->FileFormat() == Picture::Format::Ico ? qMax(1, reader.imageCount()) : 1;
    for (int i = 0; i < images; ++i) {
        if (i > 0 && !reader.jumpToImage(i))
            break;
        const QImage image = reader.read();
        if (!image.isNull())
            icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}

const QIcon& ImageIcons::Icon(const Ref<ImageList>& imageList, Long image) {
    if (!imageList || imageList->ListImages().empty())
        return m_none;
    Icons& icons = m_icons[imageList.Get()];
    icons.imageList = imageList;
    const auto& images = imageList->ListImages();
    for (std::size_t i = icons.icons.size(); i < images.size(); ++i)
        icons.icons.push_back(IconOf(images[i].oPicture));
    const auto i = static_cast<std::size_t>(image);
    if (image >= 0 && i < icons.icons.size() && !icons.icons[i].isNull())
        return icons.icons[i];
    return icons.icons.front();
}

} // namespace corvane::desktop
