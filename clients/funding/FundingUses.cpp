#include "funding/FundingUses.h"

#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/HookChain.h"
#include "dataset/HookSuspension.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "funding/FundingTerms.h"
#include "records/DataSetActions.h"
#include "records/RecordServices.h"
#include "session/TDataModule1.h"
#include "settings/ConfigRecord.h"
#include "store/Database.h"
#include "window/ClientPageData.h"

namespace kb {

namespace {

bool editing(const DataSet& set)
{
    return set.state() == DataSet::State::Edit || set.state() == DataSet::State::Insert;
}

bool blank(const QVariant& v)
{
    return v.isNull() || v.toString().trimmed().isEmpty();
}

} // namespace

FundingUses::FundingUses(TDataModule1& module, ClientPageData& pages, UserInterface& ui)
    : m_module(module), m_pages(pages), m_ui(ui)
{
    QueryDataSet& uses = fundUses();
    uses.addCalculatedField(QStringLiteral("Service_Description"), FieldType::String, 50);
    uses.addCalculatedField(QStringLiteral("Method_Text"), FieldType::String, 25);
    uses.addCalculatedField(QStringLiteral("Period_Text"), FieldType::String, 10);
    chainHook(uses, DataSet::Hook::OnCalcFields, [](DataSet& s) {
        s.setFieldValue(u"Method_Text",
                        reimbursementMethodText(s.fieldValue(u"Reimbursement_Method").toString()));
        s.setFieldValue(u"Period_Text",
                        s.fieldValue(u"Reimbursement_Period").toString().trimmed() == QLatin1String("D")
                            ? QStringLiteral("Day")
                            : QString());
        const qint64 service = s.fieldValue(u"Service_ID").toLongLong();
        // The lookup field "Service" is filled before the calculated ones.
        s.setFieldValue(u"Service_Description",
                        service == 0 ? QStringLiteral("All Services") : s.fieldValue(u"Service").toString());
    });
    chainHook(uses, DataSet::Hook::AfterInsert, [this](DataSet& s) { fundUseAfterInsert(s); });
    chainHook(uses, DataSet::Hook::BeforePost, [this](DataSet& s) { fundUseBeforePost(s); });
    chainHook(uses, DataSet::Hook::AfterPost, [this](DataSet&) { reopenClientRates(); });
    chainHook(uses, DataSet::Hook::BeforeClose, [this](DataSet& s) {
        askBeforeClose(s, QStringLiteral("Save your changes to the Client's Funding Source?"));
    });

    QueryDataSet& rates = clientRates();
    chainHook(rates, DataSet::Hook::AfterInsert, [this](DataSet& s) {
        stampNewRate(s, QStringLiteral("F"));
        s.setFieldValue(u"Fund_CD", fundUses().fieldValue(u"Fund_CD"));
        s.setFieldValue(u"Service_ID", fundUses().fieldValue(u"Service_ID"));
    });
    chainHook(rates, DataSet::Hook::BeforePost, [this](DataSet& s) { rateBeforePost(s, zeroRateText()); });
    chainHook(rates, DataSet::Hook::BeforeClose, [this](DataSet& s) {
        askBeforeClose(s, QStringLiteral("Save your changes to this Client's Specific Funding Rate?"));
    });

    QueryDataSet& pledge = pledges();
    chainHook(pledge, DataSet::Hook::AfterInsert,
              [this](DataSet& s) { stampNewRate(s, QStringLiteral("P")); });
    chainHook(pledge, DataSet::Hook::BeforePost, [this](DataSet& s) { rateBeforePost(s, zeroPledgeText()); });

    QueryDataSet& resulting = resultingRates();
    resulting.addCalculatedField(QStringLiteral("Rate_Item"), FieldType::String, 50);
    resulting.addCalculatedField(QStringLiteral("Rate_Source"), FieldType::String, 25);
    chainHook(resulting, DataSet::Hook::OnCalcFields, [](DataSet& s) {
        // The client's own rates stand apart from the inherited ones.
        s.setFieldValue(u"Rate_Source", s.fieldValue(u"Reason").toString() == QLatin1String("E")
                                            ? QStringLiteral("Client's own rate")
                                            : QStringLiteral("Funder or item"));
        s.setFieldValue(u"Rate_Item", fundingRateItemName(s.fieldValue(u"Unit").toString(),
                                                          s.fieldValue(u"Item").toString()));
    });
}

FundingSheets FundingUses::sheets() const
{
    return fundingSheets(
        ConfigRecord::fromDataSet(m_module.config()).text(QStringLiteral("FUNDING_CONFIGURATION")));
}

FundingRateGroups FundingUses::rateGroups()
{
    QueryDataSet& uses = fundUses();
    if (!uses.isActive() || (uses.isEmpty() && uses.state() != DataSet::State::Insert)) return {};
    return fundingRateGroups(uses.fieldValue(u"Reimbursement_Method").toString());
}

QueryDataSet& FundingUses::fundUses()
{
    return m_pages.query(QStringLiteral("QueryFundUses"));
}

QueryDataSet& FundingUses::clientRates()
{
    return m_pages.query(QStringLiteral("QueryClientSpecificFundingRates"));
}

QueryDataSet& FundingUses::resultingRates()
{
    return m_pages.query(QStringLiteral("QueryServiceFundingRates"));
}

QueryDataSet& FundingUses::pledges()
{
    return m_pages.query(QStringLiteral("QueryItemPledgeRates"));
}

void FundingUses::fundUseAfterInsert(DataSet& set)
{
    set.setFieldValue(u"Person_ID", m_module.clients().fieldValue(u"PERSON_ID"));
    set.setFieldValue(u"Service_ID", m_module.clients().fieldValue(u"SVCS_USED"));
    for (const Weekday& day : weekdays())
        set.setFieldValue(day.column, true);
    set.setFieldValue(u"Create_Date", m_module.clock().today());
}

void FundingUses::fundUseBeforePost(DataSet& set)
{
    Database& db = m_module.db();
    const QVariant service = set.fieldValue(u"Service_ID");
    // A row being inserted has no number yet; no row has 0.
    const QVariant recordId =
        set.fieldValue(u"RecordID").isNull() ? QVariant(0) : set.fieldValue(u"RecordID");
    const Params params = {{QStringLiteral("Person_ID"), set.fieldValue(u"Person_ID")},
                           {QStringLiteral("Service_ID"), service},
                           {QStringLiteral("RecordID"), recordId}};
    const ResultSet others =
        service.toLongLong() == 0 && !service.isNull()
            ? db.execute(
                  QStringLiteral(
                      "Select * from FundUses where Person_ID = :Person_ID and (RecordID <> :RecordID) "),
                  params)
            : db.execute(
                  QStringLiteral("Select * from FundUses where Person_ID = :Person_ID and (Service_ID = "
                                 ":Service_ID or Service_ID = 0) and (RecordID <> :RecordID) "),
                  params);
    for (const Weekday& day : weekdays()) {
        if (!set.fieldValue(day.column).toBool()) continue;
        const int column = others.columnIndex(day.column);
        for (qsizetype r = 0; r < others.rowCount(); ++r)
            if (others.value(r, column).toBool()) {
                m_ui.warning(overlapText());
                throw Abort();
            }
    }
    if (blank(set.fieldValue(u"Fund_CD")) || service.isNull()) {
        m_ui.warning(incompleteText());
        throw Abort();
    }
    const QString problem = timeMethodProblem(set.fieldValue(u"Reimbursement_Method").toString(),
                                              set.fieldValue(u"Reimbursement_Period").toString(),
                                              set.fieldValue(u"Reimbursement_Rate").toDouble());
    if (!problem.isEmpty()) {
        m_ui.warning(problem);
        throw Abort();
    }
    set.setFieldValue(u"Last_Updated", m_module.clock().now());
}

void FundingUses::stampNewRate(DataSet& set, const QString& method)
{
    set.setFieldValue(u"Person_ID", m_module.clients().fieldValue(u"PERSON_ID"));
    set.setFieldValue(u"Created_By", m_module.session().userFullName);
    set.setFieldValue(u"Date_Created", m_module.clock().today());
    set.setFieldValue(u"Method", method);
    set.setFieldValue(u"Amount", 0);
}

void FundingUses::rateBeforePost(DataSet& set, const QString& zeroText)
{
    const QString problem = rateProblem(set, zeroText, noUnitText());
    if (!problem.isEmpty()) {
        m_ui.warning(problem);
        throw Abort();
    }
    set.setFieldValue(u"Last_Update", m_module.clock().now());
}

void FundingUses::askBeforeClose(DataSet& set, const QString& question)
{
    if (!editing(set)) return;
    if (m_ui.question(question, Buttons::YesNo) == Answer::Yes)
        set.post();
    else
        set.cancel();
}

void FundingUses::reopenClientRates()
{
    if (!clientRates().isActive()) return;
    m_pages.follow(QStringLiteral("QueryFundUses"));
}

void FundingUses::ActionAddFunding()
{
    QueryDataSet& uses = fundUses();
    if (!uses.isActive()) OpenQuery(uses);
    uses.append();
}

void FundingUses::ActionDeleteFunding()
{
    QueryDataSet& uses = fundUses();
    if (!uses.isActive() || uses.isEmpty()) return;
    if (m_ui.question(QStringLiteral("Delete the selected Service Funding?"), Buttons::YesNo) != Answer::Yes)
        return;
    if (editing(uses)) {
        HookSuspension off(uses, {DataSet::Hook::BeforePost});
        uses.post();
    }
    m_module.db().execute(QStringLiteral("Delete from Pricing where Person_ID = :Person_ID and Service_ID = "
                                         ":Service_ID and Fund_CD = :Fund_CD and Method = 'F'"),
                          {{QStringLiteral("Person_ID"), uses.fieldValue(u"Person_ID")},
                           {QStringLiteral("Service_ID"), uses.fieldValue(u"Service_ID")},
                           {QStringLiteral("Fund_CD"), uses.fieldValue(u"Fund_CD")}});
    uses.remove();
}

void FundingUses::ActionAddItemRate()
{
    QueryDataSet& uses = fundUses();
    QueryDataSet& rates = clientRates();
    if (uses.isActive() && editing(uses)) uses.post();
    if (rates.isActive() && editing(rates)) rates.post();
    if (!uses.isActive() || uses.isEmpty() || blank(uses.fieldValue(u"Fund_CD"))) {
        m_ui.warning(noSourceText());
        return;
    }
    if (!rates.isActive()) m_pages.follow(QStringLiteral("QueryFundUses"));
    if (!rates.isActive()) OpenQuery(rates);
    rates.append();
}

void FundingUses::ActionDeleteItemRate()
{
    QueryDataSet& rates = clientRates();
    if (!rates.isActive() || rates.isEmpty()) return;
    if (m_ui.question(QStringLiteral("Delete the selected item reimbursement?"), Buttons::YesNo) !=
        Answer::Yes)
        return;
    HookSuspension off(rates, {DataSet::Hook::BeforePost});
    if (editing(rates)) rates.post();
    rates.remove();
}

void FundingUses::reverseDays(WeekdayGroup group)
{
    QueryDataSet& uses = fundUses();
    if (!uses.isActive() || uses.isEmpty()) return;
    invertWeekdays(uses, group);
}

void FundingUses::showResultingRates()
{
    QueryDataSet& rates = clientRates();
    if (rates.isActive() && rates.state() == DataSet::State::Insert &&
        rates.fieldValue(u"Item_ID").isNull() && rates.fieldValue(u"Amount").toDouble() == 0)
        rates.cancel();
    else if (rates.isActive() && editing(rates))
        rates.post();
    QueryDataSet& resulting = resultingRates();
    resulting.close();
    m_pages.follow(QStringLiteral("QueryFundUses"));
    QueryDataSet& uses = fundUses();
    if (uses.isActive() && !uses.isEmpty()) {
        resulting.setParam(QStringLiteral("Fund_CD"), uses.fieldValue(u"Fund_CD"));
        resulting.setParam(QStringLiteral("Person_ID"), uses.fieldValue(u"Person_ID"));
    }
    OpenQuery(resulting);
}

void FundingUses::ActionAddPledgeItem()
{
    QueryDataSet& pledge = pledges();
    if (!pledge.isActive()) OpenQuery(pledge);
    if (editing(pledge)) pledge.post();
    pledge.append();
}

void FundingUses::ActionDeletePledgeItem()
{
    QueryDataSet& pledge = pledges();
    if (!pledge.isActive() || pledge.isEmpty()) return;
    if (m_ui.question(QStringLiteral("Delete the selected item pledge?"), Buttons::YesNo) != Answer::Yes)
        return;
    HookSuspension off(pledge, {DataSet::Hook::BeforePost});
    if (editing(pledge)) pledge.post();
    pledge.remove();
}

} // namespace kb
