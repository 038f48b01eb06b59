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
#include <optional>
#include <utility>

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
constexpr int nEnabled = 8; // numbers of states
constexpr int nFocusable = 11;
constexpr int nShowing = 25;
constexpr uint nLabelledBy = 2; // a relation
constexpr int nMostChildren = 40;

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
    // "role: name" of the object and of all below it, each once. What the keyboard reaches and has no name, or a role
    // that says nothing, is among the faults, with the names above it.
    void Read(const Reference& oOf, QStringList& aRead, QStringList& aFaults, const QString& sAbove = {}) const {
        if (aRead.size() > 3000)
            return;
        const QDBusReply<QString> oRole = Call(m_oBus, oOf, sAccessible, "GetRoleName");
        const QString sName = Property(oOf, "Name");
        const QString sHere = sAbove + " > " + oRole.value() + ": " + sName;
        aRead.append(oRole.value() + ": " + sName);
        const QDBusReply<QList<uint>> oStates = Call(m_oBus, oOf, sAccessible, "GetState");
        const uint nStates = oStates.value().value(0);
        static const QStringList aParts{"scroll bar", "table cell", "tree item", "list item", "filler", "frame"};
        const bool bIsControl = (nStates & (1U << nFocusable)) != 0 && (nStates & (1U << nShowing)) != 0;
        const bool bIsVague = oRole.value() == "unknown" || oRole.value() == "invalid" || oRole.value().isEmpty();
        // The name of a combo box is what it shows, and what it is for is the label that it refers to.
        const bool bIsUnlabelled = oRole.value() == "combo box" && !HasLabel(oOf);
        if (bIsControl && !aParts.contains(oRole.value()) && (sName.isEmpty() || bIsVague || bIsUnlabelled))
            aFaults.append(sHere);
        QList<Reference> aChildren = Children(oOf);
        if (aChildren.size() > nMostChildren) // the cells of long tables are alike
            aChildren.resize(nMostChildren);
        for (const Reference& oChild : aChildren)
            Read(oChild, aRead, aFaults, sHere);
    }

    // The first object of that "role: name" that can be seen, below others.
    [[nodiscard]] std::optional<Reference> Find(const Reference& oOf, const QString& sWhat) const {
        const QDBusReply<QString> oRole = Call(m_oBus, oOf, sAccessible, "GetRoleName");
        if (oRole.value() + ": " + Property(oOf, "Name") == sWhat && Has(oOf, nShowing))
            return oOf;
        for (const Reference& oChild : Children(oOf))
            if (const auto oFound = Find(oChild, sWhat))
                return oFound;
        return {};
    }
    // Presses the button or menu entry, or enters the text, as an assistive program does. False when it can't be.
    [[nodiscard]] bool Act(const Reference& oOf, const QString& sText) const {
        if (!sText.isEmpty())
            return Call(m_oBus, oOf, "org.a11y.atspi.EditableText", "SetTextContents", {sText}).type() ==
                   QDBusMessage::ReplyMessage;
        auto oPress =
            QDBusMessage::createMethodCall(oOf.sProgram, oOf.oPath.path(), "org.a11y.atspi.Action", "DoAction");
        oPress.setArguments({0});
        return Has(oOf, nEnabled) && m_oBus.send(oPress); // a dialog that it opens answers at its end
    }
    [[nodiscard]] QString Property(const Reference& oOf, const QString& sName) const {
        const QDBusReply<QVariant> oValue =
            Call(m_oBus, oOf, "org.freedesktop.DBus.Properties", "Get", {QString(sAccessible), sName});
        return oValue.value().toString();
    }

