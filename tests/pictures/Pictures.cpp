// Makes the pictures of the documentation: the host's windows over Studies, without a display; with --manual those of
// Studies' manual in one language. With --compare it makes none but says which of those in the folder look otherwise by
// now.
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/PersonalDesktop.h"
#include "desktop/blame/Blame.h"
#include "desktop/blame/CrashMarker.h"
#include "desktop/custom/CustomizeDialog.h"
#include "desktop/custom/ShortcutsDialog.h"
#include "desktop/inspector/InspectorDialog.h"
#include "desktop/log/LogPanel.h"
#include "desktop/palette/PaletteDialog.h"
#include "desktop/service/AppearancePage.h"
#include "desktop/style/ViewDock.h"
#include "desktop/translation/HostTranslation.h"
#include "tests/desktop/ContrastPalette.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QCommandLineParser>
#include <QDir>
#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>
#include <array>
#include <cstdio>
#include <functional>
#include <iostream>
#include <map>

namespace corvane::desktop {
namespace {

constexpr QSize windowSize(1000, 780);
constexpr QSize manualSize(1000, 640);

void Settle() {
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents(QEventLoop::AllEvents, 10);
}

// With a line around it, which stands for the frame that the desktop draws.
QPixmap Framed(const QPixmap& picture) {
    QPixmap framed = picture;
    QPainter painter(&framed);
    painter.setPen(QColor(0x80, 0x80, 0x80));
    painter.drawRect(
        QRectF(0, 0, framed.deviceIndependentSize().width() - 1, framed.deviceIndependentSize().height() - 1));
    return framed;
}

QPixmap Grab(QWidget& widget) {
    Settle();
    return Framed(widget.grab());
}

void Discard() {
    const QWidget* modal = QApplication::activeModalWidget();
    static const QRegularExpression discards("discard|verwerfen|abandonner", QRegularExpression::CaseInsensitiveOption);
    for (auto* button : modal ? modal->findChildren<QAbstractButton*>() : QList<QAbstractButton*>())
        if (button->text().remove('&').contains(discards))
            button->click();
}

// What opens a modal window; it is prepared, taken and closed.
QPixmap GrabModal(const std::function<void()>& open, const std::function<void(QWidget&)>& prepare = {}) {
    QPixmap picture;
    QTimer timer;
    timer.setInterval(50);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        if (!picture.isNull()) { // it asks whether it may close
            Discard();
            return;
        }
        timer.stop();
        if (prepare)
            prepare(*modal);
        picture = Grab(*modal);
        timer.start();
        if (auto* dialog = qobject_cast<QDialog*>(modal))
            dialog->reject();
        else
            modal->close();
    });
    timer.start();
    open();
    return picture;
}

class Studio {
public:
    Studio(const std::string& theme, const QStringList& languages, const QSize& size)
        : m_application({.folder = (QDir::homePath() + "/studies").toStdString(), .languages = languages}) {
        m_application.SetModalLoop({});
        m_failure = GrabModal([this] {
            if (!m_application.Start())
                std::cerr << "Studies doesn't start\n";
        });
        ApplyTheme(theme);
        m_application.Window().resize(size);
        m_start = Grab(m_application.Window());
        Import();
    }
    // NoOne wants to keep anything.
    ~Studio() {
        QTimer timer;
        timer.setInterval(50);
        QObject::connect(&timer, &QTimer::timeout, &Discard);
        timer.start();
        m_application.Window().close();
    }
    Studio(const Studio&) = delete;
    Studio& operator=(const Studio&) = delete;

    std::map<std::string, QPixmap> All() {
        std::map<std::string, QPixmap> pictures;
        const auto take = [&](const char* name, const QPixmap& picture) { pictures[name] = picture; };
        take("import", GrabModal([this] { m_application.Choose("File.Import"); },
                                 [this](QWidget& wizard) { GoToFormat(wizard); }));
        OpenWindows();
        take("window", Grab(m_application.Window()));
        take("palette", Palette());
        take("shortcuts", GrabModal([this] { m_application.Personal().ShowShortcuts(); },
                                    [this](QWidget& dialog) { MakeConflict(dialog); }));
        take("customize", GrabModal([this] { m_application.Personal().ShowCustomize(); },
                                    [](QWidget& dialog) { Hide(static_cast<CustomizeDialog&>(dialog)); }));
        take("preferences", GrabModal([this] { m_application.Choose("Tools.Preferences"); }));
        take("inspector", Inspector());
        take("failure", m_failure);
        take("log", Log());
        take("report", GrabModal([this] { m_application.Personal().ShowLog()->ShowReport(); }, &Studio::StrikeOut));
        take("leave-out", GrabModal([] {
                 CrashRecord record;
                 record.signal = 11;
                 (void)Blame::AskInBox(record, "Studies");
             }));
        take("unsaved", Unsaved());
        return pictures;
    }

