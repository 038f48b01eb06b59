#include "desktop/failures/FailurePresenter.h"

#include "adapters/files/FileSystem.h"
#include "adapters/xml/XmlService.h"
#include "analysis/Check.h"
#include "desktop/failures/FailureDialog.h"
#include "desktop/platform/HostParts.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QThread>
#include <cstdio>

namespace corvane::desktop {

namespace {

QString Text(const std::string& sText) {
    return QString::fromStdString(sText);
}

// Why a file isn't well formed: the failure itself carries the parser's code alone.
XmlError ParseErrorOf(const QString& sPath) {
    try {
        const auto oDocument = XmlService().NewDocument();
        if (!oDocument->LoadXml(FileSystem().ReadAll(sPath.toStdString())))
            return oDocument->ParseError();
    } catch (...) {
        // The file may have gone meanwhile; the failure is shown without a reason then.
    }
    return {};
}

QString AdviceFor(const QString& sStage) {
    if (sStage == "Loading XML")
        return FailurePresenter::tr(
            "Correct the file at that place and restart the application. Until then, this part of it is unavailable.");
    if (sStage == "Validating XML")
        return FailurePresenter::tr(
            "Correct the name at that place and restart the application. Until then, this part of it is unavailable.");
    if (sStage == "Creating Service Instance")
        return FailurePresenter::tr("Check that the plug-in is in the folder “plugins” and that its file name matches "
                                    "the ProgID. Until then, this part of the application is unavailable.");
    if (sStage == "Initializing Service Definition")
        return FailurePresenter::tr(
            "Correct the definition and restart the application. Until then, this part of it is unavailable.");
    return {};
}

// Numbers behind ObjectErrorBase are an application's own; what it says with one needs no name of a procedure.
bool IsForPerson(const ShownFailure& oShown) {
    constexpr Long lMost = FailureNumber::ObjectErrorBase + 0xFFFF;
    const Long lNumber = oShown.oFailure.Number;
    return oShown.sContext.empty() && lNumber > FailureNumber::ObjectErrorBase && lNumber <= lMost;
}

} // namespace

FailureTexts TextsOf(const ShownFailure& oShown, const QString& sServicesFolder) {
    FailureTexts oTexts;
    oTexts.sHeadline = Text(oShown.oFailure.Description);
    oTexts.bIsForPerson = IsForPerson(oShown);
    const QString sPlace = Text(oShown.sModule.empty() ? oShown.sProcedure : oShown.sModule + "." + oShown.sProcedure);
    oTexts.sWhere = sPlace;
    Long lLine = oShown.oFailure.Line;
    static const QRegularExpression oFileContext("^Context: (.*), File: (.*), Desc: ",
                                                 QRegularExpression::DotMatchesEverythingOption |
                                                     QRegularExpression::InvertedGreedinessOption);
    const auto oMatch = oFileContext.match(Text(oShown.sContext));
    if (oMatch.hasMatch()) {
        const QString& sFile = oTexts.sFile = oMatch.captured(2);
        if (oMatch.captured(1) == "Loading XML") {
            const XmlError oError = ParseErrorOf(sServicesFolder + "/" + sFile);
            if (!oError.sReason.empty())
                oTexts.sHeadline = Text(oError.sReason);
            lLine = oError.lLine;
        }
        oTexts.sWhere = lLine > 0 ? FailurePresenter::tr("%1, line %2").arg(sFile).arg(lLine) : sFile;
        oTexts.sAdvice = AdviceFor(oMatch.captured(1));
    }
    oTexts.sDetails = QString("%1\n%2 %3\n%4")
                          .arg(sPlace, QString::number(oShown.oFailure.Number), Text(oShown.oFailure.Source),
                               Text(oShown.oFailure.Description));
    if (!oShown.sContext.empty())
        oTexts.sDetails += "\n" + Text(oShown.sContext);
    return oTexts;
}

std::vector<check::Finding> FindingsIn(const QString& sFile, const QString& sServicesFolder) {
    const QFileInfo oFile(sServicesFolder + "/" + sFile);
    if (sFile.isEmpty() || !oFile.isFile())
        return {};
    try {
        return check::CheckFile(QFileInfo(sServicesFolder).path().toStdString(), oFile.fileName().toStdString());
    } catch (...) {
        return {}; // the failure itself is shown all the same
    }
}

FailurePresenter::FailurePresenter(bool bWithDialogs, QObject* pParent)
    : QObject(pParent), m_bWithDialogs(bWithDialogs) {}

void FailurePresenter::Show(const ShownFailure& oShown) {
    if (m_fnTake && m_fnTake(oShown))
        return;
    m_aWaiting.push_back(oShown);
    if (m_bShowing)
        return;
    m_bShowing = true;
    while (!m_aWaiting.empty()) {
        const ShownFailure oNext = std::move(m_aWaiting.front());
        m_aWaiting.pop_front();
        ++m_nShown;
        ShowNow(oNext);
    }
    m_bShowing = false;
}

void FailurePresenter::ShowNow(const ShownFailure& oShown) {
    const FailureTexts oTexts = TextsOf(oShown, m_sServicesFolder);
    if (m_bWithDialogs) {
        FailureDialog oDialog(oTexts, FindingsIn(oTexts.sFile, m_sServicesFolder), m_sServicesFolder,
                              QString::fromStdString(oShown.sLogFile), ActiveWindowOr(m_pWindow));
        oDialog.exec();
        return;
    }
    std::fprintf(stderr, "%s: %s\n", qUtf8Printable(oTexts.sWhere), qUtf8Printable(oTexts.sHeadline));
}

void FailurePresenter::Guard(const std::function<void()>& fnAct) {
    const int nLoop = QThread::currentThread()->loopLevel();
    const bool bIsInside = !m_aEntries.empty() && m_aEntries.back().nLoop == nLoop;
    m_aEntries.push_back({nLoop, bIsInside ? m_aEntries.back().lNumber : ++m_lEntries});
    const auto oLeave = qScopeGuard([this] { m_aEntries.pop_back(); });
    try {
        fnAct();
    } catch (...) {
        Show({"", tr("The command couldn't be completed").toStdString(), CurrentFailure(), "", m_sLogFile});
    }
}

} // namespace corvane::desktop
