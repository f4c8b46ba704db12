// "Select the Delivery Report to Run" over its presenter: the lists and the
// user's report, the rules of the dates and limits, the settings it keeps,
// the check that a date's run is current, and running reports.

#include "ReportAgency.h"
#include "ReportTestSupport.h"

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "delivery/DeliveryDataCurrency.h"
#include "delivery/DeliveryReportList.h"
#include "delivery/RunPreparation.h"
#include "delivery/StaffReportPreferences.h"
#include "delivery/TFormDeliveryReportMessages.h"
#include "delivery/TFormRepChoice.h"
#include "engine/ReportDocument.h"
#include "labels/LabelStockSettings.h"
#include "labels/MemTableLabels.h"
#include "settings/ConfigRecord.h"
#include "settings/SettingsFile.h"
#include "template/TemplateRegistry.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;
using namespace kb::test;
using Kind = ScriptedUserInterface::Kind;

namespace {

// Records the dates it was asked to prepare.
class RecordingPreparation final : public RunPreparation
{
public:
    std::vector<std::pair<QDate, bool>> calls;
    void prepareAndSave(const QDate& date, bool show) override { calls.emplace_back(date, show); }
};

class RepChoice : public ReportScreenFixture
{
protected:
    void SetUp() override
    {
        ensureGuiApplication();
        ReportScreenFixture::SetUp();
    }

    std::unique_ptr<TFormRepChoice> open()
    {
        auto form = std::make_unique<TFormRepChoice>(context, output, questions, &preparation);
        form->FormShow();
        return form;
    }

    void setStaff(const QString& column, const QVariant& value)
    {
        data.db().execute(QStringLiteral("Update Staff set %1 = :Value where User_ID = 'pat'").arg(column),
                          {{QStringLiteral("Value"), value}});
    }

    RecordingPreparation preparation;
};

} // namespace

TEST_F(RepChoice, OpensOnTomorrowWithTheListsAndTheUsersReport)
{
    QFile user(templates.filePath(QStringLiteral("USERREPORTDELIVERYWeekly Totals.rtm")));
    ASSERT_TRUE(user.open(QIODevice::WriteOnly));
    user.close();
    setStaff(QStringLiteral("Preferred_Delivery_Report"), 24);
    auto form = open();
    EXPECT_EQ(TFormRepChoice::caption(), "Select the Delivery Report to Run");
    EXPECT_EQ(form->from(), QDate(2024, 3, 7));
    EXPECT_EQ(form->to(), QDate(2024, 3, 7));
    EXPECT_EQ(form->separateDate(0), QDate(2024, 3, 7));
    ASSERT_EQ(form->reportEntries().size(), 25);
    EXPECT_EQ(form->reportEntries()[23], "Bar-Code Listing");
    EXPECT_EQ(form->reportEntries()[24], "Weekly Totals (User-Defined)");
    EXPECT_EQ(form->reportIndex(), 24);
    EXPECT_EQ(form->choices().userReport, "Weekly Totals");
    EXPECT_EQ(form->services().entries, QStringList({"Home Delivered Meals [1]", "Frozen Meals [2]"}));
    EXPECT_EQ(form->routes().entries, QStringList({"N1", "N2", "S1", "O'B1", "E1"}));

    // A preferred report beyond the list is ignored; a user without a Staff
    // row gets none.
    setStaff(QStringLiteral("Preferred_Delivery_Report"), 30);
    EXPECT_EQ(open()->reportIndex(), -1);
    setStaff(QStringLiteral("Preferred_Delivery_Report"), 5);
    EXPECT_EQ(open()->reportIndex(), 5);
    context.userId = QStringLiteral("admin");
    EXPECT_EQ(open()->reportIndex(), -1);
}

