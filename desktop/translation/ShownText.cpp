#include "desktop/translation/ShownText.h"

#include <QCoreApplication>

namespace corvane::desktop {

namespace {

QString Shown(const char* sKind, const std::string& sText, const std::string& sWhich) {
    return QCoreApplication::translate(sKind, sText.c_str(), sWhich.c_str());
}

} // namespace

QString ShownCaption(const Tool& oTool) {
    return Shown(TextKind::sCaption, oTool.Caption(), oTool.Name());
}

QString ShownToolTip(const Tool& oTool) {
    return Shown(TextKind::sToolTip, oTool.ToolTip(), oTool.Name());
}

QString ShownDescription(const Tool& oTool) {
    return Shown(TextKind::sDescription, oTool.Description(), oTool.Name());
}

QString ShownCaption(const Band& oBand) {
    return Shown(TextKind::sBand, oBand.Caption(), oBand.Name());
}

QString ShownTab(const std::string& sCaption) {
    return Shown(TextKind::sTab, sCaption, {});
}

// Of very many nodes nearly all have texts of their own: those are asked for once, without a place.
QString ShownNode(const TreeView& oTree, const Node& oNode) {
    const QString sText = QString::fromStdString(oNode.Text());
    if (QCoreApplication::translate(TextKind::sNode, oNode.Text().c_str()) == sText)
        return sText;
    int nDepth = 0;
    for (const Node* pAbove = oNode.Parent(); pAbove; pAbove = pAbove->Parent())
        ++nDepth;
    return Shown(TextKind::sNode, oNode.Text(), oTree.Tag() + "/" + std::to_string(nDepth));
}

QString ShownWindow(const std::string& sWindow, const std::string& sCaption) {
    return Shown(TextKind::sWindow, sCaption, sWindow);
}

QString ShownPage(const std::string& sProgID, const std::string& sCaption) {
    return Shown(TextKind::sPage, sCaption, sProgID);
}

bool AreTextsTranslated() {
    return QCoreApplication::translate(TextKind::sAny, "no") != "no";
}

} // namespace corvane::desktop
