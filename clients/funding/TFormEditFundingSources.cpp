#include "funding/TFormEditFundingSources.h"

#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/HookChain.h"
#include "dataset/QueryDataSet.h"
#include "funding/FundingTerms.h"
#include "records/DataSetActions.h"
#include "records/RecordServices.h"
#include "store/Database.h"

namespace kb {

namespace {

bool editing(const DataSet& set)
{
    return set.state() == DataSet::State::Edit || set.state() == DataSet::State::Insert;
}

} // namespace

TFormEditFundingSources::TFormEditFundingSources(RecordServices& services, QString userId)
    : m_services(services), m_userId(std::move(userId)),
      m_editor(std::make_unique<TFormEditBase>(services, screen())),
      m_rates(std::make_unique<QueryDataSet>(
          services.db(),
          QStringLiteral("Select * from Pricing where Fund_CD = :Fund_CD and Person_ID=0 and Method='F'")))
{
    m_rates->setRequestLive(true);
    services.installMaintenanceErrorHooks(*m_rates);
    m_rates->addLookupField(QStringLiteral("Item"), QStringLiteral("Item_ID"), QStringLiteral("Items"),
                            QStringLiteral("Item_ID"), QStringLiteral("Meal_Item"));
    chainHook(*m_rates, DataSet::Hook::AfterInsert, [this](DataSet& s) {
        Database& db = m_services.db();
        s.setFieldValue(u"Person_ID", 0);
        s.setFieldValue(u"Fund_CD", m_editor->dataSet().fieldValue(u"FUND_CD"));
        s.setFieldValue(u"Method", QStringLiteral("F"));
        s.setFieldValue(u"Amount", 0);
        s.setFieldValue(u"Created_By", m_userId);
        s.setFieldValue(u"Date_Created", db.clock().today());
        s.setFieldValue(u"Last_Update", db.clock().now());
    });
    chainHook(*m_rates, DataSet::Hook::BeforePost, [this](DataSet& s) {
        const QString problem = rateProblem(s, zeroRateText(), noItemText());
        if (!problem.isEmpty()) {
            m_services.ui().warning(problem);
            throw Abort();
        }
        s.setFieldValue(u"Last_Update", m_services.db().clock().now());
    });
}

TFormEditFundingSources::~TFormEditFundingSources()
{
    if (m_inTransaction) finishTransaction(false);
}

EditorScreen TFormEditFundingSources::screen()
{
    EditorScreen s;
    s.formName = formName();
    s.table = QStringLiteral("Fundsrcs");
    s.caption = caption();
    s.indexName = QStringLiteral("FUND_SRCE");
    s.browseFields = {QStringLiteral("FUND_CD"),      QStringLiteral("FUND_SRCE"),
                      QStringLiteral("BILLED_PARTY"), QStringLiteral("REIMBURSEMENT_METHOD"),
                      QStringLiteral("CONTACT"),      QStringLiteral("PHONE")};
    return s;
}

bool TFormEditFundingSources::open()
{
    if (!m_editor->open()) return false;
    DataSet& set = m_editor->dataSet();
    const DataSet::HookFunction generic = set.hook(DataSet::Hook::BeforePost);
    set.setHook(DataSet::Hook::BeforePost, [this, generic](DataSet& s) { beforePost(s, generic); });
    chainHook(set, DataSet::Hook::AfterPost, [this](DataSet&) {
        if (m_inTransaction) finishTransaction(true);
    });
    const DataSet::ErrorHookFunction postError = set.errorHook(DataSet::Hook::OnPostError);
    set.setErrorHook(DataSet::Hook::OnPostError, [this, postError](DataSet& s, const DbError& error) {
        const DataSet::ErrorAction action = postError ? postError(s, error) : DataSet::ErrorAction::Fail;
        if (action != DataSet::ErrorAction::Retry && m_inTransaction) finishTransaction(false);
        return action;
    });
    chainHook(set, DataSet::Hook::AfterScroll, [this](DataSet&) { followSource(); });
    chainHook(set, DataSet::Hook::BeforeScroll, [this](DataSet&) {
        if (editing(*m_rates)) m_rates->post();
    });
    return m_services.guarded([this] {
        m_units.clear();
        const ResultSet items = m_services.db().execute(
            QStringLiteral("Select Item_ID, Meal_Item from Items order by Meal_Item"));
        for (qsizetype r = 0; r < items.rowCount(); ++r)
            m_units.append({items.value(r, 0).toString(), items.value(r, 1).toString()});
        m_units.append({QStringLiteral("MF"), QStringLiteral("Medical Food")});
        m_units.append({QStringLiteral("SM"), QStringLiteral("Specialized Medical Food")});
        followSource();
    });
}

bool TFormEditFundingSources::close()
{
    if (editing(*m_rates)) {
        if (m_services.ui().question(QStringLiteral("Save your changes to the Reimbursement Item?"),
                                     Buttons::YesNo) == Answer::Yes) {
            if (!m_services.guarded([this] { m_rates->post(); })) return false;
        } else {
            m_services.guarded([this] { m_rates->cancel(); });
        }
    }
    m_services.guarded([this] { m_rates->close(); });
    return m_editor->close();
}

void TFormEditFundingSources::followSource()
{
    DataSet& set = m_editor->dataSet();
    m_rates->close();
    m_rates->setParam(QStringLiteral("Fund_CD"),
                      set.isActive() && !set.isEmpty() ? set.fieldValue(u"FUND_CD") : QVariant());
    OpenQuery(*m_rates);
    if (m_ratesChanged) m_ratesChanged();
}

void TFormEditFundingSources::beforePost(DataSet& set, const DataSet::HookFunction& generic)
{
    UserInterface& ui = m_services.ui();
    const QString problem = timeMethodProblem(set.fieldValue(u"REIMBURSEMENT_METHOD").toString(),
                                              set.fieldValue(u"REIMBURSEMENT_PERIOD").toString(),
                                              set.fieldValue(u"REIMBURSEMENT_RATE").toDouble());
    if (!problem.isEmpty()) {
        ui.warning(problem);
        throw Abort();
    }
    const QVariant code = set.fieldValue(u"FUND_CD");
    if (code.toString().trimmed().isEmpty()) {
        ui.warning(noCodeText());
        throw Abort();
    }
    const QVariant oldCode = set.state() == DataSet::State::Edit ? set.oldValue(u"FUND_CD") : QVariant();
    bool carry = false;
    if (!oldCode.toString().trimmed().isEmpty() && oldCode.toString() != code.toString()) {
        Database& db = m_services.db();
        if (!db.execute(QStringLiteral("Select Fund_CD from FundSrcs where Fund_Cd = :Fund_Cd"),
                        {{QStringLiteral("Fund_Cd"), code}})
                 .isEmpty()) {
            ui.warning(duplicateText());
            throw Abort();
        }
        if (!db.execute(QStringLiteral("Select Person_ID from FundUses where Fund_Cd = :Fund_Cd"),
                        {{QStringLiteral("Fund_Cd"), oldCode}})
                 .isEmpty()) {
            if (ui.question(cascadeQuestion(), Buttons::YesNo) != Answer::Yes) throw Abort();
            carry = true;
        }
    }
    if (generic) generic(set);
    if (!carry) return;
    // The source's row is written inside the same transaction, which its
    // AfterPost commits and a failed post rolls back.
    m_services.db().startTransaction();
    m_inTransaction = true;
    try {
        cascade(oldCode, code);
    } catch (...) {
        finishTransaction(false);
        throw;
    }
}

void TFormEditFundingSources::cascade(const QVariant& oldCode, const QVariant& newCode)
{
    Database& db = m_services.db();
    const Params codes = {{QStringLiteral("NewFund_Cd"), newCode}, {QStringLiteral("OldFund_Cd"), oldCode}};
    db.execute(QStringLiteral(" Update FundUses set Fund_Cd = :NewFund_Cd where Fund_Cd = :OldFund_Cd "),
               codes);
    db.execute(
        QStringLiteral(" Update Deliveri set Funding_Desc = :NewFund_Cd where Funding_Desc = :OldFund_Cd "),
        codes);
    db.execute(QStringLiteral(" Update Pricing set Fund_Cd = :NewFund_Cd where Fund_Cd = :OldFund_Cd "),
               codes);
    db.execute(
        QStringLiteral(" Update Events set Funding_Desc = :NewFund_Cd where Funding_Desc = :OldFund_Cd "),
        codes);
}

void TFormEditFundingSources::finishTransaction(bool keep)
{
    m_inTransaction = false;
    Database& db = m_services.db();
    if (!db.inTransaction()) return;
    if (keep)
        db.commit();
    else
        db.rollback();
}

bool TFormEditFundingSources::methodVisible() const
{
    DataSet& set = m_editor->dataSet();
    return set.isActive() && !set.isEmpty() &&
           set.fieldValue(u"BILLED_PARTY").toString().trimmed() != QLatin1String("N");
}

bool TFormEditFundingSources::timeRatesVisible() const
{
    return methodVisible() &&
           m_editor->dataSet().fieldValue(u"REIMBURSEMENT_METHOD").toString().trimmed() == QLatin1String("T");
}

bool TFormEditFundingSources::itemRatesVisible() const
{
    return methodVisible() &&
           m_editor->dataSet().fieldValue(u"REIMBURSEMENT_METHOD").toString().trimmed() == QLatin1String("I");
}

void TFormEditFundingSources::ActionAddItem()
{
    DataSet& set = m_editor->dataSet();
    if (!set.isActive() || set.isEmpty() || editing(set)) return;
    m_services.guarded([this] {
        if (!m_rates->isActive()) followSource();
        m_rates->append();
    });
}

void TFormEditFundingSources::ActionDeleteItem()
{
    if (!m_rates->isActive() || m_rates->isEmpty()) return;
    if (m_services.ui().question(QStringLiteral("Delete the selected item reimbursement?"), Buttons::YesNo) !=
        Answer::Yes)
        return;
    m_services.guarded([this] { m_rates->remove(); });
}

bool TFormEditFundingSources::setRateValue(const QString& field, const QVariant& value)
{
    if (!m_rates->isActive()) return false;
    return m_services.guarded([&] {
        if (m_rates->state() == DataSet::State::Browse) m_rates->edit();
        m_rates->setFieldValue(field, value);
    });
}

bool TFormEditFundingSources::postRate()
{
    return m_services.guarded([this] { m_rates->checkBrowseMode(); });
}

} // namespace kb
