// Data sets over a 50,000-row client table: opening it (in its own order
// and by a name index), walking every row reading fields, and the edit-post
// round trip with its record lock, on the file store or a server.
//
//   dataset_bench [ROWS] [--server HOST[:PORT]/DATABASE]

#include "BenchArguments.h"

#include "Clock.h"
#include "session/DataDirectory.h"
#include "store/Database.h"
#include "dataset/TableDataSet.h"
#include "store/PostgresStore.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>

using namespace kb;

namespace {

const char* const BenchSchema = "kb_dataset_bench";

void fill(Database& db, int rows)
{
    std::vector<Params> batch;
    batch.reserve(size_t(rows));
    for (int i = 0; i < rows; ++i)
        batch.push_back({{QStringLiteral("P"), i + 1},
                         {QStringLiteral("C"), QString::number(100000 + i)},
                         {QStringLiteral("L"), QStringLiteral("Last%1").arg((i * 7919) % rows, 6, 10, QLatin1Char('0'))},
                         {QStringLiteral("F"), QStringLiteral("First%1").arg(i % 97)},
                         {QStringLiteral("S"), i % 5 == 0 ? QStringLiteral("I") : QStringLiteral("A")},
                         {QStringLiteral("A"), QStringLiteral("%1 Main Street").arg(i)},
                         {QStringLiteral("D"), QDate(1930, 1, 1).addDays(i % 20000)}});
    TransactionGuard guard(db);
    db.query(QStringLiteral("Insert into Clients (Person_ID, Client_ID, Last_Name, First_Name, Status, Address1, DOB) "
                            "values (:P, :C, :L, :F, :S, :A, :D)"))
        .execBatch(batch);
    guard.commit();
}

double elapsedMs(const QElapsedTimer& timer) { return timer.nsecsElapsed() / 1e6; }

void report(const char* what, double ms, const QString& extra = {})
{
    std::printf("  %-46s %9.1f ms %s\n", what, ms, qPrintable(extra));
}

void run(Database& db, int rows)
{
    QElapsedTimer timer;
    timer.start();
    fill(db, rows);
    report("filling Clients (batched insert)", elapsedMs(timer), QStringLiteral("%1 rows").arg(rows));

    TableDataSet clients(db, QStringLiteral("Clients"));
    timer.restart();
    clients.open();
    report("open Clients, primary order", elapsedMs(timer), QStringLiteral("%1 rows").arg(clients.recordCount()));

    timer.restart();
    qint64 checksum = 0;
    int walked = 0;
    for (clients.first(); !clients.eof(); clients.next()) {
        checksum += clients.fieldValue(u"Person_ID").toInt() + clients.fieldValue(u"Last_Name").toString().size();
        ++walked;
    }
    const double walk = elapsedMs(timer);
    report("walk every row, two fields each", walk,
           QStringLiteral("%1 rows, %2 ns/row (checksum %3)").arg(walked).arg(walk * 1e6 / walked, 0, 'f', 0).arg(checksum));

    timer.restart();
    clients.setIndexName(QStringLiteral("LAST_FIRST"));
    report("re-sort open set by LAST_FIRST (nocase)", elapsedMs(timer));
    timer.restart();
    const bool found = clients.locate(QStringLiteral("Client_ID"), QString::number(100000 + rows - 1));
    report("locate the last-added row by Client_ID", elapsedMs(timer), found ? QStringLiteral("found") : QStringLiteral("missing"));

    // The round trip the record services make for every save: lock and
    // re-read at edit, check, write and read back at post, unlock.
    constexpr int RoundTrips = 200;
    clients.first();
    timer.restart();
    for (int i = 0; i < RoundTrips; ++i) {
        clients.edit();
        clients.setFieldValue(u"Zip", QString::number(10000 + i));
        clients.post();
        clients.next();
    }
    const double trips = elapsedMs(timer);
    report("edit + post round trip (lock, check, write)", trips / RoundTrips,
           QStringLiteral("per row, average of %1").arg(RoundTrips));

    timer.restart();
    clients.close();
    report("close", elapsedMs(timer));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const BenchArguments arguments = BenchArguments::read(app.arguments().mid(1), 50000);
    const int rows = arguments.rows;
    const QString& server = arguments.server;
    if (rows <= 0) {
        std::fprintf(stderr, "usage: dataset_bench [ROWS] [--server HOST[:PORT]/DATABASE]\n");
        return 2;
    }
    FixedClock clock(QDateTime(QDate(2024, 3, 6), QTime(10, 30)));
    try {
        if (server.isEmpty()) {
            QTemporaryDir dir;
            auto db = createDataDirectory(dir.filePath(QStringLiteral("data")), clock);
            std::printf("SQLite data directory, %d clients\n", rows);
            run(*db, rows);
            return 0;
        }
        ServerAddress address = ServerAddress::parse(server);
        address.schema = QString::fromLatin1(BenchSchema);
        {
            PostgresStore cleaner(ServerAddress::parse(server));
            cleaner.exec(QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE").arg(QString::fromLatin1(BenchSchema)));
        }
        {
            auto db = createServerDatabase(address, clock);
            std::printf("PostgreSQL %s, %d clients\n", qPrintable(server), rows);
            run(*db, rows);
        }
        PostgresStore cleaner(ServerAddress::parse(server));
        cleaner.exec(QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE").arg(QString::fromLatin1(BenchSchema)));
    } catch (const DbError& e) {
        std::fprintf(stderr, "%s\n", qPrintable(e.message()));
        return 1;
    }
    return 0;
}
