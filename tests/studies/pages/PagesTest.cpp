#include "ChartWidget.h"
#include "Csv.h"
#include "DataTableView.h"
#include "FigureTable.h"
#include "Person.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/IPageAccess.h"
#include "desktop/IQtPage.h"
#include "desktop/explorer/ExplorerPanel.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTableWidget>
#include <QTest>
#include <filesystem>

using namespace corvane;
using namespace studies;

namespace {

class Pages : public Person {
protected:
    static void Press(QWidget& oWidget, int nKey, Qt::KeyboardModifiers oModifiers = {}) {
        QKeyEvent oPress(QEvent::KeyPress, nKey, oModifiers);
        QApplication::sendEvent(&oWidget, &oPress);
        Turn();
    }
    static QString Problem(const QWidget& oWindow) {
        for (const auto* pLabel : oWindow.findChildren<QLabel*>())
            if (pLabel->isVisible() && pLabel->inherits("studies::ProblemLabel"))
                return pLabel->text();
        return {};
    }
    template <class T>
    static T* Only(const QWidget& oWindow) {
        for (auto* pFound : oWindow.findChildren<T*>())
            if (pFound->isVisible())
                return pFound;
        ADD_FAILURE();
        return nullptr;
    }
    static void EnterPath(const QWidget& oWindow, const std::string& sPath) {
        auto* pPath = Only<QLineEdit>(oWindow);
        pPath->setText(QString::fromStdString(sPath));
        Q_EMIT pPath->editingFinished();
    }
};

TEST_F(Pages, TheImportWizardNamesABadRowAndLeavesItOut) {
    Start(false);
    const std::string sPath = Write("cells.csv", "id;size_mm\n01;1,5\n02;2,5;x\n03;\n");
    ChooseAndAct("File.Import", [&](QWidget& oWizard) {
        EXPECT_FALSE(Button(oWizard, "Next")->isEnabled());
        EnterPath(oWizard, m_oFolder.Path("none.csv"));
        EXPECT_TRUE(Problem(oWizard).contains("none.csv")) << Problem(oWizard).toStdString();
        EnterPath(oWizard, sPath);
        EXPECT_EQ(Problem(oWizard), "");
        Button(oWizard, "Next")->click();
        Turn();
        EXPECT_EQ(Problem(oWizard), "A row can't be read:\nLine 3: 3 fields where the first row has 2.");
        EXPECT_FALSE(Button(oWizard, "Next")->isEnabled());
        Only<QCheckBox>(oWizard)->click();
        auto* pPreview = Only<QTableWidget>(oWizard);
        EXPECT_EQ(pPreview->rowCount(), 3);
        auto* pType = qobject_cast<QComboBox*>(pPreview->cellWidget(0, 0));
        EXPECT_EQ(pType->currentText(), "whole number");
        pType->setCurrentIndex(1); // the leading zero isn't kept, but what is told apart is text
        Button(oWizard, "Next")->click();
        Turn();
        const auto aEdits = oWizard.findChildren<QLineEdit*>();
        auto* pName = *std::find_if(aEdits.begin(), aEdits.end(), [](auto* p) { return p->text() == "cells.csv"; });
        pName->setText(" ");
        EXPECT_EQ(Problem(oWizard), "A data set needs a name.");
        EXPECT_FALSE(Button(oWizard, "Finish")->isEnabled());
        pName->setText("cells");
        Button(oWizard, "Finish")->click();
    });
    EXPECT_EQ(Status(), "cells imported into “Study 1”: 2 rows, 2 columns, 1 left out");
    const Table oTable = DataOnDisk("cells");
    ASSERT_EQ(oTable.aColumns.size(), 2U);
    EXPECT_EQ(oTable.aColumns[0].eType, ColumnType::Text);
    EXPECT_EQ(oTable.aColumns[1].Label(), "size (mm)");
    EXPECT_NE(Shown().find("cells"), std::string::npos);
}

TEST_F(Pages, TheImportWizardFollowsWhatIsTypedAndTheFileItself) {
    Start(false);
    const std::string sPath = Write("cells.csv", "id,size\n1,2\n2\n");
    ChooseAndAct("File.Import", [&](QWidget& oWizard) {
        auto* pPath = Only<QLineEdit>(oWizard);
        QTest::keyClicks(pPath, QString::fromStdString(sPath).chopped(1));
        EXPECT_FALSE(Button(oWizard, "Next")->isEnabled());
        EXPECT_EQ(Problem(oWizard), "") << "the name isn't whole yet";
        QTest::keyClicks(pPath, "v");
        EXPECT_TRUE(Button(oWizard, "Next")->isEnabled());
        QTest::keyClicks(pPath, "x");
        EXPECT_FALSE(Button(oWizard, "Next")->isEnabled());
        QTest::keyClick(pPath, Qt::Key_Backspace);
        Button(oWizard, "Next")->click();
        Turn();
        EXPECT_EQ(Problem(oWizard), "A row can't be read:\nLine 3: 1 field where the first row has 2.");
        // The row is put in order in the file; back and forth shows it.
        Write("cells.csv", "id,size\n1,2\n2,3\n3,4\n");
        Button(oWizard, "Previous")->click();
        Turn();
        Button(oWizard, "Next")->click();
        Turn();
        EXPECT_EQ(Problem(oWizard), "");
        EXPECT_EQ(Only<QTableWidget>(oWizard)->rowCount(), 4);
        // What was seen is imported, even when the file has gone.
        std::filesystem::remove(sPath);
        Button(oWizard, "Next")->click();
        Turn();
        Button(oWizard, "Previous")->click();
        Turn();
        EXPECT_EQ(Problem(oWizard), "");
        Button(oWizard, "Finish")->click();
    });
    EXPECT_EQ(Status(), "cells.csv imported into “Study 1”: 3 rows, 2 columns");
}

TEST_F(Pages, TheTableEditsUndoesFiltersSortsAndCopies) {
    Start();
    OpenItem("penguins.csv");
    auto* pView = In<DataTableView>("penguins.csv", "Rows");
    QAbstractItemModel& oModel = *pView->model();
    ASSERT_EQ(oModel.rowCount(), 344);
    EXPECT_EQ(oModel.headerData(2, Qt::Horizontal).toString(), "bill length (mm)");
    EXPECT_EQ(oModel.index(3, 2).data().toString(), "NA");
    EXPECT_EQ(oModel.index(2, 3).data().toString(), "18.0") << "points align";

    EXPECT_TRUE(oModel.setData(oModel.index(0, 2), "40.5"));
    EXPECT_EQ(DataOnDisk("penguins.csv").aColumns[2].aNumbers[0], 40.5);
    EXPECT_FALSE(oModel.setData(oModel.index(0, 2), "long"));
    EXPECT_EQ(Problem(*m_pApplication->Window().centralWidget()),
              "“long” isn't a number, and “bill_length_mm” is a numeric column.");
    Choose("Edit.Undo");
    EXPECT_EQ(oModel.index(0, 2).data().toString(), "39.1");
    Choose("Edit.Redo");
    EXPECT_EQ(oModel.index(0, 2).data().toString(), "40.5");

    pView->sortByColumn(5, Qt::DescendingOrder);
    EXPECT_EQ(oModel.index(0, 5).data().toString(), "6300");
    EXPECT_EQ(oModel.index(343, 5).data().toString(), "NA");
    In<QComboBox>("penguins.csv", "Rows where")->setCurrentIndex(6);
    In<QLineEdit>("penguins.csv", "contains")->setText(">= 6000");
    Turn(400);
    EXPECT_EQ(oModel.rowCount(), 4);
    pView->setCurrentIndex(oModel.index(0, 4));
    pView->selectionModel()->select(QItemSelection(oModel.index(0, 4), oModel.index(1, 5)),
                                    QItemSelectionModel::ClearAndSelect);
    Press(*pView, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "221\t6300\n230\t6050\n");
    Press(*pView, Qt::Key_Delete);
    EXPECT_EQ(oModel.index(1, 4).data().toString(), "NA");
    pView->setCurrentIndex(oModel.index(0, 4));
    Press(*pView, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(oModel.index(1, 5).data().toString(), "6050");
    QApplication::clipboard()->setText("1\nx\n");
    Press(*pView, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(oModel.index(0, 4).data().toString(), "221") << "all or nothing";
}

TEST_F(Pages, AFileWithoutAStudyIsOnlyShown) {
    Start(false);
    m_pApplication->Dialogs().AddAnswer(STUDIES_DATA "/gentoo.csv");
    Choose("File.Open");
    auto* pView = In<DataTableView>("gentoo.csv", "Rows");
    EXPECT_EQ(pView->model()->rowCount(), 124);
    EXPECT_FALSE(pView->model()->index(0, 0).flags().testFlag(Qt::ItemIsEditable));
    pView->selectAll();
    Press(*pView, Qt::Key_Delete);
    EXPECT_TRUE(Problem(m_pApplication->Window()).startsWith("These data are in no study."));
    EXPECT_FALSE(m_pApplication->Choose("Data.Properties"));
    Choose("Analysis.Histogram");
    EXPECT_FALSE(m_pApplication->Choose("File.Save"));
}

TEST_F(Pages, PropertiesAreCheckedAndWindowsFollowTheName) {
    Start();
    OpenItem("penguins.csv");
    Choose("Analysis.Summary");
    Choose("File.Save");
    Choose("Data.Table");
    ChooseAndAct("Data.Properties", [&](QWidget& oDialog) {
        Only<QLineEdit>(oDialog)->setText("");
        EXPECT_EQ(Problem(oDialog), "A data set needs a name.");
        EXPECT_FALSE(Button(oDialog, "OK")->isEnabled());
        Only<QLineEdit>(oDialog)->setText("Palmer");
        EXPECT_EQ(Problem(oDialog), "");
        Button(oDialog, "OK")->click();
    });
    EXPECT_NE(In<DataTableView>("Palmer", "Rows"), nullptr);
    EXPECT_EQ(DataOnDisk("Palmer").nRows, 344U);
    EXPECT_NE(Shown().find("        Summary of Palmer"), std::string::npos) << "in the explorer";
    EXPECT_NE(Shown().find("Window Summary of Palmer"), std::string::npos);
    ClickItem("Palmer");
    Choose("Edit.Delete");
    EXPECT_EQ(Shown().find("Window Palmer"), std::string::npos) << "the window goes with the data";
    EXPECT_EQ(m_pApplication->Failures().ShownCount(), 0);
}

TEST_F(Pages, ChartsFollowTheirSettingsAndAreKept) {
    Start();
    OpenItem("penguins.csv");
    Choose("Analysis.Histogram");
    const QString sCaption = "Histogram of penguins.csv: bill length";
    auto* pChart = In<ChartWidget>(sCaption, "Chart");
    EXPECT_EQ(pChart->Scene().aBars.size(), 13U);
    In<QSpinBox>(sCaption, "Bins")->setValue(5);
    EXPECT_EQ(pChart->Scene().aBars.size(), 6U);
    pChart->resize(500, 400);
    QString sTip;
    for (int y = 0; y < 400 && sTip.isEmpty(); y += 5)
        sTip = pChart->TipAt({250, y});
    EXPECT_TRUE(sTip.endsWith("rows")) << sTip.toStdString();
    Choose("File.Save");
    EXPECT_EQ(Status(), "Histogram of penguins.csv: bill length has been added to the study");
    EXPECT_NE(Shown().find("      Histogram of penguins.csv: bill length"), std::string::npos);

    for (const char* sName : {"chart.png", "chart.svg"}) {
        m_pApplication->Dialogs().AddAnswer(m_oFolder.Path(sName));
        Choose("File.Export");
    }
    const QImage oPicture(QString::fromStdString(m_oFolder.Path("chart.png")));
    EXPECT_EQ(oPicture.size(), QSize(1600, 1120));
    EXPECT_EQ(oPicture.pixelColor(0, 0), QColor(Qt::white));
    EXPECT_NE(Read(m_oFolder.Path("chart.svg")).find("bill length (mm)"), std::string::npos);
    m_pApplication->Dialogs().AddAnswer(m_oFolder.Path("no folder/chart.png"));
    ChooseAndAct("File.Export", [](QWidget& oFailure) { oFailure.close(); });
    EXPECT_EQ(m_pApplication->Failures().ShownCount(), 1);
}

TEST_F(Pages, TheSummaryIsByGroupWithTheDecimalsOfThePreferences) {
    Start();
    OpenItem("penguins.csv");
    const auto oPageObj = CurrentPlatform().oObjectFactory->Create("StudiesPages.FiguresPreferencesPage");
    std::unique_ptr<QWidget> pPreferences(oPageObj.As<desktop::IQtPage>()->NewWidget(nullptr));
    pPreferences->findChild<QSpinBox*>()->setValue(1);
    EXPECT_TRUE(oPageObj.As<desktop::IQtPage>()->IsChanged());
    oPageObj.As<IPageAccess>()->Page()->Save();
    EXPECT_FALSE(oPageObj.As<desktop::IQtPage>()->IsChanged());
    EXPECT_EQ(ReadPreferences().nDecimals, 1);

    Choose("Analysis.Summary");
    In<QComboBox>("Summary of penguins.csv", "By")->setCurrentIndex(1);
    auto* pFigures = In<FigureTable>("Summary of penguins.csv by species", "Statistics of numeric columns");
    const QStringList aLines = pFigures->AsText().split('\n');
    EXPECT_EQ(aLines[1], "bill length (mm)\tAdelie\t151\t1\t38.8\t2.7\t32.1\t36.8\t38.8\t40.8\t46.0");
    EXPECT_EQ(pFigures->item(0, 4)->textAlignment(), Qt::AlignRight | Qt::AlignVCenter);
}

TEST_F(Pages, TheBootstrapShowsItsResultAndCanBeCancelled) {
    Start();
    OpenItem("penguins.csv");
    Choose("Analysis.Bootstrap");
    const QString sCaption = "Bootstrap of penguins.csv: bill length";
    auto* pRun = qobject_cast<QPushButton*>(Button(*In<QSpinBox>(sCaption, "Seed")->parentWidget(), "Run"));
    const auto Result = [&] {
        QString sResult;
        for (const auto* pLabel : pRun->parentWidget()->findChildren<QLabel*>())
            if (pLabel->inherits("studies::ResultLabel"))
                sResult = pLabel->text();
        return sResult;
    };
    pRun->click();
    EXPECT_EQ(Status(), "mean of bill length: 43.92 mm");
    EXPECT_TRUE(Result().contains("95 % confidence from 43.")) << Result().toStdString();
    EXPECT_FALSE(m_pApplication->Bar()->Tools()->Item("Edit.Undo")->Enabled()) << "as before the work";

    In<QSpinBox>(sCaption, "Resamples")->setValue(100000);
    EXPECT_TRUE(Result().startsWith("Run draws")) << "the result is of other settings";
    // The bar lets waiting events in once it is shown; the person is quick.
    QTimer::singleShot(0, [this] {
        for (const auto* pBar : m_pApplication->Window().findChildren<QProgressBar*>())
            for (auto* pButton : pBar->parentWidget()->findChildren<QPushButton*>())
                pButton->click();
    });
    pRun->click();
    EXPECT_EQ(Status(), "Cancelled; nothing has been changed");
    EXPECT_TRUE(Result().startsWith("Run draws"));
    EXPECT_TRUE(pRun->isEnabled());
}

TEST_F(Pages, TheChosenItemKeepsItsCommands) {
    Start();
    OpenItem("penguins.csv");
    Choose("Analysis.Report");
    Turn();
    Choose("Analysis.Histogram"); // the table's page, which is behind the report now, had it as well
    ClickItem("Penguins");
    m_pApplication->Window().Explorer().TabBar()->setCurrentIndex(1); // from here a new study isn't chosen
    Choose("File.NewStudy");
    Turn();
    Choose("Edit.Delete");
    Turn();
    const std::string sText = m_pApplication->AsText();
    EXPECT_EQ(sText.find("Penguins\n"), std::string::npos) << sText;
    EXPECT_NE(sText.find("Study 1\n"), std::string::npos) << "the new one stays";
}

TEST_F(Pages, DataAndReportsAreExported) {
    Start();
    OpenItem("penguins.csv");
    for (const char* sAnalysis : {"Comparison", "Histogram", "Histogram", "Histogram", "Scatter", "Comparison"}) {
        Choose(std::string("Analysis.") + sAnalysis);
        Choose("File.Save");
    }
    Choose("Data.Table");
    const std::string sPath = m_oFolder.Path("out.csv");
    ChooseAndAct("File.Export", [&](QWidget& oDialog) {
        Only<QLineEdit>(oDialog)->setText(QString::fromStdString(m_oFolder.Path("none/out.csv")));
        EXPECT_TRUE(Problem(oDialog).startsWith("There is no folder"));
        EXPECT_FALSE(Button(oDialog, "Save")->isEnabled());
        Only<QComboBox>(oDialog)->setCurrentIndex(1);
        Only<QLineEdit>(oDialog)->setText(QString::fromStdString(sPath));
        m_pApplication->Dialogs().AddAnswer(""); // a change of mind
        Button(oDialog, "Save As")->click();
        EXPECT_TRUE(oDialog.isVisible());
        EXPECT_FALSE(std::filesystem::exists(sPath));
        Turn();
        Button(oDialog, "Save")->click();
    });
    EXPECT_EQ(Read(sPath).substr(0, 136),
              "species;island;bill_length_mm;bill_depth_mm;flipper_length_mm;body_mass_g;sex\n"
              "Adelie;Torgersen;39,1;18,7;181;3750;male\nAdelie;Torgersen;");
    EXPECT_EQ(WriteCsv(ReadCsvFile(sPath).oTable), WriteCsv(DataOnDisk("penguins.csv"))) << "read back";

    Choose("Analysis.Report");
    for (const char* sName : {"report.html", "report.pdf"}) {
        m_pApplication->Dialogs().AddAnswer(m_oFolder.Path(sName));
        Choose("File.Export");
    }
    const std::string sHtml = Read(m_oFolder.Path("report.html"));
    EXPECT_NE(sHtml.find("src=\"data:image/png;base64,iVBOR"), std::string::npos);
    EXPECT_NE(sHtml.find("Welch's t-test: t = "), std::string::npos);
    const std::string sPdf = Read(m_oFolder.Path("report.pdf"));
    EXPECT_EQ(sPdf.substr(0, 5), "%PDF-");
    std::size_t nPictures = 0;
    for (std::size_t i = 0; (i = sPdf.find("/Subtype /Image", i)) != std::string::npos; ++i)
        ++nPictures;
    EXPECT_EQ(nPictures, 6U) << "none is lost where a heading goes to the next page";
}

TEST_F(Pages, PreferencesOfAnalysesAreCheckedAndUsed) {
    Start();
    const auto oPageObj = CurrentPlatform().oObjectFactory->Create("StudiesPages.AnalysesPreferencesPage");
    std::unique_ptr<QWidget> pPreferences(oPageObj.As<desktop::IQtPage>()->NewWidget(nullptr));
    auto* pConfidence = pPreferences->findChild<QDoubleSpinBox*>();
    pConfidence->setValue(20);
    EXPECT_FALSE(oPageObj.As<IPageAccess>()->Page()->IsValid());
    pConfidence->setValue(99);
    EXPECT_TRUE(oPageObj.As<IPageAccess>()->Page()->IsValid());
    pPreferences->findChild<QCheckBox*>()->setChecked(true);
    pPreferences->findChild<QLineEdit*>()->setText("sex");
    oPageObj.As<IPageAccess>()->Page()->Save();
    ClickItem("penguins.csv");
    Choose("Analysis.Histogram");
    EXPECT_EQ(In<ChartWidget>("Histogram of penguins.csv: bill length by sex", "Chart")->Scene().aLegend.size(), 2U);
    EXPECT_EQ(ReadPreferences().dblConfidence, 0.99);
}

} // namespace
