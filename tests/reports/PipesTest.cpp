// Data pipes: rows in memory linked to a master, the program's data sets,
// a template's own statements on both stores, CSV in and out.

#include "ReportTestSupport.h"

#include "InsertRow.h"
#include "ReportHolder.h"
#include "ReportOutput.h"
#include "MessageError.h"
#include "TempDataDir.h"
#include "data/CallbackPipe.h"
#include "data/CsvRows.h"
#include "data/DataSetPipe.h"
#include "data/PipeCsv.h"
#include "data/StatementPipe.h"
#include "dataset/QueryDataSet.h"

#include <QDate>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;
using namespace kb::test;

TEST(ReportPipes, LinkedRowsFollowTheirMaster)
{
    auto master = pipeFrom(QStringLiteral("M"), QStringLiteral("Id,Day\n1,2024-03-06\n2,2024-03-06\n3,2024-03-07\n"));
    auto detail = pipeFrom(QStringLiteral("D"),
                           QStringLiteral("MId,Day,Item\n1,2024-03-06,a\n2,2024-03-06,b\n1,2024-03-06,c\n1,2024-03-07,x\n"));
    detail->linkTo(*master, {{QStringLiteral("MId"), QStringLiteral("Id")}, {QStringLiteral("Day"), QStringLiteral("Day")}});
    auto items = [&] {
        QStringList list;
        for (qsizetype r = 0; r < detail->rowCount(); ++r) {
            detail->seek(r);
            list << detail->value(QStringView(u"Item")).toString();
        }
        return list;
    };
    master->seek(0);
    EXPECT_EQ(items(), (QStringList{"a", "c"}));
    master->seek(1);
    EXPECT_EQ(items(), QStringList{"b"});
    master->seek(2);
    EXPECT_TRUE(items().isEmpty()); // no row of person 3; person 1's other day does not count
    EXPECT_FALSE(detail->value(0).isValid());
    // A detail stands on its first row again whenever the master moves.
    master->seek(0);
    detail->seek(1);
    master->seek(1);
    EXPECT_EQ(detail->currentRow(), 0);
    EXPECT_THROW(detail->linkTo(*master, {{QStringLiteral("Nope"), QStringLiteral("Id")}}), MessageError);
}

TEST(ReportPipes, CsvTypesAndCsvOut)
{
    const ResultSet rows = readCsvText(QStringLiteral("Code,Zip,Count,Amount,Flag,Day,Stamp,Note\n"
                                                      "007,05101,3,2.5,true,2024-03-06,2024-03-06 10:30:00,\"\"\n"
                                                      "12,05102,-4,1,false,2024-03-07,2024-03-07 08:00:00,\n"),
                                       QStringLiteral("t.csv"));
    ASSERT_EQ(rows.rowCount(), 2);
    EXPECT_EQ(rows.columnType(0), FieldType::String); // leading zeros keep a code a code
    EXPECT_EQ(rows.columnType(1), FieldType::String);
    EXPECT_EQ(rows.columnType(2), FieldType::Int);
    EXPECT_EQ(rows.columnType(3), FieldType::Float);
    EXPECT_EQ(rows.columnType(4), FieldType::Bool);
    EXPECT_EQ(rows.columnType(5), FieldType::Date);
    EXPECT_EQ(rows.columnType(6), FieldType::DateTime);
    EXPECT_EQ(rows.value(0, 5).toDate(), QDate(2024, 3, 6));
    EXPECT_TRUE(rows.value(1, 7).isNull());
    EXPECT_FALSE(rows.value(0, 7).isNull()); // "" is an empty text, not null
    EXPECT_THROW(readCsvText(QStringLiteral("A\n1,2\n"), QStringLiteral("t.csv")), MessageError);
    EXPECT_THROW(readCsvText(QString(), QStringLiteral("t.csv")), MessageError);

    RowsPipe pipe(QStringLiteral("P"), rows);
    QString out;
    QTextStream stream(&out);
    writePipeCsv(pipe, stream);
    stream.flush();
    EXPECT_EQ(out, "Code,Zip,Count,Amount,Flag,Day,Stamp,Note\n"
                   "007,05101,3,2.5,true,2024-03-06,2024-03-06 10:30:00,\"\"\n"
                   "12,05102,-4,1,false,2024-03-07,2024-03-07 08:00:00,\n");
}

TEST(ReportPipes, CallbackAnswersEachField)
{
    CallbackPipe titles(QStringLiteral("JITPipeline1"), {QStringLiteral("ReportTitle"), QStringLiteral("ReportLabel")},
                        [](qsizetype, const QString& field) {
                            return field == QLatin1String("ReportTitle") ? QStringLiteral("One or more of: Diabetic ")
                                                                         : QStringLiteral("My list");
                        });
    auto p = pipeFrom(QStringLiteral("P"), QStringLiteral("Name\nAnn\n"));
    const ReportDocument d = layoutOf(QStringLiteral(R"(report "Diets"
  pipe P
  title height 0.5in
    text 0 0 5in 0.2in "{JITPipeline1.ReportLabel}: {trim(JITPipeline1.ReportTitle)}"
  end
end
)"),
                                      {p.get(), &titles});
    EXPECT_EQ(pageTexts(d, 0), QStringList{"My list: One or more of: Diabetic"});
}

class ReportStorePipes : public ::testing::TestWithParam<StoreKind>
{
};

