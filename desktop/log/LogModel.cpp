#include "desktop/log/LogModel.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

namespace corvane::desktop {

namespace {

constexpr int earlierFiles = 4;

QString Plain(const QString& escaped) {
    QString text;
    text.reserve(escaped.size());
    for (qsizetype i = 0; i < escaped.size(); ++i) {
        if (escaped[i] != '\\' || i + 1 == escaped.size()) {
            text += escaped[i];
            continue;
        }
        const QChar c = escaped[++i];
        text += c == 'n' ? QChar('\n') : c == 't' ? QChar('\t') : c == 'r' ? QChar('\r') : c;
    }
    return text;
}

// The present file is errors.log, the one before it errors.1.log.
QStringList FilesOf(const QString& logFile) {
    QStringList files;
    const QFileInfo info(logFile);
    for (int i = earlierFiles; i > 0; --i)
        files.append(QString("%1/%2.%3.%4").arg(info.path(), info.completeBaseName()).arg(i).arg(info.suffix()));
    files.append(logFile);
    return files;
}

} // namespace

LogLine ParseLogLine(const QString& line) {
    enum Field { Time, App, Module, Procedure, Number, Source, Description, Context, FieldCount };
    const QStringList fields = line.split('\t');
    if (fields.size() < FieldCount)
        return {{}, {}, {}, line, {}, line};
    return {QString(fields[Time]).replace('T', ' ').left(19),
            Plain(fields[Module]) + "." + Plain(fields[Procedure]),
            fields[Number],
            Plain(fields[Description]),
            Plain(fields[Context]),
            line};
}

LogModel::LogModel(QString logFile, QObject* parent) : QAbstractTableModel(parent), m_logFile(std::move(logFile)) {
    Read();
}

void LogModel::Read() {
    if (m_logFile.isEmpty())
        return;
    QString stamp;
    for (const QString& file : FilesOf(m_logFile)) {
        const QFileInfo info(file);
        stamp += QString("%1 %2;").arg(info.size()).arg(info.lastModified().toMSecsSinceEpoch());
    }
    if (stamp == m_stamp)
        return;
    m_stamp = stamp;
    beginResetModel();
    m_lines.clear();
    for (const QString& name : FilesOf(m_logFile)) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        for (const QString& line : QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts))
            m_lines.push_back(ParseLogLine(line));
    }
    endResetModel();
}

int LogModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

int LogModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant LogModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const LogLine& line = m_lines[static_cast<std::size_t>(index.row())];
    switch (index.column()) {
    case Time:
        return line.time;
    case Text:
        return line.text;
    case Where:
        return line.where;
    case Number:
        return line.number;
    default:
        return line.context;
    }
}

QVariant LogModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Time:
        return tr("Time");
    case Text:
        return tr("Message");
    case Where:
        return tr("Source");
    case Number:
        return tr("Number");
    default:
        return tr("Context");
    }
}

} // namespace corvane::desktop

#include "moc_LogModel.cpp"