TEST_F(RepChoice, TheReportDecidesWhichChoicesApply)
{
    auto form = open();
    for (int index : {0, 22}) {
        form->setReportIndex(index);
        EXPECT_TRUE(form->datesEnabled());
        EXPECT_TRUE(form->limitsEnabled());
    }
    form->setReportIndex(23);
    EXPECT_FALSE(form->datesEnabled());
    EXPECT_TRUE(form->limitsEnabled());

    // Dates never cross.
    form->setFrom(QDate(2024, 3, 10));
    EXPECT_EQ(form->to(), QDate(2024, 3, 10));
    form->setTo(QDate(2024, 3, 4));
    EXPECT_EQ(form->from(), QDate(2024, 3, 4));
    form->setTo(QDate(2024, 3, 8));
    EXPECT_EQ(form->from(), QDate(2024, 3, 4));

    // Separate dates: clearing one clears the later ones; a date is usable
    // while the one before holds a date; entering proposes the next day.
    EXPECT_TRUE(form->separateDateEnabled(1));
    EXPECT_FALSE(form->separateDateEnabled(2));
    form->enterSeparateDate(1);
    EXPECT_EQ(form->separateDate(1), QDate(2024, 3, 8));
    form->enterSeparateDate(2);
    form->enterSeparateDate(3);
    EXPECT_EQ(form->separateDate(3), QDate(2024, 3, 10));
    form->setSeparateDate(1, QDate(1899, 12, 30));
    EXPECT_FALSE(form->separateDate(2).isValid());
    EXPECT_FALSE(form->separateDate(3).isValid());
    EXPECT_TRUE(form->separateDateEnabled(2) == false && form->separateDateEnabled(3) == false);

    // Centers refill the list and clear the marks.
    form->setRouteChecked(0, true);
    EXPECT_EQ(form->includeCaption(), "Include these routes");
    form->setRouteKind(RouteListKind::DistributionCenters);
    EXPECT_EQ(form->routes().entries, QStringList({"NORTH", "SOUTH", "WEST"}));
    EXPECT_EQ(form->routes().checkedCount(), 0);
    EXPECT_EQ(form->excludeCaption(), "Exclude these centers");
    form->selectAllRoutes();
    EXPECT_EQ(form->routes().checkedCount(), 3);
    form->deselectAllRoutes();
    EXPECT_EQ(form->routes().checkedCount(), 0);
}

TEST_F(RepChoice, KeepsItsChoicesInTheUsersSettings)
{
    {
        auto form = open();
        EXPECT_EQ(form->destination(), ReportDestination::Screen);
        EXPECT_EQ(form->datePage(), DatePage::Range);
        form->setServiceChecked(1, true);
        form->setDestination(ReportDestination::Printer);
        form->setDatePage(DatePage::NonContiguous);
        form->FormClose();
    }
    EXPECT_EQ(settings.readString(TFormRepChoice::section(), QStringLiteral("ServiceChoices")), "2");
    EXPECT_EQ(settings.readString(TFormRepChoice::section(), QStringLiteral("PrintDestination")), "Printer");
    EXPECT_EQ(settings.readString(TFormRepChoice::section(), QStringLiteral("DateRangeType")), "1");
    auto again = open();
    EXPECT_FALSE(again->services().isChecked(0));
    EXPECT_TRUE(again->services().isChecked(1));
    EXPECT_EQ(again->destination(), ReportDestination::Printer);
    EXPECT_EQ(again->datePage(), DatePage::NonContiguous);
}

