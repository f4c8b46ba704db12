#pragma once

// A data module started on fresh data of the store under test, with users of
// every level, signed in as one of them.

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"

#include "session/SessionSettings.h"
#include "session/SignIn.h"
#include "session/TDataModule1.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace kb::test {

// Where a module finds the test's data.
inline SessionSettings settingsFor(const TempDataDir& data)
{
    SessionSettings settings;
    const QStringList location = data.commandLocation();
    if (location.front() == QLatin1String("--data"))
        settings.applyDataOption(location.back());
    else
        settings.applyServerOption(location.back());
    return settings;
}

class ModuleFixture : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<TempDataDir>(GetParam());
        int id = 20;
        for (const char* level : {"W", "A", "R", "O"})
            insertRow(
                db(), QStringLiteral("Staff"),
                {{QStringLiteral("Staff_ID"), id++},
                 {QStringLiteral("User_ID"), QStringLiteral("user") + QLatin1String(level)},
                 {QStringLiteral("Staff_Name"), QStringLiteral("Level %1 User").arg(QLatin1String(level))},
                 {QStringLiteral("Access_Level"), QString::fromLatin1(level)},
                 {QStringLiteral("Active"), true}});
    }
    void TearDown() override
    {
        if (module) module->shutdown();
        module.reset();
    }

    Database& db() { return data->db(); }

    // Called with the module before it starts, for what must hang on its
    // data sets from the start (the client rules).
    virtual void beforeStart(TDataModule1&) {}

    // Starts the module and signs in: "keeperin" or "user" + a level letter.
    TDataModule1& signIn(const QString& user)
    {
        module = std::make_unique<TDataModule1>(data->clock(), ui);
        beforeStart(*module);
        module->start(settingsFor(*data), appData.path());
        SignIn::complete(module->db(), module->session(), SignIn::lookUp(module->db(), user));
        module->userSignedIn();
        return *module;
    }

    std::unique_ptr<TempDataDir> data;
    QTemporaryDir appData;
    ScriptedUserInterface ui;
    std::unique_ptr<TDataModule1> module;
};

} // namespace kb::test
