// Draws what another style draws, with lines around all that a user can use: in the colours of a contrast theme
// there are no shades by which they could be distinguished. On other dark grounds only the boxes of check marks get
// lines. In all other themes what is selected in a list, a tree or a table without the focus is grey.
#pragma once

#include <QProxyStyle>

namespace corvane::desktop {

class ContrastStyle final : public QProxyStyle {
public:
    explicit ContrastStyle(const QString& base) : QProxyStyle(base), m_base(base) { setObjectName(base); }

    // Sets it for the whole program, over the style that is set.
    static void Follow();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* optionComplex, QPainter* painter,
                            const QWidget* widget) const override;

private:
    QString m_base;
};

} // namespace corvane::desktop
