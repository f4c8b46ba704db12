// kettlebrook report: any delivery report by a script, as a PDF or its data
// set as CSV, with the limits and questions as options, signed in like the
// desktop (a reports-only user may run it).

#include "ReportAgency.h"
#include "ReportTestSupport.h"

#include "InsertRow.h"
#include "RunCommand.h"
#include "TempDataDir.h"
#include "template/TemplateRegistry.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

class ReportCommand : public ::testing::Test
{
protected:
    void SetUp() override
    {
        makeReportAgency(data.db());
        insertRow(data.db(), QStringLiteral("Staff"),
                  {{QStringLiteral("Staff_ID"), 2},
                   {QStringLiteral("User_ID"), QStringLiteral("dana")},
                   {QStringLiteral("Staff_Name"), QStringLiteral("Dana Driver")},
                   {QStringLiteral("Access_Level"), QStringLiteral("O")},
                   {QStringLiteral("Active"), true}});
        reports::TemplateRegistry::install(data.path());
        qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toLocal8Bit());
    }

    CommandResult report(const QStringList& words, const QString& user = QStringLiteral("dana"))
    {
        QStringList args = data.commandLocation();
        args << QStringLiteral("--today") << QStringLiteral("2024-03-06") << QStringLiteral("--user") << user
             << QStringLiteral("report") << words;
        return runKettlebrook(args);
    }

    TempDataDir data;
    QTemporaryDir home;
    QTemporaryDir out;
};

} // namespace

TEST_F(ReportCommand, WritesTheDataSetAsCsvAndTheReportAsPdf)
{
    const CommandResult csv =
        report({QStringLiteral("Client Count by Route, Service and Diet"), QStringLiteral("--from"),
                QStringLiteral("2024-03-06"), QStringLiteral("--routes"), QStringLiteral("N1,s1"),
                QStringLiteral("--csv"), QStringLiteral("-")});
    ASSERT_EQ(csv.exitCode, 0) << csv.err.toStdString();
    const QStringList lines = csv.out.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 6);
    EXPECT_EQ(lines[0],
              "deliv_dt,svcs_used,service_desc,diet_restr,diet_descr,route_id,route_desc,client_id");
    EXPECT_EQ(lines[1], "2024-03-06,1,Home Delivered Meals,0,\"\",N1,North Loop,101");
    EXPECT_EQ(lines[5], "2024-03-06,1,Home Delivered Meals,4,REN,S1,South Side,105");

    // The run sheets of both days of one center, to a PDF and a CSV file.
    const QString pdf = out.filePath(QStringLiteral("sheets.pdf"));
    const QString file = out.filePath(QStringLiteral("sheets.csv"));
    const CommandResult sheets =
        report({QStringLiteral("0"), QStringLiteral("--dates"), QStringLiteral("2024-03-06,2024-03-07"),
                QStringLiteral("--centers"), QStringLiteral("SOUTH"), QStringLiteral("--pdf"), pdf,
                QStringLiteral("--csv"), file});
    ASSERT_EQ(sheets.exitCode, 0) << sheets.err.toStdString();
    const QString info = runTool(QStringLiteral("pdfinfo"), {pdf});
    EXPECT_TRUE(info.contains(QLatin1String("Pages:           1"))) << info.toStdString(); // one route: S1
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(written.readAll()).count(u'\n'), 1 + 3); // 106 twice, 105 once on S1

    // A report's own questions answered by options.
    const CommandResult diets =
        report({QStringLiteral("20"), QStringLiteral("--from"), QStringLiteral("2024-03-06"),
                QStringLiteral("--diets"), QStringLiteral("DIAB"), QStringLiteral("--match"),
                QStringLiteral("all"), QStringLiteral("--csv"), QStringLiteral("-")});
    ASSERT_EQ(diets.exitCode, 0) << diets.err.toStdString();
    EXPECT_EQ(diets.out.count(u'\n'), 2);
    EXPECT_TRUE(diets.out.contains(QLatin1String("102.0")));
    const CommandResult item = report({QStringLiteral("19"), QStringLiteral("--from"),
                                       QStringLiteral("2024-03-06"), QStringLiteral("--item"),
                                       QStringLiteral("13"), QStringLiteral("--csv"), QStringLiteral("-")});
    ASSERT_EQ(item.exitCode, 0) << item.err.toStdString();
    EXPECT_EQ(item.out.count(u'\n'), 2);
}

