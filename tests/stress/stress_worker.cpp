// One workstation of a stress run: signs in to the data named on the command
// line and works through a random mix of operations for a while, journaling
// what it committed. Started by the stress test and the soak benchmark;
// prints "done=N conflicts=M" at the end.

#include "StressFleet.h"
#include "StressWorker.h"

#include <QCoreApplication>

#include <cstdio>
#include <exception>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    try {
        const kb::stress::WorkerOptions options = kb::stress::parseWorkerArguments(app.arguments());
        kb::stress::StressWorker worker(options);
        worker.run();
        int conflicts = 0;
        for (const auto& [what, n] : worker.conflicts())
            conflicts += n;
        std::printf("done=%lld conflicts=%d\n", static_cast<long long>(worker.done()), conflicts);
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
}
