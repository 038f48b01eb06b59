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
        for (const char* sVariable : {"XDG_STATE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            qputenv(sVariable, m_oFolder.path().toUtf8());
        for (const char* sFolder : {"App/Services", "App/Images", "App/plugins"})
            QDir(m_oFolder.path()).mkpath(sFolder);
        QFile::copy(CORVANE_SHIPPED_SCHEMA, Path("App/Services/Service.xdr"));
    }

    [[nodiscard]] QString Path(const QString& sName) const { return m_oFolder.path() + "/" + sName; }
    [[nodiscard]] std::string App() const { return Path("App").toStdString(); }
    // Where the host keeps things for this application.
    [[nodiscard]] QString Kept(const QString& sName) const { return Path("corvane/App/" + sName); }

    void Write(const QString& sName, const QByteArray& aText) const {
        QDir().mkpath(QFileInfo(Path(sName)).path());
        QFile oFile(Path(sName));
        ASSERT_TRUE(oFile.open(QIODevice::WriteOnly));
        oFile.write(aText);
    }
    [[nodiscard]] QByteArray Read(const QString& sName) const {
        QFile oFile(Path(sName));
        return oFile.open(QIODevice::ReadOnly) ? oFile.readAll() : QByteArray();
    }
    void Service(const QString& sName, const QString& sProgID, const QString& sContent,
                 const QString& sAttributes = {}) const {
        Write("App/Services/" + sName + ".xml",
              QString("<Service Name=\"%1\" ProgID=\"%2\" Active=\"true\" %3>\n%4</Service>\n")
                  .arg(sName, sProgID, sAttributes, sContent)
                  .toUtf8());
    }
    // The plug-in of the tests under that name.
    void Plugin(const QString& sName) const {
        ASSERT_TRUE(QFile::copy(CORVANE_TROUBLE_PLUGIN, Path("App/plugins/lib" + sName + ".so")));
    }

private:
    QTemporaryDir m_oFolder;
};

constexpr const char* sShellContent = R"(<ActionItems>
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
