// An application folder for the Qt host that is gone after the test, with the user's folders beside it.
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace corvane::desktop {

class AppFolder {
public:
    AppFolder() {
        for (const char* variable : {"XDG_STATE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            qputenv(variable, m_folder.path().toUtf8());
        for (const char* folder : {"App/Services", "App/Images", "App/plugins"})
            QDir(m_folder.path()).mkpath(folder);
        QFile::copy(CORVANE_SHIPPED_SCHEMA, Path("App/Services/Service.xdr"));
    }

    [[nodiscard]] QString Path(const QString& name) const { return m_folder.path() + "/" + name; }
    [[nodiscard]] std::string App() const { return Path("App").toStdString(); }
    // Where the host keeps things for this application.
    [[nodiscard]] QString StateFile(const QString& name) const { return Path("corvane/App/" + name); }

    void Write(const QString& name, const QByteArray& text) const {
        QDir().mkpath(QFileInfo(Path(name)).path());
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    [[nodiscard]] QByteArray Read(const QString& name) const {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void Service(const QString& name, const QString& progID, const QString& content,
                 const QString& attributes = {}) const {
        Write("App/Services/" + name + ".xml",
              QString("<Service Name=\"%1\" ProgID=\"%2\" Active=\"true\" %3>\n%4</Service>\n")
                  .arg(name, progID, attributes, content)
                  .toUtf8());
    }
    // The plug-in of the tests under that name.
    void Plugin(const QString& name) const {
        ASSERT_TRUE(QFile::copy(CORVANE_TROUBLE_PLUGIN, Path("App/plugins/lib" + name + ".so")));
    }

private:
    QTemporaryDir m_folder;
};

constexpr const char* shellContent = R"(<ActionItems>
<ActionItem Name="Navigation" Action="ViewNavigation" PassActionItemParam="true" Checked="false"/>
<ActionItem Name="View"/><ActionItem Name="File"/>
<ActionItem Name="Bar" Action="EnableStatusBar" PassActionItemParam="true" Checked="true"/>
</ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="File" PositionOrder="1" Caption="#File"/>
<MenuItem Type="MenuTitle" ActionItem="View" PositionOrder="2" Caption="#View"/>
<MenuItem Type="MenuItem" ActionItem="Navigation" PositionOrder="1" Path="View" Caption="#Explorer"/>
<MenuItem Type="MenuItem" ActionItem="Bar" PositionOrder="2" Path="View" Caption="#Status Bar"/>
</Menus>)";

} // namespace corvane::desktop
