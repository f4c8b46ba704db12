#include "clients/RelationshipScreens.h"

#include "QtReportOutput.h"
#include "ReportHolder.h"
#include "clients/IndividualView.h"
#include "clients/ListMembershipView.h"
#include "clients/RecentStopsView.h"
#include "clients/RelatedClientsView.h"
#include "clients/RelationshipView.h"
#include "clientwindow/ClientFieldsView.h"
#include "clientwindow/MainWindow.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "deliveryreports/DeliveryReportChoice.h"
#include "individuals/IndividualActions.h"
#include "individuals/IndividualForms.h"
#include "individuals/TFormIndividual.h"
#include "individuals/TFormRelatedClients.h"
#include "individuals/TFormRelationship.h"
#include "lists/TFormListMembership.h"
#include "printouts/RecentStopsReport.h"
#include "records/RecordServices.h"
#include "session/TDataModule1.h"
#include "settings/ConfigRecord.h"
#include "settings/SettingsFile.h"
#include "suspensions/TFormRecentStops.h"
#include "window/ClientCommands.h"
#include "window/ClientPageData.h"
#include "window/TFormClients.h"

#include <QApplication>
#include <QClipboard>
#include <QTableView>

namespace kb::ui {

namespace {

namespace cmd = client_command;

const QString RelationshipsGrid = QStringLiteral("QueryRelationships");
const QString IndividualsGrid = QStringLiteral("Individuals");

// The Relationships page's data and the rows chosen in its grids.
class RelationshipPage
{
public:
    RelationshipPage(MainWindow& window) : m_window(window), m_form(window.presenter()) {}

    TDataModule1& module() { return m_form.module(); }
    DataSet& individuals() { return module().table(IndividualsGrid); }
    bool relationshipsOpen() { return m_form.pageData().isOpen(RelationshipsGrid); }
    QueryDataSet& relationships() { return m_form.pageData().query(RelationshipsGrid); }
    qint64 personId() { return module().clients().fieldValue(u"PERSON_ID").toLongLong(); }
    bool hasClient() { return module().clients().isActive() && !module().clients().isEmpty(); }

    // Stands the grid's data on the row chosen in the grid; false when the
    // grid has no rows.
    bool standOnChosen(const QString& grid, DataSet& set)
    {
        if (!set.isActive() || set.isEmpty()) return false;
        const auto* view = m_window.findChild<QTableView*>(grid);
        const int row = view ? view->currentIndex().row() : -1;
        if (row >= 0 && row < set.recordCount())
            return module().services().guarded([&] { set.setRecNo(row + 1); });
        return true;
    }
    qint64 chosenRelationship()
    {
        if (!relationshipsOpen() || !standOnChosen(RelationshipsGrid, relationships())) return 0;
        return relationships().fieldValue(u"RecordID").toLongLong();
    }
    qint64 chosenIndividual()
    {
        if (!standOnChosen(IndividualsGrid, individuals())) return 0;
        return individuals().fieldValue(u"INDIV_ID").toLongLong();
    }
    // The individual of the sheet in view: the chosen one of "All
    // Individuals", or that of the chosen relationship.
    qint64 individualInView()
    {
        const auto* all = m_window.findChild<QTableView*>(IndividualsGrid);
        if (all && all->isVisible()) return chosenIndividual();
        if (chosenRelationship() == 0) return 0;
        return relationships().fieldValue(u"Indiv_ID").toLongLong();
    }

    // What the page shows after a change.
    void refresh()
    {
        module().services().guarded([&] {
            if (relationshipsOpen()) relationships().refresh();
            if (individuals().isActive()) individuals().refresh();
        });
        emit m_form.rowChanged();
    }

    // Moves the client window to a client; a filter that hides the client is
    // taken off first.
    void moveTo(qint64 personId)
    {
        TableDataSet& clients = module().clients();
        bool found = false;
        module().services().guarded([&] { found = clients.locate(QStringLiteral("PERSON_ID"), personId); });
        if (!found && m_form.isFiltered()) {
            m_form.statusFilterClosed(false);
            module().services().guarded(
                [&] { found = clients.locate(QStringLiteral("PERSON_ID"), personId); });
        }
        if (!found) m_window.ui().information(QStringLiteral("That client could not be found."));
        m_form.SetControlsState(true);
        emit m_form.rowsChanged();
        emit m_form.rowChanged();
        emit m_form.stateChanged();
    }

    void showRelated(TFormRelatedClients& related)
    {
        related.setClientMover([this](qint64 personId) { moveTo(personId); });
        RelatedClientsView view(related, module().userSettings(), &m_window);
        view.exec();
    }

    void editRelationship(TFormRelationship::Mode mode, qint64 recordId)
    {
        TFormRelationship presenter(module().services(), m_window.ui(), module().clock(),
                                    module().session().userFullName, personId());
        if (!module().services().guarded([&] { presenter.EditRelationships(mode, recordId); })) return;
        RelationshipView view(presenter, module().services(), module().userSettings(), &m_window);
        view.exec();
        refresh();
    }

    void editIndividual(bool add)
    {
        DataSet& set = individuals();
        if (!add && !standOnChosen(IndividualsGrid, set)) return;
        const QString postal = ConfigRecord::read(module().db()).text(QStringLiteral("POSTAL_FORMAT"));
        TFormIndividual presenter(set, m_window.ui(), module().clock(),
                                  module().session().userFullName.left(20), postal);
        if (!module().services().guarded([&] { add ? presenter.Add() : presenter.Edit(); })) return;
        IndividualView view(presenter, module().services(), module().clients(), module().userSettings(),
                            &m_window);
        view.exec();
        refresh();
    }