TEST_F(RepChoice, RunsTheReportToTheChosenDestination)
{
    auto form = open();
    form->setDates(wednesday, wednesday);
    // OK without a report does nothing.
    form->ok();
    EXPECT_TRUE(output.previews.empty());
    EXPECT_TRUE(ui.messages().isEmpty());

    form->setReportIndex(int(DeliveryReport::ClientCountRouteDiet));
    form->ok();
    ASSERT_EQ(output.previews.size(), 1u);
    EXPECT_EQ(output.previews[0]->title, "Client Count by Route and Diet Type");
    const QStringList texts = documentTexts(*output.previews[0]);
    EXPECT_TRUE(texts.contains(QStringLiteral("Route N1  North Loop"))) << texts.join(u'|').toStdString();
    EXPECT_TRUE(form->buttonsEnabled());

    form->setDestination(ReportDestination::Printer);
    form->ok();
    EXPECT_EQ(output.printed, 1);
    EXPECT_TRUE(ui.messages().isEmpty()) << ui.messages().first().text.toStdString();

    // A missing template: the message, no report, the screen usable.
    QFile::remove(templates.filePath(QStringLiteral("CliCntSvcRteDiet.rtm")));
    form->ok();
    EXPECT_EQ(output.printed, 1);
    EXPECT_EQ(ui.texts(Kind::Error), QStringList({QStringLiteral("The requested report template file:\n") +
                                                  templates.filePath(QStringLiteral("CliCntSvcRteDiet.rtm")) +
                                                  QStringLiteral("\ncould not be found.")}));
    EXPECT_TRUE(form->buttonsEnabled());

    // A damaged template: its message, and the screen stays usable.
    ui.clear();
    QFile bad(templates.filePath(QStringLiteral("CliCntSvcRteDiet.rtm")));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write("report \"x\"\n  pipe DBPipelineRouteDiet\n  detail height 0.2in\n    text 0 0 1in 0.2in "
              "\"{Nope}\"\n  end\nend\n");
    bad.close();
    form->ok();
    ASSERT_EQ(ui.texts(Kind::Error).size(), 1);
    EXPECT_TRUE(ui.texts(Kind::Error)[0].contains(QStringLiteral("Nope")))
        << ui.texts(Kind::Error)[0].toStdString();
    EXPECT_TRUE(form->buttonsEnabled());
}

TEST_F(RepChoice, LabelsPrintOnTheChosenStockFromTheChosenLabel)
{
    data.db().execute(QStringLiteral("Update Deliveri set Number_Labels = 2 where Deliv_ID = 4"));
    {
        auto form = open();
        form->setDates(wednesday, wednesday);
        form->setReportIndex(int(DeliveryReport::ClientCountRouteDiet));
        EXPECT_FALSE(form->labelOptionsEnabled());
        form->setReportIndex(int(DeliveryReport::DailyLabels));
        EXPECT_TRUE(form->labelOptionsEnabled());
        EXPECT_EQ(form->labelStockIndex(), 0);
        EXPECT_EQ(form->labelsPerSheet(), 0);
        form->setLabelStockIndex(LabelStockSettings::indexOf(QStringLiteral("Avery 5163")));
        EXPECT_EQ(form->labelsPerSheet(), 10);
        form->setLabelStart(9);
        form->ok();
        EXPECT_EQ(questions.asked, 1);
        ASSERT_EQ(output.previews.size(), 1u);
        // Eight labels (104 twice) from the ninth of ten: two sheets.
        const ReportDocument& labels = *output.previews[0];
        EXPECT_EQ(labels.pageSize, QSizeF(612, 792));
        EXPECT_EQ(labels.pageCount(), 2);
        EXPECT_EQ(labels.pages[0].blocks.size() + labels.pages[1].blocks.size(), 8u);
        EXPECT_EQ(labels.pages[0].blocks.size(), 2u);
        EXPECT_TRUE(data.db().memoryTable(MemTableLabels::tableName()));
        // A smaller sheet brings the start back to the first label.
        form->setLabelStockIndex(LabelStockSettings::indexOf(QStringLiteral("Label printer 4 x 6 in")));
        EXPECT_EQ(form->labelStart(), 1);
        form->ok();
        ASSERT_EQ(output.previews.size(), 2u);
        EXPECT_EQ(output.previews[1]->pageSize, QSizeF(288, 432));
        EXPECT_EQ(output.previews[1]->pageCount(), 8);
        form->FormClose();
        EXPECT_FALSE(data.db().memoryTable(MemTableLabels::tableName()));
    }
    EXPECT_EQ(settings.readString(LabelStockSettings::section(), LabelStockSettings::labelsKey()),
              "Label printer 4 x 6 in");
    auto again = open();
    EXPECT_EQ(again->labelStockIndex(), LabelStockSettings::indexOf(QStringLiteral("Label printer 4 x 6 in")));
    EXPECT_EQ(again->labelStart(), 1);
}

