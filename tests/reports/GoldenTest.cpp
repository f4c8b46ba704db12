// A run sheet template rendered by the report-template command over CSV
// files to a PDF and read back as text: a change of layout shows here, and is
// made on purpose by rewriting the golden file (KB_UPDATE_GOLDEN=1). The
// template is a fixed sample, so that the delivery reports' own templates
// may change without touching this test of the command.

#include "ReportTestSupport.h"
#include "RunCommand.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb::test;

namespace {

QStringList runSheetArguments(const QString& pdf)
{
    auto data = [](const char* pipe, const char* file) {
        return QStringList{QStringLiteral("--data-csv"),
                           QLatin1String(pipe) + u'=' + reportTestData(QLatin1String(file))};
    };
    QStringList args{QStringLiteral("report-template"), reportTestData(QStringLiteral("RunSheetSample.rtm"))};
    args << data("DBPipelineDeliveries", "runsheet_deliveries.csv") << data("DBPipelineClients", "runsheet_clients.csv")
         << data("DBPipelineDeliveryDetails", "runsheet_details.csv")
         << data("DBPipelineReportParameters", "runsheet_parameters.csv");
    args << QStringLiteral("--link") << QStringLiteral("DBPipelineClients.Person_ID=DBPipelineDeliveries.Person_ID")
         << QStringLiteral("--link") << QStringLiteral("DBPipelineDeliveryDetails.Person_ID=DBPipelineDeliveries.Person_ID")
         << QStringLiteral("--link") << QStringLiteral("DBPipelineDeliveryDetails.Deliv_Dt=DBPipelineDeliveries.Deliv_Dt");
    args << QStringLiteral("--pdf") << pdf;
    return args;
}

} // namespace

TEST(ReportGolden, DailyRunSheetAsText)
{
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("runsheet.pdf"));
    const CommandResult run = runKettlebrook(runSheetArguments(pdf));
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();

    const QString text = runTool(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    const QString goldenPath = reportTestData(QStringLiteral("RunSheetSample.golden.txt"));
    if (qEnvironmentVariable("KB_UPDATE_GOLDEN") == QLatin1String("1")) {
        QFile out(goldenPath);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
        out.write(text.toUtf8());
        GTEST_SKIP() << "rewrote " << goldenPath.toStdString();
    }
    QFile golden(goldenPath);
    ASSERT_TRUE(golden.open(QIODevice::ReadOnly))
        << goldenPath.toStdString() << " is missing; run with KB_UPDATE_GOLDEN=1 to write it";
    EXPECT_EQ(text.toStdString(), QString::fromUtf8(golden.readAll()).toStdString())
        << "the run sheet prints differently; if that is meant, rewrite the golden file with KB_UPDATE_GOLDEN=1 "
           "and review its diff";

    const QString info = runTool(QStringLiteral("pdfinfo"), {pdf});
    EXPECT_TRUE(info.contains(QLatin1String("Pages:           4")));
    EXPECT_TRUE(info.contains(QLatin1String("612 x 792 pts (letter)")));
}

TEST(ReportGolden, CsvOfTheMainPipe)
{
    QStringList args = runSheetArguments(QString());
    args.removeLast();
    args.removeLast();
    args << QStringLiteral("--csv");
    const CommandResult run = runKettlebrook(args);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QStringList lines = run.out.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 32);
    EXPECT_EQ(lines[0], "Deliv_Dt,Route_ID,Stop,Person_ID,Client_ID,Household_ID,DOW,Diet_Restr,Diet_Descr,Funding_Desc");
    EXPECT_EQ(lines[1], "2024-03-06,North 1,1,101,00707,101,WED,1,,OAA");

    // Bad words are refused before anything is read.
    EXPECT_EQ(runKettlebrook({QStringLiteral("report-template"), QStringLiteral("x.rtm")}).exitCode, 2);
    const CommandResult badLink = runKettlebrook(
        {QStringLiteral("report-template"), reportTestData(QStringLiteral("RunSheetSample.rtm")),
         QStringLiteral("--link"), QStringLiteral("A.B=C.D"), QStringLiteral("--csv")});
    EXPECT_EQ(badLink.exitCode, 2);
    EXPECT_TRUE(badLink.err.contains("--link names the pipe A, which no --data-csv gives.")) << badLink.err.toStdString();
    const CommandResult missing = runKettlebrook(
        {QStringLiteral("report-template"), QStringLiteral("/nonexistent/Nothing.rtm"), QStringLiteral("--csv")});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(missing.err.contains("Could not locate the report template file:\n\r/nonexistent/Nothing.rtm"))
        << missing.err.toStdString();
}
