#include "adapters/catalogue/Catalogue.h"

#include "adapters/catalogue/CatalogueReader.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <map>

namespace corvane {

namespace {

std::string IndexKey(const std::string& key, const std::string& text) {
    return key + '\x04' + text; // as gettext itself joins the two
}

// "%1", "%n" and the like, sorted.
std::vector<std::string> PlaceholdersIn(const std::string& text) {
    std::vector<std::string> placeholders;
    for (std::size_t i = text.find('%'); i != std::string::npos; i = text.find('%', i + 1))
        if (const char c = i + 1 < text.size() ? text[i + 1] : ' '; c == 'n' || (c >= '0' && c <= '9'))
            placeholders.push_back(text.substr(i, 2));
    std::sort(placeholders.begin(), placeholders.end());
    return placeholders;
}

// "Caption" of "Service Data/MenuItem File.Open/Caption".
std::string_view AttributeIn(std::string_view key) {
    return key.substr(key.rfind('/') + 1);
}

std::string CatalogueString(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        static constexpr std::string_view meanings = "\n\r\t\"\\";
        static constexpr std::string_view letters = "nrt\"\\";
        if (const std::size_t i = meanings.find(c); i != std::string_view::npos)
            quoted.append("\\").append(1, letters[i]);
        else
            quoted += c;
    }
    return quoted + '"';
}

// A text of several lines is on several, below an empty string, as gettext's own tools write it.
std::string Statement(const std::string& prefix, const char* word, const std::string& text) {
    std::string statement = prefix + word + " ";
    if (const std::size_t i = text.find('\n'); i == std::string::npos || i + 1 == text.size())
        return statement + CatalogueString(text) + "\n";
    statement += "\"\"\n";
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t end = std::min(text.find('\n', i), text.size() - 1) + 1;
        statement += prefix + CatalogueString(text.substr(i, end - i)) + "\n";
        i = end;
    }
    return statement;
}

std::string MessageText(const CatalogueMessage& message) {
    std::string text;
    for (const std::string& remark : message.remarks)
        text += remark.empty() ? "#\n" : "# " + remark + "\n";
    if (!message.place.empty() && !message.vanished)
        text += "#: " + message.place + "\n";
    if (message.unsure)
        text += "#, fuzzy\n";
    const std::string prefix = message.vanished ? "#~ " : "";
    if (!message.previous.empty() && !message.vanished)
        text += Statement("#| ", "msgid", message.previous);
    if (!message.key.empty())
        text += Statement(prefix, "msgctxt", message.key);
    return text + Statement(prefix, "msgid", message.text) + Statement(prefix, "msgstr", message.translation);
}

} // namespace

bool HasMnemonic(std::string_view key) {
    return AttributeIn(key) == "Caption" &&
           (key.find("MenuItem ") != std::string_view::npos || key.find("MenuTitle ") != std::string_view::npos ||
            key.find("ToolbarItem ") != std::string_view::npos);
}

std::string ClashOf(const CatalogueMessage& message) {
    const std::string& text = message.text;
    const std::string& translation = message.translation;
    if (PlaceholdersIn(text) != PlaceholdersIn(translation))
        return "the placeholders differ from those of the text";
    if (text.find('\n') == std::string::npos && translation.find('\n') != std::string::npos)
        return "there is a line break, and none in the text";
    if (HasMnemonic(message.key) && std::count(text.begin(), text.end(), '#') < 2 &&
        std::count(translation.begin(), translation.end(), '#') > 1)
        return "there is more than one \"#\", which marks the letter of the mnemonic";
    return {};
}

Catalogue Catalogue::Read(std::string_view bytes, std::vector<CatalogueFault>& faults) {
    Catalogue catalogue;
    CatalogueReader reader(faults);
    if (!reader.Read(bytes))
        return {};
    catalogue.m_header = reader.TakeHeader();
    catalogue.m_messages = reader.TakeMessages();
    for (const CatalogueMessage& message : catalogue.m_messages)
        if (const std::string clash = message.IsFinished() ? ClashOf(message) : ""; !clash.empty())
            faults.push_back({message.line, "the translation \"" + message.translation + "\" of \"" + message.text +
                                                "\" isn't used: " + clash});
    catalogue.Index();
    for (std::size_t i = 0; i < catalogue.m_messages.size(); ++i) {
        const CatalogueMessage& message = catalogue.m_messages[i];
        if (!message.vanished && catalogue.m_messageMap.at(IndexKey(message.key, message.text)) != i)
            faults.push_back({message.line, "\"" + message.text + "\" of \"" + message.key +
                                                "\" is translated a second time; the first one counts"});
    }
    return catalogue;
}

