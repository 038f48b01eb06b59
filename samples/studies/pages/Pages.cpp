#include "AnalysisPages.h"
#include "ExportPage.h"
#include "ImportPages.h"
#include "PropertyPages.h"
#include "ReportPage.h"
#include "SummaryPage.h"
#include "TablePage.h"
#include "corvane/base/PluginExport.h"

using namespace corvane;
using namespace studies;

CORVANE_PLUGIN(Class<TablePage>("StudiesPages.TablePage"), Class<SummaryPage>("StudiesPages.SummaryPage"),
               Class<HistogramPage>("StudiesPages.HistogramPage"), Class<ScatterPage>("StudiesPages.ScatterPage"),
               Class<ComparisonPage>("StudiesPages.ComparisonPage"), Class<BootstrapPage>("StudiesPages.BootstrapPage"),
               Class<ReportPage>("StudiesPages.ReportPage"),
               Class<StudyPropertiesPage>("StudiesPages.StudyPropertiesPage"),
               Class<DataSetPropertiesPage>("StudiesPages.DataSetPropertiesPage"),
               Class<UnitsPage>("StudiesPages.UnitsPage"), Class<ImportFilePage>("StudiesPages.ImportFilePage"),
               Class<ImportFormatPage>("StudiesPages.ImportFormatPage"),
               Class<ImportTargetPage>("StudiesPages.ImportTargetPage"), Class<ExportPage>("StudiesPages.ExportPage"))
