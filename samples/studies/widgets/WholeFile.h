// Files that are there whole, or not at all.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <string_view>

namespace studies {

// Replaces the file, or leaves it as it was and fails, saying why.
void WriteWholeFile(const QString& path, const QByteArray& bytes);

// The same with what fill gives to its argument, piece by piece; on any thread. Whatever fill raises, as a job that is
// cancelled does, leaves the file as it was.
using Sink = std::function<void(std::string_view)>;
void WriteWholeFile(const QString& path, const std::function<void(const Sink& write)>& fill);

} // namespace studies
