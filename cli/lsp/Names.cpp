#include "cli/lsp/Names.h"

#include "adapters/common/Paths.h"
#include "analysis/Edits.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <functional>

namespace corvane::lsp {

using check::Attribute;
using check::Edit;
using check::Element;
using check::Entry;
using check::File;
using check::Provider;

namespace {

constexpr std::string_view toolbarPrefix = "Toolbars.";

std::size_t OffsetOf(const File& file, const char* at) {
    return static_cast<std::size_t>(at - file.bytes.data());
}

// What keeps a text from being a name; empty when nothing does.
std::string FaultOf(const std::string& name) {
    if (name.empty())
        return "a name can't be empty";
    if (name.front() == ' ' || name.back() == ' ' || name.find("  ") != std::string::npos)
        return "a name can't begin or end with a blank, or hold two in a row";
    if (std::any_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }))
        return "a name can't hold tabs, ends of lines or other control characters";
    return {};
}

} // namespace

Names::Names(std::string application, const check::Buffers& buffers) : m_application(std::move(application)) {
    check::ReadApplication(m_model, m_application, m_report, buffers);
    check::BuildModel(m_model, m_report);
    m_plan = std::make_unique<check::MenuPlan>(m_model);
}

std::optional<Names::Spot> Names::At(const std::string& path, std::size_t offset) const {
    for (const auto& file : m_model.files) {
        if (file->path != path || !file->root)
            continue;
        const Element* last = nullptr;
        for (const Element& element : std::span(file->root, 1 + file->root->below))
            if (OffsetOf(*file, element.At()) <= offset)
                last = &element;
        if (!last || file->bytes.find('>', OffsetOf(*file, last->At())) < offset)
            return std::nullopt;
        for (const Attribute& attribute : last->attributes) {
            const std::size_t begin = OffsetOf(*file, attribute.AtValue());
            if (offset >= begin && offset <= begin + attribute.Written().size())
                return Spot{file.get(), last, &attribute};
        }
        return Spot{file.get(), last, nullptr};
    }
    return std::nullopt;
}

const Provider* Names::ProviderOf(const Spot& spot) const {
    const Provider* nearest = nullptr;
    for (const auto* providers : {&m_model.services, &m_model.items, &m_model.pages, &m_model.preferencePages})
        for (const Provider& provider : *providers)
            if (provider.file == spot.file && provider.element <= spot.element &&
                spot.element <= provider.element + provider.element->below &&
                (!nearest || nearest->element < provider.element))
                nearest = &provider;
    return nearest;
}

const Provider* Names::ItemNamed(std::string_view name) const {
    for (const Provider& item : m_model.items)
        if (EqualText(item.name, name))
            return &item;
    return nullptr;
}

std::vector<check::Place> Names::Definitions(const Spot& spot) const {
    if (!spot.attribute)
        return {};
    const std::string_view attribute = spot.attribute->Name();
    const std::string_view value = spot.attribute->Value();
    const Provider* provider = ProviderOf(spot);
    std::vector<check::Place> places;
    if ((attribute == "ActionItem" || attribute == "DefaultAction") && provider) {
        for (const check::Action& action : provider->actions)
            if (EqualText(action.name, value))
                places.push_back(provider->file->At(action.element->At("Name")));
    } else if (attribute == "Parent") {
        if (const Provider* item = ItemNamed(value))
            places.push_back(item->At("Name"));
    } else if (attribute == "Path") {
        if (const Entry* title = m_plan->TitleOf(value))
            places.push_back(title->At("ActionItem"));
    }
    return places;
}

std::string Names::Description(const Spot& spot) const {
    const Provider* provider = ProviderOf(spot);
    if (spot.element->name == "MenuItem" && provider)
        for (const Entry& entry : provider->entries) {
            if (entry.element != spot.element)
                continue;
            std::string text = "**" + std::string(entry.key) + "**, of " + provider->Named();
            if (!entry.action->procedure.empty())
                text += "\n\ncalls `" + std::string(entry.action->procedure) + "`";
            const check::Placing* placing = m_plan->PlacingOf(entry);
            if (placing && placing->rank)
                text += "\n\nrank " + std::to_string(*placing->rank);
            if (placing && placing->bar)
                text += "\n\nin `" + placing->bar->name + "`";
            else if (placing)
                text += "\n\nappears nowhere; the findings say why";
            return text;
        }
    if (spot.element->name == "ActionItem" && provider) {
        std::string text = "**" + std::string(spot.element->Value("Name")) + "**, of " + provider->Named();
        for (const Entry& entry : provider->entries)
            if (entry.action->element == spot.element)
                text += "\n\n- " + entry.Named();
        return text;
    }
    if (spot.element->name == "ExplorerItem" && provider) {
        std::string text = "**" + provider->name + "**, " + std::string(spot.element->Value("Type"));
        for (const Provider& item : m_model.items)
            if (EqualText(item.element->Value("Parent"), provider->name))
                text += "\n\n- `" + item.name + "` below it";
        return text;
    }
    return {};
}