TEST_P(ReportStorePipes, TemplatesBringTheirOwnDataAndDataSetsFeedPipes)
{
    KB_REQUIRE_STORE(GetParam());
    TempDataDir data(GetParam());
    Database& db = data.db();
    insertRow(db, QStringLiteral("Locatns"),
              {{QStringLiteral("LOCATION_ID"), 1}, {QStringLiteral("LOCATION"), QStringLiteral("North Kitchen")}});
    insertRow(db, QStringLiteral("Locatns"),
              {{QStringLiteral("LOCATION_ID"), 2}, {QStringLiteral("LOCATION"), QStringLiteral("South Kitchen")}});
    for (const auto& [route, center] : {std::pair{"N1", 1}, std::pair{"N2", 1}, std::pair{"S1", 2}})
        insertRow(db, QStringLiteral("Routes"),
                  {{QStringLiteral("ROUTE_ID"), QString::fromLatin1(route)},
                   {QStringLiteral("ROUTE_DESC"), QStringLiteral("Route ") + QString::fromLatin1(route)},
                   {QStringLiteral("DIST_CENTER_ID"), center}});

    // A template with its own statements: a master over the centres and a
    // detail taking :Location_ID from it, and a report parameter.
    ensureGuiApplication();
    ReportInputs inputs;
    inputs.database = &db;
    inputs.parameters = {{QStringLiteral("FirstCenter"), 1}};
    const auto report = templateFrom(QStringLiteral(R"(report "Centres"
  data Centers
    sql "select Location_ID, Location from Locatns"
    sql "where Location_ID >= :FirstCenter order by Location_ID"
  end
  data CenterRoutes
    sql "select Route_ID, Route_Desc from Routes where Dist_Center_ID = :Location_ID order by Route_ID"
    master Centers
  end
  pipe Centers
  detail height 0.3in
    text 0 0 3in 0.2in "{Location}"
    subreport 0.5in 0.2in pipe CenterRoutes
      detail height 0.2in
        text 0 0 3in 0.2in "{Route_ID} {Route_Desc}"
      end
    end
  end
end
)"));
    const ReportDocument d = layoutReport(report, inputs);
    EXPECT_EQ(pageTexts(d, 0), (QStringList{"North Kitchen", "N1 Route N1", "N2 Route N2", "South Kitchen",
                                            "S1 Route S1"}));
    // Without the agency's data, such a template says what it misses.
    ReportInputs none;
    EXPECT_THROW(layoutReport(report, none), MessageError);
    // Its data as CSV, as the headless --csv writes it.
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("Centres.rtm"));
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(QStringLiteral("report \"Centres\"\n  data Centers\n    sql \"select Location_ID, Location from "
                                 "Locatns where Location_ID >= :FirstCenter order by Location_ID\"\n  end\n"
                                 "  pipe Centers\n  detail height 1\n  end\nend\n")
                      .toUtf8());
        out.close();
        PdfFileOutput output(dir.filePath(QStringLiteral("x.pdf")));
        ReportHolder holder(output, data.clock());
        holder.setTemplateFileName(file);
        holder.setDatabase(&db);
        holder.setParameter(QStringLiteral("FirstCenter"), 2);
        QString csv;
        QTextStream stream(&csv);
        holder.writeCsv(stream);
        stream.flush();
        EXPECT_EQ(csv, "Location_ID,Location\n2,South Kitchen\n");
    }

    // The program's data sets: moving the master pipe moves the data set,
    // and a detail data set linked to it follows.
    QueryDataSet centers(db, QStringLiteral("select Location_ID, Location from Locatns order by Location_ID"));
    QueryDataSet routes(db, QStringLiteral("select Route_ID, Dist_Center_ID from Routes "
                                           "where Dist_Center_ID = :Dist_Center_ID order by Route_ID"));
    centers.open();
    routes.setMaster(centers, QStringLiteral("Location_ID"), QStringLiteral("Dist_Center_ID"));
    routes.open();
    DataSetPipe centersPipe(QStringLiteral("DBPipelineCenters"), centers);
    DataSetPipe routesPipe(QStringLiteral("DBPipelineRoutes"), routes);
    const ReportDocument fromSets = layoutOf(QStringLiteral(R"(report "Centres"
  pipe DBPipelineCenters
  detail height 0.3in stretch
    text 0 0 3in 0.2in "{Location}: {DBPipelineRoutes.Route_ID}"
    subreport 3in 0 pipe DBPipelineRoutes inline
      detail height 0.2in
        text 0 0 1in 0.2in "{Route_ID}"
      end
    end
  end
end
)"),
                                             {&centersPipe, &routesPipe});
    EXPECT_EQ(pageTexts(fromSets, 0), (QStringList{"North Kitchen: N1", "N1", "N2", "South Kitchen: S1", "S1"}));

    // The statement pipe runs again only when its values change.
    StatementPipe counted(QStringLiteral("Count"), db, QStringLiteral("select count(*) as N from Routes where "
                                                                      "Dist_Center_ID = :Center"));
    counted.setParameter(QStringLiteral("Center"), 1);
    EXPECT_EQ(counted.value(0).toInt(), 2);
    counted.setParameter(QStringLiteral("Center"), 2);
    counted.invalidate();
    EXPECT_EQ(counted.value(0).toInt(), 1);
}

INSTANTIATE_TEST_SUITE_P(Stores, ReportStorePipes, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });
