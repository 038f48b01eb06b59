#include "desktop/preview/ViewState.h"

#include <QJsonArray>

namespace corvane::desktop {

namespace {

QString Text(const std::string& sText) {
    return QString::fromStdString(sText);
}

std::string TextOf(const QJsonValue& oValue) {
    return oValue.toString().toStdString();
}

Single NumberOf(const QJsonValue& oValue) {
    return static_cast<Single>(oValue.toDouble());
}

// For another number the first of them.
template <class Word>
Word WordOf(const QJsonValue& oValue, Word eLast) {
    const int nWord = oValue.toInt();
    return nWord > 0 && nWord <= static_cast<int>(eLast) ? static_cast<Word>(nWord) : Word{};
}

QJsonObject JsonOf(const ViewState::Tree& oTree) {
    return {{"name", Text(oTree.sName)},
            {"selected", Text(oTree.sSelected)},
            {"filter", oTree.sFilter},
            {"scrolled", oTree.nScrolled}};
}

ViewState::Tree TreeOf(const QJsonObject& oJson) {
    return {TextOf(oJson["name"]), TextOf(oJson["selected"]), oJson["filter"].toString(), oJson["scrolled"].toInt()};
}

QJsonObject JsonOf(const ViewState::OpenWindow& oOpen) {
    return {{"name", Text(oOpen.sName)},
            {"key", Text(oOpen.sKey)},
            {"page", oOpen.lPage},
            {"modal", oOpen.bModal},
            {"active", oOpen.bActive},
            {"child", oOpen.bChild},
            {"state", static_cast<int>(oOpen.eState)},
            {"place", QJsonArray{oOpen.fLeft, oOpen.fTop, oOpen.fWidth, oOpen.fHeight}},
            {"pageSize", QJsonArray{oOpen.lPageWidth, oOpen.lPageHeight}}};
}

ViewState::OpenWindow WindowOf(const QJsonObject& oJson) {
    ViewState::OpenWindow oOpen;
    oOpen.sName = TextOf(oJson["name"]);
    oOpen.sKey = TextOf(oJson["key"]);
    oOpen.lPage = oJson["page"].toInt();
    oOpen.bModal = oJson["modal"].toBool();
    oOpen.bActive = oJson["active"].toBool();
    oOpen.bChild = oJson["child"].toBool();
    oOpen.eState = WordOf(oJson["state"], FormState::Maximized);
    const QJsonArray aPlace = oJson["place"].toArray();
    oOpen.fLeft = NumberOf(aPlace[0]);
    oOpen.fTop = NumberOf(aPlace[1]);
    oOpen.fWidth = NumberOf(aPlace[2]);
    oOpen.fHeight = NumberOf(aPlace[3]);
    const QJsonArray aPageSize = oJson["pageSize"].toArray();
    oOpen.lPageWidth = aPageSize[0].toInt();
    oOpen.lPageHeight = aPageSize[1].toInt();
    return oOpen;
}

} // namespace

QJsonObject ViewState::ToJson() const {
    QJsonArray aJsonTrees, aJsonWindows;
    for (const Tree& oTree : aTrees)
        aJsonTrees.append(JsonOf(oTree));
    for (const OpenWindow& oOpen : aWindows)
        aJsonWindows.append(JsonOf(oOpen));
    return {{"trees", aJsonTrees},
            {"focus", static_cast<int>(eFocus)},
            {"explorer", bExplorerIsShown},
            {"windows", aJsonWindows}};
}

ViewState ViewState::OfJson(const QJsonObject& oJson) {
    ViewState oState;
    for (const QJsonValue& oTree : oJson["trees"].toArray())
        oState.aTrees.push_back(TreeOf(oTree.toObject()));
    oState.eFocus = WordOf(oJson["focus"], Focus::Filter);
    oState.bExplorerIsShown = oJson["explorer"].toBool(true);
    for (const QJsonValue& oOpen : oJson["windows"].toArray())
        oState.aWindows.push_back(WindowOf(oOpen.toObject()));
    return oState;
}

} // namespace corvane::desktop