void Catalogue::Index() {
    m_messageMap.clear();
    for (std::size_t i = 0; i < m_messages.size(); ++i)
        if (!m_messages[i].vanished)
            m_messageMap.try_emplace(IndexKey(m_messages[i].key, m_messages[i].text), i);
}

const std::string* Catalogue::Find(const std::string& key, const std::string& text) const {
    const auto it = m_messageMap.find(IndexKey(key, text));
    if (it == m_messageMap.end())
        return nullptr;
    const CatalogueMessage& message = m_messages[it->second];
    return message.IsFinished() && ClashOf(message).empty() ? &message.translation : nullptr;
}

CatalogueUpdate Catalogue::Update(const std::vector<DefinitionText>& texts, std::string_view language) {
    if (m_header.translation.empty())
        m_header.translation = "Language: " + std::string(language) +
                               "\nMIME-Version: 1.0\nContent-Type: text/plain; charset=UTF-8\n"
                               "Content-Transfer-Encoding: 8bit\n";
    CatalogueUpdate update;
    std::vector<CatalogueMessage> old = std::move(m_messages);
    std::vector<bool> taken(old.size());
    std::map<std::string, std::size_t> exact;                             // of key and text
    std::map<std::string, std::vector<std::size_t>> byKey;                // what may have changed
    std::map<std::pair<std::string, std::string>, std::string> elsewhere; // by attribute and text
    for (const bool vanished : {false, true})
        for (std::size_t i = 0; i < old.size(); ++i)
            if (old[i].vanished == vanished)
                exact.try_emplace(IndexKey(old[i].key, old[i].text), i);
    for (std::size_t i = 0; i < old.size(); ++i) {
        if (old[i].IsFinished() && ClashOf(old[i]).empty())
            elsewhere.try_emplace({std::string(AttributeIn(old[i].key)), old[i].text}, old[i].translation);
        byKey[old[i].key].push_back(i);
    }
    m_messages.clear();
    for (const DefinitionText& text : texts)
        if (const auto it = exact.find(IndexKey(text.key, text.text)); it != exact.end())
            taken[it->second] = true;
    for (const DefinitionText& text : texts) {
        CatalogueMessage message;
        if (const auto it = exact.find(IndexKey(text.key, text.text)); it != exact.end()) {
            message = old[it->second];
            message.vanished = false;
        } else {
            message.key = text.key;
            message.text = text.text;
            const auto& sameKey = byKey[text.key];
            const auto changed = std::find_if(sameKey.begin(), sameKey.end(), [&](std::size_t i) {
                return !taken[i] && !old[i].vanished && !old[i].translation.empty();
            });
            const auto elsewherePosition = elsewhere.find({std::string(AttributeIn(text.key)), text.text});
            if (elsewherePosition != elsewhere.end()) {
                message.translation = elsewherePosition->second;
                ++update.filled;
                ++update.newCount;
            } else if (changed != sameKey.end()) {
                const CatalogueMessage& before = old[*changed];
                taken[*changed] = true;
                message.translation = before.translation;
                message.remarks = before.remarks;
                message.previous = before.unsure && !before.previous.empty() ? before.previous : before.text;
                message.unsure = message.previous != text.text;
                if (message.unsure)
                    ++update.changed;
                else
                    message.previous.clear(); // it has changed back
            } else {
                ++update.newCount;
            }
        }
        message.place = text.line > 0 ? text.file + ":" + std::to_string(text.line) : text.file;
        update.unfinished += message.IsFinished() ? 0 : 1;
        m_messages.push_back(std::move(message));
    }
    for (std::size_t i = 0; i < old.size(); ++i)
        if (!taken[i] && !old[i].translation.empty()) {
            old[i].vanished = true;
            m_messages.push_back(std::move(old[i]));
            ++update.vanished;
        }
    Index();
    return update;
}

std::string Catalogue::AsText() const {
    std::string text = MessageText(m_header);
    for (const CatalogueMessage& message : m_messages)
        text += "\n" + MessageText(message);
    return text;
}

} // namespace corvane
