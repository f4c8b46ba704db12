#pragma once

#include <QString>
#include <QStringList>

namespace kb::test {

struct CommandResult
{
    int exitCode = -1;
    QString out;
    QString err;
};

// Runs the kettlebrook executable (its path comes from KB_APP) with the
// given arguments and waits for it.
CommandResult runKettlebrook(const QStringList& arguments, int timeoutMs = 120000);

} // namespace kb::test
