#include "WholeFile.h"

#include "Errors.h"
#include "QtText.h"

#include <QSaveFile>

namespace studies {

void WriteWholeFile(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        FailWith(Translated("The file “%1” can't be written: %2.", {Utf8(path), Utf8(file.errorString())}));
}

} // namespace studies
