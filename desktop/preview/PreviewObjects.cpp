#include "desktop/preview/PreviewObjects.h"

#include "corvane/base/Failure.h"
#include "corvane/services/PageDef.h"
#include "corvane/windows/PageBase.h"

#include <QCoreApplication>
#include <QLabel>
#include <QVBoxLayout>
#include <filesystem>

namespace corvane::desktop {

QWidget* QtStandIn::NewWidget(QWidget* parent) {
    auto* widget = new QWidget(parent);
    auto* layout = new QVBoxLayout(widget);
    const Ref<PageDef> pageDef = Page()->PageDef();
    const QString caption = pageDef ? QString::fromStdString(std::string(pageDef->Caption())) : QString();
    const QString progID = QString::fromStdString(m_id.substr(0, m_id.find('#')));
    const QString shownText = QCoreApplication::translate("Preview", "This is a stub for the page of %1.").arg(progID);
    auto* text = new QLabel(caption.isEmpty() ? shownText : caption + "\n\n" + shownText);
    text->setTextFormat(Qt::PlainText);
    text->setAlignment(Qt::AlignCenter);
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    layout->addWidget(text);
    return widget;
}

std::set<std::string> PreviewFactory::ClassesOf(const std::string& library) {
    std::set<std::string> classes;
    const std::string path = m_plugins->PathOf(library);
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        return classes;
    if (m_loaded)
        m_loaded->Note(QString::fromStdString(path));
    try {
        for (const auto& classInfo : m_plugins->Classes(library))
            classes.insert(FoldText(classInfo.progID));
    } catch (const Failure& failure) {
        m_unusable[path] = failure.Description;
    }
    return classes;
}

bool PreviewFactory::IsStandIn(const std::string& progID) {
    const std::size_t point = progID.find('.');
    if (m_all || point == std::string::npos || point == 0)
        return true;
    const std::string library = progID.substr(0, point);
    auto it = m_classes.find(FoldText(library));
    if (it == m_classes.end())
        it = m_classes.emplace(FoldText(library), ClassesOf(library)).first;
    return !it->second.contains(FoldText(progID));
}

bool PreviewFactory::RestartProcess(const std::string& library) {
    const auto it = m_classes.find(FoldText(library));
    if (m_all || it == m_classes.end() || !m_plugins->Processes()->FileOf(library))
        return false;
    m_plugins->Processes()->ProcessOf(library)->Restart();
    return ClassesOf(library) == it->second;
}

Ref<Object> PreviewFactory::Create(std::string_view progID) {
    if (IsStandIn(std::string(progID)))
        return StandInFactory::Create(progID);
    Ref<Object> object = m_real->Create(progID);
    Recorded()->Name(*object, Recorded()->NewId(progID));
    return object;
}

Ref<Object> PreviewFactory::Make(const inspect::StandInSpec& spec, const std::string& id) {
    return New<QtStandIn>(Recorded(), spec, id);
}

} // namespace corvane::desktop
