#include "desktop/platform/Identity.h"

#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <filesystem>

namespace corvane::desktop {

namespace {

std::string NameOfFolder(const std::string& folder) {
    std::error_code error;
    const auto canonical = std::filesystem::canonical(folder.empty() ? "." : folder, error);
    return canonical.filename().string();
}

} // namespace

void Identity::Announce() const {
    if (!id.empty()) {
        QGuiApplication::setDesktopFileName(QString::fromStdString(id));
        qputenv("RESOURCE_NAME", QByteArray::fromStdString(id)); // the first part of WM_CLASS; the name is the second
    }
    QGuiApplication::setApplicationName(QString::fromStdString(name));
    if (!icon.isNull())
        QGuiApplication::setWindowIcon(icon);
}

Identity ReadIdentity(const std::string& applicationFolder) {
    Identity identity;
    identity.name = NameOfFolder(applicationFolder);
    const QString folder = QString::fromStdString(applicationFolder);
    QFile file(folder + "/about.json");
    if (!file.exists())
        return identity;
    const auto wrong = [&](const QString& why) { identity.problem = (file.fileName() + ": " + why).toStdString(); };
    if (!file.open(QIODevice::ReadOnly)) {
        wrong("the file can't be read: " + file.errorString());
        return identity;
    }
    QJsonParseError error{};
    const QJsonObject about = QJsonDocument::fromJson(file.readAll(), &error).object();
    if (error.error != QJsonParseError::NoError) {
        wrong(error.errorString() + " at byte " + QString::number(error.offset));
        return identity;
    }
    if (const QString name = about["name"].toString(); !name.trimmed().isEmpty())
        identity.name = name.trimmed().toStdString();
    // It names a folder and a file: nothing that leaves either.
    static const QRegularExpression form(QRegularExpression::anchoredPattern(R"([A-Za-z][\w-]*(\.[A-Za-z][\w-]*)+)"));
    if (const QString id = about["id"].toString(); form.match(id).hasMatch())
        identity.id = id.toStdString();
    else if (!id.isEmpty())
        wrong("the id \"" + id + "\" isn't of the form \"org.example.Birds\"");
    identity.version = about["version"].toString().trimmed().toStdString();
    identity.license = about["license"].toString().trimmed().toStdString();
    if (const QString icon = about["icon"].toString(); !icon.isEmpty()) {
        const QString path = folder + "/Images/" + icon;
        if (QFile::exists(path))
            identity.icon = QIcon(path);
        else
            wrong("there is no picture \"" + path + "\"");
    }
    return identity;
}

} // namespace corvane::desktop