TEST_F(ReportCommand, RefusesBadWordsAndTellsWhatIsMissing)
{
    const auto refused = [&](const QStringList& words, int code, const char* text) {
        const CommandResult r = report(words);
        EXPECT_EQ(r.exitCode, code) << words.join(u' ').toStdString();
        EXPECT_TRUE(r.err.contains(QLatin1String(text))) << r.err.toStdString();
    };
    refused({QStringLiteral("5")}, 2, "Give --pdf FILE, --csv FILE (- for the output) or both.");
    refused({QStringLiteral("Weekly"), QStringLiteral("--csv"), QStringLiteral("-")}, 2,
            "There is no delivery report Weekly.");
    refused({QStringLiteral("5"), QStringLiteral("--exclude"), QStringLiteral("--csv"), QStringLiteral("-")},
            2, "--exclude goes with --routes or --centers.");
    refused({QStringLiteral("5"), QStringLiteral("--routes"), QStringLiteral("Z9"), QStringLiteral("--csv"),
             QStringLiteral("-")},
            2, "--routes: Z9 is not among N1, N2, S1, O'B1, E1.");
    refused({QStringLiteral("20"), QStringLiteral("--csv"), QStringLiteral("-")}, 2, "needs the diets");
    refused({QStringLiteral("5"), QStringLiteral("--dates"), QStringLiteral("2024-03-06"),
             QStringLiteral("--csv"), QStringLiteral("-")},
            2, "--dates goes with the run sheets and the labels only.");
    refused({QStringLiteral("5"), QStringLiteral("--from"), QStringLiteral("2024-03-07"),
             QStringLiteral("--to"), QStringLiteral("2024-03-06"), QStringLiteral("--csv"),
             QStringLiteral("-")},
            2, "--to must not lie before --from.");
    refused({QStringLiteral("5"), QStringLiteral("--limit"), QStringLiteral("1"), QStringLiteral("--csv"),
             QStringLiteral("-")},
            2, "--limit goes with the labels only.");
    refused({QStringLiteral("1"), QStringLiteral("--stock"), QStringLiteral("Avery 9999"),
             QStringLiteral("--csv"), QStringLiteral("-")},
            2, "--stock: there is no label stock Avery 9999 (Avery 5160, Avery 5161,");
    refused({QStringLiteral("1"), QStringLiteral("--diets"), QStringLiteral("DIAB"), QStringLiteral("--csv"),
             QStringLiteral("-")},
            2, "--diets goes with --limit 3 (\"Diet restrictions selected below\") on the labels.");
    refused({QStringLiteral("1"), QStringLiteral("--limit"), QStringLiteral("14"), QStringLiteral("--csv"),
             QStringLiteral("-")},
            2, "--limit");
    refused({QStringLiteral("Client ID Card"), QStringLiteral("--pdf"), QStringLiteral("card.pdf")}, 2,
            "The Client ID Card needs --client CLIENT_ID and --pdf FILE.");
    refused({QStringLiteral("Client ID Card"), QStringLiteral("--client"), QStringLiteral("999"),
             QStringLiteral("--pdf"), data.path() + QStringLiteral("/card.pdf")},
            1, "There is no client with the Client ID 999.");
    QFile::remove(data.path() + QStringLiteral("/CliCntSvcRteDiet.rtm"));
    refused({QStringLiteral("5"), QStringLiteral("--csv"), QStringLiteral("-")}, 1,
            "The requested report template file:");
}

TEST_F(ReportCommand, UserDefinedReportsAndTheCheckOfTheRun)
{
    ASSERT_FALSE(writeMealsPerRouteReport(data.path()).isEmpty());
    const CommandResult own = report(
        {QStringLiteral("meals per route"), QStringLiteral("--from"), QStringLiteral("2024-03-06"),
         QStringLiteral("--to"), QStringLiteral("2024-03-07"), QStringLiteral("--csv"), QStringLiteral("-")});
    ASSERT_EQ(own.exitCode, 0) << own.err.toStdString();
    EXPECT_EQ(own.out, "Route_ID,Meals\nE1,10\nN1,7\nN2,11\nS1,5\n");

    // A date never prepared: the question is answered No unless --yes.
    data.db().execute(QStringLiteral("Update Staff set Prepare_Data_Prompt = 'M' where User_ID = 'dana'"));
    const CommandResult no =
        report({QStringLiteral("17"), QStringLiteral("--from"), QStringLiteral("2024-03-08"),
                QStringLiteral("--csv"), QStringLiteral("-")});
    ASSERT_EQ(no.exitCode, 0) << no.err.toStdString();
    EXPECT_TRUE(
        no.err.contains(QLatin1String("The delivery date of 3/8/2024\nhas not yet been prepared.\nWould you "
                                      "like to prepare it now? [No]")))
        << no.err.toStdString();
    // With --yes the date is prepared; nobody is due on that Friday.
    const CommandResult yes =
        report({QStringLiteral("17"), QStringLiteral("--from"), QStringLiteral("2024-03-08"),
                QStringLiteral("--csv"), QStringLiteral("-"), QStringLiteral("--yes")});
    ASSERT_EQ(yes.exitCode, 0) << yes.err.toStdString();
    EXPECT_TRUE(yes.err.contains(QLatin1String("No deliveries were identified to be saved!")))
        << yes.err.toStdString();
}

