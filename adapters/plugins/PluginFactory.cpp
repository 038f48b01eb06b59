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

[[noreturn]] void FailCreation(const std::string& wanted, const std::string& why) {
    Fail(FailureNumber::CannotCreateObject, "Can't create " + wanted + ": " + why, "Plug-ins");
}

std::string Quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

std::string NearestFirst(std::span<const PluginClass> classes, std::string_view progID) {
    std::vector<std::pair<std::size_t, std::string>> names;
    for (const PluginClass& pluginClass : classes)
        names.emplace_back(EditDistance(pluginClass.ProgID, progID), pluginClass.ProgID);
    std::sort(names.begin(), names.end());
    std::string list;
    for (const auto& [distance, name] : names)
        list += (list.empty() ? "" : ", ") + Quoted(name);
    return list.empty() ? "none" : list;
}

std::span<const PluginClass> ClassesOf(const PluginTable& table) {
    return {table.Classes, table.ClassCount};
}

// The build tag up to its last blank: compiler and standard library.
std::string_view WithoutHash(std::string_view tag) {
    return tag.substr(0, tag.rfind(' '));
}

// Fails when the library's table isn't one that this program can use.
const PluginTable* CheckedTable(void* library, const std::string& path, const std::string& wanted) {
    const auto entry = reinterpret_cast<EntryFunction>(::dlsym(library, PluginEntryName));
    if (!entry)
        FailCreation(wanted, "the file " + Quoted(path) + " is a shared library without the entry \"" +
                                 PluginEntryName + "\", so it isn't a plug-in. Declare its classes with " +
                                 "CORVANE_PLUGIN and build it again");
    const PluginTable* table = entry();
    if (!table)
        FailCreation(wanted, "the entry \"" + std::string(PluginEntryName) + "\" of the plug-in " + Quoted(path) +
                                 " returned no table of classes. Declare them with CORVANE_PLUGIN");
    if (table->AbiVersion != PluginAbiVersion)
        FailCreation(wanted, "the plug-in " + Quoted(path) + " has the interface version " +
                                 std::to_string(table->AbiVersion) + ", this program wants version " +
                                 std::to_string(PluginAbiVersion) +
                                 ". Build the plug-in again with this program's headers");
    const std::string_view tag = table->BuildTag ? table->BuildTag : "";
    if (tag != PluginBuildTag)
        FailCreation(wanted,
                     "the plug-in " + Quoted(path) + " was built as " + Quoted(tag) + ", this program wants " +
                         Quoted(PluginBuildTag) + ". Build the plug-in again with " +
                         (WithoutHash(tag) == WithoutHash(PluginBuildTag) ? "this program's headers"
                                                                          : "the same compiler and standard library"));
    return table;
}

// The part in front of the point.
std::string_view LibraryOf(std::string_view progID, const std::string& wanted) {
    const std::size_t point = progID.find('.');
    if (point == 0 || point == std::string_view::npos || point + 1 == progID.size())
        FailCreation(wanted, "a ProgID has the form \"Library.Class\"");
    const std::string_view library = progID.substr(0, point);
    using namespace std::string_view_literals;
    if (library.find_first_of("/\\\0"sv) != std::string_view::npos)
        FailCreation(wanted, "the library's name " + Quoted(library) +
                                 " isn't a plain file name; a ProgID has the form \"Library.Class\", without a folder");
    return library;
}

} // namespace

PluginFactory::PluginFactory(std::string folder)
    // Absolute, for the system's loader searches other folders for a plain name.
    : m_folder(std::filesystem::absolute(std::move(folder)).lexically_normal().string()),
      m_processes(New<ProcessFactory>(m_folder)) {}

std::string PluginFactory::PathOf(std::string_view library) const {
    const std::string path = JoinPath(m_folder, "lib" + std::string(library) + ".so");
    if (const auto file = m_processes->FileOf(library))
        return *file;
    return FindPath(path).value_or(path);
}

std::vector<std::string> PluginFactory::Libraries() const {
    std::vector<std::string> libraries;
    for (const std::string& name : NamesIn(m_folder).value_or(std::vector<std::string>()))
        if (const std::string_view view = name;
            view.size() > 6 && EqualText(view.substr(0, 3), "lib") && EqualText(view.substr(view.size() - 3), ".so"))
            libraries.emplace_back(view.substr(3, view.size() - 6));
    for (std::string& name : m_processes->Names())
        libraries.push_back(std::move(name));
    std::sort(libraries.begin(), libraries.end(),
              [](const std::string& left, const std::string& right) { return CompareText(left, right) < 0; });
    return libraries;
}

