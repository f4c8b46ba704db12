// Data this process may not change: a data directory the user may only read,
// and one on a full disk. Both are read as usual; a change is refused with
// the reason, and nothing is changed.

#include "RunCommand.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

using namespace kb;
using test::runKettlebrook;
using test::runProgram;

namespace {

// A data directory with one client, its database closed.
QString makeAgency(const QTemporaryDir& dir)
{
    const QString path = dir.filePath(QStringLiteral("agency"));
    EXPECT_EQ(runKettlebrook({QStringLiteral("init"), path}).exitCode, 0);
    EXPECT_EQ(runKettlebrook({QStringLiteral("--data"), path, QStringLiteral("sql"),
                              QStringLiteral("Insert into Clients (Person_ID, Last_Name) values (1, 'Kept')")})
                  .exitCode,
              0);
    return path;
}

QStringList filesIn(const QString& path)
{
    return QDir(path).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

TEST(ReadOnlyData, AFolderThisUserMayNotWriteIsReadAndNotChanged)
{
    QTemporaryDir dir;
    const QString path = makeAgency(dir);
    const QStringList before = filesIn(path);
    // Others may read and enter, nobody but the owner may write.
    const auto readable = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                          QFileDevice::ReadGroup | QFileDevice::ExeGroup | QFileDevice::ReadOther |
                          QFileDevice::ExeOther;
    QFile::setPermissions(dir.path(), readable);
    QFile::setPermissions(path, readable);
    for (const QString& name : before)
        QFile::setPermissions(QDir(path).filePath(name), QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                             QFileDevice::ReadGroup | QFileDevice::ReadOther);

    // Run as a user who may only read: nobody, when the tests run as root
    // (who may write anywhere); otherwise the owner, after taking away the
    // owner's own right to write.
    QString program = test::kettlebrookPath();
    QStringList prefix;
    if (::geteuid() == 0) {
        prefix = {QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"), QStringLiteral("--clear-groups"),
                  program};
        program = QStringLiteral("setpriv");
        const auto probe = runProgram(program, prefix + QStringList{QStringLiteral("--version")});
        if (probe.exitCode != 0)
            GTEST_SKIP() << "cannot run the program as another user here: " << probe.err.toStdString();
    } else {
        QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    }
    const QStringList at = {QStringLiteral("--data"), path, QStringLiteral("sql")};

    const auto read = runProgram(program, prefix + at + QStringList{QStringLiteral("select Last_Name from Clients")});
    EXPECT_EQ(read.exitCode, 0) << read.err.toStdString();
    EXPECT_EQ(read.out, "Last_Name\nKept\n");

    const auto change = runProgram(program, prefix + at + QStringList{QStringLiteral("Delete from Clients")});
    EXPECT_EQ(change.exitCode, 1);
    EXPECT_TRUE(change.err.contains(QLatin1String("may not be written by this user: nothing can be changed")))
        << change.err.toStdString();

    QFile::setPermissions(path, readable);
    EXPECT_EQ(filesIn(path), before);
    EXPECT_EQ(runKettlebrook(at + QStringList{QStringLiteral("select count(*) as N from Clients")}).out, "N\n1\n");
}

TEST(ReadOnlyData, AFullDiskIsReadAndAChangeIsRefusedWithTheReason)
{
    QTemporaryDir dir;
    const QString path = makeAgency(dir);
    const QString mount = dir.filePath(QStringLiteral("small"));
    QDir().mkpath(mount);
    // A small disk of its own, filled to the last byte, in a private mount
    // namespace so nothing outside the test sees it.
    const QString script = QStringLiteral(
        "mount -t tmpfs -o size=4m tmpfs \"$1\" 2>/dev/null || exit 97\n"
        "cp -a \"$2\" \"$1/agency\" || exit 98\n"
        "dd if=/dev/zero of=\"$1/filler\" bs=4k 2>/dev/null\n"
        "\"$3\" --data \"$1/agency\" sql 'select Last_Name from Clients'; echo \"read=$?\"\n"
        "\"$3\" --data \"$1/agency\" sql 'Delete from Clients' 2>&1; echo \"change=$?\"\n"
        "\"$3\" --data \"$1/agency\" sql 'select count(*) as N from Clients'\n");
    const auto run = runProgram(QStringLiteral("unshare"),
                                {QStringLiteral("-m"), QStringLiteral("sh"), QStringLiteral("-c"), script,
                                 QStringLiteral("sh"), mount, path, test::kettlebrookPath()});
    if (run.exitCode == 97 || run.exitCode == -1 || run.err.contains(QLatin1String("unshare")))
        GTEST_SKIP() << "cannot mount a small disk here: " << run.err.toStdString();
    EXPECT_TRUE(run.out.startsWith(QLatin1String("Last_Name\nKept\nread=0\n"))) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains(QLatin1String("The disk of the data directory is full"))) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains(QLatin1String("change=1\nN\n1\n"))) << run.out.toStdString();
}

} // namespace
