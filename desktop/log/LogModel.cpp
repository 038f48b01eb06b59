#include "desktop/log/LogModel.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

namespace corvane::desktop {

namespace {

constexpr int nEarlierFiles = 4;

QString Plain(const QString& sEscaped) {
    QString sText;
    sText.reserve(sEscaped.size());
    for (qsizetype i = 0; i < sEscaped.size(); ++i) {
        if (sEscaped[i] != '\\' || i + 1 == sEscaped.size()) {
            sText += sEscaped[i];
            continue;
        }
        const QChar c = sEscaped[++i];
        sText += c == 'n' ? QChar('\n') : c == 't' ? QChar('\t') : c == 'r' ? QChar('\r') : c;
    }
    return sText;
}

// The present file is errors.log, the one before it errors.1.log.
QStringList FilesOf(const QString& sLogFile) {
    QStringList aFiles;
    const QFileInfo oInfo(sLogFile);
    for (int i = nEarlierFiles; i > 0; --i)
        aFiles.append(QString("%1/%2.%3.%4").arg(oInfo.path(), oInfo.completeBaseName()).arg(i).arg(oInfo.suffix()));
    aFiles.append(sLogFile);
    return aFiles;
}

} // namespace

LogLine ParseLogLine(const QString& sLine) {
    enum Field { Time, App, Module, Procedure, Number, Source, Description, Context, FieldCount };
    const QStringList aFields = sLine.split('\t');
    if (aFields.size() < FieldCount)
        return {{}, {}, {}, sLine, {}, sLine};
    return {QString(aFields[Time]).replace('T', ' ').left(19),
            Plain(aFields[Module]) + "." + Plain(aFields[Procedure]),
            aFields[Number],
            Plain(aFields[Description]),
            Plain(aFields[Context]),
            sLine};
}

LogModel::LogModel(QString sLogFile, QObject* pParent) : QAbstractTableModel(pParent), m_sLogFile(std::move(sLogFile)) {
    Read();
}

void LogModel::Read() {
    if (m_sLogFile.isEmpty())
        return;
    QString sStamp;
    for (const QString& sFile : FilesOf(m_sLogFile)) {
        const QFileInfo oInfo(sFile);
        sStamp += QString("%1 %2;").arg(oInfo.size()).arg(oInfo.lastModified().toMSecsSinceEpoch());
    }
    if (sStamp == m_sStamp)
        return;
    m_sStamp = sStamp;
    beginResetModel();
    m_aLines.clear();
    for (const QString& sName : FilesOf(m_sLogFile)) {
        QFile oFile(sName);
        if (!oFile.open(QIODevice::ReadOnly))
            continue;
        for (const QString& sLine : QString::fromUtf8(oFile.readAll()).split('\n', Qt::SkipEmptyParts))
            m_aLines.push_back(ParseLogLine(sLine));
    }
    endResetModel();
}

int LogModel::rowCount(const QModelIndex& oParent) const {
    return oParent.isValid() ? 0 : static_cast<int>(m_aLines.size());
}

int LogModel::columnCount(const QModelIndex& oParent) const {
    return oParent.isValid() ? 0 : ColumnCount;
}

QVariant LogModel::data(const QModelIndex& oIndex, int nRole) const {
    if (!oIndex.isValid() || (nRole != Qt::DisplayRole && nRole != Qt::ToolTipRole))
        return {};
    const LogLine& oLine = m_aLines[static_cast<std::size_t>(oIndex.row())];
    switch (oIndex.column()) {
    case Time:
        return oLine.sTime;
    case Text:
        return oLine.sText;
    case Where:
        return oLine.sWhere;
    case Number:
        return oLine.sNumber;
    default:
        return oLine.sContext;
    }
}

QVariant LogModel::headerData(int nSection, Qt::Orientation eOrientation, int nRole) const {
    if (eOrientation != Qt::Horizontal || nRole != Qt::DisplayRole)
        return {};
    switch (nSection) {
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
