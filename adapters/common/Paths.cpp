#include "adapters/common/Paths.h"

#include "corvane/base/Failure.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane {

namespace fs = std::filesystem;

namespace {

bool IsSeparator(char c) {
    return c == '/' || c == '\\';
}

bool Exists(const std::string& sPath) {
    std::error_code oError;
    return fs::exists(sPath, oError);
}

bool LessName(const std::string& sLeft, const std::string& sRight) {
    const int nOrder = CompareText(sLeft, sRight);
    return nOrder != 0 ? nOrder < 0 : sLeft < sRight;
}

} // namespace

std::string JoinPath(std::string_view sFolder, std::string_view sName) {
    while (!sName.empty() && IsSeparator(sName.front()))
        sName.remove_prefix(1);
    std::string sPath(sFolder);
    if (!sName.empty() && !sPath.empty() && !IsSeparator(sPath.back()))
        sPath += '/';
    return sPath.append(sName);
}

std::optional<std::string> FindPath(std::string_view sPath) {
    std::string sFound(sPath);
    if (Exists(sFound))
        return sFound;
    const std::string sAsked = ReplaceText(sPath, '\\', '/');
    sFound = sAsked.starts_with('/') ? "/" : "";
    for (std::size_t iFrom = 0; iFrom < sAsked.size();) {
        const std::size_t iTo = std::min(sAsked.find('/', iFrom), sAsked.size());
        const std::string_view sPart = std::string_view(sAsked).substr(iFrom, iTo - iFrom);
        iFrom = iTo + 1;
        if (sPart.empty())
            continue;
        std::string sNext = JoinPath(sFound, sPart);
        if (!Exists(sNext)) {
            const auto aNames = NamesIn(sFound.empty() ? "." : sFound);
            if (!aNames)
                return std::nullopt;
            const auto it = std::find_if(aNames->begin(), aNames->end(),
                                         [&](const std::string& sName) { return EqualText(sName, sPart); });
            if (it == aNames->end())
                return std::nullopt;
            sNext = JoinPath(sFound, *it);
        }
        sFound = std::move(sNext);
    }
    if (sFound.empty())
        return std::nullopt;
    return sFound;
}

std::optional<std::vector<std::string>> NamesIn(const std::string& sFolder) {
    std::error_code oError;
    std::vector<std::string> aNames;
    for (fs::directory_iterator it(sFolder, oError), itEnd; !oError && it != itEnd; it.increment(oError))
        aNames.push_back(it->path().filename().string());
    if (oError)
        return std::nullopt;
    std::sort(aNames.begin(), aNames.end(), LessName);
    return aNames;
}

std::optional<std::string> ReadBytes(const std::string& sPath) {
    const int nFile = ::open(sPath.c_str(), O_RDONLY | O_CLOEXEC);
    if (nFile < 0)
        return std::nullopt;
    std::string sBytes;
    struct stat oStat {};
    if (::fstat(nFile, &oStat) == 0 && oStat.st_size > 0)
        sBytes.resize(static_cast<std::size_t>(oStat.st_size) + 1); // room for the read that finds the end
    std::size_t nRead = 0;
    for (;;) {
        if (nRead == sBytes.size())
            sBytes.resize(sBytes.size() + 4096); // grown meanwhile, or a file whose size isn't told
        const ssize_t n = ::read(nFile, sBytes.data() + nRead, sBytes.size() - nRead);
        if (n > 0)
            nRead += static_cast<std::size_t>(n);
        else if (n == 0)
            break;
        else if (errno != EINTR) {
            const int nError = errno;
            ::close(nFile);
            errno = nError;
            return std::nullopt;
        }
    }
    ::close(nFile);
    sBytes.resize(nRead);
    return sBytes;
}

std::string ReadFileOrFail(std::string_view sPath) {
    const std::optional<std::string> oPath = FindPath(sPath);
    std::error_code oError;
    if (!oPath || fs::is_directory(*oPath, oError))
        Fail(FailureNumber::FileNotFound,
             "The file \"" + std::string(sPath) + "\" " + (oPath ? "is a folder" : "doesn't exist"));
    std::optional<std::string> oBytes = ReadBytes(*oPath);
    if (!oBytes)
        Fail(FailureNumber::FileAccess, "The file \"" + *oPath + "\" can't be read: " + std::strerror(errno));
    return *std::move(oBytes);
}

std::string UserFolder(const char* sVariable, std::string_view sBelowHome) {
    // A relative path in the variable is invalid and to be ignored.
    if (const char* sValue = std::getenv(sVariable); sValue && *sValue == '/')
        return sValue;
    const char* sHome = std::getenv("HOME");
    return sHome && *sHome ? JoinPath(sHome, sBelowHome) : std::string();
}

std::string AsFileName(std::string_view sName) {
    std::string sFileName;
    for (const char c : sName) {
        const auto u = static_cast<unsigned char>(c);
        const bool bPlain =
            u >= 0x80 || std::isalnum(u) || c == '-' || c == '_' || c == ' ' || (c == '.' && !sFileName.empty());
        if (bPlain) {
            sFileName += c;
        } else {
            static constexpr char aDigits[] = "0123456789ABCDEF";
            sFileName += '%';
            sFileName += aDigits[u >> 4];
            sFileName += aDigits[u & 15];
        }
    }
    if (sFileName.empty())
        return "%";
    constexpr std::size_t nLongest = 180; // a name may have 255 bytes, endings included
    if (sFileName.size() > nLongest)
        sFileName = sFileName.substr(0, nLongest) + "%" + std::to_string(HashText(sName));
    return sFileName;
}

} // namespace corvane