TEST_F(RepChoice, UserDefinedReportsBringTheirOwnData)
{
    QFile user(writeMealsPerRouteReport(templates.path()));
    auto form = open();
    form->setDates(wednesday, thursday);
    form->setReportIndex(
        int(form->reportEntries().indexOf(QStringLiteral("Meals per Route (User-Defined)"))));
    form->ok();
    ASSERT_EQ(output.previews.size(), 1u)
        << (ui.messages().isEmpty() ? "" : ui.messages()[0].text.toStdString());
    const QStringList texts = documentTexts(*output.previews[0]);
    EXPECT_TRUE(texts.contains(QStringLiteral("Kettlebrook Meals on Wheels 2024-03-06 00:00:00")));
    EXPECT_TRUE(texts.contains(QStringLiteral("N2: 11")));

    QFile::remove(user.fileName());
    form->ok();
    EXPECT_EQ(
        ui.texts(Kind::Error),
        QStringList({QStringLiteral("Could not locate the report template file:\n\r") + user.fileName()}));
}

TEST_F(RepChoice, ChecksThatTheDatesRunIsCurrent)
{
    auto form = open();
    form->setReportIndex(int(DeliveryReport::KitchenCountsReport));
    // No preference: no check.
    form->setDates(QDate(2024, 3, 8), QDate(2024, 3, 8));
    form->ok();
    EXPECT_TRUE(ui.messages().isEmpty());

    // Never prepared: a first preparation, shown only for "F" or "A".
    setStaff(QStringLiteral("Prepare_Data_Prompt"), QStringLiteral("M"));
    setStaff(QStringLiteral("Display_Prepared_Data"), QStringLiteral("F"));
    ui.answerNext(Answer::Yes);
    form->ok();
    EXPECT_EQ(
        ui.texts(Kind::Question),
        QStringList({QStringLiteral("The delivery date of 3/8/2024\nhas not yet been prepared.\nWould you "
                                    "like to prepare it now?")}));
    ASSERT_EQ(preparation.calls.size(), 1u);
    EXPECT_EQ(preparation.calls[0], std::make_pair(QDate(2024, 3, 8), true));

    // Thursday was saved at 10:00; at 10:20 nothing is asked, at 10:31 the
    // question comes, and No runs the report on the saved data.
    ui.clear();
    form->setDates(thursday, thursday);
    data.clock().set(QDateTime(wednesday, QTime(10, 20)));
    form->ok();
    EXPECT_TRUE(ui.texts(Kind::Question).isEmpty());
    data.clock().set(QDateTime(wednesday, QTime(10, 31)));
    const size_t before = output.previews.size();
    form->ok();
    EXPECT_EQ(
        ui.texts(Kind::Question),
        QStringList({QStringLiteral("The delivery date 3/7/2024\nwas prepared more than 30 minutes ago.\n"
                                    "Would you like to prepare it again now?")}));
    EXPECT_EQ(preparation.calls.size(), 1u);
    EXPECT_EQ(output.previews.size(), before + 1);

    // A repeated preparation is shown for "R" and "A", saved at once for "F".
    ui.clear();
    ui.answerNext(Answer::Yes);
    form->ok();
    ASSERT_EQ(preparation.calls.size(), 2u);
    EXPECT_FALSE(preparation.calls[1].second);
    setStaff(QStringLiteral("Display_Prepared_Data"), QStringLiteral("A"));
    ui.answerNext(Answer::Yes);
    form->ok();
    EXPECT_TRUE(preparation.calls[2].second);

    // A range cannot be checked.
    ui.clear();
    form->setDates(wednesday, thursday);
    form->ok();
    EXPECT_EQ(ui.texts(Kind::Information),
              QStringList(
                  {QStringLiteral("You have selected a range of more than one date\nfor this report. "
                                  "Kettlebrook can't check to see if \nthe delivery data is current in this "
                                  "situation.")}));
}

