#pragma once

#include <QString>
#include <QStringList>

namespace kb::test {

struct CommandResult
{
    int exitCode = -1; // -1 when the program did not end normally
    QString out;
    QString err;
};

// The kettlebrook executable under test (from KB_APP).
QString kettlebrookPath();

// Runs the kettlebrook executable with the given arguments and waits for it.
CommandResult runKettlebrook(const QStringList& arguments, int timeoutMs = 120000);

// Runs any program and waits for it.
CommandResult runProgram(const QString& program, const QStringList& arguments, int timeoutMs = 120000);

} // namespace kb::test
