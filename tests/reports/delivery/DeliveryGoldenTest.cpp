// Every fixed delivery report of the small agency, run by the report
// command to a PDF and read back as text, against a checked-in golden text:
// a change of layout shows here, and is made on purpose by rewriting the
// golden files (KB_UPDATE_GOLDEN=1) and reviewing their diff. With
// KB_REPORT_SAMPLES set to a folder, the PDFs are kept there to look at.

#include "ReportAgency.h"
#include "ReportTestSupport.h"

#include "RunCommand.h"
#include "TempDataDir.h"
#include "delivery/DeliveryReportList.h"
#include "template/TemplateRegistry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;
using namespace kb::test;

namespace {

struct GoldenCase
{
    int report;
    QString variant; // of the golden file's name, for a second run of one report
    QStringList options;
    QStringList statements = {}; // run on the agency first
};

std::ostream& operator<<(std::ostream& out, const GoldenCase& c)
{
    return out << DeliveryReports::name(c.report).toStdString() << c.variant.toStdString();
}

QStringList wednesdayOnly()
{
    return {QStringLiteral("--from"), QStringLiteral("2024-03-06")};
}
QStringList bothDays()
{
    return {QStringLiteral("--from"), QStringLiteral("2024-03-06"), QStringLiteral("--to"),
            QStringLiteral("2024-03-07")};
}

std::vector<GoldenCase> cases()
{
    std::vector<GoldenCase> list;
    for (int report = 0; report < DeliveryReports::fixedCount; ++report) {
        if (report == int(DeliveryReport::ItemCountRouteItemCuisineDiet)) continue;
        GoldenCase c{report, QString(), wednesdayOnly()};
        switch (DeliveryReport(report)) {
        case DeliveryReport::Birthdays:
            c.options = {QStringLiteral("--from"), QStringLiteral("2024-03-01"), QStringLiteral("--to"),
                         QStringLiteral("2024-03-31")};
            break;
        case DeliveryReport::ChildDemographicMealCount:
        case DeliveryReport::KitchenCountsCrosstab:
        case DeliveryReport::ItemCountCenterRouteServiceDietCrosstab:
            c.options = bothDays();
            break;
        case DeliveryReport::SelectedDietRestrictions:
            c.options << QStringLiteral("--diets") << QStringLiteral("DIAB,REN") << QStringLiteral("--title")
                      << QStringLiteral("Check the desserts");
            break;
        default:
            break;
        }
        list.push_back(c);
    }
    list.push_back({int(DeliveryReport::DailyRunSheets), QStringLiteral("-all-clients-counts-barcodes"),
                    wednesdayOnly()});
    list.push_back({int(DeliveryReport::DailyRunSheets),
                    QStringLiteral("-separate-dates"),
                    {QStringLiteral("--dates"), QStringLiteral("2024-03-06,2024-03-07"),
                     QStringLiteral("--routes"), QStringLiteral("N2,S1")}});
    // Labels: several of one delivery printed together, a label printer's
    // page, a partly used A4 sheet, the limits.
    list.push_back({int(DeliveryReport::DailyLabels),
                    QStringLiteral("-copies-by-name"),
                    {QStringLiteral("--from"), QStringLiteral("2024-03-07"), QStringLiteral("--sort"),
                     QStringLiteral("2")},
                    {QStringLiteral("Update Deliveri set Number_Labels = 3 where Deliv_ID = 12"),
                     QStringLiteral("Update Deliveri set Number_Labels = 0 where Deliv_ID = 14")}});
    list.push_back(
        {int(DeliveryReport::DailyLabels),
         QStringLiteral("-label-printer"),
         {QStringLiteral("--from"), QStringLiteral("2024-03-06"), QStringLiteral("--stock"),
          QStringLiteral("Label printer 2-5/16 x 4 in"), QStringLiteral("--limit"), QStringLiteral("1")},
         {QStringLiteral("Update Config set SPECIAL1_LABEL = 'Sugar free', SPECIAL2_ABBREV = 'K'")}});
    list.push_back(
        {int(DeliveryReport::DeliveryLabelsWithAddresses),
         QStringLiteral("-a4-from-label-5"),
         {QStringLiteral("--dates"), QStringLiteral("2024-03-06,2024-03-07"), QStringLiteral("--stock"),
          QStringLiteral("Avery L7163"), QStringLiteral("--start"), QStringLiteral("5")}});
    list.push_back({int(DeliveryReport::LabelsWithPreferences),
                    QStringLiteral("-any-of-two-diets"),
                    {QStringLiteral("--from"), QStringLiteral("2024-03-06"), QStringLiteral("--limit"),
                     QStringLiteral("3"), QStringLiteral("--diets"), QStringLiteral("LS,REN"),
                     QStringLiteral("--sort"), QStringLiteral("3")}});
    return list;
}

class DeliveryGolden : public ::testing::TestWithParam<GoldenCase>
{
protected:
    void SetUp() override
    {
        makeReportAgency(data.db());
        TemplateRegistry::install(data.path());
        qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toLocal8Bit());
    }

