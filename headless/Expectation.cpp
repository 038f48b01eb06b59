#include "headless/Expectation.h"

#include "corvane/base/Text.h"
#include "headless/Document.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace corvane::inspect {

namespace {

using Json = nlohmann::json;

// "tools", "File.Greet", "checked" of "tools[File.Greet].checked", and what stands behind the path's blank.
std::vector<std::string> Segments(const std::string& sRest, std::string& sValue) {
    std::vector<std::string> aSegments(1);
    std::size_t i = 0;
    int nBrackets = 0;
    for (; i < sRest.size() && (sRest[i] != ' ' || nBrackets > 0); ++i) {
        const char c = sRest[i];
        if ((c == '[' && nBrackets++ == 0) || (c == '.' && nBrackets == 0))
            aSegments.emplace_back();
        else if (!(c == ']' && --nBrackets == 0))
            aSegments.back() += c;
    }
    std::erase(aSegments, "");
    sValue = i < sRest.size() ? sRest.substr(i + 1) : std::string();
    return aSegments;
}

bool IsCalled(const Json& oElement, const std::string& sName) {
    for (const char* sKey : {"name", "key", "caption", "id"})
        if (const auto it = oElement.find(sKey); it != oElement.end())
            if (it->is_string() ? EqualText(it->get_ref<const std::string&>(), sName) : it->dump() == sName)
                return true;
    return false;
}

// Nothing where the path leads nowhere, which counts as null.
Json Follow(const Json& oDocument, const std::vector<std::string>& aSegments) {
    const Json* pAt = &oDocument;
    for (const std::string& sSegment : aSegments) {
        if (pAt->is_array() && sSegment == "count")
            return pAt->size();
        const Json* pNext = nullptr;
        if (pAt->is_object()) {
            if (const auto it = pAt->find(sSegment); it != pAt->end())
                pNext = &*it;
        } else if (pAt->is_array()) {
            const auto oIndex = NumberIn(sSegment);
            const auto it = std::find_if(pAt->begin(), pAt->end(),
                                         [&](const Json& o) { return o.is_object() && IsCalled(o, sSegment); });
            if (it != pAt->end())
                pNext = &*it;
            else if (oIndex && *oIndex >= 0 && *oIndex < static_cast<Double>(pAt->size()))
                pNext = &(*pAt)[static_cast<std::size_t>(*oIndex)];
        }
        if (!pNext)
            return aSegments.back() == "count" ? Json(0) : Json();
        pAt = pNext;
    }
    return *pAt;
}

// Keys are left out where they have nothing to say.
bool IsNothing(const Json& oValue) {
    return oValue.is_null() || oValue == false || oValue == "" || oValue == Json::array();
}

// A file of steps may hold any bytes.
std::string Shown(const Json& oValue) {
    return oValue.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

std::string Unmet(const ModelHost& oHost, const std::string& sRest) {
    std::string sValue;
    const std::vector<std::string> aSegments = Segments(sRest, sValue);
    Json oDocument = Json::parse(JsonDocument(oHost, {true, true, true, true}));
    oDocument["status"] = oHost.Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
    const Json oThere = Follow(oDocument, aSegments);
    const Json oWanted = Json::parse(sValue, nullptr, false);
    const bool bText = oThere.is_string() && oThere.get_ref<const std::string&>() == sValue;
    if (bText || (!oWanted.is_discarded() && (oThere == oWanted || (IsNothing(oThere) && IsNothing(oWanted)))) ||
        (sValue.empty() && IsNothing(oThere)))
        return {};
    return "expected " + sRest.substr(0, sRest.size() - sValue.size()) +
           (oWanted.is_discarded() ? Shown(sValue) : sValue) + ", but it is " + Shown(oThere);
}

} // namespace corvane::inspect
