#pragma once

#include <QString>

#include <vector>

namespace kb::stress {

class StressWorker;

// One kind of work the workers mix. run() does one piece of it, journals it
// once committed (its name first, then what the verdict needs to check it),
// and counts a conflict when another workstation was in the way.
//
// A new kind, such as a client edit through the client rules or the save of
// a run of a random date, is one more entry in stressOperations(), its
// function beside the others, and its check in StressVerdict.
struct StressOperation
{
    QString name;
    int weight = 1; // its share of the mix
    void (*run)(StressWorker& worker) = nullptr;
};

const std::vector<StressOperation>& stressOperations();

} // namespace kb::stress