const PluginFactory::Library& PluginFactory::Load(std::string_view libraryName, const std::string& wanted) {
    if (const auto it = m_libraries.find(libraryName); it != m_libraries.end())
        return it->second;
    const std::string path = PathOf(libraryName);
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        FailCreation(wanted, "there is no file " + Quoted(path) +
                                 ". Put the plug-in there, or correct the name in front of the point");
    void* library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        const char* why = ::dlerror();
        FailCreation(wanted, "the file " + Quoted(path) +
                                 " can't be loaded as a shared library: " + (why ? why : "the system gives no reason") +
                                 ". Build the plug-in for this machine, with all that it links to");
    }
    const PluginTable* table = CheckedTable(library, path, wanted);
    return m_libraries.emplace(std::string(libraryName), Library{path, table}).first->second;
}

// Which of two that bear the name is meant can't be known.
bool PluginFactory::IsProcess(std::string_view library, const std::string& wanted) const {
    const auto file = m_processes->FileOf(library);
    const auto other = FindPath(JoinPath(m_folder, "lib" + std::string(library) + ".so"));
    if (file && other)
        FailCreation(wanted, "there are both the file " + Quoted(*file) + " and the file " + Quoted(*other) +
                                 ". Remove one of them");
    return file.has_value();
}

Ref<Object> PluginFactory::Create(std::string_view progID) {
    const std::string wanted = "an object of \"" + std::string(progID) + "\"";
    const std::string_view name = LibraryOf(progID, wanted);
    if (!m_libraries.contains(name) && IsProcess(name, wanted)) // files cost more to look at than an object to make
        return m_processes->Create(name, progID);
    const Library& library = Load(name, wanted);
    const auto classes = ClassesOf(*library.table);
    const auto it = std::find_if(classes.begin(), classes.end(),
                                 [&](const PluginClass& pluginClass) { return EqualText(pluginClass.ProgID, progID); });
    if (it == classes.end())
        FailCreation(wanted, "the plug-in " + Quoted(library.path) + " has no such class. It has " +
                                 NearestFirst(classes, progID));
    Object* object = nullptr;
    try {
        object = it->Create();
    } catch (...) {
        const Failure failure = CurrentFailure();
        FailCreation(wanted, "its constructor in the plug-in " + Quoted(library.path) + " failed with " +
                                 std::to_string(failure.Number) + " (" + failure.Source + "): " + failure.Description);
    }
    if (!object)
        FailCreation(wanted, "the plug-in " + Quoted(library.path) + " returned nothing");
    return Ref<Object>::Adopt(object);
}

bool PluginFactory::HasClass(std::string_view progID) {
    const std::string_view libraryName = progID.substr(0, progID.find('.'));
    std::error_code error;
    if (!std::filesystem::exists(PathOf(libraryName), error))
        return false;
    try {
        if (IsProcess(libraryName, {})) {
            const Ref<Process> process = m_processes->ProcessOf(libraryName);
            process->Need();
            return process->FindClass(progID) != nullptr;
        }
        const auto classes = ClassesOf(*Load(LibraryOf(progID, {}), {}).table);
        return std::any_of(classes.begin(), classes.end(),
                           [&](const PluginClass& pluginClass) { return EqualText(pluginClass.ProgID, progID); });
    } catch (const Failure&) {
        return true;
    }
}

std::vector<PluginFactory::ClassInfo> PluginFactory::Classes(std::string_view library) {
    const std::string wanted = "objects of the library \"" + std::string(library) + "\"";
    LibraryOf(std::string(library) + ".*", wanted);
    std::vector<ClassInfo> classes;
    if (IsProcess(library, wanted)) {
        const Ref<Process> process = m_processes->ProcessOf(library);
        process->Need();
        for (const ProcessClass& known : process->Classes()) {
            classes.push_back({known.progID, known.members, known.isService, known.isExplorerItem, known.isPage});
            for (std::size_t i = 0; i < known.declared.size(); ++i)
                classes.back().members[i].Result.What = known.declared[i];
        }
        return classes;
    }
    for (const PluginClass& pluginClass : ClassesOf(*Load(library, wanted).table))
        classes.push_back({pluginClass.ProgID, pluginClass.Members ? pluginClass.Members() : std::vector<MemberInfo>(),
                           pluginClass.IsService, pluginClass.IsExplorerItem, pluginClass.IsPage});
    return classes;
}

} // namespace corvane
