// "Confirm Delivery Items", offscreen, over its real presenter: checking an
// item enables OK, the filter greys out the other items, and the dialog
// answers the run screen when a save asks.

#include "WidgetApplication.h"
#include "ConfirmDeliveryItemsView.h"
#include "ConfirmDeliveryItemsDialog.h"
#include "confirmation/TFormConfirmDeliveryItems.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

using namespace kb;

namespace {

class ConfirmDeliveryItemsViewTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { kb::test::ensureWidgetApplication(); }

    TFormConfirmDeliveryItems presenter{{{QStringLiteral("Emergency Pack"), 12, QStringLiteral("A")},
                                         {QStringLiteral("Frozen Breakfast"), 11, QStringLiteral("S")},
                                         {QStringLiteral("Holiday Dessert"), 10, QStringLiteral("O")}}};
};

TEST_F(ConfirmDeliveryItemsViewTest, CheckingAndFilteringGoThroughThePresenter)
{
    ui::ConfirmDeliveryItemsView view(presenter);
    view.show();
    EXPECT_EQ(view.windowTitle(), "Confirm Delivery Items");
    ASSERT_EQ(view.list()->count(), 3);
    EXPECT_EQ(view.list()->item(2)->text(), "Holiday Dessert\t[10~O]");
    EXPECT_FALSE(view.okButton()->isEnabled());

    view.list()->item(2)->setCheckState(Qt::Checked);
    EXPECT_TRUE(presenter.isChecked(2));
    EXPECT_TRUE(view.okButton()->isEnabled());

    view.filterEdit()->setText(QStringLiteral("breakfast"));
    view.commandButton(QStringLiteral("Filter"))->click();
    EXPECT_FALSE(view.list()->item(0)->flags() & Qt::ItemIsEnabled);
    EXPECT_TRUE(view.list()->item(1)->flags() & Qt::ItemIsEnabled);
    view.commandButton(QStringLiteral("Check Filtered"))->click();
    EXPECT_EQ(view.list()->item(1)->checkState(), Qt::Checked);
    EXPECT_EQ(view.list()->item(2)->checkState(), Qt::Unchecked);
    view.commandButton(QStringLiteral("Clear Filter"))->click();
    EXPECT_EQ(view.filterEdit()->text(), "");
    EXPECT_TRUE(view.list()->item(0)->flags() & Qt::ItemIsEnabled);
    view.commandButton(QStringLiteral("Uncheck All"))->click();
    EXPECT_FALSE(view.okButton()->isEnabled());
    view.commandButton(QStringLiteral("Check All"))->click();
    EXPECT_EQ(presenter.checkedItems().scheduled, (QList<qint64>{12, 11}));
}

TEST_F(ConfirmDeliveryItemsViewTest, TheDialogAnswersWithOkOrCancel)
{
    ui::ConfirmDeliveryItemsDialog dialog;
    const auto pressLater = [](bool ok) {
        QTimer::singleShot(0, [ok] {
            auto* view = qobject_cast<ui::ConfirmDeliveryItemsView*>(QApplication::activeModalWidget());
            ASSERT_NE(view, nullptr);
            if (!ok) {
                view->reject();
                return;
            }
            view->list()->item(0)->setCheckState(Qt::Checked);
            view->okButton()->click();
        });
    };
    pressLater(true);
    EXPECT_TRUE(dialog.confirm(presenter));
    EXPECT_EQ(presenter.checkedItems().ongoing, QList<qint64>{12});
    pressLater(false);
    EXPECT_FALSE(dialog.confirm(presenter));
}

} // namespace