    // Name and address of an individual as lines for a letter.
    QString addressLines(qint64 indivId)
    {
        const ResultSet row = module().db().execute(
            QStringLiteral(
                "Select Salutation, First_Name, Last_Name, Organization, Address1, Address2, City, "
                "State, ZIP from Individuals where Indiv_ID = :Indiv_ID"),
            {{QStringLiteral("Indiv_ID"), indivId}});
        if (row.rowCount() == 0) return {};
        const auto text = [&](int c) { return row.value(0, c).toString().trimmed(); };
        QStringList lines;
        const QString name = QStringList{text(0), text(1), text(2)}.join(QLatin1Char(' ')).simplified();
        for (const QString& line :
             {name, text(3), text(4), text(5),
              (text(6) + (text(7).isEmpty() ? QString() : QStringLiteral(", ") + text(7)) + QLatin1Char(' ') +
               text(8))
                  .trimmed()})
            if (!line.isEmpty()) lines.append(line);
        return lines.join(QLatin1Char('\n'));
    }

private:
    MainWindow& m_window;
    TFormClients& m_form;
};

void printRecentStops(TDataModule1& module, UserInterface& ui, QWidget* parent,
                      const TFormRecentStops::Report& report)
{
    const reports::DeliveryReportContext context = deliveryReportContext(module, ui);
    QtReportOutput output(parent, ui, module.userSettings().path());
    reports::ReportHolder holder(output, module.clock());
    holder.setDocumentName(TFormRecentStops::caption());
    reports::RecentStopsReport(context).print(
        holder, report.rows, {report.stopDate, report.recencyDate, report.deliveryDate},
        report.destination == TFormRecentStops::Destination::Printer ? reports::ReportDestination::Printer
                                                                     : reports::ReportDestination::Screen);
}

} // namespace

void registerRelationshipScreens(MainWindow& window)
{
    TFormClients& form = window.presenter();
    UserInterface& ui = window.ui();
    MainWindow* w = &window;
    const auto page = std::make_shared<RelationshipPage>(window);
    const auto on = [&form](const QString& id, std::function<void()> handler) {
        form.setHandler(id, std::move(handler));
    };

    on(cmd::AddRelationship, [page] {
        if (page->hasClient()) page->editRelationship(TFormRelationship::Mode::Add, 0);
    });
    on(cmd::EditRelationship, [page] {
        if (const qint64 id = page->chosenRelationship())
            page->editRelationship(TFormRelationship::Mode::Edit, id);
    });
    on(cmd::DeleteRelationship, [page] {
        const qint64 id = page->chosenRelationship();
        if (id == 0) return;
        if (page->module().services().guarded([&] {
                TFormRelationship::DeleteRelationship(page->module().services(), page->module().ui(), id);
            }))
            page->refresh();
    });
    on(cmd::AddIndividual, [page] { page->editIndividual(true); });
    on(cmd::EditIndividual, [page] { page->editIndividual(false); });
    on(cmd::DeleteIndividual, [page, &ui] {
        if (!page->standOnChosen(IndividualsGrid, page->individuals())) return;
        IndividualActions actions(page->module().db(), ui,
                                  [page](TFormRelatedClients& related) { page->showRelated(related); });
        if (page->module().services().guarded([&] { actions.DeleteIndividual(page->individuals()); }))
            page->refresh();
    });
    on(cmd::ShowRelatedClients, [page, &ui] {
        const qint64 id = page->chosenIndividual();
        if (id == 0) return;
        IndividualActions actions(page->module().db(), ui,
                                  [page](TFormRelatedClients& related) { page->showRelated(related); });
        actions.ShowRelatedClients(id);
    });
    on(cmd::CopyIndividual, [page, &ui] {
        const qint64 id = page->individualInView();
        const QString lines = id > 0 ? page->addressLines(id) : QString();
        if (lines.isEmpty()) {
            ui.information(QStringLiteral("Choose an individual on the Relationships page first."));
            return;
        }
        QGuiApplication::clipboard()->setText(lines);
    });
    on(cmd::ListMembership, [page, &ui, w] {
        if (!page->hasClient()) return;
        TDataModule1& module = page->module();
        const DataSet& clients = module.clients();
        const QString name = (clients.fieldValue(u"FIRST_NAME").toString().trimmed() + QLatin1Char(' ') +
                              clients.fieldValue(u"LAST_NAME").toString().trimmed())
                                 .trimmed();
        TFormListMembership presenter(module.services(), ui, module.clock(), module.session().userFullName,
                                      module.session().accessLevel,
                                      {clients.fieldValue(u"PERSON_ID").toLongLong(),
                                       clients.fieldValue(u"CLIENT_ID").toString(), name});
        bool shown = false;
        if (!module.services().guarded([&] { shown = presenter.FormShow(); })) return;
        if (!shown) return; // a level the program does not know: it is ending
        ListMembershipView view(presenter, module.services(), module.userSettings(), w);
        view.exec();
    });
    on(cmd::RecentStops, [page, &ui, w] {
        TDataModule1& module = page->module();
        TFormRecentStops presenter(module.db(), ui, module.clock(),
                                   deliveryReportContext(module, ui).templateFolder);
        QWidget* screen = w;
        presenter.setPrinter([&module, &ui, &screen](const TFormRecentStops::Report& report) {
            printRecentStops(module, ui, screen, report);
        });
        RecentStopsView view(presenter, module.userSettings(), w);
        screen = &view;
        view.exec();
    });

    // A double click on a relationship or an individual opens it.
    QObject::connect(window.fields(), &ClientFieldsView::gridRowActivated, w,
                     [&form](const QString& grid, int) {
                         if (grid == RelationshipsGrid)
                             form.run(cmd::EditRelationship);
                         else if (grid == IndividualsGrid)
                             form.run(cmd::EditIndividual);
                     });
}

} // namespace kb::ui
