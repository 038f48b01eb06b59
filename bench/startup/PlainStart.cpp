// The starts that use no part of Corvane: the floor, and the program that a user would write by hand.

#include "bench/startup/Starts.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <algorithm>
#include <functional>
#include <libxml/parser.h>
#include <libxml/xmlschemas.h>
#include <memory>
#include <stdexcept>
#include <unordered_map>
#include <vector>

namespace corvane::bench {

namespace fs = std::filesystem;

namespace {

struct Free {
    void operator()(xmlDocPtr p) const { xmlFreeDoc(p); }
    void operator()(xmlSchemaPtr p) const { xmlSchemaFree(p); }
    void operator()(xmlSchemaParserCtxtPtr p) const { xmlSchemaFreeParserCtxt(p); }
    void operator()(xmlSchemaValidCtxtPtr p) const { xmlSchemaFreeValidCtxt(p); }
    void operator()(xmlChar* p) const { xmlFree(p); }
};
template <class T>
using Owned = std::unique_ptr<T, Free>;

// Reads and validates every definition file, in the order of their names, and hands its root element over.
std::size_t ForEachFile(const std::string& folder, const std::function<void(const xmlNode*)>& act) {
    const fs::path services = fs::path(folder) / "Services";
    const Owned<xmlSchemaParserCtxt> parser(xmlSchemaNewParserCtxt((services / "Service.xdr").c_str()));
    const Owned<xmlSchema> schema(xmlSchemaParse(parser.get()));
    Expect(schema != nullptr, "a schema");
    const Owned<xmlSchemaValidCtxt> valid(xmlSchemaNewValidCtxt(schema.get()));
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(services))
        if (entry.path().extension() == ".xml")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    for (const auto& file : files) {
        const Owned<xmlDoc> document(xmlReadFile(file.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOBLANKS));
        Expect(document != nullptr, "well-formed files");
        Expect(xmlSchemaValidateDoc(valid.get(), document.get()) == 0, "valid files");
        act(xmlDocGetRootElement(document.get()));
    }
    return files.size();
}

QString Attribute(const xmlNode* node, const char* name) {
    const Owned<xmlChar> text(xmlGetNoNsProp(node, reinterpret_cast<const xmlChar*>(name)));
    return QString::fromUtf8(reinterpret_cast<const char*>(text.get()));
}

template <class F>
void ForEachChild(const xmlNode* parent, const char* name, F act) {
    for (const xmlNode* p = parent->children; p; p = p->next)
        if (p->type == XML_ELEMENT_NODE && xmlStrEqual(p->name, reinterpret_cast<const xmlChar*>(name)))
            act(p);
}

// The menus as a program without a shell builds them: each entry an action with its text and its description.
class PlainMenus {
public:
    explicit PlainMenus(QMenuBar* bar) : m_bar(bar) {}

    void AddFile(const xmlNode* service) {
        std::unordered_map<QString, QString> descriptions;
        ForEachChild(service, "ActionItems", [&](const xmlNode* items) {
            ForEachChild(items, "ActionItem", [&](const xmlNode* item) {
                descriptions.emplace(Attribute(item, "Name"), Attribute(item, "Description"));
            });
        });
        ForEachChild(service, "Menus", [&](const xmlNode* menus) {
            ForEachChild(menus, "MenuItem", [&](const xmlNode* item) { AddItem(item, descriptions); });
        });
    }
    [[nodiscard]] std::size_t Menus() const { return m_menus.size(); }
    [[nodiscard]] std::size_t Entries() const { return m_entries; }

private:
    void AddItem(const xmlNode* item, const std::unordered_map<QString, QString>& descriptions) {
        const QString name = Attribute(item, "ActionItem");
        const QString caption = Attribute(item, "Caption").replace('#', '&');
        if (Attribute(item, "Type") == QLatin1String("MenuTitle")) {
            m_menus.emplace(name, m_bar->addMenu(caption));
            return;
        }
        QMenu* menu = m_menus.at(Attribute(item, "Path"));
        QAction* action = menu->addAction(caption);
        action->setObjectName(name);
        action->setStatusTip(descriptions.at(name));
        QObject::connect(action, &QAction::triggered, m_bar, [this, action] { m_chosen = action->objectName(); });
        ++m_entries;
    }

    QMenuBar* m_bar;
    std::unordered_map<QString, QMenu*> m_menus;
    std::size_t m_entries = 0;
    QString m_chosen;
};

} // namespace

void Expect(bool isTrue, const char* what) {
    if (!isTrue)
        throw std::runtime_error(std::string("expected ") + what);
}

PaintWatch::PaintWatch(QWidget& window) {
    window.installEventFilter(this);
}

bool PaintWatch::eventFilter(QObject*, QEvent* event) {
    m_painted = m_painted || event->type() == QEvent::Paint;
    return false;
}

void PaintWatch::Await() const {
    constexpr int mostTurns = 1000;
    for (int i = 0; i < mostTurns && !m_painted; ++i)
        QApplication::processEvents();
    Expect(m_painted, "a painted window");
}

void StartNothing(const Job&) {}

void ParseAndValidate(const Job& job) {
    const std::size_t files = ForEachFile(job.folder, [](const xmlNode*) {});
    Expect(files == static_cast<std::size_t>(job.size.services) + 1, "all files");
}

void ShowEmptyWindow(const Job&) {
    QMainWindow window;
    window.resize(1100, 720);
    const PaintWatch watch(window);
    window.show();
    watch.Await();
    std::_Exit(0);
}

void ShowPlainWindow(const Job& job) {
    QMainWindow window;
    PlainMenus menus(window.menuBar());
    ForEachFile(job.folder, [&](const xmlNode* service) { menus.AddFile(service); });
    Expect(menus.Menus() == static_cast<std::size_t>(job.size.services) + 1, "a menu a file");
    Expect(menus.Entries() == job.size.Entries() + 1, "an entry an action");
    window.resize(1100, 720);
    const PaintWatch watch(window);
    window.show();
    watch.Await();
    std::_Exit(0);
}

} // namespace corvane::bench
