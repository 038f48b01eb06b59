// What one child process does between its start and its end. Each ends the process as soon as its work is done, so
// that nothing is measured that a person doesn't wait for.
#pragma once

#include "bench/startup/Inputs.h"

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

// Throws when the start didn't bring what the files say; a start that lacks something mustn't look fast.
void Expect(bool bTrue, const char* sWhat);
// Shows it and returns when it has painted itself.
void ShowAndPaint(QWidget& oWindow);

} // namespace corvane::bench
