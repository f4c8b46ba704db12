#pragma once

// The client rules' data with a writing and a read-only user, for tests that
// run the real executable's client commands. Each test gets its own home, so
// the commands' settings never touch the user's.

#include "ClientRulesFixture.h"
#include "RunCommand.h"

#include <QTemporaryDir>

namespace kb::test {

class ClientCommandFixture : public ClientRulesFixture
{
protected:
    void SetUp() override
    {
        ClientRulesFixture::SetUp();
        if (IsSkipped()) return;
        qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toLocal8Bit());
        int id = 3;
        for (const char* level : {"W", "R"})
            insertRow(db(), QStringLiteral("Staff"),
                      {{QStringLiteral("Staff_ID"), id++},
                       {QStringLiteral("User_ID"), QStringLiteral("user") + QLatin1String(level)},
                       {QStringLiteral("Staff_Name"), QStringLiteral("Level %1").arg(QLatin1String(level))},
                       {QStringLiteral("Access_Level"), QString::fromLatin1(level)},
                       {QStringLiteral("Active"), true}});
    }

    // The command's words after the data location, the fixed date and the user.
    CommandResult runAs(const QString& user, const QStringList& words)
    {
        return runKettlebrook(data->commandLocation() +
                              QStringList{QStringLiteral("--today"), QStringLiteral("2024-03-06"),
                                          QStringLiteral("--user"), user} +
                              words);
    }

    QTemporaryDir home;
};

} // namespace kb::test
