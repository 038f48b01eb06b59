#include "adapters/plugins/PluginFactory.h"

#include "adapters/common/Nearest.h"
#include "adapters/common/Paths.h"
#include "corvane/base/PluginExport.h"

#include <algorithm>
#include <dlfcn.h>
#include <filesystem>

namespace corvane {

namespace {

using EntryFunction = const PluginTable* (*)();

[[noreturn]] void FailCreation(const std::string& sWanted, const std::string& sWhy) {
    Fail(FailureNumber::CannotCreateObject, "Can't create " + sWanted + ": " + sWhy, "Plug-ins");
}

std::string Quoted(std::string_view sText) {
    return "\"" + std::string(sText) + "\"";
}

std::string NearestFirst(std::span<const PluginClass> aClasses, std::string_view sProgID) {
    std::vector<std::pair<std::size_t, std::string>> aNames;
    for (const PluginClass& oClass : aClasses)
        aNames.emplace_back(EditDistance(oClass.ProgID, sProgID), oClass.ProgID);
    std::sort(aNames.begin(), aNames.end());
    std::string sList;
    for (const auto& [nDistance, sName] : aNames)
        sList += (sList.empty() ? "" : ", ") + Quoted(sName);
    return sList.empty() ? "none" : sList;
}

std::span<const PluginClass> ClassesOf(const PluginTable& oTable) {
    return {oTable.Classes, oTable.ClassCount};
}

// The build tag up to its last blank: compiler and standard library.
std::string_view WithoutHash(std::string_view sTag) {
    return sTag.substr(0, sTag.rfind(' '));
}

// Fails when the library's table isn't one that this program can use.
const PluginTable* CheckedTable(void* pLibrary, const std::string& sPath, const std::string& sWanted) {
    const auto fnEntry = reinterpret_cast<EntryFunction>(::dlsym(pLibrary, PluginEntryName));
    if (!fnEntry)
        FailCreation(sWanted, "the file " + Quoted(sPath) + " is a shared library without the entry \"" +
                                  PluginEntryName + "\", so it isn't a plug-in. Declare its classes with " +
                                  "CORVANE_PLUGIN and build it again");
    const PluginTable* pTable = fnEntry();
    if (!pTable)
        FailCreation(sWanted, "the entry \"" + std::string(PluginEntryName) + "\" of the plug-in " + Quoted(sPath) +
                                  " returned no table of classes. Declare them with CORVANE_PLUGIN");
    if (pTable->AbiVersion != PluginAbiVersion)
        FailCreation(sWanted, "the plug-in " + Quoted(sPath) + " has the interface version " +
                                  std::to_string(pTable->AbiVersion) + ", this program wants version " +
                                  std::to_string(PluginAbiVersion) +
                                  ". Build the plug-in again with this program's headers");
    const std::string_view sTag = pTable->BuildTag ? pTable->BuildTag : "";
    if (sTag != PluginBuildTag)
        FailCreation(sWanted,
                     "the plug-in " + Quoted(sPath) + " was built as " + Quoted(sTag) + ", this program wants " +
                         Quoted(PluginBuildTag) + ". Build the plug-in again with " +
                         (WithoutHash(sTag) == WithoutHash(PluginBuildTag) ? "this program's headers"
                                                                           : "the same compiler and standard library"));
    return pTable;
}

// The part in front of the point.
std::string_view LibraryOf(std::string_view sProgID, const std::string& sWanted) {
    const std::size_t iPoint = sProgID.find('.');
    if (iPoint == 0 || iPoint == std::string_view::npos || iPoint + 1 == sProgID.size())
        FailCreation(sWanted, "a ProgID has the form \"Library.Class\"");
    const std::string_view sLibrary = sProgID.substr(0, iPoint);
    using namespace std::string_view_literals;
    if (sLibrary.find_first_of("/\\\0"sv) != std::string_view::npos)
        FailCreation(sWanted,
                     "the library's name " + Quoted(sLibrary) +
                         " isn't a plain file name; a ProgID has the form \"Library.Class\", without a folder");
    return sLibrary;
}

} // namespace

PluginFactory::PluginFactory(std::string sFolder)
    // Absolute, for the system's loader searches other folders for a plain name.
    : m_sFolder(std::filesystem::absolute(std::move(sFolder)).lexically_normal().string()) {}

std::string PluginFactory::PathOf(std::string_view sLibrary) const {
    const std::string sPath = JoinPath(m_sFolder, "lib" + std::string(sLibrary) + ".so");
    return FindPath(sPath).value_or(sPath);
}

std::vector<std::string> PluginFactory::Libraries() const {
    std::vector<std::string> aLibraries;
    for (const std::string& sName : NamesIn(m_sFolder).value_or(std::vector<std::string>()))
        if (const std::string_view sView = sName; sView.size() > 6 && EqualText(sView.substr(0, 3), "lib") &&
                                                  EqualText(sView.substr(sView.size() - 3), ".so"))
            aLibraries.emplace_back(sView.substr(3, sView.size() - 6));
    return aLibraries;
}

const PluginFactory::Library& PluginFactory::Load(std::string_view sLibrary, const std::string& sWanted) {
    if (const auto it = m_mapLibraries.find(sLibrary); it != m_mapLibraries.end())
        return it->second;
    const std::string sPath = PathOf(sLibrary);
    std::error_code oError;
    if (!std::filesystem::exists(sPath, oError))
        FailCreation(sWanted, "there is no file " + Quoted(sPath) +
                                  ". Put the plug-in there, or correct the name in front of the point");
    void* pLibrary = ::dlopen(sPath.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!pLibrary) {
        const char* sWhy = ::dlerror();
        FailCreation(sWanted, "the file " + Quoted(sPath) + " can't be loaded as a shared library: " +
                                  (sWhy ? sWhy : "the system gives no reason") +
                                  ". Build the plug-in for this machine, with all that it links to");
    }
    const PluginTable* pTable = CheckedTable(pLibrary, sPath, sWanted);
    return m_mapLibraries.emplace(std::string(sLibrary), Library{sPath, pTable}).first->second;
}

Ref<Object> PluginFactory::Create(std::string_view sProgID) {
    const std::string sWanted = "an object of \"" + std::string(sProgID) + "\"";
    const Library& oLibrary = Load(LibraryOf(sProgID, sWanted), sWanted);
    const auto aClasses = ClassesOf(*oLibrary.pTable);
    const auto it = std::find_if(aClasses.begin(), aClasses.end(),
                                 [&](const PluginClass& oClass) { return EqualText(oClass.ProgID, sProgID); });
    if (it == aClasses.end())
        FailCreation(sWanted, "the plug-in " + Quoted(oLibrary.sPath) + " has no such class. It has " +
                                  NearestFirst(aClasses, sProgID));
    Object* pObject = nullptr;
    try {
        pObject = it->Create();
    } catch (...) {
        const Failure oFailure = CurrentFailure();
        FailCreation(sWanted, "its constructor in the plug-in " + Quoted(oLibrary.sPath) + " failed with " +
                                  std::to_string(oFailure.Number) + " (" + oFailure.Source +
                                  "): " + oFailure.Description);
    }
    if (!pObject)
        FailCreation(sWanted, "the plug-in " + Quoted(oLibrary.sPath) + " returned nothing");
    return Ref<Object>::Adopt(pObject);
}

std::vector<PluginFactory::ClassInfo> PluginFactory::Classes(std::string_view sLibrary) {
    const std::string sWanted = "objects of the library \"" + std::string(sLibrary) + "\"";
    LibraryOf(std::string(sLibrary) + ".*", sWanted);
    std::vector<ClassInfo> aClasses;
    for (const PluginClass& oClass : ClassesOf(*Load(sLibrary, sWanted).pTable))
        aClasses.push_back({oClass.ProgID, oClass.Members ? oClass.Members() : std::vector<MemberInfo>()});
    return aClasses;
}

} // namespace corvane
