// One line of the start page that does something: a picture or a mark, a text, and below it what it is about.
#pragma once

#include <QAbstractButton>
#include <QIcon>
#include <optional>

class QPainter;

namespace corvane::desktop {

class EntryButton final : public QAbstractButton {
    Q_OBJECT
public:
    EntryButton(const QString& text, const QString& detail, QWidget* parent = nullptr);

    // A step has a mark instead of a picture: a ring, or a check mark once it is done.
    void SetDone(bool done);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] QRect TextRect(int width) const;
    void PaintMark(QPainter& painter, const QRect& place) const;

    QString m_detail;
    std::optional<bool> m_isDone;
};

} // namespace corvane::desktop
