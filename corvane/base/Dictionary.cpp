#include "corvane/base/Dictionary.h"

namespace corvane {

void Dictionary::Add(std::string_view sName, Variant vValue) {
    auto oEntry = New<Entry>();
    oEntry->vValue = std::move(vValue);
    m_colEntries->Add(std::move(oEntry), sName);
}

void Dictionary::Set(std::string_view sName, Variant vValue) {
    if (Exists(sName))
        m_colEntries->Item(sName)->vValue = std::move(vValue);
    else
        Add(sName, std::move(vValue));
}

std::vector<std::string> Dictionary::Keys() const {
    std::vector<std::string> aKeys;
    for (Long l = 1; l <= m_colEntries->Count(); ++l)
        aKeys.push_back(m_colEntries->KeyAt(l));
    return aKeys;
}

} // namespace corvane
