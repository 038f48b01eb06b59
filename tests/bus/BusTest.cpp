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
    QString program;
    QDBusObjectPath path;
};
Q_DECLARE_METATYPE(Reference)

QDBusArgument& operator<<(QDBusArgument& argument, const Reference& reference) {
    argument.beginStructure();
    argument << reference.program << reference.path;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Reference& reference) {
    argument.beginStructure();
    argument >> reference.program >> reference.path;
    argument.endStructure();
    return argument;
}

namespace corvane::desktop {
namespace {

constexpr int longestWait = 60000;
constexpr int enabled = 8; // numbers of states
constexpr int focusable = 11;
constexpr int showing = 25;
constexpr uint labelledBy = 2; // a relation
constexpr int mostChildren = 40;

constexpr const char* accessible = "org.a11y.atspi.Accessible";

// The answer of an object, which isn't asked what else it could do.
QDBusMessage Call(const QDBusConnection& bus, const Reference& of, const QString& interface, const QString& method,
                  const QVariantList& arguments = {}) {
    auto call = QDBusMessage::createMethodCall(of.program, of.path.path(), interface, method);
    call.setArguments(arguments);
    return bus.call(call);
}

class Reader {
public:
    explicit Reader(const QDBusConnection& bus) : m_bus(bus) {}

    [[nodiscard]] QList<Reference> Children(const Reference& of) const {
        const QDBusReply<QList<Reference>> reply = Call(m_bus, of, accessible, "GetChildren");
        return reply.isValid() ? reply.value() : QList<Reference>();
    }
    // "role: name" of the object and of all below it, each once. What the keyboard reaches and has no name, or a role
    // that says nothing, is among the faults, with the names above it.
    void Read(const Reference& of, QStringList& read, QStringList& faults, const QString& above = {}) const {
        if (read.size() > 3000)
            return;
        const QDBusReply<QString> role = Call(m_bus, of, accessible, "GetRoleName");
        const QString name = Property(of, "Name");
        const QString here = above + " > " + role.value() + ": " + name;
        read.append(role.value() + ": " + name);
        const QDBusReply<QList<uint>> reply = Call(m_bus, of, accessible, "GetState");
        const uint states = reply.value().value(0);
        static const QStringList parts{"scroll bar", "table cell", "tree item", "list item", "filler", "frame"};
        const bool isControl = (states & (1U << focusable)) != 0 && (states & (1U << showing)) != 0;
        const bool isVague = role.value() == "unknown" || role.value() == "invalid" || role.value().isEmpty();
        // The name of a combo box is what it shows, and what it is for is the label that it refers to.
        const bool isUnlabelled = role.value() == "combo box" && !HasLabel(of);
        if (isControl && !parts.contains(role.value()) && (name.isEmpty() || isVague || isUnlabelled))
            faults.append(here);
        QList<Reference> children = Children(of);
        if (children.size() > mostChildren) // the cells of long tables are alike
            children.resize(mostChildren);
        for (const Reference& child : children)
            Read(child, read, faults, here);
    }

    // The first object of that "role: name" that can be seen, below others.
    [[nodiscard]] std::optional<Reference> Find(const Reference& of, const QString& what) const {
        const QDBusReply<QString> role = Call(m_bus, of, accessible, "GetRoleName");
        if (role.value() + ": " + Property(of, "Name") == what && Has(of, showing))
            return of;
        for (const Reference& child : Children(of))
            if (auto found = Find(child, what))
                return found;
        return {};
    }
    // Presses the button or menu entry, or enters the text, as an assistive program does. False when it can't be.
    [[nodiscard]] bool Act(const Reference& of, const QString& text) const {
        if (!text.isEmpty())
            return Call(m_bus, of, "org.a11y.atspi.EditableText", "SetTextContents", {text}).type() ==
                   QDBusMessage::ReplyMessage;
        auto press = QDBusMessage::createMethodCall(of.program, of.path.path(), "org.a11y.atspi.Action", "DoAction");
        press.setArguments({0});
        return Has(of, enabled) && m_bus.send(press); // a dialog that it opens answers at its end
    }
    [[nodiscard]] QString Property(const Reference& of, const QString& name) const {
        const QDBusReply<QVariant> value =
            Call(m_bus, of, "org.freedesktop.DBus.Properties", "Get", {QString(accessible), name});
        return value.value().toString();
    }

private:
    [[nodiscard]] bool Has(const Reference& of, int state) const {
        const QDBusReply<QList<uint>> states = Call(m_bus, of, accessible, "GetState");
        return (states.value().value(0) & (1U << state)) != 0;
    }
    [[nodiscard]] bool HasLabel(const Reference& of) const {
        const QDBusMessage reply = Call(m_bus, of, accessible, "GetRelationSet");
        if (reply.arguments().isEmpty())
            return false;
        bool hasLabel = false;
        const auto relations = reply.arguments().constFirst().value<QDBusArgument>();
        relations.beginArray();
        while (!relations.atEnd()) {
            uint relation = 0;
            QList<Reference> to;
            relations.beginStructure();
            relations >> relation >> to;
            relations.endStructure();
            hasLabel = hasLabel || (relation == labelledBy && !to.isEmpty());
        }
        relations.endArray();
        return hasLabel;
    }

