// Makes the pictures of the documentation: the host's windows over Studies, without a display. With --compare it makes
// none but says which of those in the folder look otherwise by now.
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/application/Application.h"
#include "desktop/custom/CustomizeDialog.h"
#include "desktop/custom/ShortcutsDialog.h"
#include "desktop/inspector/InspectorDialog.h"
#include "desktop/log/LogDialog.h"
#include "desktop/palette/PaletteDialog.h"
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

constexpr QSize oWindowSize(1000, 780);

void Settle() {
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents(QEventLoop::AllEvents, 10);
}

// With a line around it, which stands for the frame that the desktop draws.
QPixmap Framed(const QPixmap& oPicture) {
    QPixmap oFramed = oPicture;
    QPainter oPainter(&oFramed);
    oPainter.setPen(QColor(0x80, 0x80, 0x80));
    oPainter.drawRect(
        QRectF(0, 0, oFramed.deviceIndependentSize().width() - 1, oFramed.deviceIndependentSize().height() - 1));
    return oFramed;
}

QPixmap Grab(QWidget& oWidget) {
    Settle();
    return Framed(oWidget.grab());
}

void Discard() {
    const QWidget* pModal = QApplication::activeModalWidget();
    for (auto* pButton : pModal ? pModal->findChildren<QAbstractButton*>() : QList<QAbstractButton*>())
        if (pButton->text().remove('&').startsWith("Discard"))
            pButton->click();
}

// What opens a modal window; it is prepared, taken and closed.
QPixmap GrabModal(const std::function<void()>& fnOpen, const std::function<void(QWidget&)>& fnPrepare = {}) {
    QPixmap oPicture;
    QTimer oTimer;
    oTimer.setInterval(50);
    QObject::connect(&oTimer, &QTimer::timeout, [&] {
        QWidget* pModal = QApplication::activeModalWidget();
        if (!pModal)
            return;
        if (!oPicture.isNull()) { // it asks whether it may close
            Discard();
            return;
        }
        oTimer.stop();
        if (fnPrepare)
            fnPrepare(*pModal);
        oPicture = Grab(*pModal);
        oTimer.start();
        if (auto* pDialog = qobject_cast<QDialog*>(pModal))
            pDialog->reject();
        else
            pModal->close();
    });
    oTimer.start();
    fnOpen();
    return oPicture;
}

class Studio {
public:
    explicit Studio(const std::string& sTheme) : m_oApplication({(QDir::homePath() + "/studies").toStdString()}) {
        m_oApplication.SetModalLoop({});
        m_oFailure = GrabModal([this] {
            if (!m_oApplication.Start())
                std::cerr << "Studies doesn't start\n";
        });
        ApplyTheme(sTheme);
        m_oApplication.Window().resize(oWindowSize);
        Import();
    }
    // Nobody wants to keep anything.
    ~Studio() {
        QTimer oTimer;
        oTimer.setInterval(50);
        QObject::connect(&oTimer, &QTimer::timeout, &Discard);
        oTimer.start();
        m_oApplication.Window().close();
    }
    Studio(const Studio&) = delete;
    Studio& operator=(const Studio&) = delete;

