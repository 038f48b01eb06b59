// Files that plug-ins with Qt write: there whole, or as they were.
#pragma once

#include "corvane/base/Failure.h"

#include <QCoreApplication>
#include <QSaveFile>
#include <QString>
#include <functional>
#include <string>
#include <string_view>

namespace corvane::desktop {

// Takes the next piece of what is written.
using FileSink = std::function<void(std::string_view)>;

// Replaces the file of that path, in UTF-8, by the pieces that fill gives to its argument; on any thread. Fails with
// 75, and the reason in the user's language, when it can't be written. After that, and after whatever fill raises, as a
// job that is cancelled does, the file is as it was.
inline void WriteWholeFile(const std::string& path, const std::function<void(const FileSink& write)>& fill) {
    QSaveFile file(QString::fromStdString(path));
    const auto Check = [&](bool isDone) {
        if (!isDone)
            Fail(FailureNumber::FileAccess,
                 QCoreApplication::translate("corvane::desktop::WholeFile", "The file “%1” can't be written: %2.")
                     .arg(QString::fromStdString(path), file.errorString())
                     .toStdString(),
                 "Writing a file");
    };
    Check(file.open(QIODevice::WriteOnly));
    fill([&](std::string_view piece) {
        const auto size = static_cast<qsizetype>(piece.size());
        Check(file.write(piece.data(), size) == size);
    });
    Check(file.commit());
}
// The same with all of it at once.
inline void WriteWholeFile(const std::string& path, std::string_view bytes) {
    WriteWholeFile(path, [&](const FileSink& write) { write(bytes); });
}

} // namespace corvane::desktop
