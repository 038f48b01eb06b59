#include "cli/lsp/Server.h"

#include "adapters/common/Encoding.h"
#include "adapters/common/Json.h"
#include "adapters/common/Paths.h"
#include "analysis/Check.h"
#include "analysis/Fix.h"
#include "cli/lsp/Document.h"
#include "cli/lsp/Names.h"
#include "corvane/base/Failure.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <istream>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>

namespace corvane::lsp {

namespace fs = std::filesystem;

namespace {

using Json = nlohmann::json;

constexpr int methodNotFound = -32601;
constexpr int parseError = -32700;
constexpr int invalidParameters = -32602;
constexpr int internalError = -32603;
constexpr int requestFailed = -32803;

// Of what was asked, with the reason in the user's words.
class Refusal final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

Json JsonOf(Spot spot) {
    return {{"line", spot.line}, {"character", spot.character}};
}

class Server {
public:
    explicit Server(std::ostream& out) : m_out(out) {}

    // False after "exit".
    bool Handle(const Json& message) {
        const std::string method = message.value("method", "");
        const Json parameters = message.value("params", Json::object());
        if (method == "exit")
            return false;
        if (!message.contains("id")) {
            Notified(method, parameters);
            return true;
        }
        if (method.empty())
            return true; // an answer to nothing that was asked
        try {
            if (const auto result = Asked(method, parameters))
                Send({{"jsonrpc", "2.0"}, {"id", message["id"]}, {"result", *result}});
            else
                SendError(message["id"], methodNotFound, "there is no method " + method);
        } catch (const Refusal& refusal) {
            SendError(message["id"], requestFailed, refusal.what());
        } catch (const Json::exception& error) {
            SendError(message["id"], invalidParameters, error.what());
        } catch (const std::exception& error) {
            SendError(message["id"], internalError, error.what());
        } catch (...) {
            SendError(message["id"], internalError, CurrentFailure().Description);
        }
        return true;
    }