private:
    [[nodiscard]] bool Has(const Reference& oOf, int nState) const {
        const QDBusReply<QList<uint>> oStates = Call(m_oBus, oOf, sAccessible, "GetState");
        return (oStates.value().value(0) & (1U << nState)) != 0;
    }
    [[nodiscard]] bool HasLabel(const Reference& oOf) const {
        const QDBusMessage oReply = Call(m_oBus, oOf, sAccessible, "GetRelationSet");
        if (oReply.arguments().isEmpty())
            return false;
        bool bHasLabel = false;
        const auto oRelations = oReply.arguments().constFirst().value<QDBusArgument>();
        oRelations.beginArray();
        while (!oRelations.atEnd()) {
            uint nRelation = 0;
            QList<Reference> aTo;
            oRelations.beginStructure();
            oRelations >> nRelation >> aTo;
            oRelations.endStructure();
            bHasLabel = bHasLabel || (nRelation == nLabelledBy && !aTo.isEmpty());
        }
        oRelations.endArray();
        return bHasLabel;
    }

    QDBusConnection m_oBus;
};

const Reference oDesktop{"org.a11y.atspi.Registry", QDBusObjectPath("/org/a11y/atspi/accessible/root")};

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

// A display, and the bus of assistive programs.
class AccessibilityBridge : public ::testing::Test {
protected:
    AccessibilityBridge() {
        qDBusRegisterMetaType<Reference>();
        qDBusRegisterMetaType<QList<Reference>>();
        for (const char* sVariable : {"XDG_STATE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            m_oEnvironment.insert(sVariable, m_oFolder.path());
        m_oEnvironment.insert("DISPLAY", ":" + QString::fromLatin1(m_oDisplay.FirstLine()));
        m_oEnvironment.insert("QT_QPA_PLATFORM", "xcb");
        m_oEnvironment.insert("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
        const Reference oLauncher{"org.a11y.Bus", QDBusObjectPath("/org/a11y/bus")};
        const QDBusReply<QString> oAddress =
            Call(QDBusConnection::sessionBus(), oLauncher, "org.a11y.Bus", "GetAddress");
        EXPECT_TRUE(oAddress.isValid()) << oAddress.error().message().toStdString();
        m_sAddress = oAddress.value();
    }

    // Acts of an assistive program: "role: name" and the text to enter, or none to press it; and what is read then.
    struct Stage {
        QList<std::pair<QString, QString>> aActs;
        QStringList aExpected;
    };
    // Reads the application that has been started so until all of that is there; nothing in it may be at fault.
    void ExpectToRead(const QStringList& aArguments, const QList<Stage>& aStages) {
        SCOPED_TRACE(aArguments.join(' ').toStdString());
        const Program oApplication(CORVANE_DESKTOP_PROGRAM, QStringList(CORVANE_STUDIES) + aArguments, m_oEnvironment);
        const Reader oReader(QDBusConnection::connectToBus(m_sAddress, "accessibility"));
        for (const Stage& oStage : aStages) {
            for (const auto& [sWhat, sText] : oStage.aActs)
                ExpectToAct(oReader, sWhat, sText);
            ExpectToRead(oReader, oStage.aExpected);
        }
    }
    static void ExpectToAct(const Reader& oReader, const QString& sWhat, const QString& sText) {
        QElapsedTimer oTime;
        oTime.start();
        for (bool bDone = false; !bDone && oTime.elapsed() < nLongestWait / 2;) {
            const auto oFound = oReader.Find(oDesktop, sWhat);
            bDone = oFound && oReader.Act(*oFound, sText);
            if (bDone)
                return;
            QThread::msleep(200);
        }
        ADD_FAILURE() << sWhat.toStdString() << " isn't there or can't be used";
    }
    static void ExpectToRead(const Reader& oReader, const QStringList& aExpected) {
        QStringList aRead, aFaults, aMissing;
        QElapsedTimer oTime;
        oTime.start();
        do {
            QThread::msleep(200);
            aRead.clear();
            aFaults.clear();
            for (const Reference& oProgram : oReader.Children(oDesktop))
                oReader.Read(oProgram, aRead, aFaults);
            aMissing.clear();
            for (const QString& sExpected : aExpected)
                if (!aRead.contains(sExpected))
                    aMissing.append(sExpected);
        } while (!aMissing.isEmpty() && oTime.elapsed() < nLongestWait / 2);
        EXPECT_TRUE(aMissing.isEmpty()) << aMissing.join('\n').toStdString() << "\nisn't among:\n"
                                        << aRead.join('\n').toStdString();
        EXPECT_TRUE(aFaults.isEmpty()) << "without a name or role:\n" << aFaults.join('\n').toStdString();
        for (const char* sNameless : {"push button: ", "menu item: ", "text: ", "page tab: ", "check box: ", "tree: "})
            EXPECT_FALSE(aRead.contains(sNameless)) << "there is a nameless " << sNameless << "\n"
                                                    << aRead.join('\n').toStdString();
    }

    const QTemporaryDir m_oFolder;
    QProcessEnvironment m_oEnvironment = QProcessEnvironment::systemEnvironment();
    Program m_oDisplay{CORVANE_XVFB, {"-displayfd", "1", "-screen", "0", "1280x900x24"}, m_oEnvironment};
    QString m_sAddress;
};

TEST_F(AccessibilityBridge, ReadsMenusToolbarsExplorerAndDialogsWithRolesAndNames) {
    ExpectToRead({"--choose", "Tools.Shortcuts"},
                 {{{},
                   {"menu item: File", "menu item: Tools", "tool bar: Standard", "push button: Import",
                    "tree item: Studies", "text: Search", "push button: Assign",
                    "status bar: ", "dialog: Keyboard Shortcuts", "push button: Import a table into a study"}}});
}

TEST_F(AccessibilityBridge, ReadsThePagesOfTheSampleWithRolesAndNames) {
    const QStringList aOpen{"--answer", QString(CORVANE_STUDIES) + "/Data/penguins.csv", "--choose", "File.Open"};
    struct Page {
        QStringList aArguments;
        QStringList aExpected;
    };
    const Page aPages[] = {
        {{},
         {"label: Rows where", "combo box: Any column", "text: contains", "table: Rows", "page tab: Columns",
          "page tab: penguins.csv", "label: Rows that are shown: 344 rows"}},
        {{"--page", "2"}, {"label: By", "combo box: None", "table: Statistics of text columns"}},
        {{"--choose", "Analysis.Summary"}, {"label: By", "combo box: None", "table: Statistics of numeric columns"}},
        {{"--choose", "Analysis.Histogram"},
         {"label: Column", "combo box: bill length (mm)", "spin box: Bins", "graphic: Chart"}},
        {{"--choose", "Analysis.Scatter"}, {"label: X", "label: Y", "combo box: bill depth (mm)", "graphic: Chart"}},
        {{"--choose", "Analysis.Comparison"}, {"label: Group by", "combo box: species", "combo box: Chinstrap"}},
        {{"--choose", "Analysis.Bootstrap"}, {"spin box: Resamples", "push button: Run"}},
        {{"--choose", "Analysis.Report"}, {"menu item: Analysis"}},
        {{"--choose", "File.Export"}, {"label: Format", "push button: Save"}},
        {{"--choose", "File.Import"}, {"push button: Next"}},
        {{"--choose", "Tools.Preferences"}, {"spin box: Decimal places"}},
    };
    for (const Page& oPage : aPages)
        ExpectToRead(aOpen + oPage.aArguments, {{{}, oPage.aExpected}});
}

TEST_F(AccessibilityBridge, GoesThroughTheWizardAndThePropertiesOfTheSample) {
    const QString sNext = "push button: Next";
    ExpectToRead({"--choose", "File.Import"},
                 {{{{"text: File", QString(CORVANE_STUDIES) + "/Data/penguins.csv"}}, {"label: Contents"}},
                  {{{sNext, {}}}, {"label: Delimiter", "spin box: Lines to skip", "table: Columns of the file"}},
                  {{{sNext, {}}}, {"combo box: New study", "text: Data set"}},
                  {{{"push button: Finish", {}}}, {"tree item: penguins.csv", "table: Rows"}},
                  {{{"menu item: Data", {}}, {"menu item: Properties…\tAlt+Return", {}}},
                   {"dialog: Properties of penguins.csv", "text: Name", "text: Notes", "page tab: Columns"}}});
    ExpectToRead({"--choose", "File.NewStudy", "--choose", "Data.Properties"},
                 {{{}, {"dialog: Properties of Study 2", "text: Name", "text: Notes"}}});
}

} // namespace
} // namespace corvane::desktop

int main(int argc, char** argv) {
    QCoreApplication oQt(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
