#include "WholeFile.h"

#include "Errors.h"
#include "QtText.h"

#include <QSaveFile>

namespace studies {

void WriteWholeFile(const QString& path, const std::function<void(const Sink& write)>& fill) {
    QSaveFile file(path);
    const auto Check = [&](bool done) {
        if (!done)
            FailWith(Translated("The file “%1” can't be written: %2.", {Utf8(path), Utf8(file.errorString())}));
    };
    Check(file.open(QIODevice::WriteOnly));
    fill([&](std::string_view piece) {
        const auto size = static_cast<qsizetype>(piece.size());
        Check(file.write(piece.data(), size) == size);
    });
    Check(file.commit());
}

void WriteWholeFile(const QString& path, const QByteArray& bytes) {
    WriteWholeFile(path, [&](const Sink& write) { write({bytes.data(), static_cast<std::size_t>(bytes.size())}); });
}

} // namespace studies
