// The data of each delivery report over a saved run of known content, on
// both stores: which rows, in which order, with which groups and limits.

#include "ReportAgency.h"

#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "delivery/DeliveryReportList.h"
#include "delivery/data/TDataModule2.h"
#include "delivery/questions/TFormClientItemsSortOrder.h"
#include "delivery/questions/TFormDeliveryDietCriteria.h"
#include "delivery/questions/TFormItemLimitation.h"

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;
using namespace kb::test;

namespace {

class DeliveryReportData : public ::testing::TestWithParam<StoreKind>
{
protected:
    DeliveryReportData() : data(GetParam()) {}

    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        makeReportAgency(db());
    }

    Database& db() { return data.db(); }

    DeliveryReportChoices choices(DeliveryReport report, const QDate& from, const QDate& to = {})
    {
        return choicesFor(db(), int(report), from, to.isValid() ? to : from);
    }

    ReportData run(const DeliveryReportChoices& c)
    {
        TDataModule2 module(db(), data.clock());
        std::optional<ReportData> built = module.build(c, questions, ui, nullptr);
        if (!built)
            throw std::runtime_error("the report was cancelled");
        return std::move(*built);
    }

    // One column of the report's main data set, as texts.
    static QStringList column(ReportData& report, const QString& name, const QString& pipe = {})
    {
        DataPipe& p = pipe.isEmpty() ? report.mainData() : *report.pipe(pipe);
        QStringList values;
        for (qsizetype r = 0; r < p.rowCount(); ++r) {
            p.seek(r);
            const QVariant v = p.value(QStringView(name));
            values << (v.typeId() == QMetaType::QDate ? v.toDate().toString(Qt::ISODate) : v.toString());
        }
        return values;
    }

    static QStringList parameters(ReportData& report)
    {
        DataPipe& p = *report.pipe(QStringLiteral("DBPipelineReportParameters"));
        p.seek(0);
        return {p.value(QStringView(u"Period_Beginning")).toString(), p.value(QStringView(u"Period_Ending")).toString(),
                p.value(QStringView(u"Restrictions1")).toString(), p.value(QStringView(u"Restrictions2")).toString()};
    }

    TempDataDir data;
    ScriptedUserInterface ui;
    GivenQuestions questions;
};

} // namespace

TEST_P(DeliveryReportData, EveryFixedReportBuildsOnTheSavedRun)
{
    questions.dietCriteria = [](TFormDeliveryDietCriteria& form) {
        form.diets().setChecked(0, true);
        return true;
    };
    for (int index = 0; index < DeliveryReports::fixedCount; ++index) {
        if (DeliveryReports::isLabel(index))
            continue;
        SCOPED_TRACE(DeliveryReports::name(index).toStdString());
        ReportData report = run(choicesFor(db(), index, wednesday, thursday));
        EXPECT_EQ(report.templateFile, DeliveryReports::templateFile(index));
        EXPECT_NE(report.pipe(QStringLiteral("DBPipelineConfig")), nullptr);
        EXPECT_EQ(parameters(report)[0], "2024-03-06 00:00:00");
        EXPECT_GT(report.mainData().rowCount(), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Stores, DeliveryReportData, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });
