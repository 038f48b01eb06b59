#include "desktop/translation/DefinitionTranslation.h"

#include "adapters/catalogue/SourceTexts.h"
#include "corvane/author/Translation.h"
#include "corvane/base/Text.h"
#include "corvane/platform/controls/BarText.h"
#include "desktop/translation/HostTranslation.h"
#include "desktop/translation/ShownText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QLocale>
#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr const char* helpProgID = "TavelinSvc.TavelinService"; // whose entry "About" the library completes
constexpr std::string_view about = "About ";
constexpr std::string_view formPrefix = "Form "; // of the keys of their texts

// What the library itself writes.
struct Library {
    Q_DECLARE_TR_FUNCTIONS(Library)
};

// How the user writes numbers and times, whatever the language of the texts is.
UserLanguage LanguageOfUser() {
    UserLanguage language;
    const QLocale locale;
    if (locale.language() == QLocale::C)
        return language;
    language.sPoint = locale.decimalPoint().toStdString();
    language.sGroup = locale.groupSeparator().toStdString();
    language.fnTime = [locale](std::int64_t seconds) {
        return locale.toString(QDateTime::fromSecsSinceEpoch(seconds), QLocale::ShortFormat).toStdString();
    };
    return language;
}

std::string WithAmpersand(std::string text) {
    std::replace(text.begin(), text.end(), '#', '&'); // as the library does when it reads a caption
    return text;
}

} // namespace

class DefinitionTranslation::Translator final : public QTranslator {
public:
    QString translate(const char* context, const char* text, const char* which, int) const override {
        static constexpr std::string_view prefix = TextKind::prefix;
        if (!std::string_view(context).starts_with(prefix))
            return {};
        const auto it = m_shown.find(Index(context, which ? which : "", text));
        return it == m_shown.end() ? QString() : it->second;
    }

    void ReadAll(const QStringList& languages, const QString& servicesFolder, const NoteFunction& note) {
        const QString hostFolder = ":/corvane/definitions";
        for (const QString& folder : {servicesFolder + "/translations", hostFolder}) {
            QStringList paths;
            for (const QString& language : languages)
                for (const QString& name : CatalogueNames(language))
                    paths.append(folder + "/" + name + ".po");
            const auto it = std::find_if(paths.begin(), paths.end(), [](const QString& s) { return QFile::exists(s); });
            if (it != paths.end())
                Read(*it, folder == hostFolder, note);
        }
    }

    void AddAll(const ServiceManager& manager) {
        AddLibrary();
        for (const auto& def : *manager.ServiceDefs()) {
            AddEntries(ServiceKey(def->Name()), *def->ActionItemDefs(), *def->MenuItemDefs());
            if (EqualText(def->ProgID(), helpProgID))
                AddAbout(*def->MenuItemDefs());
        }
        for (const auto& def : *manager.ExplorerItemDefs())
            AddExplorerItem(*def);
        for (const auto& window : *manager.WindowDefs()) {
            Add(TextKind::window, window->Name(), window->Caption(),
                AttributeKey(WindowKey(window->Name()), "Caption"));
            for (const auto& page : *window->PageDefs())
                AddPage(window->Name(), *page);
        }
        for (const auto& page : *manager.PreferencePageDefs())
            AddPage({}, *page);
        m_translations.clear();
        m_hostWords.clear();
    }

    [[nodiscard]] const std::unordered_map<std::string, std::string>& OfSources() const { return m_sources; }

