// startup_bench --data DIR [--repeat R]: the time the data module takes to
// start on a data directory (find and connect the data, open the fifteen
// shared tables and the long-lived queries, position Clients), and the time
// to read a Kettbrk.ini at its size limit filled with hostile lines. Make a
// large agency first with `kettlebrook init DIR --demo 50000`.

#include "UserInterface.h"
#include "dataset/TableDataSet.h"
#include "session/SessionSettings.h"
#include "session/TDataModule1.h"
#include "settings/IniFile.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

class SilentUserInterface final : public kb::UserInterface
{
public:
    void information(const QString&) override {}
    void warning(const QString&) override {}
    void error(const QString&) override {}
    kb::Answer question(const QString&, kb::Buttons) override { return kb::Answer::No; }
    void progressStart(const QString&) override {}
    void progressStep(int) override {}
    void progressEnd() override {}
    void setBusy(bool) override {}
};

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    QString dataDir;
    int repeat = 5;
    for (qsizetype i = 0; i + 1 < args.size(); i += 2) {
        if (args[i] == QLatin1String("--data"))
            dataDir = args[i + 1];
        else if (args[i] == QLatin1String("--repeat"))
            repeat = std::max(1, args[i + 1].toInt());
    }
    if (dataDir.isEmpty()) {
        std::fputs("startup_bench --data DIR [--repeat R]\n", stderr);
        return 2;
    }
    kb::SystemClock clock;
    SilentUserInterface ui;
    QTemporaryDir appData;
    std::vector<double> starts;
    qint64 clients = 0;
    for (int r = 0; r < repeat; ++r) {
        kb::SessionSettings settings;
        settings.applyDataOption(dataDir);
        QElapsedTimer timer;
        timer.start();
        kb::TDataModule1 module(clock, ui);
        module.start(settings, appData.path());
        starts.push_back(double(timer.nsecsElapsed()) / 1e6);
        clients = module.clients().recordCount();
        module.shutdown();
    }

    // The reader's worst case: a file at the size limit of short damaged lines.
    QByteArray hostile;
    const qsizetype limit = kb::IniFile::Limits().maxBytes;
    while (hostile.size() + 16 < limit)
        hostile += "[S\n\x01=x\nK=\"v\"\n[A]\n";
    std::vector<double> parses;
    for (int r = 0; r < repeat; ++r) {
        QElapsedTimer timer;
        timer.start();
        const kb::IniFile ini = kb::IniFile::parse(hostile);
        parses.push_back(double(timer.nsecsElapsed()) / 1e6);
        if (ini.sections().isEmpty()) return 1;
    }
    std::printf(
        "clients,start_median_ms,start_min_ms,ini_bytes,ini_parse_median_ms\n%lld,%.1f,%.1f,%lld,%.1f\n",
        static_cast<long long>(clients), median(starts), *std::min_element(starts.begin(), starts.end()),
        static_cast<long long>(hostile.size()), median(parses));
    return 0;
}
