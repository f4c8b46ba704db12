#include "RunCommand.h"

#include <QProcess>

#include <stdexcept>

namespace kb::test {

QString kettlebrookPath()
{
    const QString program = qEnvironmentVariable("KB_APP");
    if (program.isEmpty())
        throw std::runtime_error("KB_APP does not name the kettlebrook executable");
    return program;
}

CommandResult runKettlebrook(const QStringList& arguments, int timeoutMs)
{
    return runProgram(kettlebrookPath(), arguments, timeoutMs);
}

CommandResult runProgram(const QString& program, const QStringList& arguments, int timeoutMs)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        throw std::runtime_error("did not finish: " + program.toStdString() + ' ' + arguments.join(u' ').toStdString());
    }
    CommandResult result;
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

} // namespace kb::test
