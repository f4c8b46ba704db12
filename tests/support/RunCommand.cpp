#include "RunCommand.h"

#include <QProcess>

#include <stdexcept>

namespace kb::test {

CommandResult runKettlebrook(const QStringList& arguments, int timeoutMs)
{
    const QString program = qEnvironmentVariable("KB_APP");
    if (program.isEmpty())
        throw std::runtime_error("KB_APP does not name the kettlebrook executable");
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        throw std::runtime_error("kettlebrook did not finish: " + arguments.join(u' ').toStdString());
    }
    CommandResult result;
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

} // namespace kb::test