    QDBusConnection m_bus;
};

const Reference desktop{"org.a11y.atspi.Registry", QDBusObjectPath("/org/a11y/atspi/accessible/root")};

// A program that ends with the test.
class Program {
public:
    Program(const QString& path, const QStringList& arguments, const QProcessEnvironment& environment) {
        m_process.setProcessEnvironment(environment);
        m_process.start(path, arguments);
    }
    ~Program() {
        m_process.kill();
        m_process.waitForFinished();
    }
    [[nodiscard]] QByteArray FirstLine() {
        while (!m_process.canReadLine() && m_process.waitForReadyRead(longestWait)) {
        }
        return m_process.readLine().trimmed();
    }

private:
    QProcess m_process;
};

// A display, and the bus of assistive programs.
class AccessibilityBridge : public ::testing::Test {
protected:
    AccessibilityBridge() {
        qDBusRegisterMetaType<Reference>();
        qDBusRegisterMetaType<QList<Reference>>();
        for (const char* variable : {"XDG_STATE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            m_environment.insert(variable, m_folder.path());
        m_environment.insert("DISPLAY", ":" + QString::fromLatin1(m_display.FirstLine()));
        m_environment.insert("QT_QPA_PLATFORM", "xcb");
        m_environment.insert("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
        const Reference launcher{"org.a11y.Bus", QDBusObjectPath("/org/a11y/bus")};
        const QDBusReply<QString> address = Call(QDBusConnection::sessionBus(), launcher, "org.a11y.Bus", "GetAddress");
        EXPECT_TRUE(address.isValid()) << address.error().message().toStdString();
        m_address = address.value();
    }

    // Acts of an assistive program: "role: name" and the text to enter, or none to press it; and what is read then.
    struct Stage {
        QList<std::pair<QString, QString>> acts;
        QStringList expected;
    };
    // Reads the application that has been started so until all of that is there; nothing in it may be at fault.
    void ExpectToRead(const QStringList& arguments, const QList<Stage>& stages) {
        SCOPED_TRACE(arguments.join(' ').toStdString());
        const Program application(CORVANE_DESKTOP_PROGRAM, QStringList(CORVANE_STUDIES) + arguments, m_environment);
        const Reader reader(QDBusConnection::connectToBus(m_address, "accessibility"));
        for (const Stage& stage : stages) {
            for (const auto& [what, text] : stage.acts)
                ExpectToAct(reader, what, text);
            ExpectToRead(reader, stage.expected);
        }
    }
    static void ExpectToAct(const Reader& reader, const QString& what, const QString& text) {
        QElapsedTimer time;
        time.start();
        for (bool done = false; !done && time.elapsed() < longestWait / 2;) {
            const auto found = reader.Find(desktop, what);
            done = found && reader.Act(*found, text);
            if (done)
                return;
            QThread::msleep(200);
        }
        ADD_FAILURE() << what.toStdString() << " isn't there or can't be used";
    }
    static void ExpectToRead(const Reader& reader, const QStringList& expected) {
        QStringList read, faults, missing;
        QElapsedTimer time;
        time.start();
        do {
            QThread::msleep(200);
            read.clear();
            faults.clear();
            for (const Reference& program : reader.Children(desktop))
                reader.Read(program, read, faults);
            missing.clear();
            for (const QString& one : expected)
                if (!read.contains(one))
                    missing.append(one);
        } while (!missing.isEmpty() && time.elapsed() < longestWait / 2);
        EXPECT_TRUE(missing.isEmpty()) << missing.join('\n').toStdString() << "\nisn't among:\n"
                                       << read.join('\n').toStdString();
        EXPECT_TRUE(faults.isEmpty()) << "without a name or role:\n" << faults.join('\n').toStdString();
        for (const char* nameless : {"push button: ", "menu item: ", "text: ", "page tab: ", "check box: ", "tree: "})
            EXPECT_FALSE(read.contains(nameless)) << "there is a nameless " << nameless << "\n"
                                                  << read.join('\n').toStdString();
    }

    const QTemporaryDir m_folder;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    Program m_display{CORVANE_XVFB, {"-displayfd", "1", "-screen", "0", "1280x900x24"}, m_environment};
    QString m_address;
};

TEST_F(AccessibilityBridge, ReadsMenusToolbarsExplorerAndDialogsWithRolesAndNames) {
    ExpectToRead({"--choose", "Tools.Shortcuts"},
                 {{{},
                   {"menu item: File", "menu item: Tools", "tool bar: Standard", "push button: Import",
                    "tree item: Studies", "text: Search", "push button: Assign",
                    "status bar: ", "dialog: Keyboard Shortcuts", "push button: Import a table into a study"}}});
}

TEST_F(AccessibilityBridge, ReadsThePagesOfTheSampleWithRolesAndNames) {
    const QStringList open{"--answer", QString(CORVANE_STUDIES) + "/Data/penguins.csv", "--choose", "File.Open"};
    struct Page {
        QStringList arguments;
        QStringList expected;
    };
    const Page pages[] = {
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
    for (const Page& page : pages)
        ExpectToRead(open + page.arguments, {{{}, page.expected}});
}

TEST_F(AccessibilityBridge, GoesThroughTheWizardAndThePropertiesOfTheSample) {
    const QString next = "push button: Next";
    ExpectToRead({"--choose", "File.Import"},
                 {{{{"text: File", QString(CORVANE_STUDIES) + "/Data/penguins.csv"}}, {"label: Contents"}},
                  {{{next, {}}}, {"label: Delimiter", "spin box: Lines to skip", "table: Columns of the file"}},
                  {{{next, {}}}, {"combo box: New study", "text: Data set"}},
                  {{{"push button: Finish", {}}}, {"tree item: penguins.csv", "table: Rows"}},
                  {{{"menu item: Data", {}}, {"menu item: Properties…\tAlt+Return", {}}},
                   {"dialog: Properties of penguins.csv", "text: Name", "text: Notes", "page tab: Columns"}}});
    ExpectToRead({"--choose", "File.NewStudy", "--choose", "Data.Properties"},
                 {{{}, {"dialog: Properties of Study 2", "text: Name", "text: Notes"}}});
}

} // namespace
} // namespace corvane::desktop

int main(int argc, char** argv) {
    QCoreApplication qt(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