    const std::string* OfForm(const std::string& key, const std::string& text) const {
        const auto it = m_forms.find(key + "\n" + text);
        return it == m_forms.end() ? nullptr : &it->second;
    }

private:
    // Words of the host's own catalogue also serve where an application uses the same words for entries of its own.
    void Read(const QString& path, bool isHosts, const NoteFunction& note) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            note(path.toStdString() + " can't be read: " + file.errorString().toStdString());
            return;
        }
        std::vector<CatalogueFault> faults;
        const auto catalogue = Catalogue::Read(file.readAll().toStdString(), faults);
        for (const CatalogueFault& fault : faults)
            note(path.toStdString() + ", line " + std::to_string(fault.line) + ": " + fault.text);
        for (const CatalogueMessage& message : catalogue.Messages())
            if (const std::string* translation = catalogue.Find(message.key, message.text)) {
                if (message.key == sourceTextKey) {
                    m_sources.try_emplace(message.text, *translation);
                    continue;
                }
                const bool mnemonic = HasMnemonic(message.key);
                const std::string text = mnemonic ? WithAmpersand(message.text) : message.text;
                const std::string shown = mnemonic ? WithAmpersand(*translation) : *translation;
                const bool isForms = message.key.starts_with(formPrefix);
                (isForms ? m_forms : m_translations).try_emplace(message.key + "\n" + text, shown);
                if (isHosts)
                    m_hostWords.try_emplace(WordKey(message.key, text), shown);
            }
    }

    // The attribute, and the text whichever its mnemonic is.
    static std::string WordKey(const std::string& key, const std::string& text) {
        return key.substr(key.rfind('/') + 1) + "\n" + WithoutMnemonic(text);
    }

    static std::string Index(std::string_view kind, std::string_view which, std::string_view text) {
        std::string index;
        for (const std::string_view part : {kind, which, text})
            index.append(part).append("\n");
        return index;
    }

    const std::string* Find(const std::string& key, const std::string& text) const {
        if (const auto it = m_translations.find(key + "\n" + text); it != m_translations.end())
            return &it->second;
        const auto it = m_hostWords.find(WordKey(key, text));
        return it == m_hostWords.end() ? nullptr : &it->second;
    }

    void Show(const char* kind, const std::string& which, const std::string& text, const QString& translation) {
        m_shown.try_emplace(Index(kind, which, text), translation);
    }

    bool Add(const char* kind, const std::string& which, const std::string& text, const std::string& key) {
        const std::string* translation = text.empty() ? nullptr : Find(key, text);
        if (translation)
            Show(kind, which, text, QString::fromStdString(*translation));
        return translation;
    }

    // A button that a user has added has the caption without its mnemonic.
    void AddCaption(const std::string& tool, const std::string& text, const std::string& key) {
        const std::string* translation = Find(key, text);
        if (!translation)
            return;
        Show(TextKind::caption, tool, text, QString::fromStdString(*translation));
        Show(TextKind::caption, tool, WithoutMnemonic(text), QString::fromStdString(WithoutMnemonic(*translation)));
    }

    void AddEntries(const std::string& owner, const ActionItemDefCollection& actions,
                    const MenuItemDefCollection& entries) {
        for (const auto& action : actions)
            if (action->Tool())
                Add(TextKind::description, action->Tool()->Name(), action->Description(),
                    DescriptionKey(owner, action->Name()));
        for (const auto& entry : entries) {
            const auto& action = entry->ActionItemDef();
            const auto tool = action ? action->Tool() : nullptr;
            if (!tool)
                continue;
            const auto key = [&](const char* attribute) {
                return EntryKey(owner, WordOf(entry->MenuType()), entry->Path(), action->Name(), attribute);
            };
            AddCaption(tool->Name(), entry->Caption(), key("Caption"));
            Add(TextKind::toolTip, tool->Name(), entry->ToolTip(), key("Tip"));
            if (entry->MenuType() == MenuType::fwToolbarItem)
                AddToolbar(entry->Path());
        }
    }

    void AddToolbar(const std::string& path) {
        const std::string band = "Toolbars." + path; // the name of the band, and of the tool that shows and hides it
        const std::string* translation = Find(ToolbarKey(path), path);
        const QString shown = QString::fromStdString(translation ? *translation : path);
        Show(TextKind::band, band, path, shown);
        Show(TextKind::caption, band, path, shown);
        Show(TextKind::description, band, "Shows/Hides " + path + " Toolbar",
             Library::tr("Shows or hides the toolbar %1").arg(shown));
    }

    void AddAbout(const MenuItemDefCollection& entries) {
        for (const auto& entry : entries)
            if (const auto& action = entry->ActionItemDef();
                action && action->Tool() && EqualText(action->Name(), "About") && entry->Caption().starts_with(about))
                Show(TextKind::caption, action->Tool()->Name(), entry->Caption(),
                     Library::tr("About %1").arg(QString::fromStdString(entry->Caption().substr(about.size()))));
    }

    void AddExplorerItem(const ExplorerItemDef& def) {
        const std::string key = ExplorerItemKey(def.Name());
        AddEntries(key, *def.ActionItemDefs(), *def.MenuItemDefs());
        int depth = 0;
        const ExplorerItemDef* root = &def;
        for (; root->ParentExplorerItemDef() && depth < deepest; ++depth)
            root = root->ParentExplorerItemDef().Get();
        if (depth == 0)
            Add(TextKind::tab, {}, def.Name(), AttributeKey(key, "Name"));
        const char* attribute = def.DisplayName().empty() ? "Name" : "DisplayName";
        const std::string& text = def.DisplayName().empty() ? def.Name() : def.DisplayName();
        const std::string which = root->Name() + "/" + std::to_string(depth);
        if (Add(TextKind::node, which, text, AttributeKey(key, attribute)))
            Show(TextKind::node, {}, text, "\n"); // there is one, somewhere
    }

    void AddPage(const std::string& window, const PageDef& page) {
        const std::string key = PageKey(window, page.PageProgID());
        Add(TextKind::page, page.PageProgID(), page.Caption(), AttributeKey(key, "Caption"));
        AddEntries(key, *page.ActionItemDefs(), *page.MenuItemDefs());
    }

    void AddLibrary() {
        Show(TextKind::any, {}, "no", "yes");
        Show(TextKind::caption, "View.Toolbars", "Toolbars", Library::tr("Toolbars"));
        Show(TextKind::band, "Explorer", "Study Explorer", Library::tr("Explorer"));
    }

    static constexpr int deepest = 100; // kinds of items that are below themselves

    std::unordered_map<std::string, std::string> m_translations; // by key and text, until all are added
    std::unordered_map<std::string, std::string> m_hostWords;    // by attribute and text, likewise
    std::unordered_map<std::string, std::string> m_forms;        // by key and text
    std::unordered_map<std::string, std::string> m_sources;      // by their texts
    std::unordered_map<std::string, QString> m_shown;
};

// Services may show texts while they are made, before all definitions are known.
DefinitionTranslation::DefinitionTranslation(QStringList languages, std::string servicesFolder, NoteFunction note)
    : m_languages(std::move(languages)), m_servicesFolder(std::move(servicesFolder)), m_note(std::move(note)) {
    UserLanguage user = LanguageOfUser();
    if (!m_languages.isEmpty()) {
        m_translator = std::make_unique<Translator>();
        m_translator->ReadAll(m_languages, QString::fromStdString(m_servicesFolder), m_note);
        user.aTexts = m_translator->OfSources();
    }
    SetUserLanguage(std::move(user));
}

DefinitionTranslation::~DefinitionTranslation() {
    SetUserLanguage({});
}

bool DefinitionTranslation::Begin(const ServiceManager& manager) {
    if (!m_translator)
        return false;
    m_translator->AddAll(manager);
    QCoreApplication::installTranslator(m_translator.get());
    return true;
}

const std::string* DefinitionTranslation::OfForm(const std::string& key, const std::string& text) const {
    return m_translator ? m_translator->OfForm(key, text) : nullptr;
}

} // namespace corvane::desktop
