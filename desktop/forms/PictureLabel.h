// A label of a form that shows a text, or a picture: as large as there is place for it, in its own proportions, and
// never larger than it is, unless it can be drawn in any size.
#pragma once

#include "forms/FormPicture.h"

#include <QByteArray>
#include <QLabel>
#include <QPixmap>

namespace corvane::desktop {

class PictureLabel final : public QLabel {
public:
    using QLabel::QLabel;

    // In place of the text. What can't be drawn stays empty.
    void ShowPicture(const forms::FormPicture& picture);
    void ShowText(const QString& text);
    [[nodiscard]] bool IsPicture() const { return m_size.isValid(); }
    QSize sizeHint() const override { return m_size.isValid() ? m_size : QLabel::sizeHint(); }
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QSize Fitting() const;

    QByteArray m_bytes;
    bool m_isScalable = false;
    QSize m_size; // of the picture
    QPixmap m_drawn;
};

} // namespace corvane::desktop
