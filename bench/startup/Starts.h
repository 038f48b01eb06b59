// What one child process does between its start and its end. Each ends the process as soon as its work is done, so
// that nothing is measured that a user doesn't wait for.
#pragma once

#include "bench/startup/Inputs.h"

#include <QObject>
#include <string>

class QWidget;

namespace corvane::bench {

struct Job {
    std::string folder; // of the application
    Size size;
};

// Without the toolkit.
void StartNothing(const Job& job);
void ParseAndValidate(const Job& job);
void StartModels(const Job& job);

// With the toolkit, up to a window's first painting.
void ShowEmptyWindow(const Job& job);
void ShowPlainWindow(const Job& job);
void ShowCorvaneWindow(const Job& job);
void ShowWholeApplication(const Job& job);

// Starts the whole application, ends it as a user does and leaves the session that the next start finds.
void KeepSession(const Job& job);

// Throws when the start didn't bring what the files say; a start that lacks something mustn't look fast.
void Expect(bool isTrue, const char* what);

// Sees when a window paints itself for the first time.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget& window);
    bool eventFilter(QObject* watched, QEvent* event) override;
    // Returns when it has.
    void Await() const;

private:
    bool m_painted = false;
};

} // namespace corvane::bench
