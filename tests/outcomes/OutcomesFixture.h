#pragma once

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "session/SessionState.h"

#include <gtest/gtest.h>

namespace kb::test {

// An agency on either store with two delivery services (1 hot, 2 frozen),
// items 10 (one meal) and 11 (two meals), routes R1 and R2, default item
// lists of both services for every weekday, and clients and saved runs added
// by each test. The locale is fixed to English (United States).
class OutcomesFixture : public ::testing::TestWithParam<StoreKind>
{
protected:
    OutcomesFixture();
    void SetUp() override;

    Database& db() { return data.db(); }
    // An active client due every day on route R1, stop = person, service 1.
    void addClient(int person, const Params& overrides = {});
    // A dated delivery; its RecordID.
    qint64 addDated(int person, const QDate& date, const QString& scheduleType, const Params& overrides = {});
    void addLine(int person, int service, const QString& day, int item, int quantity,
                 const QVariant& delivId = {});
    // Prepares and saves the run of a date as the run screen does; the
    // number of deliveries saved.
    qint64 saveRun(const QDate& date);

    // Every stored Deliveri and MealCrdt row (MealCrdt without its RecordID),
    // as CSV text.
    QString deliveriText(const QString& where = {});
    QString mealCrdtText();
    QVariant statusOf(int person, const QDate& date);
    qint64 count(const QString& statement, const Params& params = {});
    QStringList events(int person);

    TempDataDir data;
    ScriptedUserInterface ui;
    SessionState session;
};

inline const QDate monday(2024, 3, 4);
inline const QDate tuesday(2024, 3, 5);

} // namespace kb::test
