// The preparation the report screen's check asks for, saved at once: the
// date's deliveries are stored and the save is what the next check finds.

#include "delivery/HiddenRunPreparation.h"
#include "DemoAgency.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "delivery/DeliveryDataCurrency.h"
#include "session/SessionState.h"

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;
using Kind = test::ScriptedUserInterface::Kind;

TEST(HiddenRunPreparation, APreparationSavedAtOnceStoresTheDatesRun)
{
    test::TempDataDir data;
    generateDemoAgency(data.db(), DemoOptions{.clients = 200, .seed = 5});
    const QDate tomorrow = data.clock().today().addDays(1);
    test::ScriptedUserInterface ui;
    DeliveryDataCurrency currency(data.db(), data.clock(), ui);
    ASSERT_EQ(currency.lastSave(tomorrow), std::nullopt);

    SessionState session;
    session.cUserName = QStringLiteral("pat");
    HiddenRunPreparation(data.db(), session, ui).prepareAndSave(tomorrow, false);
    EXPECT_TRUE(ui.texts(Kind::Error).isEmpty()) << ui.texts(Kind::Error).join(u'\n').toStdString();
    EXPECT_EQ(currency.lastSave(tomorrow), data.clock().now());
    EXPECT_GT(data.db()
                  .execute(QStringLiteral("select count(*) from Deliveri where Deliv_Dt = :d"),
                           {{QStringLiteral("d"), tomorrow}})
                  .value(0, 0)
                  .toInt(),
              0);
    // The run screen's working table went with it.
    EXPECT_FALSE(data.db().exists(QStringLiteral("MemTableDeliveries")));
}
