// What one child process does between its start and its end. Each ends the process as soon as its work is done, so
// that nothing is measured that a person doesn't wait for.
#pragma once

#include "bench/startup/Inputs.h"

#include <QObject>
#include <string>

class QWidget;

namespace corvane::bench {

struct Job {
    std::string sFolder; // of the application
    Size oSize;
};

// Without the toolkit.
void StartNothing(const Job& oJob);
void ParseAndValidate(const Job& oJob);
void StartModels(const Job& oJob);

// With the toolkit, up to a window's first painting.
void ShowEmptyWindow(const Job& oJob);
void ShowPlainWindow(const Job& oJob);
void ShowCorvaneWindow(const Job& oJob);
void ShowWholeApplication(const Job& oJob);

// Starts the whole application, ends it as a person does and leaves the session that the next start finds.
void KeepSession(const Job& oJob);

// Throws when the start didn't bring what the files say; a start that lacks something mustn't look fast.
void Expect(bool bTrue, const char* sWhat);

// Sees when a window paints itself for the first time.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget& oWindow);
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;
    // Returns when it has.
    void Await() const;

private:
    bool m_bPainted = false;
};

} // namespace corvane::bench
