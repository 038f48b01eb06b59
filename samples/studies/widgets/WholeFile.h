// Files that are there whole, or not at all.
#pragma once

#include <QByteArray>
#include <QString>

namespace studies {

// Replaces the file, or leaves it as it was and fails, saying why.
void WriteWholeFile(const QString& path, const QByteArray& bytes);

} // namespace studies