    std::map<std::string, QPixmap> Manual() {
        std::map<std::string, QPixmap> pictures{{"start", m_start}};
        pictures["import"] =
            GrabModal([this] { m_application.Choose("File.Import"); }, [this](QWidget& wizard) { GoToFormat(wizard); });
        for (const auto& [name, command] :
             {std::pair("table", "Data.Table"), std::pair("chart", "Analysis.Histogram"),
              std::pair("comparison", "Analysis.Comparison"), std::pair("report", "Analysis.Report")}) {
            ChooseNode("penguins.csv");
            m_application.Choose(command);
            Settle();
            if (std::string_view(name) == "chart")
                GroupBySpecies();
            pictures[name] = Grab(m_application.Window());
        }
        m_application.Choose("Window.CloseAll");
        Settle();
        ChooseNode("penguins.csv");
        m_application.Choose("Edit.Delete");
        Settle();
        pictures["restore"] = GrabModal([this] { m_application.Choose("Edit.Restore"); });
        return pictures;
    }

private:
    void GroupBySpecies() {
        for (auto* box : m_application.Window().findChildren<QComboBox*>())
            if (box->isVisible() && box->findText("species") >= 0) {
                box->setCurrentIndex(box->findText("species"));
                Q_EMIT box->activated(box->currentIndex());
            }
        Settle();
    }
    void Import() {
        QDir::setCurrent(QDir::homePath() + "/studies/Data"); // reports show the path
        const Variant path[] = {std::string("penguins.csv")};
        m_application.Failures().Guard([&] {
            CorvaneMain::Framework()->ServiceManager()->Services()->Item("Studies")->Invoke("ImportFile", path);
        });
        Settle();
    }
    // The wizard's second step, with a row that can't be read.
    void GoToFormat(QWidget& wizard) {
        const QString path = QDir::homePath() + "/penguins-2009.csv";
        QFile file(path);
        (void)file.open(QIODevice::WriteOnly);
        file.write("species,island,mass_g,note\nAdelie,Dream,3750,ok\nAdelie,Dream,3800,ok\nGentoo,Biscoe,5000,heavy\n"
                   "Gentoo,Biscoe,4900\nAdelie,Torgersen,3600,ok\n");
        file.close();
        for (auto* field : wizard.findChildren<QLineEdit*>())
            if (field->isVisible()) {
                field->setText(path);
                Q_EMIT field->editingFinished();
            }
        Settle();
        (void)m_application.ClickCommand("next");
    }
    void ChooseNode(const std::string& text) {
        const auto tree = CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->TreeView();
        std::vector<Node*> nodes = tree->GetNodes()->Roots();
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            nodes.insert(nodes.end(), nodes[i]->Children().begin(), nodes[i]->Children().end());
            if (nodes[i]->Text() == text) {
                tree->ClickNode(Ref<Node>(nodes[i]));
                return;
            }
        }
        std::cerr << "there is no node " << text << "\n";
    }
    void OpenWindows() {
        for (const char* command : {"Data.Table", "Analysis.Scatter"}) {
            ChooseNode("penguins.csv");
            m_application.Choose(command);
            Settle();
        }
        m_application.MainForm()->Arrange(Arrangement::TileHorizontal);
        Settle();
    }
    QPixmap Palette() {
        PaletteDialog* palette = m_application.Personal().ShowPalette();
        Settle();
        if (auto* field = palette->findChild<QLineEdit*>())
            field->setText("su");
        QPixmap picture = Grab(*palette);
        palette->reject();
        Settle();
        return picture;
    }
    void MakeConflict(QWidget& dialog) {
        auto& shortcuts = static_cast<ShortcutsDialog&>(dialog);
        shortcuts.resize(940, 580); // the screen is narrower here than people's
        shortcuts.Select(*m_application.Bar()->Tools()->Item("Analysis.Summary"));
        shortcuts.List().scrollToItem(shortcuts.List().currentItem(), QAbstractItemView::PositionAtCenter);
        shortcuts.Keys().setKeySequence(QKeySequence("Ctrl+P"));
        shortcuts.Keys().setFocus();
    }
    static void Hide(CustomizeDialog& dialog) {
        dialog.SelectBand("Toolbars.Standard");
        if (dialog.Entries().count() > 1)
            dialog.Entries().setCurrentRow(1);
    }
    QPixmap Inspector() {
        InspectorDialog* inspector = m_application.Personal().ShowInspector();
        Settle();
        inspector->resize(900, 600);
        inspector->Select(*m_application.Bar()->Tools()->Item("File.Import"));
        QPixmap picture = Grab(*inspector);
        inspector->close();
        Settle();
        return picture;
    }
    QPixmap Log() {
        LogPanel* log = m_application.Personal().ShowLog();
        Settle();
        auto* dock = static_cast<ViewDock*>(log->parentWidget());
        dock->setFloating(true);
        dock->resize(860, 520);
        log->View().Table().selectRow(0);
        QPixmap picture = Grab(*dock);
        dock->setFloating(false);
        dock->close();
        Settle();
        return picture;
    }
    // What tells of the machine that made the picture.
    static void StrikeOut(QWidget& dialog) {
        QPlainTextEdit& preview = static_cast<ReportDialog&>(dialog).Preview();
        // The height of a line is that of the font, and there are many lines.
        QFont font = preview.font();
        font.setFamily("DejaVu Sans Mono");
        preview.setFont(font);
        preview.setPlainText(preview.toPlainText().replace(QRegularExpression("kernel [^,]*"), "kernel 6.1"));
    }
    QPixmap Unsaved() {
        ChooseNode("penguins.csv");
        m_application.Choose("Analysis.Bootstrap");
        Settle();
        // A result that takes time, as a user computes it.
        for (auto* button : m_application.Window().findChildren<QPushButton*>())
            if (button->isVisible() && button->text() == "&Run")
                button->click();
        Settle();
        return GrabModal([this] { m_application.Window().close(); });
    }

    Application m_application;
    QPixmap m_failure; // of a definition file with a mistake
    QPixmap m_start;   // before anything is open
};