    TempDataDir data;
    QTemporaryDir home;
    QTemporaryDir out;
};

} // namespace

TEST_P(DeliveryGolden, PrintsAsTheGoldenText)
{
    const GoldenCase& c = GetParam();
    if (c.variant.startsWith(QLatin1String("-all-clients"))) {
        data.db().execute(QStringLiteral(
            "Update Config set Include_All_Active_Clients = True, DELIV_REPORT_SHOW_COUNTS = 'T', "
            "DELIV_REPORT_SHOW_BARCODES = True, DELIV_REPORT_SHOW_ITEMS = 'D', NO_DELIVERY_LABEL = 'Call "
            "first', "
            "SPECIAL1_LABEL = 'Sugar free'"));
        data.db().execute(QStringLiteral(
            "Insert into Queries (Query_Name, Query_Lines) values ('DELIVERY_REPORT_COUNTS_SELECTION', "
            "'SELECT Deliveri.SVCS_USED, Services.SERVICE_DESC, Deliveri.CLIENT_ID, Deliveri.DIET_RESTR, "
            "Deliveri.DIET_DESCR, Deliveri.STOP FROM Deliveri join Services ON (Services.SERVICE_ID = "
            "Deliveri.SVCS_USED) WHERE ( Deliveri.DELIV_DT = :Deliv_Dt ) and (Deliveri.Route_ID = "
            ":Route_ID)')"));
        data.db().execute(QStringLiteral(
            "Insert into Queries (Query_Name, Query_Lines) values "
            "('DELIVERY_REPORT_COUNTS_SORT', 'ORDER BY Deliveri.SVCS_USED, Deliveri.DIET_DESCR')"));
    }
    for (const QString& statement : c.statements)
        data.db().execute(statement);
    const QString file = QFileInfo(DeliveryReports::templateFile(c.report)).completeBaseName() + c.variant;
    const QString pdf = out.filePath(file + QStringLiteral(".pdf"));
    QStringList args = data.commandLocation();
    args << QStringLiteral("--today") << QStringLiteral("2024-03-06") << QStringLiteral("--user")
         << QStringLiteral("pat") << QStringLiteral("report") << QString::number(c.report) << c.options
         << QStringLiteral("--pdf") << pdf;
    const CommandResult run = runKettlebrook(args);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();

    const QString samples = qEnvironmentVariable("KB_REPORT_SAMPLES");
    if (!samples.isEmpty()) {
        QDir().mkpath(samples);
        QFile::remove(QDir(samples).filePath(file + QStringLiteral(".pdf")));
        QFile::copy(pdf, QDir(samples).filePath(file + QStringLiteral(".pdf")));
    }
    const QString text =
        runTool(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    const QString goldenPath =
        reportTestData(QStringLiteral("delivery/") + file + QStringLiteral(".golden.txt"));
    if (qEnvironmentVariable("KB_UPDATE_GOLDEN") == QLatin1String("1")) {
        QFile golden(goldenPath);
        ASSERT_TRUE(golden.open(QIODevice::WriteOnly | QIODevice::Truncate));
        golden.write(text.toUtf8());
        GTEST_SKIP() << "rewrote " << goldenPath.toStdString();
    }
    QFile golden(goldenPath);
    ASSERT_TRUE(golden.open(QIODevice::ReadOnly))
        << goldenPath.toStdString() << " is missing; run with KB_UPDATE_GOLDEN=1 to write it";
    EXPECT_EQ(text.toStdString(), QString::fromUtf8(golden.readAll()).toStdString())
        << "the report prints differently; if that is meant, rewrite the golden file with KB_UPDATE_GOLDEN=1 "
           "and review its diff";
}

INSTANTIATE_TEST_SUITE_P(Reports, DeliveryGolden, ::testing::ValuesIn(cases()), [](const auto& info) {
    QString name =
        QFileInfo(DeliveryReports::templateFile(info.param.report)).completeBaseName() + info.param.variant;
    return name.replace(u'-', u'_').toStdString();
});
