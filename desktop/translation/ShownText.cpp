#include "desktop/translation/ShownText.h"

#include <QCoreApplication>

namespace corvane::desktop {

namespace {

QString Shown(const char* kind, const std::string& text, const std::string& which) {
    return QCoreApplication::translate(kind, text.c_str(), which.c_str());
}

} // namespace

QString ShownCaption(const Tool& tool) {
    return Shown(TextKind::caption, tool.Caption(), tool.Name());
}

QString ShownToolTip(const Tool& tool) {
    return Shown(TextKind::toolTip, tool.ToolTip(), tool.Name());
}

QString ShownDescription(const Tool& tool) {
    return Shown(TextKind::description, tool.Description(), tool.Name());
}

QString ShownCaption(const Band& band) {
    if (band.Name() == "Explorer" &&
        band.Caption() == "Study Explorer") // the library's own; not every explorer has studies
        return QCoreApplication::translate("Explorer", "Explorer");
    return Shown(TextKind::band, band.Caption(), band.Name());
}

QString ShownTab(const std::string& caption) {
    return Shown(TextKind::tab, caption, {});
}

// Of very many nodes nearly all have texts of their own: those are asked for once, without a place.
QString ShownNode(const TreeView& tree, const Node& node) {
    QString text = QString::fromStdString(node.Text());
    if (QCoreApplication::translate(TextKind::node, node.Text().c_str()) == text)
        return text;
    int depth = 0;
    for (const Node* above = node.Parent(); above; above = above->Parent())
        ++depth;
    return Shown(TextKind::node, node.Text(), tree.Tag() + "/" + std::to_string(depth));
}

QString ShownWindow(const std::string& window, const std::string& caption) {
    return Shown(TextKind::window, caption, window);
}

QString ShownPage(const std::string& progID, const std::string& caption) {
    return Shown(TextKind::page, caption, progID);
}

bool AreTextsTranslated() {
    return QCoreApplication::translate(TextKind::any, "no") != "no";
}

} // namespace corvane::desktop
