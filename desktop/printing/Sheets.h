// Sheets of paper that are filled from top to bottom, and drawn afterwards. Lengths are dots of the device.
#pragma once

#include <QPainter>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

namespace corvane::desktop {

class Sheets {
public:
    using Draw = std::function<void(QPainter&)>;

    // Called with the number of each sheet that begins; false stops.
    using Watch = std::function<bool(std::size_t)>;

    // Of one sheet, what there is for the content. Of more sheets than the limit only the beginning is laid out.
    Sheets(double width, double height, std::size_t limit = std::numeric_limits<std::size_t>::max(), Watch watch = {})
        : m_width(width), m_height(height), m_limit(limit), m_watch(std::move(watch)), m_sheets(1) {}

    // Nothing more is wanted. Parts with much to lay out ask now and then.
    [[nodiscard]] bool IsFull() const { return m_isStopped || m_sheets.size() > m_limit; }
    [[nodiscard]] bool IsStopped() const { return m_isStopped; }

    [[nodiscard]] double Width() const { return m_width; }
    [[nodiscard]] double Height() const { return m_height; }
    // What is free of the last sheet.
    [[nodiscard]] double Left() const { return m_height - m_used; }
    [[nodiscard]] bool IsSheetEmpty() const { return m_sheets.back().empty(); }
    // Nothing when there is nothing on the last one yet.
    void StartSheet();
    // On the last sheet, or on a new one where it has no space there. When it is drawn, the painter's origin is its
    // upper left corner. What follows keeps on its sheet as much as `keep` says.
    void Add(double height, Draw draw, double keep = 0);
    // Free space, unless it would begin or end a sheet.
    void Skip(double height) { m_used += IsSheetEmpty() ? 0 : height; }

    // One at least; without a last one that nothing has come onto.
    [[nodiscard]] std::size_t Count() const {
        return m_sheets.size() > 1 && IsSheetEmpty() ? m_sheets.size() - 1 : m_sheets.size();
    }
    void Paint(QPainter& painter, std::size_t sheet) const;

private:
    struct Piece {
        double top;
        Draw draw;
    };

    double m_width;
    double m_height;
    double m_used = 0;
    std::size_t m_limit;
    Watch m_watch;
    bool m_isStopped = false;
    std::vector<std::vector<Piece>> m_sheets;
};

} // namespace corvane::desktop
