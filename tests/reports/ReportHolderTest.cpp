// The loading API as the report screens use it, the built-in templates and
// their installation into data directories.

#include "ReportTestSupport.h"
#include "RunCommand.h"

#include "Clock.h"
#include "ReportHolder.h"
#include "ReportOutput.h"
#include "engine/ReportDocument.h"
#include "template/TemplateError.h"
#include "template/TemplateReader.h"
#include "template/TemplateRegistry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;
using namespace kb::test;

namespace {

// Remembers what the holder sent where.
class RecordingOutput final : public ReportOutput
{
public:
    void preview(std::shared_ptr<const ReportDocument> document) override
    {
        ++previews;
        last = std::move(document);
    }
    bool print(const ReportDocument& document, bool showDialog) override
    {
        ++prints;
        dialogShown = showDialog;
        pages = document.pageCount();
        return !cancel;
    }
    int previews = 0;
    int prints = 0;
    int pages = 0;
    bool dialogShown = false;
    bool cancel = false;
    std::shared_ptr<const ReportDocument> last;
};

void writeFile(const QString& path, const QString& text)
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(text.toUtf8());
}

const QString SimpleTemplate = QStringLiteral(R"(report "Simple"
  parameter Period ""
  pipe DBPipelineDeliveries
  title height 0.3in
    text 0 0 5in 0.2in "Deliveries of {$Period}"
  end
  detail height 0.2in
    text 0 0 5in 0.2in "{Route_ID} {Client_ID}"
  end
end
)");

} // namespace

TEST(ReportHolder, LoadsHandsOverAndPrintsToTheChosenDestination)
{
    ensureGuiApplication();
    QTemporaryDir dir;
    writeFile(dir.filePath(QStringLiteral("Simple.rtm")), SimpleTemplate);
    FixedClock clock(QDateTime(QDate(2024, 3, 6), QTime(10, 30)));
    RecordingOutput output;
    ReportHolder holder(output, clock);

    // A missing template: the message every report screen shows.
    try {
        holder.loadFromDataDirectory(dir.path(), QStringLiteral("Missing.rtm"));
        FAIL() << "no error for a missing template";
    } catch (const TemplateMissing& e) {
        EXPECT_EQ(e.message(), "Could not locate the report template file:\n\r" + dir.filePath("Missing.rtm"));
    }
    EXPECT_FALSE(holder.templateExists());

    holder.loadFromDataDirectory(dir.path(), QStringLiteral("Simple.rtm"));
    EXPECT_TRUE(holder.templateExists());
    auto deliveries = pipeFrom(QStringLiteral("DBPipelineDeliveries"),
                               QStringLiteral("Route_ID,Client_ID\nR1,00707\nR2,00714\n"));
    holder.setPipe(*deliveries);
    holder.setParameter(QStringLiteral("period"), QStringLiteral("March 6")); // names ignore case

    holder.resetDevices();
    EXPECT_EQ(holder.destination(), ReportDestination::Screen);
    EXPECT_TRUE(holder.print());
    ASSERT_EQ(output.previews, 1);
    EXPECT_EQ(pageTexts(*output.last, 0), (QStringList{"Deliveries of March 6", "R1 00707", "R2 00714"}));

    holder.setDestination(*destinationFromName(QStringLiteral("Printer")));
    holder.setShowPrintDialog(false);
    EXPECT_TRUE(holder.print());
    EXPECT_EQ(output.prints, 1);
    EXPECT_FALSE(output.dialogShown);
    EXPECT_EQ(output.pages, 1);
    output.cancel = true;
    holder.setShowPrintDialog(true);
    EXPECT_FALSE(holder.print()); // the user cancelled the print dialog
    EXPECT_TRUE(output.dialogShown);
    EXPECT_FALSE(destinationFromName(QStringLiteral("Fax")).has_value());

    // The same template run again reads the pipe's data as it stands then.
    QString csv;
    QTextStream out(&csv);
    holder.writeCsv(out);
    out.flush();
    EXPECT_EQ(csv, "Route_ID,Client_ID\nR1,00707\nR2,00714\n");

    // A template without its pipe says which one is missing.
    holder.clearPipes();
    try {
        holder.layout();
        FAIL() << "no error without the pipe";
    } catch (const TemplateError& e) {
        EXPECT_TRUE(e.message().contains("needs the data pipe DBPipelineDeliveries")) << e.message().toStdString();
    }
}

TEST(ReportHolder, BuiltInTemplatesAreValidAndInstalledOnce)
{
    const QStringList names = TemplateRegistry::builtInNames();
    ASSERT_TRUE(names.contains(QStringLiteral("DailyRunRAP030103.rtm")));
    for (const QString& name : names)
        EXPECT_NO_THROW(TemplateReader::readText(TemplateRegistry::builtInText(name), name)) << name.toStdString();
    EXPECT_TRUE(TemplateRegistry::builtInText(QStringLiteral("../etc/passwd")).isEmpty());

    QTemporaryDir dir;
    // An agency's own version is kept.
    writeFile(dir.filePath(QStringLiteral("DailyRunRAP030103.rtm")), QStringLiteral("report \"Ours\"\nend\n"));
    EXPECT_TRUE(TemplateRegistry::install(dir.path()).isEmpty() || !names.contains("DailyRunRAP030103.rtm") ||
                !TemplateRegistry::install(dir.path()).contains("DailyRunRAP030103.rtm"));
    QFile kept(dir.filePath(QStringLiteral("DailyRunRAP030103.rtm")));
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "report \"Ours\"\nend\n");

    // init writes them into a new data directory.
    const QString data = dir.filePath(QStringLiteral("agency"));
    const CommandResult init = runKettlebrook({QStringLiteral("init"), data});
    ASSERT_EQ(init.exitCode, 0) << init.err.toStdString();
    for (const QString& name : names)
        EXPECT_TRUE(QFile::exists(QDir(data).filePath(name))) << name.toStdString();

    // An older data directory gets the ones it lacks, and keeps its own.
    ASSERT_TRUE(QFile::remove(QDir(data).filePath(names.first())));
    const CommandResult install =
        runKettlebrook({QStringLiteral("--data"), data, QStringLiteral("install-templates")});
    ASSERT_EQ(install.exitCode, 0) << install.err.toStdString();
    EXPECT_EQ(install.out, QStringLiteral("Template\n") + names.first() + u'\n');
    EXPECT_EQ(runKettlebrook({QStringLiteral("--data"), data, QStringLiteral("install-templates")}).out, "Template\n");
    EXPECT_EQ(runKettlebrook({QStringLiteral("--data"), dir.path(), QStringLiteral("install-templates")}).exitCode, 2);
}

TEST(ReportHolder, UserDefinedReportsAreListedByTheirNames)
{
    QTemporaryDir dir;
    for (const char* name : {"USERREPORTDELIVERYWeekly Count.rtm", "USERREPORTDELIVERYA.rtm", "USERREPORTAGENCYX.rtm",
                             "USERREPORTDELIVERY.rtm", "Other.rtm"})
        writeFile(dir.filePath(QLatin1String(name)), QStringLiteral("report\nend\n"));
    EXPECT_EQ(userDefinedReports(dir.path(), QStringLiteral("USERREPORTDELIVERY")),
              (QStringList{"A", "Weekly Count"}));
    EXPECT_EQ(userDefinedReports(dir.path(), QStringLiteral("USERREPORTAGENCY")), QStringList{"X"});
}
