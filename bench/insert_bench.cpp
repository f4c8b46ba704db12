// Inserting rows through the statement layer against the same inserts
// through the store's own client library with a prepared statement, in one
// transaction. The ratio is the layer's overhead.
//
//   insert_bench [ROWS] [--server HOST[:PORT]/DATABASE]

#include "BenchArguments.h"

#include "Clock.h"
#include "session/DataDirectory.h"
#include "store/Database.h"
#include "store/PostgresStore.h"

#include <QCoreApplication>
#include <QDate>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <libpq-fe.h>
#include <sqlite3.h>

#include <cstdio>
#include <string>

using namespace kb;

namespace {

const char* const LayerInsert =
    "Insert into Mealcrdt (Deliv_ID, Person_ID, Deliv_Dt, DOW, Item_ID, Quantity, Congregate, Modified_Ml, "
    "Service_ID, Sort_Order) values (:Deliv_ID, :Person_ID, :Deliv_Dt, :DOW, :Item_ID, :Quantity, :Congregate, "
    ":Modified_Ml, :Service_ID, :Sort_Order)";

QDate day(int i) { return QDate(2024, 1, 1).addDays(i % 365); }

double layerSingle(Database& db, int rows)
{
    QElapsedTimer timer;
    timer.start();
    TransactionGuard guard(db);
    Query insert = db.query(QString::fromLatin1(LayerInsert));
    for (int i = 0; i < rows; ++i) {
        insert.bind(QStringLiteral("Deliv_ID"), i)
            .bind(QStringLiteral("Person_ID"), i % 5000)
            .bind(QStringLiteral("Deliv_Dt"), day(i))
            .bind(QStringLiteral("DOW"), QStringLiteral("MON"))
            .bind(QStringLiteral("Item_ID"), i % 40)
            .bind(QStringLiteral("Quantity"), 1 + i % 3)
            .bind(QStringLiteral("Congregate"), false)
            .bind(QStringLiteral("Modified_Ml"), i % 7 == 0)
            .bind(QStringLiteral("Service_ID"), 1)
            .bind(QStringLiteral("Sort_Order"), i % 5);
        insert.execCommand();
    }
    guard.commit();
    return timer.nsecsElapsed() / 1e6;
}

double layerBatch(Database& db, int rows)
{
    QElapsedTimer timer;
    timer.start();
    TransactionGuard guard(db);
    Query insert = db.query(QString::fromLatin1(LayerInsert));
    std::vector<Params> batch;
    batch.reserve(rows);
    for (int i = 0; i < rows; ++i)
        batch.push_back({{QStringLiteral("Deliv_ID"), i},
                         {QStringLiteral("Person_ID"), i % 5000},
                         {QStringLiteral("Deliv_Dt"), day(i)},
                         {QStringLiteral("DOW"), QStringLiteral("MON")},
                         {QStringLiteral("Item_ID"), i % 40},
                         {QStringLiteral("Quantity"), 1 + i % 3},
                         {QStringLiteral("Congregate"), false},
                         {QStringLiteral("Modified_Ml"), i % 7 == 0},
                         {QStringLiteral("Service_ID"), 1},
                         {QStringLiteral("Sort_Order"), i % 5}});
    insert.execBatch(batch);
    guard.commit();
    return timer.nsecsElapsed() / 1e6;
}

double sqliteNative(const QString& path, int rows)
{
    sqlite3* db = nullptr;
    sqlite3_open(path.toUtf8().constData(), &db);
    sqlite3_exec(db, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL", nullptr, nullptr, nullptr);
    QElapsedTimer timer;
    timer.start();
    sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(db,
                       "INSERT INTO Mealcrdt (Deliv_ID, Person_ID, Deliv_Dt, DOW, Item_ID, Quantity, Congregate, "
                       "Modified_Ml, Service_ID, Sort_Order) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10)",
                       -1, &stmt, nullptr);
    for (int i = 0; i < rows; ++i) {
        const std::string date = day(i).toString(Qt::ISODate).toStdString();
        sqlite3_bind_int(stmt, 1, i);
        sqlite3_bind_int(stmt, 2, i % 5000);
        sqlite3_bind_text(stmt, 3, date.c_str(), -1, SQLITE_TRANSIENT);
        sqlite3_bind_text(stmt, 4, "MON", 3, SQLITE_STATIC);
        sqlite3_bind_int(stmt, 5, i % 40);
        sqlite3_bind_int(stmt, 6, 1 + i % 3);
        sqlite3_bind_int(stmt, 7, 0);
        sqlite3_bind_int(stmt, 8, i % 7 == 0);
        sqlite3_bind_int(stmt, 9, 1);
        sqlite3_bind_int(stmt, 10, i % 5);
        sqlite3_step(stmt);
        sqlite3_reset(stmt);
    }
    sqlite3_finalize(stmt);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    const double ms = timer.nsecsElapsed() / 1e6;
    sqlite3_close(db);
    return ms;
}

// The server's own client library, one prepared statement, pipelined in the
// same chunks the layer uses: the fastest the wire allows for this shape.
double postgresNative(const ServerAddress& address, int rows)
{
    PostgresStore store(address);
    PGconn* conn = store.handle();
    PQclear(PQexec(conn, "BEGIN"));
    QElapsedTimer timer;
    timer.start();
    PQclear(PQprepare(conn, "native_insert",
                      "INSERT INTO mealcrdt (deliv_id, person_id, deliv_dt, dow, item_id, quantity, congregate, "
                      "modified_ml, service_id, sort_order) VALUES ($1, $2, $3, $4, $5, $6, $7, $8, $9, $10)",
                      10, nullptr));
    PQenterPipelineMode(conn);
    for (int start = 0; start < rows; start += 500) {
        const int end = std::min(rows, start + 500);
        for (int i = start; i < end; ++i) {
            const std::string v[10] = {std::to_string(i),         std::to_string(i % 5000),
                                       day(i).toString(Qt::ISODate).toStdString(), "MON",
                                       std::to_string(i % 40),    std::to_string(1 + i % 3),
                                       "false",                   i % 7 == 0 ? "true" : "false",
                                       "1",                       std::to_string(i % 5)};
            const char* values[10];
            for (int k = 0; k < 10; ++k)
                values[k] = v[k].c_str();
            PQsendQueryPrepared(conn, "native_insert", 10, values, nullptr, nullptr, 0);
        }
        PQpipelineSync(conn);
        for (;;) {
            PGresult* r = PQgetResult(conn);
            if (!r)
                continue;
            const bool sync = PQresultStatus(r) == PGRES_PIPELINE_SYNC;
            PQclear(r);
            if (sync)
                break;
        }
    }
    PQexitPipelineMode(conn);
    PQclear(PQexec(conn, "COMMIT"));
    return timer.nsecsElapsed() / 1e6;
}

void report(const char* what, int rows, double ms)
{
    std::printf("%-42s %8d rows %9.1f ms %10.0f rows/s\n", what, rows, ms, rows / (ms / 1000.0));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const BenchArguments arguments = BenchArguments::read(app.arguments().mid(1), 100000);
    const int rows = arguments.rows;
    const QString& server = arguments.server;
    FixedClock clock(QDateTime(QDate(2024, 3, 6), QTime(10, 30)));

    if (server.isEmpty()) {
        QTemporaryDir dir;
        const QString layerDir = dir.filePath(QStringLiteral("layer"));
        const QString nativeDir = dir.filePath(QStringLiteral("native"));
        createDataDirectory(nativeDir, clock).reset();
        const double native = sqliteNative(databaseFilePath(nativeDir), rows);
        auto db = createDataDirectory(layerDir, clock);
        const double layer = layerSingle(*db, rows);
        db->emptyTable(QStringLiteral("Mealcrdt"));
        const double batch = layerBatch(*db, rows);
        std::printf("SQLite, one transaction\n");
        report("native sqlite3, prepared statement", rows, native);
        report("layer, Query::execCommand per row", rows, layer);
        report("layer, Query::execBatch", rows, batch);
        std::printf("overhead: %.2fx per row, %.2fx batched\n", layer / native, batch / native);
        return 0;
    }

    ServerAddress address = ServerAddress::parse(server);
    address.schema = QStringLiteral("kb_insert_bench");
    {
        PostgresStore cleaner(ServerAddress::parse(server));
        cleaner.exec(QStringLiteral("DROP SCHEMA IF EXISTS kb_insert_bench CASCADE"));
    }
    auto db = createServerDatabase(address, clock);
    const double native = postgresNative(address, rows);
    db->emptyTable(QStringLiteral("Mealcrdt"));
    const double batch = layerBatch(*db, rows);
    db->emptyTable(QStringLiteral("Mealcrdt"));
    const int singleRows = std::min(rows, 20000);
    const double single = layerSingle(*db, singleRows);
    std::printf("PostgreSQL %s, one transaction\n", qPrintable(server));
    report("native libpq, prepared, pipelined", rows, native);
    report("layer, Query::execBatch (pipelined)", rows, batch);
    report("layer, Query::execCommand per row", singleRows, single);
    std::printf("overhead: %.2fx batched\n", batch / native);
    db.reset();
    PostgresStore cleaner(ServerAddress::parse(server));
    cleaner.exec(QStringLiteral("DROP SCHEMA IF EXISTS kb_insert_bench CASCADE"));
    return 0;
}
