// An application's folder for a test, and a user's folders, which are gone afterwards.
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <string>

namespace corvane::desktop {

class ApplicationFolder {
public:
    // Begins with a permissive schema and a definition of the shell: the title View with Explorer, Status Bar and Bad,
    // whose procedure doesn't exist, and one explorer item.
    ApplicationFolder() {
        for (const char* sVariable : {"XDG_STATE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            qputenv(sVariable, m_oFolder.path().toUtf8());
        QDir(m_oFolder.path()).mkpath("App/Services");
        QDir(m_oFolder.path()).mkpath("App/Images");
        Write("Service.xdr", sSchema);
        Write("shell.xml", sShell);
    }
    void Write(const QString& sName, const char* sText) {
        QFile oFile(Services() + "/" + sName);
        ASSERT_TRUE(oFile.open(QIODevice::WriteOnly));
        oFile.write(sText);
    }
    [[nodiscard]] QString Services() const { return m_oFolder.path() + "/App/Services"; }
    [[nodiscard]] std::string App() const { return (m_oFolder.path() + "/App").toStdString(); }

private:
    static constexpr const char* sSchema =
        R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema"><xs:element name="Service">
<xs:complexType><xs:sequence><xs:any minOccurs="0" maxOccurs="unbounded" processContents="skip"/></xs:sequence>
<xs:anyAttribute processContents="skip"/></xs:complexType></xs:element></xs:schema>)";
    static constexpr const char* sShell =
        R"(<Service Name="Shell" ProgID="Corvane.Framework" Active="true"><ActionItems>
<ActionItem Name="Navigation" Action="ViewNavigation" PassActionItemParam="true" Checked="false"/>
<ActionItem Name="View"/>
<ActionItem Name="Bar" Action="EnableStatusBar" PassActionItemParam="true" Checked="true"/>
<ActionItem Name="Bad" Action="NoSuchProcedure"/>
</ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="View" PositionOrder="1" Caption="#View"/>
<MenuItem Type="MenuItem" ActionItem="Navigation" PositionOrder="1" Path="View" Caption="#Explorer"/>
<MenuItem Type="MenuItem" ActionItem="Bar" PositionOrder="2" Path="View" Caption="#Status Bar"/>
<MenuItem Type="MenuItem" ActionItem="Bad" PositionOrder="3" Path="View" Caption="#Bad"/>
</Menus><ExplorerItems><ExplorerItem Name="Root" Type="Folder"/></ExplorerItems></Service>)";
    QTemporaryDir m_oFolder;
};

} // namespace corvane::desktop
