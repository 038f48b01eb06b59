#include "desktop/failures/FailurePresenter.h"

#include "adapters/files/FileSystem.h"
#include "adapters/xml/XmlService.h"
#include "analysis/Check.h"
#include "desktop/blame/ThrowOrigin.h"
#include "desktop/failures/FailureDialog.h"
#include "desktop/failures/GuardedApplication.h"
#include "desktop/platform/HostParts.h"
#include "desktop/style/QtText.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QThread>
#include <cstdio>
#include <optional>

namespace corvane::desktop {

namespace {

// Why a file isn't well formed: the failure itself carries the parser's code alone.
XmlError ParseErrorOf(const QString& path) {
    try {
        const auto document = XmlService().NewDocument();
        if (!document->LoadXml(FileSystem().ReadAll(path.toStdString())))
            return document->ParseError();
    } catch (...) {
        // The file may have gone meanwhile; the failure is shown without a reason then.
    }
    return {};
}

QString AdviceFor(const QString& stage) {
    if (stage == "Loading XML")
        return FailurePresenter::tr(
            "Correct the file at that place and restart the application. Until then, this part of it is unavailable.");
    if (stage == "Validating XML")
        return FailurePresenter::tr(
            "Correct the name at that place and restart the application. Until then, this part of it is unavailable.");
    if (stage == "Creating Service Instance")
        return FailurePresenter::tr("Check that the plug-in is in the folder “plugins” and that its file name matches "
                                    "the ProgID. Until then, this part of the application is unavailable.");
    if (stage == "Initializing Service Definition")
        return FailurePresenter::tr(
            "Correct the definition and restart the application. Until then, this part of it is unavailable.");
    return {};
}

// Numbers behind ObjectErrorBase are an application's own; what it says with one needs no name of a procedure.
bool IsForUser(const ShownFailure& shown) {
    constexpr Long most = FailureNumber::ObjectErrorBase + 0xFFFF;
    const Long number = shown.failure.Number;
    return shown.context.empty() && number > FailureNumber::ObjectErrorBase && number <= most;
}

} // namespace

FailureTexts TextsOf(const ShownFailure& shown, const QString& servicesFolder) {
    FailureTexts texts;
    texts.headline = Text(shown.failure.Description);
    texts.isForUser = IsForUser(shown);
    const QString place = Text(shown.module.empty() ? shown.procedure : shown.module + "." + shown.procedure);
    texts.where = place;
    Long line = shown.failure.Line;
    static const QRegularExpression fileContext("^Context: (.*), File: (.*), Desc: ",
                                                QRegularExpression::DotMatchesEverythingOption |
                                                    QRegularExpression::InvertedGreedinessOption);
    const auto match = fileContext.match(Text(shown.context));
    if (match.hasMatch()) {
        const QString& file = texts.file = match.captured(2);
        if (match.captured(1) == "Loading XML") {
            const XmlError error = ParseErrorOf(servicesFolder + "/" + file);
            if (!error.sReason.empty())
                texts.headline = Text(error.sReason);
            line = error.lLine;
        }
        texts.where = line > 0 ? FailurePresenter::tr("%1, line %2").arg(file).arg(line) : file;
        texts.advice = AdviceFor(match.captured(1));
    }
    texts.details = QString("%1\n%2 %3\n%4")
                        .arg(place, QString::number(shown.failure.Number), Text(shown.failure.Source),
                             Text(shown.failure.Description));
    for (const std::string& more : {shown.context, shown.failure.Context})
        if (!more.empty())
            texts.details += "\n" + Text(more);
    return texts;
}

std::vector<check::Finding> FindingsIn(const QString& filePath, const QString& servicesFolder) {
    const QFileInfo file(servicesFolder + "/" + filePath);
    if (filePath.isEmpty() || !file.isFile())
        return {};
    try {
        return check::CheckFile(QFileInfo(servicesFolder).path().toStdString(), file.fileName().toStdString());
    } catch (...) {
        return {}; // the failure itself is shown all the same
    }
}

FailurePresenter::FailurePresenter(bool withDialogs, QObject* parent) : QObject(parent), m_withDialogs(withDialogs) {}

void FailurePresenter::Show(const ShownFailure& shown) {
    if (m_take && m_take(shown))
        return;
    m_waiting.push_back(shown);
    if (m_showing)
        return;
    m_showing = true;
    while (!m_waiting.empty()) {
        const ShownFailure next = std::move(m_waiting.front());
        m_waiting.pop_front();
        ++m_shown;
        ShowNow(next);
    }
    m_showing = false;
}

void FailurePresenter::ShowNow(const ShownFailure& shown) {
    const FailureTexts texts = TextsOf(shown, m_servicesFolder);
    if (m_withDialogs) {
        FailureDialog dialog(texts, FindingsIn(texts.file, m_servicesFolder), m_servicesFolder,
                             QString::fromStdString(shown.logFile), ActiveWindowOr(m_window));
        dialog.exec();
        return;
    }
    std::fprintf(stderr, "%s: %s\n", qUtf8Printable(texts.where), qUtf8Printable(texts.headline));
}

int FailurePresenter::Depth() const {
    return static_cast<int>(m_entries.size()) + GuardedApplication::EventDepth();
}

void FailurePresenter::ShowEnded(const ShownFailure& shown) {
    if (m_observer)
        m_observer->Failed(Depth());
    Show(shown);
    if (m_observer)
        m_observer->Seen();
}

void FailurePresenter::ShowReported(const ShownFailure& shown) {
    if (m_entries.empty() || m_entries.back().events < GuardedApplication::EventDepth())
        ShowEnded(shown);
    else
        Show(shown);
}

void FailurePresenter::ShowUncaught(const ShownFailure& shown, bool comesByItself) {
    const std::string known = std::to_string(shown.failure.Number) + shown.failure.Description + shown.context;
    if (!comesByItself || m_shownOnce.insert(known).second)
        ShowEnded(shown);
}

void FailurePresenter::Guard(const std::function<void()>& act) {
    const ThrowOrigin origin(ThrowOrigin::Mode::NotNoted);
    const int loop = QThread::currentThread()->loopLevel();
    const bool isInside = !m_entries.empty() && m_entries.back().loop == loop;
    m_entries.push_back({loop, GuardedApplication::EventDepth(), isInside ? m_entries.back().number : ++m_entryCount});
    const auto leave = qScopeGuard([this] {
        m_entries.pop_back();
        if (m_entries.empty() && m_observer)
            m_observer->Returned();
    });
    std::optional<Failure> failure;
    try {
        act();
    } catch (...) {
        failure = CurrentFailure();
    }
    if (failure)
        ShowEnded({"", tr("The command couldn't be completed").toStdString(), *failure, "", m_logFile});
}

} // namespace corvane::desktop

#include "moc_FailurePresenter.cpp"
