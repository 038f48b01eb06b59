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

constexpr qsizetype nShortestName = 3; // "a" would be replaced everywhere

void ReplaceWord(QString& sText, const QString& sWord, const QString& sWith) {
    if (sWord.size() < nShortestName)
        return;
    sText.replace(QRegularExpression("(?<![\\w])" + QRegularExpression::escape(sWord) + "(?![\\w])",
                                     QRegularExpression::CaseInsensitiveOption),
                  sWith);
}

// Which files these are, whatever their dates: two installations agree where the sums do.
QString FilesIn(const QString& sFolder) {
    QString sText;
    const QDir oFolder(sFolder);
    for (const QFileInfo& oInfo : oFolder.entryInfoList(QDir::Files, QDir::Name)) {
        QFile oFile(oInfo.filePath());
        QCryptographicHash oHash(QCryptographicHash::Sha256);
        const bool bRead = oFile.open(QIODevice::ReadOnly) && oHash.addData(&oFile);
        sText += QString("  %1  %2 bytes  %3\n")
                     .arg(oInfo.fileName())
                     .arg(oInfo.size())
                     .arg(bRead ? QString::fromLatin1(oHash.result().toHex().left(16)) : QString("can't be read"));
    }
    return sText.isEmpty() ? QString("  none\n") : sText;
}

} // namespace

QString WithoutPerson(QString sText) {
    if (const QString sHome = QDir::homePath(); sHome.size() > 1)
        sText.replace(sHome, "~");
    ReplaceWord(sText, qEnvironmentVariable("USER"), "user");
    ReplaceWord(sText, QSysInfo::machineHostName(), "host");
    return sText;
}

QString ReportText(const ReportParts& oParts) {
    QString sText =
        QString("Report of %1, %2\n\n").arg(oParts.sName, QDateTime::currentDateTime().toString(Qt::ISODate));
    sText += QString("Corvane %1, Qt %2, %3\n").arg(CORVANE_VERSION, qVersion(), QSysInfo::buildAbi());
    sText += QString("%1, kernel %2, %3\n")
                 .arg(QSysInfo::prettyProductName(), QSysInfo::kernelVersion(), QGuiApplication::platformName());
    for (const QScreen* pScreen : QGuiApplication::screens())
        sText += QString("Screen %1 x %2, factor %3\n")
                     .arg(pScreen->size().width())
                     .arg(pScreen->size().height())
                     .arg(pScreen->devicePixelRatio());
    sText += "Left out: " + (oParts.aLeftOut.isEmpty() ? QString("nothing") : oParts.aLeftOut.join(", ")) + "\n";
    sText += "\nDefinitions\n" + FilesIn(oParts.sFolder + "/Services");
    sText += "\nPlug-ins\n" + FilesIn(oParts.sFolder + "/plugins");
    const auto nLines = oParts.aLogLines.size();
    sText += "\nLog, " + (nLines == 1 ? QString("the latest line") : QString("the latest %1 lines").arg(nLines)) + "\n";
    for (const QString& sLine : oParts.aLogLines)
        sText += "  " + sLine + "\n";
    return WithoutPerson(sText);
}

} // namespace corvane::desktop
