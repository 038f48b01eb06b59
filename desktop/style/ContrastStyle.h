// Draws what another style draws, with lines around all that a person can use: in the colours of a contrast theme
// there are no shades from which they could be told. On other dark grounds only the boxes of check marks get lines.
#pragma once

#include <QProxyStyle>

namespace corvane::desktop {

class ContrastStyle final : public QProxyStyle {
public:
    explicit ContrastStyle(const QString& sBase) : QProxyStyle(sBase), m_sBase(sBase) { setObjectName(sBase); }

    // Sets it for the whole program while the palette is one of contrast or dark, and the style below it otherwise.
    static void Follow();

    void drawPrimitive(PrimitiveElement eElement, const QStyleOption* pOption, QPainter* pPainter,
                       const QWidget* pWidget) const override;
    void drawControl(ControlElement eElement, const QStyleOption* pOption, QPainter* pPainter,
                     const QWidget* pWidget) const override;
    void drawComplexControl(ComplexControl eControl, const QStyleOptionComplex* pOption, QPainter* pPainter,
                            const QWidget* pWidget) const override;

private:
    QString m_sBase;
};

} // namespace corvane::desktop
