// "Confirm Delivery Items": which items a date asks about, the dialog's
// commands, and the answers that decide what a run may carry.

#include "ItemsFixture.h"

#include "MessageError.h"
#include "confirmation/ConfirmDeliveryItems.h"
#include "confirmation/GivenItemConfirmation.h"
#include "confirmation/TFormConfirmDeliveryItems.h"

using namespace kb;
using namespace kb::test;

namespace {

enum Item { HotLunch = 1, Dessert = 10, FrozenBreakfast, EmergencyPack, Apple };

class ConfirmDeliveryItems : public ItemsFixture
{
protected:
    void SetUp() override
    {
        ItemsFixture::SetUp();
        if (IsSkipped()) return;
        addItem(HotLunch, QStringLiteral("Hot Lunch"), 1, 1);
        addItem(Dessert, QStringLiteral("Holiday Dessert"), 0, 0, QStringLiteral("O"));
        addItem(FrozenBreakfast, QStringLiteral("Frozen Breakfast"), 1, 1, QStringLiteral("S"));
        addItem(EmergencyPack, QStringLiteral("Emergency Pack"), 5, 1, QStringLiteral("A"));
        addItem(Apple, QStringLiteral("apple"), 0, 0, QStringLiteral("O"));
        for (int item : {HotLunch, Dessert, FrozenBreakfast, EmergencyPack})
            addLine(0, 1, QStringLiteral("MON"), item, 1, item);
        addLine(0, 1, QStringLiteral("TUE"), Apple, 1, 1); // another weekday
        addClient(1);
        addClient(2, {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}});
        addDated(2, monday, QStringLiteral("E"));
        addDated(2, tuesday, QStringLiteral("E"));
        for (int item : {Dessert, FrozenBreakfast, EmergencyPack})
            addLine(2, 2, QStringLiteral("MON"), item, 1, item, datedId(2, monday, QStringLiteral("E")));
        addLine(2, 2, QStringLiteral("TUE"), Apple, 1, 1, datedId(2, tuesday, QStringLiteral("E")));
    }

    static QStringList texts(const TFormConfirmDeliveryItems& form)
    {
        QStringList lines;
        for (qsizetype i = 0; i < form.lineCount(); ++i)
            lines << form.lineText(i);
        return lines;
    }
};

// Presses OK without checking anything, and counts how often it was asked.
class PressOk final : public ItemConfirmation
{
public:
    int asked = 0;
    bool confirm(TFormConfirmDeliveryItems&) override
    {
        ++asked;
        return true;
    }
};

TEST_P(ConfirmDeliveryItems, TheDateAsksAboutItsWeeklyAndDatedItemsByName)
{
    // Weekly lists of the weekday ask about "O" and "A", dated lists of the
    // date about "S" and "A"; each item once.
    TFormConfirmDeliveryItems form(itemsRequiringConfirmation(db(), monday));
    EXPECT_EQ(texts(form),
              (QStringList{"Emergency Pack\t[12~A]", "Frozen Breakfast\t[11~S]", "Holiday Dessert\t[10~O]"}));
    EXPECT_EQ(texts(TFormConfirmDeliveryItems(itemsRequiringConfirmation(db(), tuesday))),
              QStringList{"apple\t[13~O]"});
    EXPECT_TRUE(itemsRequiringConfirmation(db(), monday.addDays(2)).isEmpty());
}

