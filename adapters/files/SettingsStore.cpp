#include "adapters/files/SettingsStore.h"

#include "adapters/common/Paths.h"
#include "corvane/base/Failure.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>
#include <vector>

namespace corvane {

namespace {

struct Setting {
    std::string sCategory;
    std::string sName;
    std::string sValue;
};

[[noreturn]] void FailAccess(const std::string& sPath, const char* sWhat, int nError) {
    Fail(FailureNumber::FileAccess, "The settings file \"" + sPath + "\" " + sWhat + ": " + std::strerror(nError));
}

// A descriptor that closes itself.
class Descriptor {
public:
    Descriptor(const std::string& sPath, int nFlags) : m_nFile(::open(sPath.c_str(), nFlags | O_CLOEXEC, 0600)) {}
    ~Descriptor() {
        if (m_nFile >= 0)
            ::close(m_nFile);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int Get() const { return m_nFile; }

private:
    int m_nFile;
};

// One line of any text: what would end the line or divide it stands behind a backslash.
std::string Escaped(std::string_view sText) {
    std::string sEscaped;
    for (const char c : sText) {
        switch (c) {
        case '\n':
            sEscaped += "\\n";
            break;
        case '\r':
            sEscaped += "\\r";
            break;
        case '\0':
            sEscaped += "\\0";
            break;
        case '\\':
        case '=':
        case '[':
        case ']':
        case '#':
            sEscaped += '\\';
            [[fallthrough]];
        default:
            sEscaped += c;
        }
    }
    return sEscaped;
}

std::string Plain(std::string_view sEscaped) {
    std::string sText;
    for (std::size_t i = 0; i < sEscaped.size(); ++i) {
        if (sEscaped[i] != '\\' || i + 1 == sEscaped.size()) {
            sText += sEscaped[i];
            continue;
        }
        const char c = sEscaped[++i];
        sText += c == 'n' ? '\n' : c == 'r' ? '\r' : c == '0' ? '\0' : c;
    }
    return sText;
}

// The first '=' that isn't escaped.
std::size_t Divide(std::string_view sLine) {
    for (std::size_t i = 0; i < sLine.size(); ++i) {
        if (sLine[i] == '\\')
            ++i;
        else if (sLine[i] == '=')
            return i;
    }
    return std::string_view::npos;
}

// "[category]" and the "name=value" lines under it. Other lines are passed over.
std::vector<Setting> Parse(std::string_view sText) {
    std::vector<Setting> aSettings;
    std::string sCategory;
    while (!sText.empty()) {
        const std::size_t iEnd = std::min(sText.find('\n'), sText.size());
        const std::string_view sLine = sText.substr(0, iEnd);
        sText.remove_prefix(std::min(iEnd + 1, sText.size()));
        if (sLine.size() >= 2 && sLine.front() == '[' && sLine.back() == ']') {
            sCategory = Plain(sLine.substr(1, sLine.size() - 2));
        } else if (const std::size_t i = Divide(sLine); i != std::string_view::npos && sLine.front() != '#') {
            aSettings.push_back({sCategory, Plain(sLine.substr(0, i)), Plain(sLine.substr(i + 1))});
        }
    }
    return aSettings;
}

std::string Format(std::vector<Setting> aSettings) {
    std::stable_sort(aSettings.begin(), aSettings.end(), [](const Setting& oLeft, const Setting& oRight) {
        return CompareText(oLeft.sCategory, oRight.sCategory) < 0;
    });
    std::string sText;
    const Setting* pBefore = nullptr;
    for (const Setting& oSetting : aSettings) {
        if (!pBefore || !EqualText(pBefore->sCategory, oSetting.sCategory))
            sText += "[" + Escaped(oSetting.sCategory) + "]\n";
        sText += Escaped(oSetting.sName) + "=" + Escaped(oSetting.sValue) + "\n";
        pBefore = &oSetting;
    }
    return sText;
}

Setting* Find(std::vector<Setting>& aSettings, std::string_view sCategory, std::string_view sName) {
    for (Setting& oSetting : aSettings)
        if (EqualText(oSetting.sName, sName) && EqualText(oSetting.sCategory, sCategory))
            return &oSetting;
    return nullptr;
}

std::vector<Setting> Load(const std::string& sPath) {
    const std::optional<std::string> oText = ReadBytes(sPath);
    if (!oText && errno != ENOENT && errno != ENOTDIR)
        FailAccess(sPath, "can't be read", errno);
    return oText ? Parse(*oText) : std::vector<Setting>();
}

// Under the lock. Whoever reads meanwhile sees the old file or the new one, whole.
void Replace(const std::string& sPath, std::string_view sText) {
    const std::string sNew = sPath + ".new";
    {
        const Descriptor oFile(sNew, O_WRONLY | O_CREAT | O_TRUNC);
        if (oFile.Get() < 0)
            FailAccess(sNew, "can't be made", errno);
        while (!sText.empty()) {
            const ssize_t n = ::write(oFile.Get(), sText.data(), sText.size());
            if (n < 0 && errno != EINTR)
                FailAccess(sNew, "can't be written", errno);
            sText.remove_prefix(n > 0 ? static_cast<std::size_t>(n) : 0);
        }
        if (::fsync(oFile.Get()) != 0)
            FailAccess(sNew, "can't be written", errno);
    }
    if (std::rename(sNew.c_str(), sPath.c_str()) != 0)
        FailAccess(sPath, "can't be replaced", errno);
    const Descriptor oFolder(std::filesystem::path(sPath).parent_path().string(), O_RDONLY | O_DIRECTORY);
    if (oFolder.Get() >= 0)
        ::fsync(oFolder.Get()); // the values are whole either way; this only makes the name last
}

} // namespace

SettingsStore::SettingsStore(std::string_view sApplication, std::string sFolder) : m_sFolder(std::move(sFolder)) {
    if (m_sFolder.empty())
        m_sFolder = JoinPath(JoinPath(UserFolder("XDG_CONFIG_HOME", ".config"), "corvane"), AsFileName(sApplication));
}

std::string SettingsStore::PathOf(std::string_view sService) const {
    return JoinPath(m_sFolder, AsFileName(FoldText(sService)) + ".settings");
}

std::string SettingsStore::Read(std::string_view sService, std::string_view sCategory, std::string_view sName,
                                std::string_view sDefault) const {
    std::vector<Setting> aSettings = Load(PathOf(sService));
    const Setting* pSetting = Find(aSettings, sCategory, sName);
    return pSetting ? pSetting->sValue : std::string(sDefault);
}

void SettingsStore::Write(std::string_view sService, std::string_view sCategory, std::string_view sName,
                          std::string_view sValue) {
    const std::string sPath = PathOf(sService);
    std::error_code oError;
    std::filesystem::create_directories(m_sFolder, oError);
    if (oError)
        FailAccess(sPath, "has no folder", oError.value());
    // The settings file itself is replaced, so the lock needs a file that stays.
    const Descriptor oLock(sPath + ".lock", O_RDWR | O_CREAT);
    if (oLock.Get() < 0)
        FailAccess(sPath, "can't be locked", errno);
    while (::flock(oLock.Get(), LOCK_EX) != 0)
        if (errno != EINTR)
            FailAccess(sPath, "can't be locked", errno);

    std::vector<Setting> aSettings = Load(sPath);
    if (Setting* pSetting = Find(aSettings, sCategory, sName))
        pSetting->sValue = sValue;
    else
        aSettings.push_back({std::string(sCategory), std::string(sName), std::string(sValue)});
    Replace(sPath, Format(std::move(aSettings)));
}

} // namespace corvane
