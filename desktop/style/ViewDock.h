// A view of the host in a dock of the main window: at the bottom at first, in tabs with other such views, and then as
// its user has put it. What is in it is made when it is opened, and goes when it is closed.
#pragma once

#include <QDockWidget>
#include <functional>

class QMainWindow;

namespace corvane::desktop {

class ViewDock final : public QDockWidget {
    Q_OBJECT
public:
    using MakeFunction = std::function<QWidget*()>;

    // The window owns it. The name is that in a kept layout. Hidden until it is opened.
    ViewDock(const QString& name, const QString& title, QMainWindow& window, MakeFunction make);

    // The views of a window, open or not.
    [[nodiscard]] static QList<ViewDock*> AllOf(const QMainWindow& window);
    // Back to where views are at first, open or not.
    static void ResetPlaces(QMainWindow& window);

    // Shows it in front of others, with the keyboard in it.
    void Open();
    // Whether it is open, also behind another one.
    [[nodiscard]] bool IsOpen() const { return !isHidden(); }
    void setVisible(bool visible) override;

Q_SIGNALS:
    // Escape: the user goes back to where they came from.
    void Left();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    MakeFunction m_make;
};

} // namespace corvane::desktop
