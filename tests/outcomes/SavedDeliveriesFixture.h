#pragma once

// Fresh data of the store under test with a small agency's reference rows
// and helpers that write saved deliveries directly, as a run would have.

#include "InsertRow.h"
#include "RunCommand.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"

#include "session/SessionState.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <utility>
#include <vector>

// Texts in failure messages as text.
inline void PrintTo(const QString& text, std::ostream* os)
{
    *os << '"' << text.toStdString() << '"';
}

namespace kb::test {

class SavedDeliveriesFixture : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override;

    Database& db() { return data->db(); }

    void addClient(qint64 personId, const QString& clientId, const QString& last, const QString& first,
                   const Params& more = {});
    void addService(qint64 id, const QString& name, qint64 defaultEvent = 0);
    void addItem(qint64 id, const QString& name, const QString& meal, const QString& price);
    void addFunding(const QString& code, const QString& name);
    // One saved delivery with its item lines (Item_ID, Quantity).
    void addDelivery(qint64 delivId, qint64 personId, const QDate& date, qint64 service, const QString& kind,
                     const QString& funding, const QString& status = {},
                     const std::vector<std::pair<qint64, int>>& items = {});
    void addEvent(qint64 personId, const QDate& date, qint64 eventId, const QString& funding);
    void addDated(qint64 personId, const QDate& date, const QString& scheduleType, const QString& kind,
                  qint64 service);

    // Staff rows "user" + level, named "Level " + level, for each level
    // letter; and a private home for the kettlebrook executable's settings.
    void addUsers(const QStringList& levels);
    void isolateHome();
    // Runs kettlebrook on this data on Wednesday 6 March 2024 as the user.
    CommandResult runAs(const QString& user, const QStringList& words);

    QVariant scalar(const QString& text, const Params& params = {});
    qint64 count(const QString& text, const Params& params = {}) { return scalar(text, params).toLongLong(); }
    QStringList historyEvents();

    std::unique_ptr<TempDataDir> data;
    ScriptedUserInterface ui;
    SessionState session;
    QTemporaryDir home;
};

} // namespace kb::test
