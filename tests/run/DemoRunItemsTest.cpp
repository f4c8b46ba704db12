// The items of a generated agency's run: the whole-run lookup gives, row for
// row, what the item and funding statements give one delivery at a time, and
// both stores give the same run.

#include "Csv.h"
#include "DemoAgency.h"
#include "ScriptedUserInterface.h"
#include "TFormRunPrepare.h"
#include "TempDataDir.h"
#include "confirmation/ConfirmDeliveryItems.h"
#include "confirmation/GivenItemConfirmation.h"
#include "items/RunItemRows.h"
#include "itemstatements/OneDeliveryItems.h"
#include "session/SessionState.h"

#include <gtest/gtest.h>

#include <QTextStream>

using namespace kb;
using namespace kb::test;

namespace {

// The first Friday from the demo's today on which a dated delivery carries an
// item that asks for confirmation: its weekly lists ask about the Friday
// dessert and pack, its dated lists about what they carry.
QDate busyFriday(Database& db)
{
    const ResultSet dates = db.execute(QStringLiteral(
        "select distinct ed.Deliv_Date from EpisodicDeliveries ed join Defdels d on d.Deliv_ID = ed.RecordID "
        "join "
        "Items i on i.Item_ID = d.Item_ID where i.Confirmation_Required in ('S', 'A') and ed.Deliv_Date >= "
        "'2024-03-06' order by ed.Deliv_Date"));
    for (qsizetype r = 0; r < dates.rowCount(); ++r)
        if (dates.value(r, 0).toDate().dayOfWeek() == Qt::Friday) return dates.value(r, 0).toDate();
    return {};
}

// A demo agency on a store and its run screen.
struct DemoRun
{
    explicit DemoRun(StoreKind kind) : data(kind)
    {
        DemoOptions options;
        options.clients = 700;
        options.seed = 5;
        generateDemoAgency(data.db(), options);
        session.userFullName = QStringLiteral("Pat Tester");
        form = std::make_unique<TFormRunPrepare>(data.db(), session, ui);
        form->FormShow();
        date = busyFriday(data.db());
        form->SetPrepareDate(date);
        form->ActionPrepare();
    }

    RunItems items(ItemConfirmation& answer)
    {
        form->setItemConfirmation(&answer);
        return form->FindRunItems(form->ConfirmDeliveryItems());
    }

    QString csv(ItemConfirmation& answer)
    {
        QString text;
        QTextStream out(&text);
        writeCsv(out, runItemRows(items(answer)));
        out.flush();
        return text;
    }

    TempDataDir data;
    ScriptedUserInterface ui;
    SessionState session;
    std::unique_ptr<TFormRunPrepare> form;
    QDate date;
};

QString describe(const DeliveryItems& d)
{
    QStringList parts = {QString::number(d.delivery.personId),
                         d.delivery.deliveryType,
                         QString::number(int(d.level)),
                         d.customItems ? "custom" : "standard",
                         QString::number(d.numberMeals),
                         QString::number(d.numberLabels),
                         d.fundingDesc};
    for (const ItemListLine& line : d.lines)
        parts << QStringLiteral("%1x%2@%3")
                     .arg(line.itemId)
                     .arg(line.quantity.toString(), line.sortOrder.toString());
    return parts.join(u' ');
}

class DemoRunItems : public ::testing::TestWithParam<StoreKind>
{
};

TEST_P(DemoRunItems, TheWholeRunAgreesWithTheStatementsRowByRow)
{
    KB_REQUIRE_STORE(GetParam());
    DemoRun demo(GetParam());
    ASSERT_TRUE(demo.date.isValid());
    QStringList codes;
    for (const ConfirmationCandidate& c : itemsRequiringConfirmation(demo.data.db(), demo.date))
        codes << c.confirmationRequired;
    codes.removeDuplicates();
    codes.sort();
    EXPECT_EQ(codes, (QStringList{"A", "O", "S"}));

    GivenItemConfirmation none = GivenItemConfirmation::none();
    GivenItemConfirmation all = GivenItemConfirmation::all();
    qint64 meals[2] = {0, 0};
    int pass = 0;
    for (ItemConfirmation* answer :
         {static_cast<ItemConfirmation*>(&none), static_cast<ItemConfirmation*>(&all)}) {
        demo.form->setItemConfirmation(answer);
        const ConfirmedItems confirmed = demo.form->ConfirmDeliveryItems();
        const RunItems run = demo.form->FindRunItems(confirmed);
        ASSERT_GT(run.deliveries().size(), 100u);
        OneDeliveryItems one(demo.data.db(), demo.date, confirmed);
        QMap<ItemListLevel, int> levels;
        int funded = 0;
        for (const DeliveryItems& d : run.deliveries()) {
            EXPECT_EQ(describe(d), describe(one.find(d.delivery)));
            ++levels[d.level];
            funded += d.fundingDesc.isEmpty() ? 0 : 1;
            meals[pass] += d.numberMeals;
        }
        // The demo's run uses every kind of list, and nearly every delivery is funded.
        EXPECT_GT(levels[ItemListLevel::Dated], 0);
        EXPECT_GT(levels[ItemListLevel::Client], 0);
        EXPECT_GT(levels[ItemListLevel::Default], 0);
        EXPECT_GT(funded, int(run.deliveries().size()) * 9 / 10);
        ++pass;
    }
    // The confirmed pack counts five meals a bag.
    EXPECT_GT(meals[1], meals[0]);
}

TEST(DemoRunItemsOnBothStores, TheSameRunGivesTheSameItems)
{
    KB_REQUIRE_STORE(StoreKind::PostgreSQL);
    DemoRun local(StoreKind::SQLite);
    DemoRun server(StoreKind::PostgreSQL);
    ASSERT_EQ(local.date, server.date);
    GivenItemConfirmation none = GivenItemConfirmation::none();
    GivenItemConfirmation all = GivenItemConfirmation::all();
    const QString localNone = local.csv(none);
    EXPECT_GT(localNone.count(u'\n'), 300);
    EXPECT_EQ(server.csv(none), localNone);
    const QString localAll = local.csv(all);
    EXPECT_NE(localAll, localNone);
    EXPECT_EQ(server.csv(all), localAll);
}

INSTANTIATE_TEST_SUITE_P(Stores, DemoRunItems, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
