#include "desktop/preview/ViewState.h"
#include "desktop/style/QtText.h"

#include <QJsonArray>

namespace corvane::desktop {

namespace {

std::string TextIn(const QJsonValue& value) {
    return value.toString().toStdString();
}

Single NumberOf(const QJsonValue& value) {
    return static_cast<Single>(value.toDouble());
}

// For another number the first of them.
template <class Word>
Word WordOf(const QJsonValue& value, Word last) {
    const int word = value.toInt();
    return word > 0 && word <= static_cast<int>(last) ? static_cast<Word>(word) : Word{};
}

QJsonObject JsonOf(const ViewState::Tree& tree) {
    return {{"name", Text(tree.name)},
            {"selected", Text(tree.selected)},
            {"filter", tree.filter},
            {"scrolled", tree.scrolled}};
}

ViewState::Tree TreeOf(const QJsonObject& json) {
    return {TextIn(json["name"]), TextIn(json["selected"]), json["filter"].toString(), json["scrolled"].toInt()};
}

QJsonObject JsonOf(const ViewState::OpenWindow& open) {
    QJsonArray entries;
    for (const ViewState::Entry& entry : open.entries)
        entries.append(QJsonArray{Text(entry.page), Text(entry.field), Text(entry.text)});
    return {{"entries", entries},
            {"name", Text(open.name)},
            {"key", Text(open.key)},
            {"page", open.page},
            {"modal", open.modal},
            {"active", open.active},
            {"child", open.child},
            {"state", static_cast<int>(open.state)},
            {"place", QJsonArray{open.left, open.top, open.width, open.height}},
            {"pageSize", QJsonArray{open.pageWidth, open.pageHeight}}};
}

ViewState::OpenWindow WindowOf(const QJsonObject& json) {
    ViewState::OpenWindow open;
    open.name = TextIn(json["name"]);
    open.key = TextIn(json["key"]);
    open.page = json["page"].toInt();
    open.modal = json["modal"].toBool();
    open.active = json["active"].toBool();
    open.child = json["child"].toBool();
    open.state = WordOf(json["state"], FormState::Maximized);
    const QJsonArray place = json["place"].toArray();
    open.left = NumberOf(place[0]);
    open.top = NumberOf(place[1]);
    open.width = NumberOf(place[2]);
    open.height = NumberOf(place[3]);
    const QJsonArray pageSize = json["pageSize"].toArray();
    open.pageWidth = pageSize[0].toInt();
    open.pageHeight = pageSize[1].toInt();
    for (const auto& entry : json["entries"].toArray())
        open.entries.push_back({TextIn(entry[0]), TextIn(entry[1]), TextIn(entry[2])});
    return open;
}

} // namespace

QJsonObject ViewState::ToJson() const {
    QJsonArray jsonTrees, jsonWindows;
    for (const Tree& tree : trees)
        jsonTrees.append(JsonOf(tree));
    for (const OpenWindow& open : windows)
        jsonWindows.append(JsonOf(open));
    return {{"trees", jsonTrees},
            {"focus", static_cast<int>(focus)},
            {"explorer", explorerIsShown},
            {"windows", jsonWindows}};
}

ViewState ViewState::OfJson(const QJsonObject& json) {
    ViewState state;
    for (const auto& tree : json["trees"].toArray())
        state.trees.push_back(TreeOf(tree.toObject()));
    state.focus = WordOf(json["focus"], Focus::Filter);
    state.explorerIsShown = json["explorer"].toBool(true);
    for (const auto& open : json["windows"].toArray())
        state.windows.push_back(WindowOf(open.toObject()));
    return state;
}

} // namespace corvane::desktop