    std::map<std::string, QPixmap> All() {
        std::map<std::string, QPixmap> mapPictures;
        const auto fnTake = [&](const char* sName, const QPixmap& oPicture) { mapPictures[sName] = oPicture; };
        fnTake("import", GrabModal([this] { m_oApplication.Choose("File.Import"); }, &Studio::GoToFormat));
        OpenWindows();
        fnTake("window", Grab(m_oApplication.Window()));
        fnTake("palette", Palette());
        fnTake("shortcuts", GrabModal([this] { m_oApplication.Personal().ShowShortcuts(); },
                                      [this](QWidget& oDialog) { MakeConflict(oDialog); }));
        fnTake("customize", GrabModal([this] { m_oApplication.Personal().ShowCustomize(); },
                                      [](QWidget& oDialog) { Hide(static_cast<CustomizeDialog&>(oDialog)); }));
        fnTake("preferences", GrabModal([this] { m_oApplication.Choose("Tools.Preferences"); }));
        fnTake("inspector", Inspector());
        fnTake("failure", m_oFailure);
        fnTake("log", Log());
        fnTake("report", GrabModal([this] { m_oApplication.Personal().ShowLog()->ShowReport(); }, &Studio::StrikeOut));
        fnTake("leave-out", GrabModal([] {
                   CrashRecord oRecord;
                   oRecord.nSignal = 11;
                   (void)Blame::AskInBox(oRecord, "Studies");
               }));
        fnTake("unsaved", Unsaved());
        return mapPictures;
    }

private:
    void Import() {
        const Variant aPath[] = {(QDir::homePath() + "/studies/Data/penguins.csv").toStdString()};
        m_oApplication.Failures().Guard([&] {
            CorvaneMain::Framework()->ServiceManager()->Services()->Item("Studies")->Invoke("ImportFile", aPath);
        });
        Settle();
    }
    // The wizard's second step, with a row that can't be read.
    static void GoToFormat(QWidget& oWizard) {
        const QString sPath = QDir::homePath() + "/penguins-2009.csv";
        QFile oFile(sPath);
        (void)oFile.open(QIODevice::WriteOnly);
        oFile.write("species,island,mass_g,note\nAdelie,Dream,3750,ok\nAdelie,Dream,3800,ok\nGentoo,Biscoe,5000,heavy\n"
                    "Gentoo,Biscoe,4900\nAdelie,Torgersen,3600,ok\n");
        oFile.close();
        for (auto* pField : oWizard.findChildren<QLineEdit*>())
            if (pField->isVisible()) {
                pField->setText(sPath);
                Q_EMIT pField->editingFinished();
            }
        Settle();
        for (auto* pButton : oWizard.findChildren<QAbstractButton*>())
            if (pButton->isVisible() && pButton->text() == "&Next")
                pButton->click();
    }
    void ChooseNode(const std::string& sText) {
        const auto oTree = CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->TreeView();
        std::vector<Node*> aNodes = oTree->GetNodes()->Roots();
        for (std::size_t i = 0; i < aNodes.size(); ++i) {
            aNodes.insert(aNodes.end(), aNodes[i]->Children().begin(), aNodes[i]->Children().end());
            if (aNodes[i]->Text() == sText) {
                oTree->ClickNode(Ref<Node>(aNodes[i]));
                return;
            }
        }
        std::cerr << "there is no node " << sText << "\n";
    }
    void OpenWindows() {
        for (const char* sCommand : {"Data.Table", "Analysis.Scatter"}) {
            ChooseNode("penguins.csv");
            m_oApplication.Choose(sCommand);
            Settle();
        }
        m_oApplication.MainForm()->Arrange(Arrangement::TileHorizontal);
        Settle();
    }
    QPixmap Palette() {
        PaletteDialog* pPalette = m_oApplication.Personal().ShowPalette();
        Settle();
        if (auto* pField = pPalette->findChild<QLineEdit*>())
            pField->setText("su");
        const QPixmap oPicture = Grab(*pPalette);
        pPalette->reject();
        Settle();
        return oPicture;
    }
    void MakeConflict(QWidget& oDialog) {
        auto& oShortcuts = static_cast<ShortcutsDialog&>(oDialog);
        oShortcuts.resize(940, 580); // the screen is narrower here than people's
        oShortcuts.Select(*m_oApplication.Bar()->Tools()->Item("Analysis.Summary"));
        oShortcuts.List().scrollToItem(oShortcuts.List().currentItem(), QAbstractItemView::PositionAtCenter);
        oShortcuts.Keys().setKeySequence(QKeySequence("Ctrl+P"));
        oShortcuts.Keys().setFocus();
    }
    static void Hide(CustomizeDialog& oDialog) {
        oDialog.SelectBand("Toolbars.Standard");
        if (oDialog.Entries().count() > 1)
            oDialog.Entries().setCurrentRow(1);
    }
    QPixmap Inspector() {
        InspectorDialog* pInspector = m_oApplication.Personal().ShowInspector();
        Settle();
        pInspector->resize(900, 600);
        pInspector->Select(*m_oApplication.Bar()->Tools()->Item("File.Import"));
        const QPixmap oPicture = Grab(*pInspector);
        pInspector->close();
        Settle();
        return oPicture;
    }
    QPixmap Log() {
        LogDialog* pLog = m_oApplication.Personal().ShowLog();
        Settle();
        pLog->resize(860, 520);
        pLog->View().Table().selectRow(0);
        const QPixmap oPicture = Grab(*pLog);
        pLog->close();
        Settle();
        return oPicture;
    }
    // What tells of the machine that made the picture.
    static void StrikeOut(QWidget& oDialog) {
        QPlainTextEdit& oPreview = static_cast<ReportDialog&>(oDialog).Preview();
        // The height of a line is that of the font, and there are many lines.
        QFont oFont = oPreview.font();
        oFont.setFamily("DejaVu Sans Mono");
        oPreview.setFont(oFont);
        oPreview.setPlainText(oPreview.toPlainText().replace(QRegularExpression("kernel [^,]*"), "kernel 6.1"));
    }
    QPixmap Unsaved() {
        ChooseNode("penguins.csv");
        m_oApplication.Choose("Analysis.Histogram");
        Settle();
        // A change in the window, as a person makes it.
        for (auto* pBox : m_oApplication.Window().findChildren<QComboBox*>())
            if (pBox->isVisible() && pBox->count() > 2 && pBox->window() == &m_oApplication.Window())
                pBox->setCurrentIndex(pBox->currentIndex() == 0 ? 1 : 0);
        Settle();
        return GrabModal([this] { m_oApplication.Window().close(); });
    }