    void SendError(const Json& id, int code, const std::string& text) {
        Send({{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", code}, {"message", text}}}});
    }

    [[nodiscard]] bool IsShutDown() const { return m_isShutDown; }

private:
    void Send(const Json& message) {
        const std::string text = WriteJson(message);
        m_out << "Content-Length: " << text.size() << "\r\n\r\n" << text << std::flush;
    }

    std::optional<Json> Asked(const std::string& method, const Json& parameters) {
        if (method == "initialize")
            return Capabilities();
        if (method == "shutdown") {
            m_isShutDown = true;
            return Json();
        }
        if (method == "textDocument/hover")
            return Hover(parameters);
        if (method == "textDocument/completion")
            return Completion(parameters);
        if (method == "textDocument/definition")
            return Definition(parameters);
        if (method == "textDocument/prepareRename")
            return PrepareRename(parameters);
        if (method == "textDocument/rename")
            return Rename(parameters);
        if (method == "textDocument/codeAction")
            return CodeActions(parameters);
        return std::nullopt;
    }

    static Json Capabilities() {
        return {{"capabilities",
                 {{"textDocumentSync", {{"openClose", true}, {"change", 1}, {"save", true}}},
                  {"hoverProvider", true},
                  {"completionProvider", {{"triggerCharacters", Json::array({"\"", "<", " "})}}},
                  {"definitionProvider", true},
                  {"renameProvider", {{"prepareProvider", true}}},
                  {"codeActionProvider", {{"codeActionKinds", Json::array({"quickfix"})}}}}},
                {"serverInfo", {{"name", "corvane lsp"}, {"version", CORVANE_VERSION}}}};
    }

    void Notified(const std::string& method, const Json& parameters) {
        if (!parameters.contains("textDocument"))
            return;
        const Json& document = parameters["textDocument"];
        const auto opened = PathOf(document.value("uri", ""));
        if (!opened)
            return;
        const std::optional<std::string> path = KeyOf(*opened);
        if (method == "textDocument/didOpen") {
            Keep(*path, document.value("text", ""));
        } else if (method == "textDocument/didChange" && !parameters.value("contentChanges", Json::array()).empty()) {
            Keep(*path, parameters.at("contentChanges").back().value("text", ""));
        } else if (method == "textDocument/didClose") {
            m_documents.erase(*path);
            m_readable.erase(*path);
        } else if (method != "textDocument/didSave") {
            return;
        }
        m_applications.insert_or_assign(*path, ApplicationOf(*opened));
        Publish(ApplicationOf(*opened));
    }

    // A definition file of a build is a link to that of the sources, and the findings name the latter.
    static std::string KeyOf(const std::string& path) {
        std::error_code error;
        const fs::path real = fs::is_symlink(path, error) ? fs::canonical(path, error) : fs::path(path);
        return error ? path : real.string();
    }

    [[nodiscard]] std::string ApplicationAround(const std::string& key) const {
        const auto opened = m_applications.find(key);
        return opened == m_applications.end() ? ApplicationOf(key) : opened->second;
    }

    void Keep(const std::string& path, const std::string& text) {
        const auto saved = ReadBytes(path);
        const bool isUtf8 = saved && !IsAscii(*saved) && IsUtf8(*saved);
        m_documents.insert_or_assign(path, Document(text, isUtf8 || path.ends_with(".ui")));
    }

    // The folder above Services or Forms; nothing for a file that isn't in one.
    static std::string ApplicationOf(const std::string& path) {
        const fs::path folder = fs::path(path).parent_path();
        const std::string name = folder.filename().string();
        return EqualText(name, "Services") || EqualText(name, "Forms") ? folder.parent_path().string() : std::string();
    }

    [[nodiscard]] check::Buffers Buffers(bool asReadable = false) const {
        check::Buffers buffers;
        for (const auto& [path, document] : m_documents) {
            const auto readable = m_readable.find(path);
            buffers[path] = asReadable && readable != m_readable.end() ? readable->second : document.Bytes();
        }
        return buffers;
    }

    [[nodiscard]] Document DocumentOf(const std::string& path) const {
        if (const auto open = m_documents.find(path); open != m_documents.end())
            return open->second;
        const std::string bytes = ReadBytes(path).value_or("");
        const bool isUtf8 = !IsAscii(bytes) && IsUtf8(bytes);
        return Document(isUtf8 ? bytes : DecodeWindows1252(bytes), isUtf8);
    }

    void Publish(const std::string& application) {
        if (application.empty())
            return;
        std::map<std::string, Json> diagnostics;
        for (const std::string& path : m_published)
            diagnostics[path] = Json::array(); // what was there before and may have gone
        for (const auto& [path, document] : m_documents)
            diagnostics[path] = Json::array();
        m_findings.clear();
        try {
            m_findings = check::Check({application, false, Buffers()});
        } catch (...) {
            return; // not an application yet
        }
        if (!FindPath(JoinPath(application, "Services/Service.xdr"))) // sources, which get it when they are built
            std::erase_if(m_findings,
                          [](const check::Finding& finding) { return finding.rule == check::Rule::SchemaFile; });
        std::set<std::string> broken;
        for (const check::Finding& finding : m_findings) {
            diagnostics[finding.place.file].push_back(DiagnosticOf(finding));
            if (finding.rule == check::Rule::NotWellFormed)
                broken.insert(finding.place.file);
        }
        for (const auto& [path, document] : m_documents)
            if (!broken.contains(path))
                m_readable[path] = document.Bytes();
        m_published.clear();
        for (auto& [path, list] : diagnostics) {
            if (!list.empty())
                m_published.insert(path);
            Send({{"jsonrpc", "2.0"},
                  {"method", "textDocument/publishDiagnostics"},
                  {"params", {{"uri", UriOf(path)}, {"diagnostics", std::move(list)}}}});
        }
    }

    // From the place to the end of the value or name that begins there.
    [[nodiscard]] Json RangeOf(const check::Place& place) const {
        const Document document = DocumentOf(place.file);
        const std::string& bytes = document.Bytes();
        std::size_t begin = 0;
        for (Long line = 1; line < place.at.line && begin != std::string::npos; ++line)
            begin = bytes.find('\n', begin) == std::string::npos ? bytes.size() : bytes.find('\n', begin) + 1;
        begin = std::min(begin + static_cast<std::size_t>(std::max<Long>(place.at.column - 1, 0)), bytes.size());
        const bool isValue = begin > 0 && (bytes[begin - 1] == '"' || bytes[begin - 1] == '\'');
        std::size_t end = isValue ? bytes.find(bytes[begin - 1], begin) : bytes.find_first_of(" \t\r\n=>/", begin);
        if (bytes[begin] == '<' && !isValue)
            end = bytes.find_first_of(" \t\r\n=>/", begin + 1);
        end = std::max(std::min(end, bytes.size()), begin);
        return {{"start", JsonOf(document.SpotOf(begin))}, {"end", JsonOf(document.SpotOf(end))}};
    }

    [[nodiscard]] Json DiagnosticOf(const check::Finding& finding) const {
        const check::RuleText& rule = check::TextOf(finding.rule);
        const int severity = rule.severity == check::Severity::Error     ? 1
                             : rule.severity == check::Severity::Warning ? 2
                                                                         : 3;
        Json diagnostic{{"range", RangeOf(finding.place)},
                        {"severity", severity},
                        {"code", rule.name},
                        {"source", "corvane"},
                        {"message", finding.text + ": " + finding.cure}};
        for (const check::Note& note : finding.notes)
            diagnostic["relatedInformation"].push_back(
                {{"location", {{"uri", UriOf(note.place.file)}, {"range", RangeOf(note.place)}}},
                 {"message", note.text}});
        return diagnostic;
    }

    struct Asking {
        std::string path;
        std::size_t offset;
        std::unique_ptr<Names> names; // nothing outside of an application
        std::optional<Names::Spot> spot;
    };

    [[nodiscard]] Asking At(const Json& parameters, bool asReadable = false) const {
        Asking asking;
        asking.path = KeyOf(PathOf(parameters.at("textDocument").value("uri", "")).value_or(""));
        const Json& position = parameters.at("position");
        asking.offset = DocumentOf(asking.path).OffsetOf({position.value("line", 0U), position.value("character", 0U)});
        const std::string application = ApplicationAround(asking.path);
        if (!application.empty()) {
            asking.names = std::make_unique<Names>(application, Buffers(asReadable));
            asking.spot = asking.names->At(asking.path, asking.offset);
        }
        return asking;
    }

    [[nodiscard]] Json Hover(const Json& parameters) const {
        const Asking asking = At(parameters);
        std::string text = asking.spot ? asking.names->Description(*asking.spot) : std::string();
        const Json& position = parameters.at("position");
        for (const check::Finding& finding : m_findings) {
            if (finding.place.file != asking.path)
                continue;
            const Json range = RangeOf(finding.place);
            if (range["start"]["line"] == position["line"] && range["start"]["character"] <= position["character"] &&
                (range["end"]["line"] > position["line"] || position["character"] <= range["end"]["character"]))
                text += (text.empty() ? "" : "\n\n") + finding.text + ": " + finding.cure + "\n\n" +
                        std::string(check::TextOf(finding.rule).explanation);
        }
        if (text.empty())
            return {};
        return {{"contents", {{"kind", "markdown"}, {"value", text}}}};
    }

    [[nodiscard]] Json Definition(const Json& parameters) const {
        const Asking asking = At(parameters);
        Json places = Json::array();
        if (asking.spot)
            for (const check::Place& place : asking.names->Definitions(*asking.spot))
                places.push_back({{"uri", UriOf(place.file)}, {"range", RangeOf(place)}});
        return places;
    }

    // The tag at the place is read from the text alone, as it mostly isn't finished.
    [[nodiscard]] Json Completion(const Json& parameters) const {
        const Asking asking = At(parameters, true);
        const std::string bytes = DocumentOf(asking.path).Bytes();
        const std::string_view before = std::string_view(bytes).substr(0, asking.offset);
        Json items = Json::array();
        const std::size_t begin = before.rfind('<');
        if (begin == std::string_view::npos || !asking.names || before.find('>', begin) != std::string_view::npos)
            return items;
        const std::string_view tag = before.substr(begin + 1);
        const std::string_view element = tag.substr(0, tag.find_first_of(" \t\r\n"));
        if (element.size() == tag.size()) {
            AddElements(check::ServiceFormat(), items);
            return items;
        }
        const auto quotes = std::count(tag.begin(), tag.end(), '"');
        if (quotes % 2 == 0) {
            AddAttributes(check::ServiceFormat(), element, tag, items);
            return items;
        }
        const std::size_t equals = tag.rfind('=');
        const std::size_t end = tag.find_last_not_of(" \t", equals - 1) + 1;
        const std::size_t first = tag.find_last_of(" \t\r\n", end - 1) + 1;
        const std::string_view attribute = tag.substr(first, end - first);
        for (const std::string& value :
             asking.names->Values(element, attribute, ValueIn(bytes.substr(begin), "Type"), asking.spot))
            items.push_back({{"label", value}, {"kind", 12}});
        return items;
    }

    static std::string ValueIn(const std::string& tag, const std::string& attribute) {
        const std::size_t begin = tag.find(" " + attribute + "=\"");
        if (begin == std::string::npos || begin > tag.find('>'))
            return {};
        const std::size_t value = begin + attribute.size() + 3;
        return tag.substr(value, tag.find('"', value) - value);
    }

    static void AddElements(const check::ElementFormat& format, Json& items) {
        for (const check::ElementFormat& child : format.children) {
            const bool isThere = std::any_of(items.begin(), items.end(), [&](const Json& item) {
                return item["label"].get<std::string>() == child.name;
            });
            if (!isThere)
                items.push_back({{"label", child.name}, {"kind", 7}});
            AddElements(child, items);
        }
    }

    static void AddAttributes(const check::ElementFormat& format, std::string_view element, std::string_view tag,
                              Json& items) {
        if (format.name == element && items.empty())
            for (const check::AttributeFormat& attribute : format.attributes)
                if (tag.find(std::string(attribute.name) + "=") == std::string_view::npos)
                    items.push_back({{"label", attribute.name.text},
                                     {"kind", 10},
                                     {"insertText", std::string(attribute.name) + "=\"\""}});
        for (const check::ElementFormat& child : format.children)
            AddAttributes(child, element, tag, items);
    }

    [[nodiscard]] Json PrepareRename(const Json& parameters) const {
        const Asking asking = At(parameters);
        if (!asking.spot || !Names::IsName(*asking.spot))
            return {};
        return RangeOf(asking.spot->file->At(asking.spot->attribute->AtValue()));
    }

    [[nodiscard]] Json Rename(const Json& parameters) const {
        const Asking asking = At(parameters);
        const std::string name = parameters.at("newName").get<std::string>();
        if (!asking.spot)
            throw Refusal("there is no name here, or the file can't be read until it is well formed");
        if (const std::string conflict = asking.names->Conflict(*asking.spot, name); !conflict.empty())
            throw Refusal(conflict);
        const auto edits = asking.names->Renamed(*asking.spot, name);
        if (edits.empty())
            throw Refusal("nothing is defined by the name " + check::Quoted(asking.spot->attribute->Value()));
        return ChangesOf(edits);
    }

    [[nodiscard]] Json ChangesOf(const std::vector<check::Edit>& edits) const {
        Json changes = Json::object();
        for (const check::Edit& edit : edits) {
            const Document document = DocumentOf(edit.path);
            changes[UriOf(edit.path)].push_back(
                {{"range",
                  {{"start", JsonOf(document.SpotOf(edit.begin))}, {"end", JsonOf(document.SpotOf(edit.end))}}},
                 {"newText", document.TextOf(edit.text)}});
        }
        return {{"changes", std::move(changes)}};
    }

    [[nodiscard]] Json CodeActions(const Json& parameters) const {
        const std::string path = KeyOf(PathOf(parameters.at("textDocument").value("uri", "")).value_or(""));
        const Json& range = parameters.at("range");
        Json actions = Json::array();
        for (const check::Finding& finding : m_findings) {
            if (finding.place.file != path || finding.edits.empty())
                continue;
            const Json diagnostic = DiagnosticOf(finding);
            if (diagnostic["range"]["start"]["line"] > range["end"]["line"] ||
                diagnostic["range"]["end"]["line"] < range["start"]["line"])
                continue;
            std::string title = finding.cure;
            title.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(title.front())));
            actions.push_back({{"title", title},
                               {"kind", "quickfix"},
                               {"diagnostics", Json::array({diagnostic})},
                               {"edit", ChangesOf(finding.edits)}});
        }
        return actions;
    }

    std::ostream& m_out;
    std::map<std::string, Document> m_documents;       // that are open, by path
    std::map<std::string, std::string> m_applications; // of each the application that it was opened in
    std::map<std::string, std::string> m_readable;     // of each the last bytes that were well formed
    std::set<std::string> m_published;
    std::vector<check::Finding> m_findings;
    bool m_isShutDown = false;
};

// The next message; nothing at the end of the input.
std::optional<std::string> ReadMessage(std::istream& in) {
    std::size_t length = 0;
    for (std::string header; std::getline(in, header);) {
        if (header.ends_with('\r'))
            header.pop_back();
        if (header.empty() && length > 0) {
            constexpr std::size_t largest = std::size_t{1} << 28;
            if (length > largest)
                return std::nullopt;
            std::string text(length, '\0');
            in.read(text.data(), static_cast<std::streamsize>(length));
            return in.gcount() == static_cast<std::streamsize>(length) ? std::optional(text) : std::nullopt;
        }
        constexpr std::string_view name = "content-length:";
        if (EqualText(std::string_view(header).substr(0, name.size()), name))
            length = static_cast<std::size_t>(std::strtoull(header.c_str() + name.size(), nullptr, 10));
    }
    return std::nullopt;
}

} // namespace

int Serve(std::istream& in, std::ostream& out) {
    Server server(out);
    while (const auto text = ReadMessage(in)) {
        const Json message = ReadJson(*text).value_or(nullptr);
        if (!message.is_object())
            server.SendError(nullptr, parseError, "not a JSON object");
        else
            try {
                if (!server.Handle(message))
                    break;
            } catch (const std::exception& error) { // a message of another shape than the protocol's
                server.SendError(nullptr, internalError, error.what());
            }
    }
    return server.IsShutDown() ? 0 : 1;
}

} // namespace corvane::lsp
