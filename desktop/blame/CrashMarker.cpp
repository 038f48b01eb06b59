#include "desktop/blame/CrashMarker.h"

#include "corvane/base/Text.h"
#include "desktop/blame/PluginCode.h"
#include "desktop/service/DefinitionTags.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

namespace corvane::desktop {

// As it lies in the file. Texts end with a zero; the last byte of each stays one.
struct CrashMarker::Mark {
    char aMagic[8];
    char aPlugin[128];
    char aService[128];
    char aServicePlugin[128];
    char aCreating[128];
    char aEntered[128];
    int nSignal;
    int nHung;
};

namespace {

constexpr char aMagic[8] = {'C', 'V', 'M', 'A', 'R', 'K', '2', '\n'};
constexpr std::array aSignals{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
constexpr std::size_t nHandlerStack = 64 * 1024;

std::array<struct sigaction, aSignals.size()> aEarlier;

template <std::size_t N>
void Write(char (&aText)[N], const char* sText) noexcept {
    std::strncpy(aText, sText, N - 1);
}

template <std::size_t N>
std::string Read(const char (&aText)[N]) {
    return {aText, ::strnlen(aText, N)};
}

} // namespace

// The mark of this program, for the handler.
static std::atomic<void*> pLivingMark{nullptr};

void CrashMarker::OnSignal(int nSignal) {
    if (auto* pMark = static_cast<Mark*>(pLivingMark.load())) {
        pMark->nSignal = nSignal;
        pMark->nHung = 0;
        if (const char* sPlugin = PluginCode::Innermost())
            Write(pMark->aPlugin, sPlugin);
    }
    // What stood here before has its turn as soon as this returns.
    for (std::size_t i = 0; i < aSignals.size(); ++i)
        if (aSignals[i] == nSignal)
            ::sigaction(nSignal, &aEarlier[i], nullptr);
    ::raise(nSignal);
}

void CrashMarker::InstallHandlers() {
    static bool bInstalled = false;
    if (std::exchange(bInstalled, true))
        return;
    (void)PluginCode::Innermost(); // loads what it needs, which a handler mustn't
    // A stack that has run over leaves no room for a handler.
    static char* pStack = static_cast<char*>(std::malloc(nHandlerStack));
    stack_t oStack{};
    oStack.ss_sp = pStack;
    oStack.ss_size = nHandlerStack;
    ::sigaltstack(&oStack, nullptr);
    for (std::size_t i = 0; i < aSignals.size(); ++i) {
        struct sigaction oAction {};
        oAction.sa_handler = &CrashMarker::OnSignal;
        oAction.sa_flags = SA_ONSTACK;
        ::sigemptyset(&oAction.sa_mask);
        ::sigaction(aSignals[i], &oAction, &aEarlier[i]);
    }
}

namespace {

std::string PluginOf(const std::string& sProgID) {
    return sProgID.substr(0, sProgID.find('.'));
}

std::string TextOfFile(const std::filesystem::path& oPath) {
    std::ifstream oFile(oPath, std::ios::binary);
    return {std::istreambuf_iterator<char>(oFile), {}};
}

// The service that defines what has been entered, if it is one alone and of that plug-in; else nothing.
std::string ServiceBehind(const std::string& sEntered, const std::string& sPlugin, const std::string& sServicesFolder) {
    const bool bItem = sEntered.starts_with('#');
    std::string sFound;
    std::error_code oError;
    for (const auto& oEntry : std::filesystem::directory_iterator(sServicesFolder, oError)) {
        if (!EqualText(oEntry.path().extension().string(), ".xml"))
            continue;
        std::string sService;
        bool bDefines = false;
        const std::string sText = TextOfFile(oEntry.path());
        for (const DefinitionTag& oTag : TagsIn(sText, {"Service", "ExplorerItem", "Page"})) {
            if (oTag.sElement == "Service") {
                if (EqualText(oTag.Attribute("Active"), "false") ||
                    !EqualText(PluginOf(std::string(oTag.Attribute("ProgID"))), sPlugin))
                    break;
                sService = oTag.Attribute("Name");
            }
            bDefines = bDefines || (bItem ? oTag.sElement == "ExplorerItem" &&
                                                EqualText(oTag.Attribute("Name"), std::string_view(sEntered).substr(1))
                                          : EqualText(oTag.Attribute("ProgID"), sEntered) ||
                                                EqualText(oTag.Attribute("PageProgID"), sEntered));
        }
        if (!bDefines || sService.empty())
            continue;
        if (!sFound.empty())
            return {};
        sFound = sService;
    }
    return sFound;
}

} // namespace

std::string WhoIn(const CrashRecord& oRecord, const std::string& sServicesFolder) {
    const std::string sPlugin = oRecord.sPlugin.empty() ? PluginOf(oRecord.sCreating) : oRecord.sPlugin;
    if (sPlugin.empty())
        return oRecord.sService;
    if (!oRecord.sEntered.empty() && oRecord.sEntered != "?")
        if (std::string sService = ServiceBehind(oRecord.sEntered, sPlugin, sServicesFolder); !sService.empty())
            return sService;
    const bool bOfCommand = oRecord.sEntered.empty() && EqualText(sPlugin, oRecord.sServicePlugin);
    return bOfCommand ? oRecord.sService : sPlugin;
}

CrashRecord CrashMarker::RecordOf(const Mark& oMark) {
    return {Read(oMark.aPlugin),   Read(oMark.aService), Read(oMark.aServicePlugin),
            Read(oMark.aCreating), Read(oMark.aEntered), oMark.nSignal,
            oMark.nHung != 0};
}

CrashRecord CrashMarker::Current(const char* sPlugin) const {
    CrashRecord oRecord = m_pMark ? RecordOf(*m_pMark) : CrashRecord();
    oRecord.sPlugin = sPlugin ? sPlugin : "";
    return oRecord;
}

CrashMarker::CrashMarker(const std::string& sFolder) {
    if (sFolder.empty())
        return;
    TakeOld(sFolder);
    Make(sFolder);
    if (!m_pMark)
        return;
    pLivingMark = m_pMark;
    InstallHandlers();
}

CrashMarker::~CrashMarker() {
    if (!m_pMark)
        return;
    void* pMine = m_pMark;
    pLivingMark.compare_exchange_strong(pMine, nullptr);
    ::unlink(m_sPath.c_str());
    ::munmap(m_pMark, sizeof(Mark));
    ::close(m_nFile);
}

// The lock of a program that lives can't be had.
void CrashMarker::TakeOld(const std::string& sFolder) {
    std::error_code oError;
    std::vector<std::string> aPaths;
    for (const auto& oEntry : std::filesystem::directory_iterator(sFolder, oError))
        if (oEntry.path().extension() == ".running")
            aPaths.push_back(oEntry.path().string());
    for (const std::string& sPath : aPaths) {
        const int nFile = ::open(sPath.c_str(), O_RDONLY | O_CLOEXEC);
        if (nFile < 0)
            continue;
        Mark oMark{};
        if (::flock(nFile, LOCK_EX | LOCK_NB) == 0) {
            const bool bWhole = ::read(nFile, &oMark, sizeof oMark) == static_cast<ssize_t>(sizeof oMark) &&
                                std::memcmp(oMark.aMagic, aMagic, sizeof aMagic) == 0;
            CrashRecord oRecord = RecordOf(oMark);
            if (bWhole && !(oRecord.sPlugin.empty() && oRecord.sService.empty() && oRecord.sCreating.empty()))
                m_aFound.push_back(std::move(oRecord));
            ::unlink(sPath.c_str());
        }
        ::close(nFile);
    }
}

void CrashMarker::Make(const std::string& sFolder) {
    std::error_code oError;
    std::filesystem::create_directories(sFolder, oError);
    m_sPath = sFolder + "/" + std::to_string(::getpid()) + ".running";
    m_nFile = ::open(m_sPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (m_nFile < 0)
        return;
    void* pMapped = MAP_FAILED;
    if (::flock(m_nFile, LOCK_EX | LOCK_NB) == 0 && ::ftruncate(m_nFile, sizeof(Mark)) == 0)
        pMapped = ::mmap(nullptr, sizeof(Mark), PROT_READ | PROT_WRITE, MAP_SHARED, m_nFile, 0);
    if (pMapped == MAP_FAILED) {
        ::close(m_nFile);
        return;
    }
    m_pMark = static_cast<Mark*>(pMapped);
    *m_pMark = {};
    std::memcpy(m_pMark->aMagic, aMagic, sizeof aMagic);
}

void CrashMarker::SetService(const std::string& sService, const std::string& sPlugin) {
    if (!m_pMark)
        return;
    Write(m_pMark->aService, sService.c_str());
    Write(m_pMark->aServicePlugin, sPlugin.c_str());
}

void CrashMarker::SetCreating(const std::string& sProgID) {
    if (m_pMark)
        Write(m_pMark->aCreating, sProgID.c_str());
}

void CrashMarker::SetEntered(const std::string& sWhat) {
    if (m_pMark)
        Write(m_pMark->aEntered, sWhat.c_str());
}

void CrashMarker::SetHung(const char* sPlugin) {
    if (!m_pMark)
        return;
    Write(m_pMark->aPlugin, sPlugin ? sPlugin : "");
    m_pMark->nHung = sPlugin ? 1 : 0;
}

} // namespace corvane::desktop
