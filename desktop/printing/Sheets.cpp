#include "desktop/printing/Sheets.h"

namespace corvane::desktop {

void Sheets::StartSheet() {
    if (IsSheetEmpty())
        return;
    m_sheets.emplace_back();
    m_used = 0;
    if (m_watch && !m_isStopped)
        m_isStopped = !m_watch(m_sheets.size());
}

void Sheets::Add(double height, Draw draw, double keep) {
    if (height + keep > Left())
        StartSheet();
    m_sheets.back().push_back({m_used, std::move(draw)});
    m_used += height;
}

void Sheets::Paint(QPainter& painter, std::size_t sheet) const {
    for (const auto& piece : m_sheets[sheet]) {
        painter.save();
        painter.translate(0, piece.top);
        piece.draw(painter);
        painter.restore();
    }
}

} // namespace corvane::desktop
