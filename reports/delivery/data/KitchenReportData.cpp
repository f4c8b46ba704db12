// The kitchen's reports: what to cook for the dates, item by item and diet
// by diet, and the standard and special meals among them.

#include "delivery/DeliveryReportList.h"
#include "delivery/data/ReportBuild.h"
#include "delivery/questions/ReportQuestions.h"
#include "delivery/questions/TFormItemLimitation.h"

namespace kb::reports {

std::optional<ReportData> buildKitchenReport(ReportBuild& build, int report)
{
    const auto index = DeliveryReport(report);
    ReportData data = ReportData::forReport(report, QStringLiteral("DBPipelineKitchenSchedule"));
    ReportStatement s;
    switch (index) {
    case DeliveryReport::KitchenCountsCrosstab:
        s << QStringLiteral(
            "Select deliveri.deliv_dt, deliveri.dow, deliveri.svcs_used, deliveri.diet_restr, "
            "deliveri.diet_descr, MealCrdt.Congregate, MealCrdt.quantity, MealCrdt.item_id, "
            "items.meal_item, items.frozen_itm, items.bulk_item, items.itemize_Diets, items.Meal_Sort, "
            "Items.Item_Sort from deliveri inner join MealCrdt on Deliveri.Deliv_ID  = MealCrdt.Deliv_ID "
            "inner join Items on MealCrdt.item_id = Items.item_id");
        s << QStringLiteral(" where ");
        addDateClause(s, build.choices,
                      {QStringLiteral("Deliveri.Deliv_Dt"), QStringLiteral("MealCrdt.Deliv_Dt")});
        build.limits.AddServiceLimitation(s, QStringLiteral("Deliveri.Svcs_Used"));
        build.limits.AddRouteLimitation(s, QStringLiteral("Deliveri.Route_ID"));
        s << QStringLiteral(
            " order by deliveri.deliv_dt, mealcrdt.item_id, deliveri.diet_descr NoJoinOptimize");
        break;
    case DeliveryReport::KitchenCountsReport:
        s << QStringLiteral(
            "select d.deliv_dt, m.item_id, d.diet_descr, d.svcs_used, d.diet_restr, m.quantity, "
            "i.Meal_Item, i.itemize_Diets, i.Meal_Sort, I.Item_Sort from deliveri d, mealcrdt m, items i");
        s << QStringLiteral(" where ");
        addDateClause(s, build.choices, {QStringLiteral("d.Deliv_Dt"), QStringLiteral("m.Deliv_Dt")});
        s << QStringLiteral(" and d.Deliv_id = m.Deliv_id and m.item_id = i.item_id ");
        build.limits.AddServiceLimitation(s, QStringLiteral("D.Svcs_Used"));
        build.limits.AddRouteLimitation(s, QStringLiteral("D.Route_ID"));
        s << QStringLiteral(" order by d.deliv_dt, m.item_id, d.Diet_Descr NoJoinOptimize");
        break;
    default: { // standard or special meals: clients (18) or items (19)
        const bool items = index == DeliveryReport::KitchenItemCountsStandardOrSpecial;
        std::optional<int> item;
        if (items) {
            TFormItemLimitation limitation(build.db);
            if (build.questions.askItemLimitation(limitation)) item = limitation.itemId();
        }
        s << QStringLiteral(
            "SELECT Deliveri.DELIV_DT, Deliveri.LABEL_CREATED, Deliveri.LABEL2_CREATED, "
            "Deliveri.DIET_DESCR, MealCrdt.QUANTITY, Services.SERVICE_DESC, Deliveri.CLIENT_ID, "
            "if( Deliveri.Label_Created = True then Deliveri.Diet_Descr else ' Standard') as 'Special One', "
            "if( Deliveri.Label2_Created = True then Deliveri.Diet_Descr else ' Standard') as 'Special Two' "
            "from deliveri INNER JOIN MealCrdt ON (MealCrdt.DELIV_ID = Deliveri.DELIV_ID) ");
        if (items) s << QStringLiteral("INNER JOIN Items ON (Items.ITEM_ID = MealCrdt.ITEM_ID) ");
        s << QStringLiteral("INNER JOIN Services ON (Services.SERVICE_ID = Deliveri.SVCS_USED) ");
        s << QStringLiteral(" where ");
        addDateClause(s, build.choices,
                      {QStringLiteral("Deliveri.Deliv_Dt"), QStringLiteral("MealCrdt.Deliv_Dt")});
        build.limits.AddServiceLimitation(s, QStringLiteral("Deliveri.Svcs_Used"));
        build.limits.AddRouteLimitation(s, QStringLiteral("Deliveri.Route_ID"));
        if (items) ReportLimits::AddItemLimitation(s, QStringLiteral("Items.Item_ID"), item);
        s << QStringLiteral(" NoJoinOptimize ");
        break;
    }
    }
    build.addQuery(data, data.mainPipe, s);
    return data;
}

} // namespace kb::reports