TEST_F(RepChoice, TheThresholdsOfTheCurrencyCheck)
{
    DeliveryDataCurrency currency(data.db(), data.clock(), ui);
    const QDate day(2024, 3, 6);
    const auto ask = [&](const QString& code, const QDateTime& saved, const QDateTime& now) {
        data.clock().set(now);
        return !currency.question(day, saved, code).isEmpty();
    };
    const QDateTime nine(QDate(2024, 3, 5), QTime(9, 0));
    EXPECT_FALSE(ask("1", nine, nine.addSecs(59 * 60)));
    EXPECT_TRUE(ask("1", nine, nine.addSecs(61 * 60)));
    EXPECT_FALSE(ask("4", nine, nine.addSecs(3 * 3600 + 59 * 60)));
    EXPECT_TRUE(ask("4", nine, nine.addSecs(4 * 3600 + 60)));
    // "D" counts from today's midnight: yesterday 09:00 asked today at 17:00
    // is less than a day before midnight.
    EXPECT_FALSE(ask("D", nine, QDateTime(QDate(2024, 3, 6), QTime(17, 0))));
    EXPECT_TRUE(ask("D", nine, QDateTime(QDate(2024, 3, 7), QTime(8, 0))));
    EXPECT_EQ(currency.question(day, nine, QStringLiteral("D")),
              "The delivery date 3/6/2024\nwas prepared more than a day ago.\nWould you like to prepare it "
              "again now?");
    // Another letter still tests whether the date was prepared at all.
    EXPECT_FALSE(ask("X", nine, nine.addDays(30)));
    EXPECT_TRUE(currency.question(day, std::nullopt, QStringLiteral("X"))
                    .startsWith(QStringLiteral("The delivery date of")));

    // The last of several saves counts.
    insertRow(data.db(), QStringLiteral("History"),
              {{QStringLiteral("Tran_Date"), QDateTime(QDate(2024, 3, 6), QTime(9, 45))},
               {QStringLiteral("Event"), QStringLiteral("Saved 3/6/2024 All Delivery Types, 7 names.")},
               {QStringLiteral("Event_Date"), day}});
    EXPECT_EQ(currency.lastSave(day), QDateTime(QDate(2024, 3, 6), QTime(9, 45)));
    EXPECT_FALSE(currency.lastSave(QDate(2024, 3, 9)).has_value());
}

TEST_F(RepChoice, TheDriverMessagesAreEditedWithAQuestionBeforeTheyAreLost)
{
    TFormDeliveryReportMessages messages(data.db(), ui);
    EXPECT_EQ(messages.top(), "Call the office at 555-0100 when a client does not answer.");
    EXPECT_TRUE(messages.closeQuery());
    messages.setTop(QStringLiteral("Snow today: drive slowly."));
    ui.answerNext(Answer::Cancel);
    EXPECT_FALSE(messages.closeQuery());
    EXPECT_EQ(ui.texts(Kind::Question),
              QStringList({QStringLiteral("Save your changes to the Driver Messages?")}));
    ui.answerNext(Answer::No);
    EXPECT_TRUE(messages.closeQuery());
    EXPECT_EQ(messages.top(), "Call the office at 555-0100 when a client does not answer.");
    messages.setBottom(QStringLiteral("Thank you!"));
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(messages.closeQuery());
    EXPECT_EQ(ConfigRecord::read(data.db()).text(QStringLiteral("DELIV_REPORT_MSG_BOT")), "Thank you!");
}

