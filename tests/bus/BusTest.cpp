// What an assistive program reads of a running application, over the real bus. Runs in a session bus of its own.
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>

// One object of a program on the bus.
struct Reference {
    QString sProgram;
    QDBusObjectPath oPath;
};
Q_DECLARE_METATYPE(Reference)

QDBusArgument& operator<<(QDBusArgument& oArgument, const Reference& oReference) {
    oArgument.beginStructure();
    oArgument << oReference.sProgram << oReference.oPath;
    oArgument.endStructure();
    return oArgument;
}

const QDBusArgument& operator>>(const QDBusArgument& oArgument, Reference& oReference) {
    oArgument.beginStructure();
    oArgument >> oReference.sProgram >> oReference.oPath;
    oArgument.endStructure();
    return oArgument;
}

namespace corvane::desktop {
namespace {

constexpr int nLongestWait = 60000;

constexpr const char* sAccessible = "org.a11y.atspi.Accessible";

// The answer of an object, which isn't asked what else it could do.
QDBusMessage Call(const QDBusConnection& oBus, const Reference& oOf, const QString& sInterface, const QString& sMethod,
                  const QVariantList& aArguments = {}) {
    auto oCall = QDBusMessage::createMethodCall(oOf.sProgram, oOf.oPath.path(), sInterface, sMethod);
    oCall.setArguments(aArguments);
    return oBus.call(oCall);
}

class Reader {
public:
    explicit Reader(const QDBusConnection& oBus) : m_oBus(oBus) {}

    [[nodiscard]] QList<Reference> Children(const Reference& oOf) const {
        const QDBusReply<QList<Reference>> oReply = Call(m_oBus, oOf, sAccessible, "GetChildren");
        return oReply.isValid() ? oReply.value() : QList<Reference>();
    }
    // "role: name" of the object and of all below it, each once.
    void Read(const Reference& oOf, QStringList& aRead) const {
        if (aRead.size() > 3000)
            return;
        const QDBusReply<QString> oRole = Call(m_oBus, oOf, sAccessible, "GetRoleName");
        const QDBusReply<QVariant> oName =
            Call(m_oBus, oOf, "org.freedesktop.DBus.Properties", "Get", {QString(sAccessible), "Name"});
        aRead.append(oRole.value() + ": " + oName.value().toString());
        for (const Reference& oChild : Children(oOf))
            Read(oChild, aRead);
    }

private:
    QDBusConnection m_oBus;
};

// A program that ends with the test.
class Program {
public:
    Program(const QString& sPath, const QStringList& aArguments, const QProcessEnvironment& oEnvironment) {
        m_oProcess.setProcessEnvironment(oEnvironment);
        m_oProcess.start(sPath, aArguments);
    }
    ~Program() {
        m_oProcess.kill();
        m_oProcess.waitForFinished();
    }
    [[nodiscard]] QByteArray FirstLine() {
        while (!m_oProcess.canReadLine() && m_oProcess.waitForReadyRead(nLongestWait)) {
        }
        return m_oProcess.readLine().trimmed();
    }

private:
    QProcess m_oProcess;
};

TEST(AccessibilityBridge, ReadsMenusToolbarsExplorerAndPaletteWithRolesAndNames) {
    qDBusRegisterMetaType<Reference>();
    qDBusRegisterMetaType<QList<Reference>>();
    const QTemporaryDir oFolder;
    for (const char* sVariable : {"XDG_STATE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(sVariable, oFolder.path().toUtf8());
    auto oEnvironment = QProcessEnvironment::systemEnvironment();
    Program oDisplay(CORVANE_XVFB, {"-displayfd", "1", "-screen", "0", "1280x900x24"}, oEnvironment);
    const QByteArray sDisplay = oDisplay.FirstLine();
    ASSERT_FALSE(sDisplay.isEmpty()) << "there is no display";
    oEnvironment.insert("DISPLAY", ":" + QString::fromLatin1(sDisplay));
    oEnvironment.insert("QT_QPA_PLATFORM", "xcb");
    oEnvironment.insert("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    const Program oApplication(CORVANE_DESKTOP_PROGRAM, {CORVANE_STUDIES, "--choose", "Tools.Shortcuts"}, oEnvironment);

    const Reference oLauncher{"org.a11y.Bus", QDBusObjectPath("/org/a11y/bus")};
    const QDBusReply<QString> oAddress = Call(QDBusConnection::sessionBus(), oLauncher, "org.a11y.Bus", "GetAddress");
    ASSERT_TRUE(oAddress.isValid()) << oAddress.error().message().toStdString();
    const Reader oReader(QDBusConnection::connectToBus(oAddress.value(), "accessibility"));
    const Reference oDesktop{"org.a11y.atspi.Registry", QDBusObjectPath("/org/a11y/atspi/accessible/root")};
    const QStringList aExpected{"menu item: File",     "menu item: Tools",   "tool bar: Standard",
                                "push button: Import", "tree item: Studies", "text: Search",
                                "push button: Assign", "status bar: ",       "dialog: Keyboard Shortcuts"};
    QStringList aRead;
    QStringList aMissing;
    QElapsedTimer oTime;
    oTime.start();
    do {
        QThread::msleep(200);
        aRead.clear();
        for (const Reference& oProgram : oReader.Children(oDesktop))
            oReader.Read(oProgram, aRead);
        aMissing.clear();
        for (const QString& sExpected : aExpected)
            if (!aRead.contains(sExpected))
                aMissing.append(sExpected);
    } while (!aMissing.isEmpty() && oTime.elapsed() < nLongestWait / 2);
    EXPECT_TRUE(aMissing.isEmpty()) << aMissing.join('\n').toStdString() << "\nisn't among:\n"
                                    << aRead.join('\n').toStdString();
    for (const char* sNameless : {"push button: ", "menu item: ", "text: ", "page tab: ", "check box: ", "tree: "})
        EXPECT_FALSE(aRead.contains(sNameless)) << "there is a nameless " << sNameless << "\n"
                                                << aRead.join('\n').toStdString();
}

} // namespace
} // namespace corvane::desktop

int main(int argc, char** argv) {
    QCoreApplication oQt(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
