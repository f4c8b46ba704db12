#pragma once

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "session/SessionState.h"
#include "TempDataDir.h"
#include "TFormOrderRoutes.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace kb::test {

// Data on the store under test with routes R1 and R2, clients added by each
// test, and the "Order Stops within Routes" presenter over them. The user's
// ini file lives in a folder of its own.
class OrderRoutesFixture : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override;

    Database& db() { return data->db(); }
    // An active ongoing client due every day on R1 with stop = person, at a
    // place that lies on a line to the north; the overrides replace these.
    void addClient(int person, const Params& overrides = {});
    void addDated(int person, const QDate& date, const QString& scheduleType, const Params& overrides = {});
    QVariant clientValue(int person, const QString& column);

    TFormOrderRoutes& form();
    // Retrieves a route for a day of the day list.
    void retrieve(const QString& route, int dayIndex = 0);
    // The clients of the set in the grid's order, as person numbers.
    QList<int> persons();
    // The stop shown for a person.
    double stopOf(int person);
    int positionOf(int person);

    std::unique_ptr<TempDataDir> data;
    ScriptedUserInterface ui;
    SessionState session;
    QTemporaryDir appData;
    std::unique_ptr<TFormOrderRoutes> m_form;
};

} // namespace kb::test
