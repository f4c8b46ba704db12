#pragma once

// What the run benchmarks share: their options, a user interface that counts
// messages instead of stopping for them, the demo agency they measure and the
// run screen over it.

#include "DemoAgency.h"
#include "TFormRunPrepare.h"
#include "UserInterface.h"
#include "session/DataDirectory.h"
#include "session/SessionState.h"
#include "store/PostgresStore.h"

#include <QDate>
#include <QElapsedTimer>
#include <QStringList>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

struct BenchOptions
{
    int clients = 10000;
    QString dataDir;
    QString server;
    int repeat = 7;
    QDate date = QDate(2024, 3, 11);
    QStringList flags; // words without a value, such as --row-by-row

    // --clients N, --data DIR, --server HOST[:PORT]/DATABASE, --repeat R,
    // --date YYYY-MM-DD; any other word starting with -- is a flag.
    static BenchOptions read(const QStringList& args, const BenchOptions& defaults)
    {
        BenchOptions o = defaults;
        for (qsizetype i = 0; i < args.size(); ++i) {
            const QString& word = args[i];
            const QString value = i + 1 < args.size() ? args[i + 1] : QString();
            if (word == QLatin1String("--clients"))
                o.clients = value.toInt();
            else if (word == QLatin1String("--data"))
                o.dataDir = value;
            else if (word == QLatin1String("--server"))
                o.server = value;
            else if (word == QLatin1String("--repeat"))
                o.repeat = std::max(1, value.toInt());
            else if (word == QLatin1String("--date"))
                o.date = QDate::fromString(value, Qt::ISODate);
            else {
                o.flags << word;
                continue;
            }
            ++i;
        }
        return o;
    }
    bool flag(const char* name) const { return flags.contains(QLatin1String(name)); }
    const char* storeName() const { return server.isEmpty() ? "sqlite" : "postgresql"; }
};

// Counts what a run would tell the user instead of stopping for it.
class CountingUserInterface final : public kb::UserInterface
{
public:
    int messages = 0;
    void information(const QString&) override { ++messages; }
    void warning(const QString&) override { ++messages; }
    void error(const QString&) override { ++messages; }
    kb::Answer question(const QString&, kb::Buttons) override { return kb::Answer::No; }
    void progressStart(const QString&) override {}
    void progressStep(int) override {}
    void progressEnd() override {}
    void setBusy(bool) override {}
};

// The schema a benchmark's demo agency gets on the server: dropped before it
// is made and when the benchmark ends.
struct BenchSchema
{
    BenchSchema(const BenchOptions& options, QString schemaName) : name(std::move(schemaName))
    {
        if (options.dataDir.isEmpty()) server = options.server;
    }
    ~BenchSchema()
    {
        if (!server.isEmpty())
            kb::PostgresStore(kb::ServerAddress::parse(server))
                .exec(QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE").arg(name));
    }
    BenchSchema(const BenchSchema&) = delete;
    BenchSchema& operator=(const BenchSchema&) = delete;

    QString name;
    QString server;
};

// The data to measure: an existing data directory, or a demo agency made in
// `temp` (SQLite) or in a schema of its own on the server, dropped first.
inline std::unique_ptr<kb::Database> openBenchData(const BenchOptions& options, const QTemporaryDir& temp,
                                                   const kb::Clock& clock, const QString& schema)
{
    if (!options.dataDir.isEmpty()) return kb::openDataDirectory(options.dataDir, clock);
    std::unique_ptr<kb::Database> db;
    if (!options.server.isEmpty()) {
        kb::ServerAddress address = kb::ServerAddress::parse(options.server);
        address.schema = schema;
        kb::PostgresStore(kb::ServerAddress::parse(options.server))
            .exec(QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE").arg(schema));
        db = kb::createServerDatabase(address, clock);
    } else {
        db = kb::createDataDirectory(temp.filePath(QStringLiteral("data")), clock);
    }
    kb::DemoOptions demo;
    demo.clients = options.clients;
    kb::generateDemoAgency(*db, demo);
    return db;
}

// The data of a benchmark and the run screen's presenter over it, shown and
// set to the date, as a user at the screen would have it. On the server the
// schema goes when the benchmark ends, after the connection.
struct BenchRun
{
    BenchRun(const BenchOptions& options, const QString& schemaName)
        : clock(QDateTime(QDate(2024, 3, 6), QTime(10, 30))), schema(options, schemaName)
    {
        QElapsedTimer timer;
        timer.start();
        db = openBenchData(options, temp, clock, schema.name);
        if (options.dataDir.isEmpty())
            std::printf("demo agency of %d clients made in %lld ms (%s)\n", options.clients,
                        static_cast<long long>(timer.elapsed()), options.storeName());
        session.userFullName = QStringLiteral("Bench");
        form = std::make_unique<kb::TFormRunPrepare>(*db, session, ui);
        form->FormShow();
        form->SetPrepareDate(options.date);
    }

    kb::FixedClock clock;
    QTemporaryDir temp;
    BenchSchema schema;
    std::unique_ptr<kb::Database> db;
    kb::SessionState session;
    CountingUserInterface ui;
    std::unique_ptr<kb::TFormRunPrepare> form;
};

// Sorted timings in milliseconds.
struct Timings
{
    std::vector<double> ms;
    void add(double value) { ms.push_back(value); }
    double min() { return sorted().front(); }
    double median() { return sorted()[ms.size() / 2]; }
    double max() { return sorted().back(); }

private:
    std::vector<double>& sorted()
    {
        std::sort(ms.begin(), ms.end());
        return ms;
    }
};

// Times each of `times` calls of step(i).
template <typename Step> Timings timeEach(int times, Step&& step)
{
    Timings t;
    QElapsedTimer timer;
    for (int i = 0; i < times; ++i) {
        timer.start();
        step(i);
        t.add(double(timer.nsecsElapsed()) / 1e6);
    }
    return t;
}

// One line of figures: median, 90th percentile and maximum.
inline void reportTimings(const char* what, Timings t)
{
    std::printf("%-44s median %7.2f ms   p90 %7.2f ms   max %7.2f ms   (%zu)\n", what, t.median(),
                t.ms[t.ms.size() * 9 / 10], t.max(), t.ms.size());
}
