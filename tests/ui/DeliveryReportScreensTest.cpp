// The delivery report screens offscreen over their presenters: the choice
// screen following its report and running one, the questions' dialogs and
// the driver messages. With KB_SCREENSHOTS set to a folder, each screen is
// saved there as a picture for a person to look at.

#include "ReportAgency.h"
#include "WidgetApplication.h"

#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "delivery/DeliveryReportList.h"
#include "delivery/TFormDeliveryReportMessages.h"
#include "delivery/TFormRepChoice.h"
#include "delivery/questions/TFormDeliveryDietCriteria.h"
#include "delivery/questions/TFormItemLimitation.h"
#include "deliveryreports/DeliveryDietCriteriaDialog.h"
#include "deliveryreports/DeliveryReportMessagesView.h"
#include "deliveryreports/ItemLimitationDialog.h"
#include "deliveryreports/LabelLimitDialog.h"
#include "deliveryreports/RepChoiceView.h"
#include "engine/ReportDocument.h"
#include "labels/LabelStockSettings.h"
#include "labels/TFormLabelLimit.h"
#include "settings/ConfigRecord.h"
#include "settings/SettingsFile.h"
#include "template/TemplateRegistry.h"

#include <QComboBox>
#include <QDateEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;
using namespace kb::test;
using namespace kb::ui;

namespace {

void keepPicture(QWidget& widget, const QString& name)
{
    const QString folder = qEnvironmentVariable("KB_SCREENSHOTS");
    if (folder.isEmpty()) return;
    widget.show();
    QApplication::processEvents();
    widget.grab().save(folder + QLatin1Char('/') + name + QStringLiteral(".png"));
}

class DeliveryReportScreens : public ReportScreenFixture
{
protected:
    void SetUp() override
    {
        ensureWidgetApplication();
        ReportScreenFixture::SetUp();
    }
};

} // namespace

TEST_F(DeliveryReportScreens, TheChoiceScreenFollowsItsReportAndRunsIt)
{
    TFormRepChoice presenter(context, output, questions, nullptr);
    presenter.FormShow();
    int messagesOpened = 0;
    RepChoiceView view(presenter, &settings, [&] { ++messagesOpened; });
    EXPECT_EQ(view.windowTitle(), "Select the Delivery Report to Run");
    EXPECT_EQ(view.reportList()->count(), DeliveryReports::fixedCount);
    EXPECT_EQ(view.reportList()->currentIndex(), -1);
    EXPECT_EQ(view.serviceList()->count(), 2);
    EXPECT_EQ(view.routeList()->count(), 5);
    EXPECT_EQ(view.includeButton()->text(), "Include these routes");

    // The bar-code listing takes no dates.
    view.reportList()->setCurrentIndex(int(DeliveryReport::BarCodeListing));
    EXPECT_FALSE(view.fromEdit()->isEnabled());
    EXPECT_TRUE(view.routeList()->isEnabled());

    // Clearing date 2 clears and disables those after it.
    view.datePages()->setCurrentIndex(1);
    EXPECT_EQ(presenter.datePage(), DatePage::NonContiguous);
    view.separateDateEdit(1)->setDate(QDate(2024, 3, 8));
    view.separateDateEdit(2)->setDate(QDate(2024, 3, 9));
    EXPECT_TRUE(view.separateDateEdit(3)->isEnabled());
    view.separateDateEdit(1)->setDate(view.separateDateEdit(1)->minimumDate());
    EXPECT_FALSE(presenter.separateDate(2).isValid());
    EXPECT_FALSE(view.separateDateEdit(3)->isEnabled());
    view.datePages()->setCurrentIndex(0);

    view.reportList()->setCurrentIndex(int(DeliveryReport::ClientCountRouteServiceDiet));
    view.fromEdit()->setDate(wednesday);
    view.toEdit()->setDate(wednesday);
    view.routeList()->item(0)->setCheckState(Qt::Checked);
    EXPECT_TRUE(presenter.routes().isChecked(0));
    keepPicture(view, QStringLiteral("FormRepChoice"));
    view.okButton()->click();
    ASSERT_EQ(output.previews.size(), 1u)
        << (ui.messages().isEmpty() ? "" : ui.messages()[0].text.toStdString());
    EXPECT_EQ(output.previews[0]->title, "Client Count by Route, Service and Diet");
    EXPECT_TRUE(view.okButton()->isEnabled());
    view.reject();
    EXPECT_TRUE(settings.formPosition(QStringLiteral("FormRepChoice")).has_value());
}

