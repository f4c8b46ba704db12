// A delivery report of a large day, the whole way a user's OK takes it: the
// report's data read from the saved run (the statement and its details; a
// label report makes every delivery's labels, as after Cancel in its
// dialog), laid out through the built-in template and written to a PDF
// file. The
// demo agency of --clients clients (19,000 by default) saves about 10,000
// deliveries on its busiest weekday; the benchmark takes the date with the
// most saved deliveries unless --date names one. Prints the best of
// --repeat runs (3 by default) of each step as elapsed time, and the whole
// as elapsed and processor time (which a busy machine does not inflate).
//
// usage: report_bench [--clients N] [--report INDEX] [--date YYYY-MM-DD]
//                     [--repeat R] [--data DIR | --server HOST[:PORT]/DATABASE]

#include "BenchDemo.h"

#include "ReportHolder.h"
#include "delivery/DeliveryReportList.h"
#include "delivery/DeliveryReportLists.h"
#include "delivery/data/TDataModule2.h"
#include "delivery/questions/ReportQuestions.h"
#include "delivery/questions/TFormClientItemsSortOrder.h"
#include "delivery/questions/TFormDeliveryDietCriteria.h"
#include "engine/ReportLayout.h"
#include "render/PagePainter.h"
#include "template/TemplateReader.h"
#include "template/TemplateRegistry.h"

#include <QFileInfo>
#include <QGuiApplication>

#include <ctime>
#include <limits>

using namespace kb;
using namespace kb::reports;

namespace {

// The answers a benchmark gives: every diet, the first sort order, no item.
class BenchQuestions final : public ReportQuestions
{
public:
    bool askDietCriteria(TFormDeliveryDietCriteria& form) override
    {
        form.diets().setAll(true);
        return true;
    }
    bool askClientItemsSortOrder(TFormClientItemsSortOrder&) override { return true; }
    bool askItemLimitation(TFormItemLimitation&) override { return false; }
    // Cancelled: a label for every delivery.
    bool askLabelLimit(TFormLabelLimit&) override { return false; }
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", QByteArrayLiteral("offscreen"));
    QGuiApplication app(argc, argv);
    BenchOptions defaults;
    defaults.clients = 19000;
    defaults.repeat = 3;
    defaults.date = QDate();
    QStringList args = app.arguments().mid(1);
    int report = 0;
    const qsizetype at = args.indexOf(QStringLiteral("--report"));
    if (at >= 0 && at + 1 < args.size()) {
        report = args[at + 1].toInt();
        args.remove(at, 2);
    }
    const BenchOptions options = BenchOptions::read(args, defaults);
    if (report < 0 || report >= DeliveryReports::fixedCount) {
        std::fprintf(stderr, "--report takes the number of a delivery report (0 to %d)\n",
                     DeliveryReports::fixedCount - 1);
        return 2;
    }

    FixedClock clock(QDateTime(QDate(2024, 3, 6), QTime(10, 30)));
    QTemporaryDir temp;
    BenchSchema schema(options, QStringLiteral("report_bench"));
    QElapsedTimer made;
    made.start();
    const std::unique_ptr<Database> db = openBenchData(options, temp, clock, schema.name);
    if (options.dataDir.isEmpty())
        std::printf("demo agency of %d clients made in %lld ms (%s)\n", options.clients,
                    static_cast<long long>(made.elapsed()), options.storeName());
    QDate date = options.date;
    if (!date.isValid())
        date = db->execute(
                     QStringLiteral("Select Deliv_Dt, Count(*) as Deliveries from Deliveri group by Deliv_Dt "
                                    "order by 2 desc, 1"))
                   .value(0, 0)
                   .toDate();
    const qint64 deliveries = db->execute(QStringLiteral("Select Count(*) from Deliveri where Deliv_Dt = :d"),
                                          {{QStringLiteral("d"), date}})
                                  .value(0, 0)
                                  .toLongLong();

    DeliveryReportChoices choices;
    choices.report = report;
    choices.from = choices.to = choices.dates[0] = date;
    choices.services.setEntries(serviceEntries(*db));
    choices.routes.setEntries(routeEntries(*db, RouteListKind::Routes));
    const QString file = DeliveryReports::templateFile(report);
    const auto layoutTemplate =
        std::make_shared<ReportTemplate>(TemplateReader::readText(TemplateRegistry::builtInText(file), file));
    CountingUserInterface ui;
    BenchQuestions questions;
    const QString pdf = temp.filePath(QStringLiteral("report.pdf"));

    const qint64 none = std::numeric_limits<qint64>::max();
    qint64 bestData = none, bestLayout = none, bestPdf = none, bestTotal = none;
    double bestCpu = std::numeric_limits<double>::max();
    int pages = 0;
    qsizetype rows = 0;
    for (int run = 0; run < options.repeat; ++run) {
        QElapsedTimer timer;
        timer.start();
        const std::clock_t cpuStart = std::clock();
        TDataModule2 module(*db, clock);
        std::optional<ReportData> data = module.build(choices, questions, ui, nullptr);
        const qint64 read = timer.elapsed();
        ReportInputs inputs;
        for (const auto& pipe : data->pipes)
            inputs.pipes.push_back(pipe.get());
        inputs.parameters = {{QStringLiteral("SeparateDates"), false}};
        inputs.now = clock.now();
        inputs.database = db.get();
        const ReportDocument document = layoutReport(layoutTemplate, inputs);
        const qint64 laid = timer.elapsed();
        writePdf(document, pdf);
        const qint64 total = timer.elapsed();
        bestCpu = std::min(bestCpu, 1000.0 * double(std::clock() - cpuStart) / CLOCKS_PER_SEC);
        bestData = std::min(bestData, read);
        bestLayout = std::min(bestLayout, laid - read);
        bestPdf = std::min(bestPdf, total - laid);
        bestTotal = std::min(bestTotal, total);
        pages = document.pageCount();
        rows = data->mainData().rowCount();
    }
    std::printf("%s of %s: %lld saved deliveries, %lld rows -> %d pages, %.1f MB PDF (%s)\n",
                qPrintable(DeliveryReports::name(report)), qPrintable(date.toString(Qt::ISODate)),
                static_cast<long long>(deliveries), static_cast<long long>(rows), pages,
                QFileInfo(pdf).size() / 1e6, options.storeName());
    std::printf(
        "best of %d runs: data %lld ms, layout %lld ms, PDF %lld ms, total %lld ms elapsed, %.0f ms CPU\n",
        options.repeat, static_cast<long long>(bestData), static_cast<long long>(bestLayout),
        static_cast<long long>(bestPdf), static_cast<long long>(bestTotal), bestCpu);
    return 0;
}
