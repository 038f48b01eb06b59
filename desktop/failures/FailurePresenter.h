// Brings failures before the person's eyes, one after another, and lets the application go on.
#pragma once

#include "adapters/log/Utilities.h"
#include "analysis/Findings.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <deque>
#include <functional>
#include <vector>

class QWidget;

namespace corvane::desktop {

// What the dialog says of a failure.
struct FailureTexts {
    QString sHeadline;         // what is wrong, in one sentence
    QString sWhere;            // file and line, or module and procedure
    QString sAdvice;           // what to do; empty when nobody knows
    QString sDetails;          // all that is known, to copy
    QString sFile;             // the definition file that failed, without its folder; empty for none
    bool bIsForPerson = false; // the headline says all that a person needs: it comes from the application itself
};
[[nodiscard]] FailureTexts TextsOf(const ShownFailure& oShown, const QString& sServicesFolder);

// All that is wrong with a definition file, by `corvane check`; nothing when it isn't in that folder or can't be
// checked.
[[nodiscard]] std::vector<check::Finding> FindingsIn(const QString& sFile, const QString& sServicesFolder);

class FailurePresenter final : public QObject {
    Q_OBJECT
public:
    // Without dialogs failures go to the error stream, for runs that nobody watches.
    explicit FailurePresenter(bool bWithDialogs, QObject* pParent = nullptr);

    void SetParentWindow(QWidget* pWindow) { m_pWindow = pWindow; }
    void SetServicesFolder(QString sFolder) { m_sServicesFolder = std::move(sFolder); }
    void SetLogFile(std::string sLogFile) { m_sLogFile = std::move(sLogFile); }

    // Asked first; true when it has taken the failure, which isn't shown then.
    void SetTaker(std::function<bool(const ShownFailure&)> fnTake) { m_fnTake = std::move(fnTake); }

    // Shows a failure and returns when it has been seen. A failure that comes while another is shown waits its turn.
    void Show(const ShownFailure& oShown);
    // Runs what enters the library; a failure that leaves it is shown.
    void Guard(const std::function<void()>& fnAct);

    // Tells one entry into the library from another: 0 outside of all, else a number that belongs to the outermost
    // Guard of this turn of an event loop. A modal loop inside is entered anew.
    [[nodiscard]] long Entry() const { return m_aEntries.empty() ? 0 : m_aEntries.back().lNumber; }

    [[nodiscard]] int ShownCount() const { return m_nShown; }

private:
    void ShowNow(const ShownFailure& oShown);

    struct EntryLevel {
        int nLoop; // the depth of event loops
        long lNumber;
    };

    std::function<bool(const ShownFailure&)> m_fnTake;
    std::vector<EntryLevel> m_aEntries;
    long m_lEntries = 0;
    bool m_bWithDialogs;
    bool m_bShowing = false;
    int m_nShown = 0;
    std::deque<ShownFailure> m_aWaiting;
    QPointer<QWidget> m_pWindow;
    QString m_sServicesFolder;
    std::string m_sLogFile;
};

} // namespace corvane::desktop