TEST_F(DeliveryReportScreens, TheQuestionsDialogsEnableOkOnceAnswered)
{
    TFormDeliveryDietCriteria criteria(data.db(), nullptr);
    DeliveryDietCriteriaDialog diets(criteria);
    EXPECT_EQ(diets.windowTitle(), "Delivery Diet Criteria");
    EXPECT_FALSE(diets.okButton()->isEnabled());
    diets.dietList()->item(1)->setCheckState(Qt::Checked);
    EXPECT_TRUE(diets.okButton()->isEnabled());
    EXPECT_EQ(criteria.dietMask(), 2);
    keepPicture(diets, QStringLiteral("FormDeliveryDietCriteria"));

    TFormItemLimitation limitation(data.db());
    ItemLimitationDialog items(limitation);
    EXPECT_FALSE(items.okButton()->isEnabled());
    items.itemList()->setCurrentRow(2);
    EXPECT_TRUE(items.okButton()->isEnabled());
    EXPECT_EQ(limitation.itemId(), 14); // by name: Chicken Dinner, Frozen Dinner, Fruit Cup
    keepPicture(items, QStringLiteral("FormItemLimitation"));
}

TEST_F(DeliveryReportScreens, LabelsChooseTheirStockStartAndSelection)
{
    TFormRepChoice presenter(context, output, questions, nullptr);
    presenter.FormShow();
    RepChoiceView view(presenter, &settings, [] {});
    view.reportList()->setCurrentIndex(int(DeliveryReport::ClientCountRouteDiet));
    EXPECT_FALSE(view.labelStockList()->isEnabled());
    view.reportList()->setCurrentIndex(int(DeliveryReport::DeliveryLabelsWithAddresses));
    EXPECT_TRUE(view.labelStockList()->isEnabled());
    EXPECT_EQ(view.labelStockList()->count(), int(LabelStockSettings::entries().size()));
    view.labelStockList()->setCurrentIndex(LabelStockSettings::indexOf(QStringLiteral("Avery L7160")));
    EXPECT_EQ(presenter.choices().labelStock, "Avery L7160");
    EXPECT_EQ(view.labelStartEdit()->maximum(), 21);
    view.labelStartEdit()->setValue(4);
    EXPECT_EQ(presenter.labelStart(), 4);
    view.fromEdit()->setDate(wednesday);
    view.toEdit()->setDate(wednesday);
    keepPicture(view, QStringLiteral("FormRepChoiceLabels"));
    view.okButton()->click();
    ASSERT_EQ(output.previews.size(), 1u)
        << (ui.messages().isEmpty() ? "" : ui.messages()[0].text.toStdString());
    EXPECT_EQ(output.previews[0]->pageSize.toSize(), QSize(595, 842));

    TFormLabelLimit limit(data.db(), nullptr);
    limit.FormShow();
    LabelLimitDialog dialog(limit);
    EXPECT_EQ(dialog.windowTitle(), "Label Selection and Sorting");
    EXPECT_EQ(dialog.limitList()->count(), 14);
    EXPECT_FALSE(dialog.dietList()->isEnabled());
    dialog.limitList()->setCurrentIndex(3);
    EXPECT_TRUE(dialog.dietList()->isEnabled());
    dialog.dietList()->item(2)->setCheckState(Qt::Checked);
    dialog.sortList()->setCurrentIndex(4);
    const LabelSelection chosen = limit.selection();
    EXPECT_EQ(chosen.cLabelLimit, "S");
    EXPECT_EQ(chosen.nLabelDiet, 4);
    EXPECT_FALSE(chosen.lFilterAll);
    EXPECT_EQ(chosen.sortOrder, 4);
    keepPicture(dialog, QStringLiteral("FormLabelLimit"));
    dialog.limitList()->setCurrentIndex(5);
    EXPECT_FALSE(dialog.dietList()->isEnabled());
    EXPECT_EQ(limit.match(), TFormLabelLimit::Match::None);
}

TEST_F(DeliveryReportScreens, TheDriverMessagesAreSavedOnOk)
{
    TFormDeliveryReportMessages presenter(data.db(), ui);
    DeliveryReportMessagesView view(presenter);
    EXPECT_EQ(view.topEdit()->toPlainText(), "Call the office at 555-0100 when a client does not answer.");
    view.bottomEdit()->setPlainText(QStringLiteral("Ice on the hill roads."));
    keepPicture(view, QStringLiteral("FormDeliveryReportMessages"));
    // Closing asks first; Cancel keeps the window.
    ui.answerNext(Answer::Cancel);
    view.reject();
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Question).size(), 1);
    ui.answerNext(Answer::Yes);
    view.reject();
    EXPECT_EQ(ConfigRecord::read(data.db()).text(QStringLiteral("DELIV_REPORT_MSG_BOT")),
              "Ice on the hill roads.");
}