std::vector<std::string> Names::Values(std::string_view element, std::string_view attribute, std::string_view type,
                                       const std::optional<Spot>& spot) const {
    std::vector<std::string> values;
    const Provider* provider = spot ? ProviderOf(*spot) : nullptr;
    if (attribute == "ActionItem" || attribute == "DefaultAction") {
        if (provider)
            for (const check::Action& action : provider->actions)
                values.emplace_back(action.name);
    } else if (attribute == "Parent") {
        for (const Provider& item : m_model.items)
            values.push_back(item.name);
    } else if (attribute == "Path") {
        const bool isButton = EqualText(type, "ToolbarItem");
        for (const auto& [name, bar] : m_plan->Bars())
            if (isButton && bar.name.starts_with(toolbarPrefix))
                values.push_back(bar.name.substr(toolbarPrefix.size()));
            else if (!isButton && bar.title)
                values.push_back(bar.name);
    } else if (attribute.starts_with("Image")) {
        if (const auto folder = FindPath(JoinPath(m_application, "Images")))
            values = NamesIn(*folder, true).value_or(values);
    } else {
        const std::function<const check::AttributeFormat*(const check::ElementFormat&)> find =
            [&](const check::ElementFormat& format) -> const check::AttributeFormat* {
            if (format.name == element)
                return format.Attribute(attribute);
            for (const check::ElementFormat& child : format.children)
                if (const auto* found = find(child))
                    return found;
            return nullptr;
        };
        if (const check::AttributeFormat* format = find(check::ServiceFormat())) {
            if (format->kind == check::ValueKind::Boolean)
                values = {"True", "False"};
            for (const std::string_view word : format->words)
                values.emplace_back(word);
        }
    }
    return values;
}

bool Names::IsName(const Spot& spot) {
    if (!spot.attribute)
        return false;
    const std::string_view attribute = spot.attribute->Name();
    const std::string_view element = spot.element->name;
    return attribute == "ActionItem" || attribute == "DefaultAction" || attribute == "Parent" ||
           (attribute == "Name" && (element == "ActionItem" || element == "ExplorerItem"));
}

std::vector<Edit> Names::Renamed(const Spot& spot, const std::string& name) const {
    const std::string_view old = spot.attribute->Value();
    std::vector<Edit> edits;
    const bool isItem = spot.attribute->Name() == "Parent" ||
                        (spot.attribute->Name() == "Name" && spot.element->name == "ExplorerItem");
    if (isItem) {
        for (const auto& file : m_model.files)
            if (file->root)
                for (const Element& element : std::span(file->root, 1 + file->root->below))
                    if (element.name == "ExplorerItem")
                        for (const char* attribute : {"Name", "Parent"})
                            if (const Attribute* written = element.Find(attribute);
                                written && EqualText(written->Value(), old))
                                edits.push_back(ValueEdit(*file, *written, name));
    } else if (const Provider* provider = ProviderOf(spot)) {
        RenameAction(*provider, old, name, edits);
    }
    return edits;
}

std::string Names::Conflict(const Spot& spot, const std::string& name) const {
    if (!IsName(spot))
        return "there is no name of an action or explorer item here";
    if (std::string fault = FaultOf(name); !fault.empty())
        return fault;
    if (EqualText(spot.attribute->Value(), name))
        return {}; // in other letters
    const std::string_view old = spot.attribute->Value();
    const bool isItem = spot.attribute->Name() == "Parent" ||
                        (spot.attribute->Name() == "Name" && spot.element->name == "ExplorerItem");
    if (isItem)
        return ItemNamed(name) ? "there is an explorer item \"" + name + "\" already" : std::string();
    const Provider* provider = ProviderOf(spot);
    if (!provider)
        return {};
    for (const check::Action& action : provider->actions)
        if (EqualText(action.name, name))
            return provider->Named() + " has an action \"" + name + "\" already";
    for (const Entry& entry : provider->entries) {
        if (!EqualText(entry.action->name, old) || !entry.IsTitle())
            continue;
        if (name.find('.') != std::string::npos)
            return "a title has no point in its name, as points separate the menus of a Path";
        const std::string key = std::string(entry.path) + (entry.path.empty() ? "" : ".") + name;
        if (m_plan->TitleOf(key))
            return "there is a title \"" + key + "\" already";
    }
    return {};
}

// Where the action is a title, its key is part of the Paths below it, in all files.
void Names::RenameAction(const Provider& provider, std::string_view old, const std::string& name,
                         std::vector<Edit>& edits) const {
    for (const check::Action& action : provider.actions)
        if (const Attribute* written = action.element->Find("Name"); written && EqualText(action.name, old))
            edits.push_back(ValueEdit(*provider.file, *written, name));
    if (const Attribute* written = provider.element->Find("DefaultAction"); written && EqualText(written->Value(), old))
        edits.push_back(ValueEdit(*provider.file, *written, name));
    for (const Entry& entry : provider.entries) {
        if (!EqualText(entry.action->name, old))
            continue;
        edits.push_back(ValueEdit(*provider.file, *entry.element->Find("ActionItem"), name));
        if (!entry.IsTitle() || m_plan->TitleOf(entry.key) != &entry)
            continue;
        const std::string key(entry.key);
        const std::string renamed = std::string(entry.path) + (entry.path.empty() ? "" : ".") + name;
        for (Provider* other : m_model.MenuProviders())
            for (const Entry& below : other->entries) {
                const std::string_view path = below.path;
                const bool isOf = EqualText(path.substr(0, key.size()), key) &&
                                  (path.size() == key.size() || (path.size() > key.size() && path[key.size()] == '.'));
                if (isOf && !below.IsButton() && !below.IsOfContextMenu())
                    edits.push_back(ValueEdit(*other->file, *below.element->Find("Path"),
                                              renamed + std::string(path.substr(key.size()))));
            }
    }
}

} // namespace corvane::lsp