// How much two pictures differ in what can be made out from afar, 0 to 1. Other fonts and times don't count.
double Difference(const QImage& first, const QImage& second) {
    constexpr QSize small(48, 32);
    if (first.isNull() || second.isNull() || std::abs(first.width() - second.width()) * 5 > second.width() ||
        std::abs(first.height() - second.height()) * 5 > second.height())
        return 1;
    const auto smallFunction = [&](const QImage& image) {
        return image.convertToFormat(QImage::Format_RGB32)
            .scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_Grayscale8);
    };
    const QImage one = smallFunction(first);
    const QImage other = smallFunction(second);
    double sum = 0;
    for (int y = 0; y < small.height(); ++y)
        for (int x = 0; x < small.width(); ++x)
            sum += std::abs(one.constScanLine(y)[x] - other.constScanLine(y)[x]);
    return sum / 255 / (small.width() * small.height());
}

int Compare(const std::map<std::string, QPixmap>& pictures, const QDir& folder) {
    constexpr double most = 0.03;
    QStringList files = folder.entryList({"*.png"});
    int wrong = 0;
    for (const auto& [name, picture] : pictures) {
        const QString file = QString::fromStdString(name) + ".png";
        files.removeAll(file);
        const double difference = Difference(QImage(folder.filePath(file)), picture.toImage());
        std::printf("%-16s %.4f\n", name.c_str(), difference);
        if (difference <= most)
            continue;
        ++wrong;
        std::printf("%s looks otherwise by now: run scripts/pictures and look at it\n",
                    folder.filePath(file).toUtf8().constData());
    }
    for (const QString& file : files)
        std::printf("nobody makes %s\n", folder.filePath(file).toUtf8().constData());
    return wrong + static_cast<int>(files.size());
}

} // namespace
} // namespace corvane::desktop

int main(int argc, char** argv) {
    using namespace corvane::desktop;
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    qputenv("USER", "user");
    for (const char* variable : {"XDG_STATE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(variable, (home.path() + "/" + variable).toUtf8());
    QApplication qt(argc, argv);
    QApplication::setApplicationName("Corvane");
    QCommandLineParser parser;
    parser.addPositionalArgument("APP", "Studies' application folder");
    parser.addPositionalArgument("FOLDER", "where the pictures stand");
    parser.addOptions({{"compare", "makes none, but compares those that are there"},
                       {"manual", "those of Studies' manual in that language", "LANGUAGE"},
                       {"look", "light, dark, contrast-dark or contrast-light", "LOOK", "light"}});
    parser.process(qt);
    const QStringList folders = parser.positionalArguments();
    if (folders.size() != 2 || QProcess::execute("cp", {"-r", folders[0], home.path() + "/studies"}) != 0) {
        std::cerr << "usage: documentation_pictures [--compare] [--manual LANGUAGE] [--look LOOK] APP FOLDER\n";
        return 2;
    }
    const bool isManual = parser.isSet("manual");
    QStringList languages;
    if (const QString language = parser.value("manual"); isManual && language != "en") {
        languages.append(language);
        QLocale::setDefault(QLocale(language));
    }
    const HostTranslation translation(languages);
    QFile bad(home.path() + "/studies/Services/Weather.xml");
    if (!isManual && bad.open(QIODevice::WriteOnly))
        bad.write("<?xml version=\"1.0\"?>\n<Service Name=\"Weather\" ProgID=\"StudiesSvc.Weather\" Active=\"True\">\n"
                  "  <Menus>\n    <MenuItem Type=\"MenuItem\" ActionItem=\"Show\" Captoin=\"Weather\"/>\n  </Menus>\n"
                  "</Service>\n");
    bad.close();
    const QString look = parser.value("look");
    if (look.startsWith("contrast"))
        QApplication::setPalette(ContrastPalette(look == "contrast-dark"));
    Studio studio(look == "dark"    ? "Dark"
                  : look == "light" ? "Light"
                                    : "System",
                  languages, isManual ? manualSize : windowSize);
    const auto pictures = isManual ? studio.Manual() : studio.All();
    const QDir folder(folders[1]);
    if (parser.isSet("compare"))
        return Compare(pictures, folder) == 0 ? 0 : 1;
    int missing = 0;
    for (const auto& [name, picture] : pictures)
        if (!picture.save(folder.filePath(QString::fromStdString(name) + ".png"))) {
            std::cerr << "no picture " << name << "\n";
            ++missing;
        }
    return missing == 0 ? 0 : 1;
}