namespace {

// The codes zbarimg reads on each page of a PDF rendered at the resolution,
// sorted.
QStringList decodePdf(const QString& pdf, int dpi, const QString& folder)
{
    runTool(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QString::number(dpi), QStringLiteral("-png"),
                                         pdf, QDir(folder).filePath(QStringLiteral("page"))});
    QStringList codes;
    for (const QString& page : QDir(folder).entryList({QStringLiteral("page*.png")})) {
        const QString out =
            runTool(QStringLiteral("zbarimg"), {QStringLiteral("-q"), QDir(folder).filePath(page)});
        codes << out.split(u'\n', Qt::SkipEmptyParts);
        QFile::remove(QDir(folder).filePath(page));
    }
    codes.sort();
    return codes;
}

} // namespace

TEST_F(ReportCommand, TheClientIdCardAndTheBarCodeListingScanAsThePersonNumbers)
{
    const QString pdf = out.filePath(QStringLiteral("card.pdf"));
    const CommandResult card = report({QStringLiteral("Client ID Card"), QStringLiteral("--client"),
                                       QStringLiteral("102.0"), QStringLiteral("--pdf"), pdf});
    ASSERT_EQ(card.exitCode, 0) << card.err.toStdString();
    // One card on the label printer's page: 3-1/2 x 1-1/8 in.
    const QString info = runTool(QStringLiteral("pdfinfo"), {pdf});
    EXPECT_TRUE(info.contains(QRegularExpression(QStringLiteral("Pages:\\s+1\\n")))) << info.toStdString();
    EXPECT_TRUE(info.contains(QStringLiteral("252 x 81 pts"))) << info.toStdString();
    // The name and number, and the bar code's readable text (the blanks
    // after the comma come out of the PDF as one).
    EXPECT_EQ(runTool(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")})
                  .simplified(),
              "Harold Baxter, Client ID: 102.0 102");
    // The bar code holds the person number; it reads at a printer's 300 dpi
    // and at a thermal label printer's 203 dpi alike.
    EXPECT_EQ(decodePdf(pdf, 300, out.path()), QStringList({"CODE-128:102"}));
    EXPECT_EQ(decodePdf(pdf, 203, out.path()), QStringList({"CODE-128:102"}));
    // Vectors, not a picture.
    EXPECT_EQ(runTool(QStringLiteral("pdfimages"), {QStringLiteral("-list"), pdf}).count(u'\n'), 2);

    // On a sheet of address labels instead: a Letter page, still readable.
    const CommandResult sheet =
        report({QStringLiteral("client id card"), QStringLiteral("--client"), QStringLiteral("101"),
                QStringLiteral("--stock"), QStringLiteral("Avery 5160"), QStringLiteral("--pdf"), pdf});
    ASSERT_EQ(sheet.exitCode, 0) << sheet.err.toStdString();
    EXPECT_TRUE(runTool(QStringLiteral("pdfinfo"), {pdf}).contains(QStringLiteral("612 x 792 pts")));
    EXPECT_EQ(decodePdf(pdf, 300, out.path()), QStringList({"CODE-128:101"}));

    // The bar-code listing: every active client's number.
    const QString listing = out.filePath(QStringLiteral("listing.pdf"));
    const CommandResult codes = report({QStringLiteral("23"), QStringLiteral("--pdf"), listing});
    ASSERT_EQ(codes.exitCode, 0) << codes.err.toStdString();
    EXPECT_EQ(decodePdf(listing, 300, out.path()),
              QStringList({"CODE-128:101", "CODE-128:102", "CODE-128:103", "CODE-128:104", "CODE-128:105",
                           "CODE-128:106", "CODE-128:107", "CODE-128:109"}));

    // Without its template the card is not printed.
    QFile::remove(data.path() + QStringLiteral("/Client ID with Barcode.LWL"));
    const CommandResult missing = report({QStringLiteral("Client ID Card"), QStringLiteral("--client"),
                                          QStringLiteral("101"), QStringLiteral("--pdf"), pdf});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(missing.err.contains(
        QStringLiteral("Could not locate the label template file:\n") +
        QDir::toNativeSeparators(data.path() + QStringLiteral("/Client ID with Barcode.LWL"))))
        << missing.err.toStdString();
}
