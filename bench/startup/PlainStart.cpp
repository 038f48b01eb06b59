// The starts that use no part of Corvane: the floor, and the program that a person would write by hand.

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
std::size_t ForEachFile(const std::string& sFolder, const std::function<void(const xmlNode*)>& fnAct) {
    const fs::path oServices = fs::path(sFolder) / "Services";
    const Owned<xmlSchemaParserCtxt> oParser(xmlSchemaNewParserCtxt((oServices / "Service.xdr").c_str()));
    const Owned<xmlSchema> oSchema(xmlSchemaParse(oParser.get()));
    Expect(oSchema != nullptr, "a schema");
    const Owned<xmlSchemaValidCtxt> oValid(xmlSchemaNewValidCtxt(oSchema.get()));
    std::vector<fs::path> aFiles;
    for (const auto& oEntry : fs::directory_iterator(oServices))
        if (oEntry.path().extension() == ".xml")
            aFiles.push_back(oEntry.path());
    std::sort(aFiles.begin(), aFiles.end());
    for (const auto& oFile : aFiles) {
        const Owned<xmlDoc> oDocument(xmlReadFile(oFile.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOBLANKS));
        Expect(oDocument != nullptr, "well-formed files");
        Expect(xmlSchemaValidateDoc(oValid.get(), oDocument.get()) == 0, "valid files");
        fnAct(xmlDocGetRootElement(oDocument.get()));
    }
    return aFiles.size();
}

QString Attribute(const xmlNode* pNode, const char* sName) {
    const Owned<xmlChar> oText(xmlGetNoNsProp(pNode, reinterpret_cast<const xmlChar*>(sName)));
    return QString::fromUtf8(reinterpret_cast<const char*>(oText.get()));
}

template <class F>
void ForEachChild(const xmlNode* pParent, const char* sName, F fnAct) {
    for (const xmlNode* p = pParent->children; p; p = p->next)
        if (p->type == XML_ELEMENT_NODE && xmlStrEqual(p->name, reinterpret_cast<const xmlChar*>(sName)))
            fnAct(p);
}

// The menus as a program without a shell builds them: each entry an action with its text and its description.
class PlainMenus {
public:
    explicit PlainMenus(QMenuBar* pBar) : m_pBar(pBar) {}

    void AddFile(const xmlNode* pService) {
        std::unordered_map<QString, QString> mapDescriptions;
        ForEachChild(pService, "ActionItems", [&](const xmlNode* pItems) {
            ForEachChild(pItems, "ActionItem", [&](const xmlNode* pItem) {
                mapDescriptions.emplace(Attribute(pItem, "Name"), Attribute(pItem, "Description"));
            });
        });
        ForEachChild(pService, "Menus", [&](const xmlNode* pMenus) {
            ForEachChild(pMenus, "MenuItem", [&](const xmlNode* pItem) { AddItem(pItem, mapDescriptions); });
        });
    }
    [[nodiscard]] std::size_t Menus() const { return m_mapMenus.size(); }
    [[nodiscard]] std::size_t Entries() const { return m_nEntries; }

private:
    void AddItem(const xmlNode* pItem, const std::unordered_map<QString, QString>& mapDescriptions) {
        const QString sName = Attribute(pItem, "ActionItem");
        const QString sCaption = Attribute(pItem, "Caption").replace('#', '&');
        if (Attribute(pItem, "Type") == QLatin1String("MenuTitle")) {
            m_mapMenus.emplace(sName, m_pBar->addMenu(sCaption));
            return;
        }
        QMenu* pMenu = m_mapMenus.at(Attribute(pItem, "Path"));
        QAction* pAction = pMenu->addAction(sCaption);
        pAction->setObjectName(sName);
        pAction->setStatusTip(mapDescriptions.at(sName));
        QObject::connect(pAction, &QAction::triggered, m_pBar, [this, pAction] { m_sChosen = pAction->objectName(); });
        ++m_nEntries;
    }

    QMenuBar* m_pBar;
    std::unordered_map<QString, QMenu*> m_mapMenus;
    std::size_t m_nEntries = 0;
    QString m_sChosen;
};

} // namespace

void Expect(bool bTrue, const char* sWhat) {
    if (!bTrue)
        throw std::runtime_error(std::string("expected ") + sWhat);
}

PaintWatch::PaintWatch(QWidget& oWindow) {
    oWindow.installEventFilter(this);
}

bool PaintWatch::eventFilter(QObject*, QEvent* pEvent) {
    m_bPainted = m_bPainted || pEvent->type() == QEvent::Paint;
    return false;
}

void PaintWatch::Await() const {
    constexpr int nMostTurns = 1000;
    for (int i = 0; i < nMostTurns && !m_bPainted; ++i)
        QApplication::processEvents();
    Expect(m_bPainted, "a painted window");
}

void StartNothing(const Job&) {}

void ParseAndValidate(const Job& oJob) {
    const std::size_t nFiles = ForEachFile(oJob.sFolder, [](const xmlNode*) {});
    Expect(nFiles == static_cast<std::size_t>(oJob.oSize.nServices) + 1, "all files");
}

void ShowEmptyWindow(const Job&) {
    QMainWindow oWindow;
    oWindow.resize(1100, 720);
    const PaintWatch oWatch(oWindow);
    oWindow.show();
    oWatch.Await();
    std::_Exit(0);
}

void ShowPlainWindow(const Job& oJob) {
    QMainWindow oWindow;
    PlainMenus oMenus(oWindow.menuBar());
    ForEachFile(oJob.sFolder, [&](const xmlNode* pService) { oMenus.AddFile(pService); });
    Expect(oMenus.Menus() == static_cast<std::size_t>(oJob.oSize.nServices) + 1, "a menu a file");
    Expect(oMenus.Entries() == oJob.oSize.Entries() + 1, "an entry an action");
    oWindow.resize(1100, 720);
    const PaintWatch oWatch(oWindow);
    oWindow.show();
    oWatch.Await();
    std::_Exit(0);
}

} // namespace corvane::bench
