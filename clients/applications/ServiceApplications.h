#pragma once

#include <QString>
#include <QVariant>

namespace kb {

class ClientPageData;
class DataSet;
class QueryDataSet;
class TDataModule1;
class UserInterface;

// The rules of a client's service applications on the "Client Services"
// page: they hang on the page's QueryServiceApps, so every post of an
// application goes through them. A new application, or one whose service
// changed, gets the service's template documents and conditions; a status
// change leaves a History row and touches the client's Edit_Dte; every post
// runs the agency's EXECUTE_ON_SAVE_APPLICATION statement. Deleting takes
// the application's documents and conditions with it, in one transaction.
class ServiceApplications
{
public:
    ServiceApplications(TDataModule1& module, ClientPageData& pages, UserInterface& ui);
    ~ServiceApplications();
    ServiceApplications(const ServiceApplications&) = delete;
    ServiceApplications& operator=(const ServiceApplications&) = delete;

    static QString saveFirstQuestion()
    {
        return QStringLiteral("Save your changes to the current Application before creating a \r\nnew one?");
    }
    static QString existingDocumentsQuestion()
    {
        return QStringLiteral(
            "There are existing documents for this application! Do you want to delete them?");
    }
    static QString deleteQuestion() { return QStringLiteral("Delete the selected Service Application?"); }
    static QString deletedEvent() { return QStringLiteral("Service Application deleted."); }

    // "Add Application": a new row for the client, dated today; the user
    // then picks its service in the row.
    void ActionAddApplication();
    // "Delete Application": asks, then the application, its documents and
    // its conditions go in one transaction; a failure changes nothing.
    void ActionDeleteApplication();
    bool newApplication() const { return m_newApplication; }

    QueryDataSet& applications();

private:
    void beforeEdit(DataSet& set);
    void beforePost(DataSet& set);
    void afterPost(DataSet& set);
    void copyTemplates(const QVariant& appId, const QVariant& personId, const QVariant& serviceId);
    void touchClient();
    void runSaveStatement(DataSet& set);
    void writeHistory(const QVariant& personId, const QString& event);

    TDataModule1& m_module;
    ClientPageData& m_pages;
    UserInterface& m_ui;
    QString m_rememberedStatus;
    bool m_newApplication = false;
    bool m_templatesAfterPost = false;
};

} // namespace kb