TEST_P(ConfirmDeliveryItems, TheDialogsCommands)
{
    TFormConfirmDeliveryItems form(itemsRequiringConfirmation(db(), monday));
    EXPECT_EQ(TFormConfirmDeliveryItems::caption(), "Confirm Delivery Items");
    EXPECT_FALSE(form.okEnabled());
    form.setChecked(2, true);
    EXPECT_TRUE(form.okEnabled());
    EXPECT_EQ(form.checkedItems().ongoing, QList<qint64>{Dessert});
    EXPECT_TRUE(form.checkedItems().scheduled.isEmpty());

    form.setFilterText(QStringLiteral("fROZEN"));
    form.ActionFilter();
    EXPECT_EQ((QList<bool>{form.isLineEnabled(0), form.isLineEnabled(1), form.isLineEnabled(2)}),
              (QList<bool>{false, true, false}));
    form.ActionCheckFiltered();
    EXPECT_EQ((QList<bool>{form.isChecked(0), form.isChecked(1), form.isChecked(2)}),
              (QList<bool>{false, true, false}));
    form.setFilterText(QStringLiteral("~a]"));
    form.ActionFilter();
    EXPECT_TRUE(form.isLineEnabled(0));
    EXPECT_FALSE(form.isLineEnabled(1));
    form.ActionClearFilter();
    EXPECT_EQ(form.filterText(), "");
    EXPECT_TRUE(form.isLineEnabled(1) && form.isLineEnabled(2));

    form.ActionCheckAll();
    const ConfirmedItems all = form.checkedItems();
    EXPECT_EQ(all.ongoing, (QList<qint64>{EmergencyPack, Dessert}));
    EXPECT_EQ(all.scheduled, (QList<qint64>{EmergencyPack, FrozenBreakfast}));
    form.ActionUncheckAll();
    EXPECT_FALSE(form.okEnabled());
}

TEST_P(ConfirmDeliveryItems, GivenAnswersAndWhatTheyConfirm)
{
    GivenItemConfirmation none = GivenItemConfirmation::none();
    EXPECT_TRUE(confirmDeliveryItems(db(), monday, none).isEmpty());
    GivenItemConfirmation all = GivenItemConfirmation::all();
    const ConfirmedItems everything = confirmDeliveryItems(db(), monday, all);
    EXPECT_EQ(everything.ongoing, (QList<qint64>{EmergencyPack, Dessert}));
    EXPECT_EQ(everything.scheduled, (QList<qint64>{EmergencyPack, FrozenBreakfast}));
    GivenItemConfirmation listed = *GivenItemConfirmation::fromText(QStringLiteral(" 11, 10"));
    const ConfirmedItems some = confirmDeliveryItems(db(), monday, listed);
    EXPECT_EQ(some.ongoing, QList<qint64>{Dessert});
    EXPECT_EQ(some.scheduled, QList<qint64>{FrozenBreakfast});
    GivenItemConfirmation wrong = GivenItemConfirmation::items({Apple});
    try {
        confirmDeliveryItems(db(), monday, wrong);
        ADD_FAILURE() << "an item that is not asked about was confirmed";
    } catch (const MessageError& e) {
        EXPECT_EQ(e.message(), "Item 13 does not need confirmation for this run.");
    }
    for (const char* bad : {"", "x", "10,", "1;2", "-4"})
        EXPECT_FALSE(GivenItemConfirmation::fromText(QString::fromLatin1(bad))) << bad;
    EXPECT_TRUE(GivenItemConfirmation::fromText(QStringLiteral("ALL")));

    // OK with nothing checked confirms nothing; without candidates nobody is asked.
    PressOk ok;
    EXPECT_TRUE(confirmDeliveryItems(db(), monday, ok).isEmpty());
    EXPECT_EQ(ok.asked, 1);
    EXPECT_TRUE(confirmDeliveryItems(db(), monday.addDays(2), ok).isEmpty());
    EXPECT_EQ(ok.asked, 1);
}

TEST_P(ConfirmDeliveryItems, TheRunScreenAsksThroughItsAnswer)
{
    prepare(monday);
    // Without an answer nothing is confirmed.
    RunItems run = form().FindRunItems(form().ConfirmDeliveryItems());
    EXPECT_EQ(itemIds(of(run, 1)), (QList<qint64>{HotLunch, FrozenBreakfast}));
    EXPECT_EQ(itemIds(of(run, 2, u'E')), QList<qint64>{Dessert});

    GivenItemConfirmation all = GivenItemConfirmation::all();
    form().setItemConfirmation(&all);
    run = form().FindRunItems(form().ConfirmDeliveryItems());
    EXPECT_EQ(itemIds(of(run, 1)), (QList<qint64>{HotLunch, Dessert, FrozenBreakfast, EmergencyPack}));
    EXPECT_EQ(itemIds(of(run, 2, u'E')), (QList<qint64>{Dessert, FrozenBreakfast, EmergencyPack}));
    form().setItemConfirmation(nullptr);
}

INSTANTIATE_TEST_SUITE_P(Stores, ConfirmDeliveryItems,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
