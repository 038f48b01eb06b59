#include "desktop/failures/GuardedApplication.h"

#include "desktop/blame/ThrowOrigin.h"
#include "desktop/failures/PageName.h"

#include <QThread>
#include <QWidget>
#include <algorithm>
#include <cstdio>
#include <optional>
#include <vector>

namespace corvane::desktop {

namespace {

std::vector<const GuardedApplication::Catcher*>& Catchers() {
    static std::vector<const GuardedApplication::Catcher*> catchers;
    return catchers;
}

thread_local int theDepth = 0;

class InEvent {
public:
    InEvent() noexcept { ++theDepth; }
    ~InEvent() { --theDepth; }
    InEvent(const InEvent&) = delete;
    InEvent& operator=(const InEvent&) = delete;
};

bool IsInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ContextMenu:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

// The receiver may have ended in its own handler, so it is looked for among the widgets that there are.
QWidget* LivingWidget(const QObject* receiver) {
    if (QThread::currentThread() != QCoreApplication::instance()->thread())
        return nullptr;
    const auto widgets = QApplication::allWidgets();
    const auto it = std::find_if(widgets.begin(), widgets.end(), [&](const QWidget* widget) {
        return static_cast<const QObject*>(widget) == receiver;
    });
    return it == widgets.end() ? nullptr : *it;
}

} // namespace

GuardedApplication::Catcher::Catcher(Function show) : m_show(std::move(show)) {
    Catchers().push_back(this);
}

GuardedApplication::Catcher::~Catcher() {
    std::erase(Catchers(), this);
}

UncaughtFailure GuardedApplication::Current(QObject* receiver, QEvent::Type type) {
    UncaughtFailure uncaught{CurrentFailure(), {}, {}, {}, IsInput(type)};
    if (const char* plugin = ThrowOrigin::Latest())
        uncaught.plugin = plugin;
    const QWidget* widget = LivingWidget(receiver);
    if (widget)
        uncaught.receiver = QString::fromLatin1(widget->metaObject()->className());
    for (; widget && uncaught.page.empty(); widget = widget->parentWidget())
        uncaught.page = widget->property(pageNameProperty).toString().toStdString();
    return uncaught;
}

void GuardedApplication::Show(const UncaughtFailure& uncaught) {
    if (Catchers().empty())
        std::fprintf(stderr, "%s\n", uncaught.failure.Description.c_str());
    else
        Catchers().back()->m_show(uncaught);
}

int GuardedApplication::EventDepth() noexcept {
    return theDepth;
}

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
    const InEvent inEvent;
    const ThrowOrigin origin(ThrowOrigin::Mode::Noted);
    const QEvent::Type type = event->type(); // the event may go with what it causes
    std::optional<UncaughtFailure> uncaught;
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        uncaught = Current(receiver, type);
    }
    // Behind the handler: a dialog runs an event loop of its own.
    if (QThread::currentThread() == thread())
        Show(*uncaught);
    else
        QMetaObject::invokeMethod(
            this, [uncaught] { Show(*uncaught); }, Qt::QueuedConnection);
    return true;
}

int GuardedApplication::Run() {
    for (;;) {
        const ThrowOrigin origin(ThrowOrigin::Mode::Noted);
        std::optional<UncaughtFailure> uncaught;
        try {
            return exec();
        } catch (...) {
            uncaught = Current(nullptr, QEvent::None);
        }
        Show(*uncaught);
    }
}

} // namespace corvane::desktop

#include "moc_GuardedApplication.cpp"
