#include "desktop/commands/DefinitionPlaces.h"

#include "adapters/common/Encoding.h"
#include "corvane/base/Failure.h"
#include "corvane/base/Variant.h"
#include "desktop/service/DefinitionTags.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <algorithm>
#include <array>

namespace corvane::desktop {

namespace {

// An attribute's value without its references; the numeric ones as well.
std::string Plain(std::string_view value) {
    if (value.find('&') == std::string_view::npos)
        return std::string(value);
    static constexpr std::array<std::pair<const char*, const char*>, 5> names{
        {{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}, {"&amp;", "&"}}};
    QString text = QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size()));
    for (qsizetype i = text.indexOf("&#"); i >= 0; i = text.indexOf("&#", i + 1)) {
        const qsizetype end = text.indexOf(';', i);
        if (end < 0)
            break;
        const bool hex = text.mid(i + 2, 1) == "x";
        const uint code =
            hex ? text.mid(i + 3, end - i - 3).toUInt(nullptr, 16) : text.mid(i + 2, end - i - 2).toUInt(nullptr, 10);
        const char32_t c = code;
        text.replace(i, end - i + 1, QString::fromUcs4(&c, 1));
    }
    for (const auto& [reference, character] : names)
        text.replace(QLatin1String(reference), QLatin1String(character));
    return text.toStdString();
}

// The element around: its name, and where it ends.
struct Around {
    std::string name;
    std::size_t end = 0;

    [[nodiscard]] std::string At(std::size_t i) const { return i < end ? name : std::string(); }
};

Around Open(std::string_view text, const DefinitionTag& tag, std::string_view nameAttribute) {
    if (tag.end >= 2 && text[tag.end - 2] == '/')
        return {};
    const std::size_t end = text.find("</" + std::string(tag.element), tag.end);
    return {Plain(tag.Attribute(nameAttribute)), end};
}

} // namespace

QString DefinitionPlace::Text() const {
    if (line == 0)
        return {};
    return QCoreApplication::translate("DefinitionPlaces", "%1, line %2")
        .arg(QFileInfo(QString::fromStdString(path)).fileName())
        .arg(line);
}

DefinitionPlaces::DefinitionPlaces(const IFileSystem& files, const std::string& folder) {
    try {
        for (const std::string& path : files.Files(folder)) {
            if (!EqualText(files.Extension(path), "xml"))
                continue;
            try {
                Read(path, DecodeWindows1252(files.ReadAll(path)));
            } catch (const Failure&) {
                // Its entries aren't found, and that is said of them.
            }
        }
    } catch (const Failure&) {
        // The same for a folder that has gone.
    }
}

void DefinitionPlaces::Read(const std::string& path, std::string text) {
    std::string service;
    Around item;
    Around window;
    Around page;
    std::size_t counted = 0;
    int line = 1;
    for (const DefinitionTag& tag : TagsIn(text, {"Service", "ExplorerItem", "Window", "Page", "MenuItem"})) {
        line += static_cast<int>(std::count(text.begin() + static_cast<std::ptrdiff_t>(counted),
                                            text.begin() + static_cast<std::ptrdiff_t>(tag.begin), '\n'));
        counted = tag.begin;
        const bool isMenuItem = tag.element == "MenuItem";
        const bool isPage = tag.element == "Page";
        const char* nameAttribute = isMenuItem ? "ActionItem" : isPage ? "Caption" : "Name";
        if (tag.element == "Service")
            service = Plain(tag.Attribute("Name"));
        else if (tag.element == "ExplorerItem")
            item = Open(text, tag, "Name");
        else if (tag.element == "Window")
            window = Open(text, tag, "Name");
        else if (isPage)
            page = Open(text, tag, "Caption");
        const std::string pageName = page.At(tag.begin);
        m_entries.push_back({std::string(tag.element),
                             Plain(tag.Attribute(nameAttribute)),
                             std::string(tag.Attribute("Type")),
                             Plain(tag.Attribute("Path")),
                             service,
                             pageName.empty() ? item.At(tag.begin) : pageName,
                             window.At(tag.begin),
                             {path, line}});
    }
}

DefinitionPlace DefinitionPlaces::Find(const Placement& placement) const {
    const MenuItemDef& def = *placement.menuItemDef;
    const Owner& owner = placement.owner;
    for (const Entry& entry : m_entries)
        if (entry.element == "MenuItem" && EqualText(entry.name, def.ActionItemDef()->Name()) &&
            EqualText(entry.type, WordOf(def.MenuType())) && EqualText(entry.path, def.Path()) &&
            EqualText(entry.item, owner.item) && EqualText(entry.window, owner.window) &&
            (owner.service.empty() || EqualText(entry.service, owner.service)))
            return entry.place;
    return {};
}

DefinitionPlace DefinitionPlaces::FindNamed(std::string_view element, std::string_view name) const {
    for (const Entry& entry : m_entries)
        if (entry.element == element && EqualText(entry.name, name))
            return entry.place;
    return {};
}

} // namespace corvane::desktop
