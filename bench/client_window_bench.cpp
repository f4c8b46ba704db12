// The client window over a large agency (50,000 clients by default), on the
// file store or a server: opening the window's data (the data module started
// with the client rules on Clients, the user signed in, the window's lists,
// pages and the first client's state), moving to the next client on a page
// without detail data and on one with four detail queries, and finding a
// client as the user types, by name and by client number.
//
//   client_window_bench [--clients N] [--data DIR | --server HOST[:PORT]/DATABASE] [--repeat R]

#include "BenchDemo.h"

#include "dataset/TableDataSet.h"
#include "rules/ModuleClientRules.h"
#include "session/SessionSettings.h"
#include "session/SignIn.h"
#include "session/TDataModule1.h"
#include "window/ClientPages.h"
#include "window/TFormClients.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>

#include <cstdio>

using namespace kb;

namespace {

const char* const Schema = "kb_client_window_bench";

// One data module with the window's logic over it, as the desktop has them.
struct Window
{
    Window(const SessionSettings& settings, const Clock& clock, const QString& appData, UserInterface& ui)
        : module(clock, ui), rules(module)
    {
        module.start(settings, appData);
        SignIn::complete(module.db(), module.session(), SignIn::lookUp(module.db(), SignIn::builtInUser));
        module.userSignedIn();
        form = std::make_unique<TFormClients>(module, ui, rules.rules());
        form->create();
        form->firstShow();
    }
    ~Window()
    {
        form.reset();
        module.shutdown();
    }

    TDataModule1 module;
    ModuleClientRules rules;
    std::unique_ptr<TFormClients> form;
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    BenchOptions defaults;
    defaults.clients = 50000;
    defaults.repeat = 200;
    const BenchOptions options = BenchOptions::read(app.arguments().mid(1), defaults);
    FixedClock clock(QDateTime(QDate(2024, 3, 6), QTime(10, 30)));
    CountingUserInterface ui;
    QTemporaryDir temp;
    BenchSchema schema(options, QString::fromLatin1(Schema));

    SessionSettings settings;
    {
        QElapsedTimer timer;
        timer.start();
        std::unique_ptr<Database> db = openBenchData(options, temp, clock, schema.name);
        if (options.dataDir.isEmpty())
            std::printf("demo agency of %d clients made in %lld ms (%s)\n", options.clients,
                        static_cast<long long>(timer.elapsed()), options.storeName());
    }
    if (!options.dataDir.isEmpty())
        settings.applyDataOption(options.dataDir);
    else if (!options.server.isEmpty())
        settings.applyServerOption(options.server + QLatin1Char('#') + schema.name);
    else
        settings.applyDataOption(temp.filePath(QStringLiteral("data")));

    QElapsedTimer timer;
    timer.start();
    Window window(settings, clock, temp.filePath(QStringLiteral("appdata")), ui);
    TFormClients& form = *window.form;
    std::printf("open the window's data: %lld ms for %d clients (%s)\n",
                static_cast<long long>(timer.elapsed()), form.rowCount(), options.storeName());

    const int moves = std::min(options.repeat, form.rowCount() - 1);
    form.changePage(client_page::BiographicInfo);
    form.first();
    reportTimings("next client, Biographic Info", timeEach(moves, [&](int) { form.next(); }));
    form.changePage(client_page::HealthNutrition);
    reportTimings("next client, Health/Nutrition (4 queries)", timeEach(moves, [&](int) { form.next(); }));
    form.changePage(client_page::BiographicInfo);

    // Names to find, as a user types their first letters.
    QStringList names;
    QStringList numbers;
    TableDataSet& clients = form.clients();
    QRandomGenerator random(7);
    for (int i = 0; i < options.repeat; ++i) {
        const int row = int(random.bounded(form.rowCount()));
        names << clients.fieldValueAt(row, clients.fieldIndex(u"LAST_NAME")).toString().left(1 + i % 4);
        numbers << clients.fieldValueAt(row, clients.fieldIndex(u"CLIENT_ID")).toString();
    }
    form.setIndexName(QStringLiteral("LAST_FIRST"));
    reportTimings("find a client by name", timeEach(int(names.size()), [&](int i) { form.search(names[i]); }));
    timer.start();
    form.setIndexName(QStringLiteral("CLIENT_ID"));
    std::printf("change the order to client number: %lld ms\n", static_cast<long long>(timer.elapsed()));
    reportTimings("find a client by number", timeEach(int(numbers.size()), [&](int i) { form.search(numbers[i]); }));
    std::printf("messages: %d\n", ui.messages);
    return 0;
}
