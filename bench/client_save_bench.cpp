// Saving clients through the client rules on an agency of 50,000 clients:
// opening the Clients set with the rules on it, a save that changes
// nothing, a status change, a save that writes many History rows, and
// the suspension flag calculated for every row, on the file store or a
// server.
//
//   client_save_bench [CLIENTS] [--server HOST[:PORT]/DATABASE]

#include "BenchArguments.h"

#include "Clock.h"
#include "UserInterface.h"
#include "dataset/TableDataSet.h"
#include "records/DataSetActions.h"
#include "records/RecordServices.h"
#include "rules/ClientRules.h"
#include "session/DataDirectory.h"
#include "session/SessionState.h"
#include "store/Database.h"
#include "store/PostgresStore.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>

using namespace kb;

namespace {

const char* const BenchSchema = "kb_client_save_bench";

// A user who answers every question No and reads nothing.
class SilentUser final : public UserInterface
{
public:
    void information(const QString&) override {}
    void warning(const QString&) override {}
    void error(const QString&) override {}
    Answer question(const QString&, Buttons) override { return Answer::No; }
    void progressStart(const QString&) override {}
    void progressStep(int) override {}
    void progressEnd() override {}
    void setBusy(bool) override {}
};

// Active ongoing clients in households of two, a tenth of them suspended
// today, each with a future scheduled delivery.
void fill(Database& db, int clients)
{
    std::vector<Params> rows;
    std::vector<Params> suspends;
    std::vector<Params> dated;
    for (int i = 1; i <= clients; ++i) {
        rows.push_back({{QStringLiteral("P"), i},
                        {QStringLiteral("C"), QStringLiteral("%1.0").arg(i)},
                        {QStringLiteral("L"), QStringLiteral("Last%1").arg(i % 4999)},
                        {QStringLiteral("A"), QStringLiteral("%1 Main Street").arg(i)},
                        {QStringLiteral("H"), (i + 1) / 2},
                        {QStringLiteral("R"), QStringLiteral("R%1").arg(i % 40)}});
        if (i % 10 == 0) suspends.push_back({{QStringLiteral("P"), i}});
        dated.push_back({{QStringLiteral("P"), i}});
    }
    TransactionGuard guard(db);
    db
        .query(QStringLiteral(
            "Insert into Clients (Person_ID, Client_ID, Last_Name, Address1, Household_ID, Def_Rte, Status, "
            "Delivery_Type, Start_Dte, Monday, Wednesday, Edit_Dte) values (:P, :C, :L, :A, :H, :R, 'A', "
            "'O', '2024-01-02', true, true, '2024-03-05')"))
        .execBatch(rows);
    db.query(QStringLiteral("Insert into Household_Members (Household_ID, Person_ID) values (:P, :P)"))
        .execBatch(rows);
    db
        .query(QStringLiteral(
            "Insert into Suspends (Person_ID, Stop_Dt, Resume_Dt) values (:P, '2024-03-01', '2024-03-20')"))
        .execBatch(suspends);
    db.query(
          QStringLiteral("Insert into EpisodicDeliveries (Person_ID, Deliv_Date, Schedule_Type) values (:P, "
                         "'2024-03-20', 'S')"))
        .execBatch(dated);
    guard.commit();
}

double elapsedMs(const QElapsedTimer& timer)
{
    return timer.nsecsElapsed() / 1e6;
}

void report(const char* what, double ms, const QString& extra = {})
{
    std::printf("  %-52s %9.2f ms %s\n", what, ms, qPrintable(extra));
}

void run(Database& db, int count, const Clock& clock)
{
    QElapsedTimer timer;
    timer.start();
    fill(db, count);
    report("filling Clients and their households", elapsedMs(timer), QStringLiteral("%1 clients").arg(count));

    SilentUser ui;
    RecordServices services(db, ui);
    SessionState session;
    session.userFullName = QStringLiteral("Bench User");
    TableDataSet clients(db, QStringLiteral("Clients"));
    services.installErrorHooks(clients);
    ClientRules rules(services, ui, clock, session);
    timer.restart();
    rules.attach(clients);
    OpenTable(clients);
    report("attach the rules and open Clients", elapsedMs(timer),
           QStringLiteral("%1 rows").arg(clients.recordCount()));

    constexpr int Saves = 200;
    auto saves = [&](const char* what, const std::function<void(int)>& change) {
        clients.first();
        timer.restart();
        for (int i = 0; i < Saves; ++i) {
            clients.edit();
            change(i);
            clients.post();
            clients.next();
        }
        report(what, elapsedMs(timer) / Saves, QStringLiteral("per save, average of %1").arg(Saves));
    };
    saves("save with no change (first of the day: edit date)", [](int) {});
    saves("save with no change (same day: nothing to do)", [](int) {});
    saves("status A to S (History, dated deliveries asked)",
          [&](int) { clients.setFieldValue(u"Status", QStringLiteral("S")); });
    saves("route, address, days and phone changed (5 History rows)", [&](int i) {
        clients.setFieldValue(u"Def_Rte", QStringLiteral("Q%1").arg(i % 7));
        clients.setFieldValue(u"Address1", QStringLiteral("%1 Side Road").arg(i));
        clients.setFieldValue(u"Friday", true);
        clients.setFieldValue(u"Phone", QStringLiteral("555-%1").arg(i, 4, 10, QLatin1Char('0')));
    });

    timer.restart();
    int suspended = 0;
    for (clients.first(); !clients.eof(); clients.next())
        suspended += clients.fieldValue(u"CalcSuspended").toBool() ? 1 : 0;
    const double walk = elapsedMs(timer);
    report("CalcSuspended for every row", walk,
           QStringLiteral("%1 ns/row, %2 suspended").arg(walk * 1e6 / count, 0, 'f', 0).arg(suspended));
    rules.detach();
    clients.close();
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const BenchArguments arguments = BenchArguments::read(app.arguments().mid(1), 50000);
    if (arguments.rows <= 0) {
        std::fprintf(stderr, "usage: client_save_bench [CLIENTS] [--server HOST[:PORT]/DATABASE]\n");
        return 2;
    }
    FixedClock clock(QDateTime(QDate(2024, 3, 6), QTime(10, 30)));
    try {
        if (arguments.server.isEmpty()) {
            QTemporaryDir dir;
            auto db = createDataDirectory(dir.filePath(QStringLiteral("data")), clock);
            std::printf("SQLite data directory, %d clients\n", arguments.rows);
            run(*db, arguments.rows, clock);
            return 0;
        }
        ServerAddress address = ServerAddress::parse(arguments.server);
        address.schema = QString::fromLatin1(BenchSchema);
        auto dropSchema = [&] {
            PostgresStore(ServerAddress::parse(arguments.server))
                .exec(
                    QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE").arg(QString::fromLatin1(BenchSchema)));
        };
        dropSchema();
        {
            auto db = createServerDatabase(address, clock);
            std::printf("PostgreSQL %s, %d clients\n", qPrintable(arguments.server), arguments.rows);
            run(*db, arguments.rows, clock);
        }
        dropSchema();
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
    return 0;
}
