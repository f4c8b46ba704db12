#pragma once

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "session/SessionState.h"
#include "TFormRunPrepare.h"
#include "TempDataDir.h"

#include <gtest/gtest.h>

#include <memory>

namespace kb::test {

// A data directory with two services, three diets and two routes, clients
// added by each test, and the run screen's presenter over it. Monday
// 11 March 2024 is in an even week (6480) and is the second Monday of its month.
class RunFixture : public ::testing::Test
{
protected:
    // A PostgreSQL fixture falls back to a data directory when the tests have
    // no server; such tests skip themselves with KB_REQUIRE_STORE.
    explicit RunFixture(StoreKind kind = StoreKind::SQLite);

    Database& db() { return data.db(); }
    // A client due every day of every week on route R1, stop = person; the
    // overrides replace the defaults.
    void addClient(int person, const Params& overrides = {});
    void addDated(int person, const QDate& date, const QString& scheduleType, const Params& overrides = {});
    void addSuspension(int person, const QDate& stop, const QDate& resume);
    void addOverride(int person, const QString& type, const Params& values);
    void setConfig(const QString& column, const QVariant& value);

    TFormRunPrepare& form();
    // Prepares the date for a delivery type letter; the rows in the run's order.
    ResultSet prepare(const QDate& date, QChar letter = u'A');
    static QList<int> persons(const ResultSet& rows);
    // The first row of a person; fails the test when there is none.
    static QVariantList rowOf(const ResultSet& rows, int person);
    static QVariant field(const ResultSet& rows, int person, const QString& column);

    TempDataDir data;
    ScriptedUserInterface ui;
    SessionState session;
    std::unique_ptr<TFormRunPrepare> m_form;
};

inline const QDate monday(2024, 3, 11);

} // namespace kb::test