    Application m_oApplication;
    QPixmap m_oFailure; // of a definition file with a mistake
};

// How much two pictures differ in what can be made out from afar, 0 to 1. Other fonts and times don't count.
double Difference(const QImage& oFirst, const QImage& oSecond) {
    constexpr QSize oSmall(48, 32);
    if (oFirst.isNull() || oSecond.isNull() || std::abs(oFirst.width() - oSecond.width()) * 5 > oSecond.width() ||
        std::abs(oFirst.height() - oSecond.height()) * 5 > oSecond.height())
        return 1;
    const auto fnSmall = [&](const QImage& oImage) {
        return oImage.convertToFormat(QImage::Format_RGB32)
            .scaled(oSmall, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_Grayscale8);
    };
    const QImage oOne = fnSmall(oFirst);
    const QImage oOther = fnSmall(oSecond);
    double dSum = 0;
    for (int y = 0; y < oSmall.height(); ++y)
        for (int x = 0; x < oSmall.width(); ++x)
            dSum += std::abs(oOne.constScanLine(y)[x] - oOther.constScanLine(y)[x]);
    return dSum / 255 / (oSmall.width() * oSmall.height());
}

int Compare(const std::map<std::string, QPixmap>& mapPictures, const QDir& oFolder) {
    constexpr double dMost = 0.03;
    QStringList aFiles = oFolder.entryList({"*.png"});
    int nWrong = 0;
    for (const auto& [sName, oPicture] : mapPictures) {
        const QString sFile = QString::fromStdString(sName) + ".png";
        aFiles.removeAll(sFile);
        const double dDifference = Difference(QImage(oFolder.filePath(sFile)), oPicture.toImage());
        std::printf("%-16s %.4f\n", sName.c_str(), dDifference);
        if (dDifference <= dMost)
            continue;
        ++nWrong;
        std::printf("%s looks otherwise by now: run scripts/pictures and look at it\n",
                    oFolder.filePath(sFile).toUtf8().constData());
    }
    for (const QString& sFile : aFiles)
        std::printf("nobody makes %s\n", oFolder.filePath(sFile).toUtf8().constData());
    return nWrong + static_cast<int>(aFiles.size());
}

} // namespace
} // namespace corvane::desktop

int main(int argc, char** argv) {
    using namespace corvane::desktop;
    const QTemporaryDir oHome;
    qputenv("HOME", oHome.path().toUtf8());
    qputenv("USER", "user");
    for (const char* sVariable : {"XDG_STATE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(sVariable, (oHome.path() + "/" + sVariable).toUtf8());
    QApplication oQt(argc, argv);
    QApplication::setApplicationName("Corvane");
    QCommandLineParser oParser;
    oParser.addPositionalArgument("APP", "Studies' application folder");
    oParser.addPositionalArgument("FOLDER", "where the pictures stand");
    oParser.addOptions({{"compare", "makes none, but compares those that are there"},
                        {"look", "light, dark, contrast-dark or contrast-light", "LOOK", "light"}});
    oParser.process(oQt);
    const QStringList aFolders = oParser.positionalArguments();
    if (aFolders.size() != 2 || QProcess::execute("cp", {"-r", aFolders[0], oHome.path() + "/studies"}) != 0) {
        std::cerr << "usage: documentation_pictures [--compare] [--look LOOK] APP FOLDER\n";
        return 2;
    }
    QFile oBad(oHome.path() + "/studies/Services/Weather.xml");
    (void)oBad.open(QIODevice::WriteOnly);
    oBad.write("<?xml version=\"1.0\"?>\n<Service Name=\"Weather\" ProgID=\"StudiesSvc.Weather\" Active=\"True\">\n"
               "  <Menus>\n    <MenuItem Type=\"MenuItem\" ActionItem=\"Show\" Captoin=\"Weather\"/>\n  </Menus>\n"
               "</Service>\n");
    oBad.close();
    const QString sLook = oParser.value("look");
    if (sLook.startsWith("contrast"))
        QApplication::setPalette(ContrastPalette(sLook == "contrast-dark"));
    const auto mapPictures = Studio(sLook == "dark" ? "Dark" : sLook == "light" ? "Light" : "System").All();
    const QDir oFolder(aFolders[1]);
    if (oParser.isSet("compare"))
        return Compare(mapPictures, oFolder) == 0 ? 0 : 1;
    int nMissing = 0;
    for (const auto& [sName, oPicture] : mapPictures)
        if (!oPicture.save(oFolder.filePath(QString::fromStdString(sName) + ".png"))) {
            std::cerr << "no picture " << sName << "\n";
            ++nMissing;
        }
    return nMissing == 0 ? 0 : 1;
}
