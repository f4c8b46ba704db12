// The client look-up of the outcome screens over a large agency (50,000
// clients by default), on the file store or a server: a search as the user
// types a name ("Last" and "Last, First") or a client number, the next
// window when the list scrolls, and, for comparison, reading every client
// with the look-up's full statement as a plain list would.
//
//   client_lookup_bench [--clients N] [--data DIR | --server HOST[:PORT]/DATABASE] [--repeat R]

#include "BenchDemo.h"

#include "ClientLookup.h"

#include <QCoreApplication>
#include <QRandomGenerator>

#include <cstdio>

using namespace kb;

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    BenchOptions defaults;
    defaults.clients = 50000;
    defaults.repeat = 200;
    const BenchOptions options = BenchOptions::read(app.arguments().mid(1), defaults);
    FixedClock clock(QDateTime(QDate(2024, 3, 6), QTime(10, 30)));
    QTemporaryDir temp;
    BenchSchema schema(options, QStringLiteral("kb_client_lookup_bench"));
    QElapsedTimer timer;
    timer.start();
    std::unique_ptr<Database> db = openBenchData(options, temp, clock, schema.name);
    if (options.dataDir.isEmpty())
        std::printf("demo agency of %d clients made in %lld ms (%s)\n", options.clients,
                    static_cast<long long>(timer.elapsed()), options.storeName());

    // Names and numbers to look for, taken from clients at random.
    const ResultSet all = db->execute(QStringLiteral("Select Last_Name, First_Name, Client_ID from Clients "
                                                     "where Client_ID > ''"));
    if (all.isEmpty()) {
        std::printf("no clients\n");
        return 1;
    }
    QStringList lasts;
    QStringList fulls;
    QStringList numbers;
    QRandomGenerator random(11);
    for (int i = 0; i < options.repeat; ++i) {
        const qsizetype row = qsizetype(random.bounded(int(all.rowCount())));
        const QString last = all.value(row, 0).toString().trimmed();
        lasts << last.left(1 + i % 4).toLower();
        fulls << last + QStringLiteral(", ") + all.value(row, 1).toString().trimmed().left(2);
        numbers << all.value(row, 2).toString().trimmed();
    }

    ClientLookup lookup(*db, QStringLiteral("Locate the Client"));
    int found = 0;
    reportTimings("search by the first letters of a name", timeEach(options.repeat, [&](int i) {
                      lookup.search(lasts[i]);
                      found += lookup.found();
                  }));
    reportTimings("search by \"Last, First\"", timeEach(options.repeat, [&](int i) {
                      lookup.search(fulls[i]);
                      found += lookup.found();
                  }));
    reportTimings("the next window of 100 (up to 500 rows)", timeEach(options.repeat, [&](int i) {
                      if (i % 4 == 0) lookup.search(lasts[i]);
                      lookup.fetchMore();
                  }));
    lookup.setSearchBy(ClientLookup::SearchBy::ClientId);
    reportTimings("search by client number", timeEach(options.repeat, [&](int i) {
                      lookup.search(numbers[i]);
                      found += lookup.found();
                  }));
    reportTimings("every client, as a plain list reads them", timeEach(std::min(options.repeat, 5), [&](int) {
                      db->execute(QStringLiteral(
                          "Select Person_ID, Client_ID, Last_Name+', '+First_Name as Last_First, "
                          "Address1, City, State, ZIP, Phone from Clients where Client_ID > '' "
                          "Order by Last_First NoCase"));
                  }));
    std::printf("searches that found their client: %d of %d\n", found, 3 * options.repeat);
    return 0;
}
