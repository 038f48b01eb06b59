#include "desktop/windows/EndedPage.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace corvane::desktop {

namespace {

// A plug-in's own widget classes call their page from their event handlers, too.
class Deaf final : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        switch (event->type()) {
        case QEvent::DeferredDelete:
        case QEvent::ChildAdded:
        case QEvent::ChildRemoved:
        case QEvent::ParentChange:
            return false;
        default:
            return true;
        }
    }
};

} // namespace

void Silence(QWidget& widget) {
    auto* deaf = new Deaf(&widget);
    QList<QObject*> objects = widget.findChildren<QObject*>();
    objects.removeOne(deaf);
    objects.prepend(&widget);
    for (QObject* object : objects) {
        object->blockSignals(true);
        object->installEventFilter(deaf);
        QCoreApplication::removePostedEvents(object, QEvent::MetaCall); // what is to be called a moment later
    }
}

} // namespace corvane::desktop
