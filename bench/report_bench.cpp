// The daily run sheet over a large day: DELIVERIES deliveries (10,000 by
// default) on 50 routes, each with its client and two to four items,
// rendered through the built-in template to a PDF file. Prints the time to
// lay the report out, to write the PDF, and both together, best of RUNS
// runs (3 by default), as elapsed time and as the process's CPU time (which
// a busy machine does not inflate). Run on an idle core for timing.
//
// usage: report_bench [DELIVERIES] [RUNS]

#include "data/RowsPipe.h"
#include "engine/ReportLayout.h"
#include "render/PagePainter.h"
#include "template/TemplateReader.h"
#include "template/TemplateRegistry.h"

#include <QDate>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <ctime>
#include <cstdio>
#include <limits>

using namespace kb;
using namespace kb::reports;

namespace {

ResultSet table(const std::vector<std::pair<const char*, FieldType>>& columns)
{
    std::vector<sql::OutputColumn> out;
    for (const auto& [name, type] : columns)
        out.push_back(sql::OutputColumn{QString::fromLatin1(name), type, 0});
    ResultSet rows(out);
    rows.setHasRows(true);
    return rows;
}

struct DayOfDeliveries
{
    ResultSet deliveries = table({{"Deliv_Dt", FieldType::Date}, {"Route_ID", FieldType::String},
                                  {"Stop", FieldType::Float}, {"Person_ID", FieldType::Int},
                                  {"Client_ID", FieldType::String}, {"Diet_Descr", FieldType::String}});
    ResultSet clients = table({{"Person_ID", FieldType::Int}, {"First_Name", FieldType::String},
                               {"Mid_Name", FieldType::String}, {"Last_Name", FieldType::String},
                               {"Address1", FieldType::String}, {"Address2", FieldType::String},
                               {"City", FieldType::String}, {"State", FieldType::String}, {"ZIP", FieldType::String},
                               {"Phone", FieldType::String}, {"Directions", FieldType::String}});
    ResultSet items = table({{"Person_ID", FieldType::Int}, {"Deliv_Dt", FieldType::Date},
                             {"Quantity", FieldType::Int}, {"Meal_Item", FieldType::String}});
    ResultSet parameters = table({{"Period_Beginning", FieldType::String}, {"Period_Ending", FieldType::String},
                                  {"Restrictions1", FieldType::String}, {"Restrictions2", FieldType::String}});
};

DayOfDeliveries makeDay(int count)
{
    static const char* first[] = {"Margaret", "Harold", "Dorothy", "Walter", "Evelyn", "Arthur", "Mildred", "Eugene"};
    static const char* last[] = {"Abernathy", "Baxter", "Castellano", "Dubois", "Eriksen", "Fitzgerald", "Okafor"};
    static const char* meals[] = {"Chicken dinner", "Beef stew", "Vegetable lasagna", "Milk 1%", "Fruit cup",
                                  "Whole wheat roll"};
    static const char* diets[] = {"", "Diabetic", "Low Sodium", "", "Renal / Low Sodium", ""};
    const QDate day(2024, 3, 6);
    const int routes = 50;
    DayOfDeliveries d;
    for (int i = 0; i < count; ++i) {
        const int person = 1000 + i;
        const int route = i * routes / count;
        const int stop = i - route * count / routes + 1;
        d.deliveries.appendRow({day, QStringLiteral("R%1").arg(route + 1, 2, 10, QLatin1Char('0')), double(stop),
                                person, QStringLiteral("%1").arg(person * 7 % 90000, 5, 10, QLatin1Char('0')),
                                QString::fromLatin1(diets[i % 6])});
        d.clients.appendRow({person, QString::fromLatin1(first[i % 8]), i % 3 ? QString() : QStringLiteral("J"),
                             QString::fromLatin1(last[i % 7]), QStringLiteral("%1 Maple St").arg(100 + i),
                             i % 4 ? QString() : QStringLiteral("Apt 2"), QStringLiteral("Kettlebrook"),
                             QStringLiteral("VT"), QStringLiteral("05%1").arg(i % 1000, 3, 10, QLatin1Char('0')),
                             QStringLiteral("(802) 555-%1").arg(i % 10000, 4, 10, QLatin1Char('0')),
                             i % 5 ? QString()
                                   : QStringLiteral("Blue house behind the church; park on the street and use the "
                                                    "ramp at the back.")});
        for (int k = 0; k < 2 + i % 3; ++k)
            d.items.appendRow({person, day, 1 + (i + k) % 2, QString::fromLatin1(meals[(i + k) % 6])});
    }
    d.parameters.appendRow({QStringLiteral("Wednesday, March 6, 2024"), QStringLiteral("Wednesday, March 6, 2024"),
                            QString(), QString()});
    return d;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", QByteArrayLiteral("offscreen"));
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments();
    const int count = args.size() > 1 ? std::max(1, args[1].toInt()) : 10000;
    const int runs = args.size() > 2 ? std::max(1, args[2].toInt()) : 3;

    const QString name = QStringLiteral("DailyRunRAP030103.rtm");
    const auto report =
        std::make_shared<ReportTemplate>(TemplateReader::readText(TemplateRegistry::builtInText(name), name));
    const DayOfDeliveries day = makeDay(count);
    RowsPipe deliveries(QStringLiteral("DBPipelineDeliveries"), day.deliveries);
    RowsPipe clients(QStringLiteral("DBPipelineClients"), day.clients);
    RowsPipe items(QStringLiteral("DBPipelineDeliveryDetails"), day.items);
    RowsPipe parameters(QStringLiteral("DBPipelineReportParameters"), day.parameters);
    clients.linkTo(deliveries, {{QStringLiteral("Person_ID"), QStringLiteral("Person_ID")}});
    items.linkTo(deliveries, {{QStringLiteral("Person_ID"), QStringLiteral("Person_ID")},
                              {QStringLiteral("Deliv_Dt"), QStringLiteral("Deliv_Dt")}});
    ReportInputs inputs;
    inputs.pipes = {&deliveries, &clients, &items, &parameters};
    inputs.now = QDateTime(QDate(2024, 3, 6), QTime(10, 30));

    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("runsheet.pdf"));
    qint64 bestLayout = std::numeric_limits<qint64>::max(), bestPdf = bestLayout, bestTotal = bestLayout;
    double bestCpu = std::numeric_limits<double>::max();
    int pages = 0;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        const std::clock_t cpuStart = std::clock();
        const ReportDocument document = layoutReport(report, inputs);
        const qint64 layout = timer.elapsed();
        writePdf(document, pdf);
        const qint64 total = timer.elapsed();
        bestCpu = std::min(bestCpu, 1000.0 * double(std::clock() - cpuStart) / CLOCKS_PER_SEC);
        pages = document.pageCount();
        bestLayout = std::min(bestLayout, layout);
        bestPdf = std::min(bestPdf, total - layout);
        bestTotal = std::min(bestTotal, total);
    }
    std::printf("run sheet: %d deliveries, %lld item lines, 50 routes -> %d pages, %.1f MB PDF\n", count,
                static_cast<long long>(day.items.rowCount()), pages, QFileInfo(pdf).size() / 1e6);
    std::printf("best of %d runs: layout %lld ms, PDF %lld ms, total %lld ms elapsed, %.0f ms CPU\n", runs,
                static_cast<long long>(bestLayout), static_cast<long long>(bestPdf),
                static_cast<long long>(bestTotal), bestCpu);
    return 0;
}
