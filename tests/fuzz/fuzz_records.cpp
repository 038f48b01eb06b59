// A definition file of any bytes, decoded, parsed, validated and read into records without an application around it.
// Where the check finds no error in the file, the records take it, and the other way round. What the check reads in one
// pass, as it seems plain, is what it makes of the file with the help of the library's XML reader.
#include "adapters/xml/XmlService.h"
#include "analysis/CheckForm.h"
#include "analysis/PlainSource.h"
#include "analysis/Print.h"
#include "corvane/services/PageDef.h"
#include "corvane/services/ServiceDef.h"
#include "corvane/services/WindowDef.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <set>

using namespace corvane;

namespace {

const Ref<IXmlService>& Xml() {
    static const Ref<IXmlService> xml = New<XmlService>();
    return xml;
}

const Ref<IXmlSchemaCache>& Schema() {
    static const Ref<IXmlSchemaCache> schema = [] {
        auto cache = Xml()->NewSchemaCache();
        cache->Add("", CORVANE_SCHEMA);
        return cache;
    }();
    return schema;
}

// As the library reads one file, up to where it makes objects.
bool AreTaken(const std::string& bytes) {
    const Ref<IXmlDocument> document = Xml()->NewDocument();
    if (!document->LoadXml(bytes))
        return false;
    const Ref<IXmlNode> node = document->SelectSingleNode("Service");
    if (!node || !document->Validate(Schema()).sReason.empty())
        return false;
    try {
        const bool isActive = ToBoolean(Variant(node->Attribute("Active").value_or("False")));
        if (!isActive || node->Attribute("ProgID").value_or("").empty())
            return true; // left alone
        New<ServiceDef>()->Initialize(node);
        std::set<std::string> names;
        for (const auto& window : node->SelectNodes("Windows/Window")) {
            const auto definition = New<WindowDef>();
            definition->Initialize(window);
            if (!names.insert(FoldText(definition->Name())).second)
                return false;
        }
        for (const auto& page : node->SelectNodes("Preferences/Page"))
            New<PageDef>()->Initialize(page);
    } catch (const Failure&) {
        return false;
    }
    return true;
}

bool AreAlike(const check::Element& plain, const check::Element& other) {
    return plain.name.data() == other.name.data() && plain.name.size() == other.name.size() &&
           plain.below == other.below &&
           std::equal(plain.attributes.begin(), plain.attributes.end(), other.attributes.begin(),
                      other.attributes.end(), [](const check::Attribute& a, const check::Attribute& b) {
                          return a.AtName() == b.AtName() && a.Name() == b.Name() && a.AtValue() == b.AtValue() &&
                                 a.Value() == b.Value() && b.Is(a.NameAt(a.AtName()));
                      });
}

bool IsPlainRead(const std::string& bytes) {
    check::Arena memory;
    const check::Element* plain = check::ScanPlainElements(bytes, memory);
    if (!plain)
        return true;
    const Ref<IXmlDocument> document = Xml()->NewDocument();
    const check::Element* other = document->LoadXml(bytes) ? check::ScanElements(bytes, document, memory) : nullptr;
    return other && std::equal(plain, plain + 1 + plain->below, other, other + 1 + other->below, AreAlike);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    check::Model model;
    check::Report report;
    auto file = std::make_unique<check::File>();
    file->path = file->name = "Fuzzed.xml";
    file->bytes.assign(reinterpret_cast<const char*>(data), size);
    static const check::FileReader reader(Xml(), Schema());
    reader.Read(*file, model.memory, report);
    const bool isHelp = file->root && EqualText(file->root->Value("ProgID"), "TavelinSvc.TavelinService");
    model.files.push_back(std::move(file));
    check::BuildModel(model, report);
    const auto findings = report.TakeSorted();
    const bool isLeftOut = std::any_of(findings.begin(), findings.end(), [](const check::Finding& finding) {
        return check::LeavesOutTheFile(finding.rule);
    });
    if (!IsPlainRead(model.files.front()->bytes)) {
        std::fprintf(stderr, "not plain, although read as such:\n%s\n", model.files.front()->bytes.c_str());
        std::abort();
    }
    const bool isTaken = AreTaken(model.files.front()->bytes);
    if (isTaken == isLeftOut && !isHelp) {
        std::fprintf(stderr, "%s", (isTaken ? "taken, although\n" : "not taken, and found is\n"));
        std::fputs(check::AsText(findings, false).c_str(), stderr);
        std::abort();
    }
    return 0;
}
