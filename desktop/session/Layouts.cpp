#include "desktop/session/Layouts.h"

#include <QCollator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr int layoutVersion = 1;
constexpr qint64 largestFile = 1 << 20; // bytes
constexpr qsizetype longestName = 60;

} // namespace

Layouts::Layouts(StateFile file, Parts parts) : m_file(std::move(file)), m_parts(std::move(parts)) {
    const QJsonObject layouts = m_file.Read()["layouts"].toObject();
    for (auto it = layouts.begin(); it != layouts.end(); ++it)
        if (it->isObject() && !it.key().trimmed().isEmpty())
            m_layouts.insert(it.key(), *it);
}

void Layouts::Write() {
    m_file.Write({{"layouts", m_layouts}});
    if (m_parts.changed)
        m_parts.changed();
}

QStringList Layouts::Names() const {
    QStringList names = m_layouts.keys();
    QCollator order;
    order.setNumericMode(true);
    order.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(names.begin(), names.end(), order);
    return names;
}

bool Layouts::Has(const QString& name) const {
    return m_layouts.contains(name);
}

void Layouts::Save(const QString& name) {
    m_layouts[name.trimmed().left(longestName)] = m_parts.now();
    Write();
}

void Layouts::Choose(const QString& name) const {
    if (Has(name))
        m_parts.choose(m_layouts[name].toObject());
}

void Layouts::Rename(const QString& name, const QString& newName) {
    const QString written = newName.trimmed().left(longestName);
    if (!Has(name) || written.isEmpty() || Has(written))
        return;
    m_layouts[written] = m_layouts.take(name);
    Write();
}

void Layouts::Remove(const QString& name) {
    if (!Has(name))
        return;
    m_layouts.remove(name);
    Write();
}

QString Layouts::FreeName(const QString& name) const {
    QString free = name;
    for (int i = 2; Has(free); ++i)
        free = QString("%1 (%2)").arg(name).arg(i);
    return free;
}

QString Layouts::Export(const QString& name, const QString& path) const {
    const QJsonObject whole{
        {"corvane", "layout"}, {"version", layoutVersion}, {"name", name}, {"layout", m_layouts[name]}};
    const QByteArray bytes = QJsonDocument(whole).toJson();
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return {};
    return tr("“%1” can't be written: %2").arg(path, file.errorString());
}

QString Layouts::Import(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return tr("“%1” can't be read: %2").arg(path, file.errorString());
    const QJsonObject whole = QJsonDocument::fromJson(file.read(largestFile)).object();
    if (whole["corvane"].toString() != "layout" || !whole["layout"].isObject())
        return tr("“%1” isn't a layout.").arg(path);
    if (whole["version"].toInt() > layoutVersion)
        return tr("“%1” is of a later version of this program.").arg(path);
    QString name = whole["name"].toString().trimmed().left(longestName);
    if (name.isEmpty())
        name = QFileInfo(path).completeBaseName();
    m_layouts[FreeName(name)] = whole["layout"];
    Write();
    return {};
}

} // namespace corvane::desktop
