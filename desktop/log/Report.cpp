#include "desktop/log/Report.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QScreen>
#include <QSysInfo>

namespace corvane::desktop {

namespace {

constexpr qsizetype shortestName = 2; // "a" would be replaced everywhere

void ReplaceWord(QString& text, const QString& word, const QString& with) {
    if (word.size() < shortestName)
        return;
    text.replace(QRegularExpression("(?<![\\w])" + QRegularExpression::escape(word) + "(?![\\w])",
                                    QRegularExpression::CaseInsensitiveOption),
                 with);
}

// Which files these are, whatever their dates: two installations agree where the sums do.
QString FilesIn(const QString& folderPath) {
    QString text;
    const QDir folder(folderPath);
    for (const QFileInfo& info : folder.entryInfoList(QDir::Files, QDir::Name)) {
        QFile file(info.filePath());
        QCryptographicHash hash(QCryptographicHash::Sha256);
        const bool read = file.open(QIODevice::ReadOnly) && hash.addData(&file);
        text += QString("  %1  %2 bytes  %3\n")
                    .arg(info.fileName())
                    .arg(info.size())
                    .arg(read ? QString::fromLatin1(hash.result().toHex().left(16)) : QString("can't be read"));
    }
    return text.isEmpty() ? QString("  none\n") : text;
}

} // namespace

QString WithoutUserData(QString text) {
    if (const QString home = QDir::homePath(); home.size() > 1) // not of one whose name begins with this one
        text.replace(QRegularExpression(QRegularExpression::escape(home) + "(?![\\w.-])"), "~");
    ReplaceWord(text, qEnvironmentVariable("USER"), "user");
    const QString host = QSysInfo::machineHostName();
    for (const QString& name : {host, host.section('.', 0, 0)}) // with its domain, and alone
        ReplaceWord(text, name, "host");
    return text;
}

QString ReportText(const ReportParts& parts) {
    QString text = QString("Report of %1, %2\n\n").arg(parts.name, QDateTime::currentDateTime().toString(Qt::ISODate));
    text += QString("Corvane %1, Qt %2, %3\n").arg(CORVANE_VERSION, qVersion(), QSysInfo::buildAbi());
    text += QString("%1, kernel %2, %3\n")
                .arg(QSysInfo::prettyProductName(), QSysInfo::kernelVersion(), QGuiApplication::platformName());
    for (const QScreen* screen : QGuiApplication::screens())
        text += QString("Screen %1 x %2, factor %3\n")
                    .arg(screen->size().width())
                    .arg(screen->size().height())
                    .arg(screen->devicePixelRatio());
    text += "Left out: " + (parts.leftOut.isEmpty() ? QString("nothing") : parts.leftOut.join(", ")) + "\n";
    text += "\nDefinitions\n" + FilesIn(parts.folder + "/Services");
    text += "\nPlug-ins\n" + FilesIn(parts.folder + "/plugins");
    const auto lines = parts.logLines.size();
    text += "\nLog, " + (lines == 1 ? QString("the latest line") : QString("the latest %1 lines").arg(lines)) + "\n";
    for (const QString& line : parts.logLines)
        text += "  " + line + "\n";
    return WithoutUserData(text);
}

} // namespace corvane::desktop
