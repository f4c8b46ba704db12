#include "applications/ServiceApplications.h"

#include "UserInterface.h"
#include "applications/ApplicationHistory.h"
#include "dataset/HookChain.h"
#include "dataset/HookSuspension.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "records/History.h"
#include "records/RecordServices.h"
#include "session/TDataModule1.h"
#include "store/Database.h"
#include "window/ClientPageData.h"

namespace kb {

namespace {

const QString Apps = QStringLiteral("QueryServiceApps");

bool editing(const DataSet& set)
{
    return set.state() == DataSet::State::Edit || set.state() == DataSet::State::Insert;
}

// Chains a rule before whatever the hook did.
QString messageOf(const std::exception& e)
{
    if (const auto* d = dynamic_cast<const DbError*>(&e)) return d->message();
    return QString::fromUtf8(e.what());
}

} // namespace

ServiceApplications::ServiceApplications(TDataModule1& module, ClientPageData& pages, UserInterface& ui)
    : m_module(module), m_pages(pages), m_ui(ui)
{
    QueryDataSet& apps = applications();
    apps.addCalculatedField(QStringLiteral("Status_Text"), FieldType::String, 20);
    chainHook(apps, DataSet::Hook::OnCalcFields, [](DataSet& s) {
        s.setFieldValue(u"Status_Text", applicationStatusWord(s.fieldValue(u"App_Status").toString()));
    });
    chainHook(apps, DataSet::Hook::BeforeEdit, [this](DataSet& s) { beforeEdit(s); });
    chainHook(apps, DataSet::Hook::BeforePost, [this](DataSet& s) { beforePost(s); });
    chainHook(apps, DataSet::Hook::AfterPost, [this](DataSet& s) { afterPost(s); });
    chainHook(apps, DataSet::Hook::AfterInsert, [this](DataSet& s) {
        m_rememberedStatus.clear();
        s.setFieldValue(u"Person_ID", m_module.clients().fieldValue(u"PERSON_ID"));
        s.setFieldValue(u"App_Date", m_module.clock().today());
    });
}

ServiceApplications::~ServiceApplications() = default;

QueryDataSet& ServiceApplications::applications()
{
    return m_pages.query(Apps);
}

void ServiceApplications::beforeEdit(DataSet& set)
{
    m_rememberedStatus = set.fieldValue(u"App_Status").toString().trimmed();
}

void ServiceApplications::beforePost(DataSet& set)
{
    const QVariant serviceId = set.fieldValue(u"Service_ID");
    const bool inserting = set.state() == DataSet::State::Insert;
    const bool serviceChanged = inserting
                                    ? !serviceId.isNull()
                                    : serviceId.toLongLong() != set.oldValue(u"Service_ID").toLongLong() ||
                                          serviceId.isNull() != set.oldValue(u"Service_ID").isNull();
    const QVariant appId = set.fieldValue(u"App_ID");
    // A failure here is told and the post goes on: the application itself
    // matters more than its paperwork.
    try {
        Database& db = m_module.db();
        const Params app = {{QStringLiteral("nApp_ID"), appId}};
        if (serviceChanged && !appId.isNull()) {
            const bool existing =
                !db.execute(QStringLiteral("Select DocUse_ID from DocUses where App_ID = :nApp_ID"), app)
                     .isEmpty() ||
                !db.execute(
                       QStringLiteral("Select ConditionUse_ID from ConditionUses where App_ID = :nApp_ID"),
                       app)
                     .isEmpty();
            if (existing && m_ui.question(existingDocumentsQuestion(), Buttons::YesNo) == Answer::Yes) {
                db.execute(QStringLiteral("Delete from DocUses where App_ID = :nApp_ID"), app);
                db.execute(QStringLiteral("Delete from ConditionUses where App_ID = :nApp_ID"), app);
            }
        }
        if (serviceChanged || m_newApplication) {
            m_newApplication = false;
            // A row being inserted has its number only once written.
            if (appId.isNull())
                m_templatesAfterPost = true;
            else
                copyTemplates(appId, set.fieldValue(u"Person_ID"), serviceId);
        }
    } catch (const std::exception& e) {
        m_ui.error(messageOf(e));
    }
}

void ServiceApplications::copyTemplates(const QVariant& appId, const QVariant& personId,
                                        const QVariant& serviceId)
{
    Database& db = m_module.db();
    const Params service = {{QStringLiteral("nService_ID"), serviceId}};
    const Params common = {{QStringLiteral("App_ID"), appId},
                           {QStringLiteral("Person_ID"), personId},
                           {QStringLiteral("Service_ID"), serviceId},
                           {QStringLiteral("Today"), m_module.clock().today()}};
    const auto copy = [&](const QString& from, const QString& into, const QString& key) {
        const ResultSet rows = db.execute(
            QStringLiteral("Select %1, Requirement_Level, Sort_Order from %2 where Service_ID = :nService_ID "
                           "order by Sort_Order")
                .arg(key, from),
            service);
        std::vector<Params> values;
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            values.push_back({{QStringLiteral("Key"), rows.value(r, 0)},
                              {QStringLiteral("Requirement_Level"), rows.value(r, 1)},
                              {QStringLiteral("Sort_Order"), rows.value(r, 2)}});
        if (values.empty()) return;
        Query insert =
            db.query(QStringLiteral(
                         "Insert into %1 (App_ID, Person_ID, Service_ID, %2, Requirement_Level, Sort_Order, "
                         "Create_Date, Last_Updated) values (:App_ID, :Person_ID, :Service_ID, :Key, "
                         ":Requirement_Level, :Sort_Order, Current_Date, Current_Date)")
                         .arg(into, key));
        insert.bind(common).execBatch(values);
    };
    copy(QStringLiteral("ServiceDocs"), QStringLiteral("DocUses"), QStringLiteral("Doc_ID"));
    copy(QStringLiteral("ServiceConditions"), QStringLiteral("ConditionUses"),
         QStringLiteral("Condition_ID"));
}

void ServiceApplications::afterPost(DataSet& set)
{
    if (m_templatesAfterPost) {
        m_templatesAfterPost = false;
        m_module.services().guarded([&] {
            copyTemplates(set.fieldValue(u"App_ID"), set.fieldValue(u"Person_ID"),
                          set.fieldValue(u"Service_ID"));
        });
    }
    const QString status = set.fieldValue(u"App_Status").toString().trimmed();
    if (status != m_rememberedStatus) {
        const QString event = applicationStatusEvent(m_rememberedStatus, status);
        m_rememberedStatus = status;
        m_module.services().guarded([&] {
            writeHistory(set.fieldValue(u"Person_ID"), event);
            touchClient();
        });
    }
    runSaveStatement(set);
}

void ServiceApplications::writeHistory(const QVariant& personId, const QString& event)
{
    QueryInsertHistory(
        m_module.db(), m_module.session().userFullName,
        {personId, m_module.clients().fieldValue(u"CLIENT_ID"), event, m_module.clock().today()});
}

void ServiceApplications::touchClient()
{
    TableDataSet& clients = m_module.clients();
    const QDate today = m_module.clock().today();
    if (!clients.isActive() || clients.isEmpty() || clients.fieldValue(u"EDIT_DTE").toDate() == today) return;
    const bool wasEditing = editing(clients);
    if (!wasEditing) clients.edit();
    clients.setFieldValue(u"EDIT_DTE", today);
    // A client the user is editing is saved with the rest of his edit.
    if (!wasEditing) {
        clients.post();
        clients.flushBuffers();
    }
}

void ServiceApplications::runSaveStatement(DataSet& set)
{
    HookSuspension off(set, {DataSet::Hook::BeforeEdit, DataSet::Hook::BeforePost, DataSet::Hook::AfterPost,
                             DataSet::Hook::AfterInsert});
    m_module.services().guarded([&] {
        Database& db = m_module.db();
        const QString text = GetSQLStatement(db, QStringLiteral("EXECUTE_ON_SAVE_APPLICATION"));
        if (text.trimmed().isEmpty()) return;
        // The client, the application and the user go in as the statement's parameters.
        db.query(text)
            .bind(QStringLiteral("Person_ID"), set.fieldValue(u"Person_ID"))
            .bind(QStringLiteral("App_ID"), set.fieldValue(u"App_ID"))
            .bind(QStringLiteral("Staff_ID"), m_module.session().staffId)
            .exec();
        set.refresh();
    });
}

void ServiceApplications::ActionAddApplication()
{
    QueryDataSet& apps = applications();
    TableDataSet& clients = m_module.clients();
    if (!clients.isActive() || clients.isEmpty()) return;
    if (editing(apps)) {
        if (m_ui.question(saveFirstQuestion(), Buttons::YesNo) == Answer::Yes)
            apps.post();
        else
            apps.cancel();
    }
    m_newApplication = true;
    Database& db = m_module.db();
    const QVariant person = clients.fieldValue(u"PERSON_ID");
    db.execute(
        QStringLiteral("Insert into ServiceApps (Person_ID, App_Date) values (:Person_ID, :App_Date)"),
        {{QStringLiteral("Person_ID"), person}, {QStringLiteral("App_Date"), m_module.clock().today()}});
    const QVariant appId =
        db.execute(QStringLiteral("Select max(App_ID) from ServiceApps where Person_ID = :Person_ID"),
                   {{QStringLiteral("Person_ID"), person}})
            .value(0, 0);
    if (apps.isActive()) {
        apps.refresh();
        apps.locate(QStringLiteral("App_ID"), appId);
    }
}

void ServiceApplications::ActionDeleteApplication()
{
    QueryDataSet& apps = applications();
    if (!apps.isActive() || apps.isEmpty()) return;
    if (m_ui.question(deleteQuestion(), Buttons::YesNo) != Answer::Yes) return;
    Database& db = m_module.db();
    {
        TransactionGuard transaction(db);
        for (const QString& name : {Apps, QStringLiteral("QueryDocs"), QStringLiteral("QueryConditions")}) {
            QueryDataSet& set = m_pages.query(name);
            if (set.isActive() && editing(set)) set.post();
        }
        const QVariant appId = apps.fieldValue(u"App_ID");
        const QVariant person = apps.fieldValue(u"Person_ID");
        const Params app = {{QStringLiteral("App_ID"), appId}};
        db.execute(QStringLiteral("Delete from ServiceApps where App_ID = :App_ID"), app);
        db.execute(QStringLiteral("Delete from DocUses where App_ID = :App_ID"), app);
        db.execute(QStringLiteral("Delete from ConditionUses where App_ID = :App_ID"), app);
        writeHistory(person, deletedEvent());
        transaction.commit();
    }
    apps.refresh();
}

} // namespace kb
