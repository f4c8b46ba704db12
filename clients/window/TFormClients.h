#pragma once

#include "rules/AlternateAddressEditor.h"
#include "settings/TVisibleFieldsDlg.h"
#include "window/ClientControls.h"
#include "window/ClientCustomFilter.h"
#include "window/ClientLists.h"
#include "window/ClientTabs.h"
#include "window/TFilterForm.h"

#include "dataset/DataSet.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <memory>

namespace kb {

class ClientFieldRules;
class DatedDeliveries;
class FundingUses;
class PageGridEditing;
class ServiceApplications;
class ClientPageData;
class ClientRules;
class QueryDataSet;
class TDataModule1;
class TableDataSet;
class UserInterface;

// "Kettlebrook Clients": the main window. It shows one row of the shared
// Clients set at a time, a header and a notebook of pages over the client's
// related data, and holds the command table from which every other screen
// opens. This presenter is the window's logic apart from any view: the
// start-up steps, the user's access level, the pages and their data, the
// filters and the client orders, the state of every control for the
// current row (SetControlsState), the lists, and the commands with their
// enabled state.
//
// Commands: every command of the table is known here; a command becomes
// usable when its handler is set (setHandler), by this presenter for what
// it does itself and by the view for the screens it opens. A command
// without a handler is shown disabled and says it is not available yet.
class TFormClients : public QObject
{
    Q_OBJECT

public:
    // The state of one command or button as the view shows it.
    struct CommandState
    {
        bool visible = true;
        bool enabled = true;
        bool bold = false;
        // A command that is a switch shows whether it is on.
        bool checkable = false;
        bool checked = false;
        QString text;
        QString toolTip;
    };

    // rules: the client rules on the module's Clients set, when there are
    // (the window hands them its alternate address).
    TFormClients(TDataModule1& module, UserInterface& ui, ClientRules* rules = nullptr);
    ~TFormClients() override;

    static QString caption() { return QStringLiteral("Kettlebrook Clients"); }
    // The key of the window's place in the per-user ini file's Form_Positions.
    static QString formName() { return QStringLiteral("ClientEdit"); }
    static QString notAvailableText() { return QStringLiteral("Not available yet"); }

    TDataModule1& module() { return m_module; }
    UserInterface& ui() { return m_ui; }
    TableDataSet& clients();
    ClientPageData& pageData() { return *m_pageData; }
    ClientFieldRules& fieldRules() { return *m_fieldRules; }
    // The rules of the "Client Services" and "Funding/Billing" pages.
    ServiceApplications& applications() { return *m_applications; }
    FundingUses& funding() { return *m_funding; }
    // The rules of the dated deliveries, also those of the episodic grid.
    DatedDeliveries& datedDeliveries() { return *m_datedDeliveries; }
    const ClientLists& lists() const { return m_lists; }

    // ---- life cycle ----
    // Creating the window: field visibility of the assessment and screening
    // data, the lists, the client order of Config. Ends the program (throws
    // StartupError) when the data is not connected.
    void create();
    // The first show, after sign-in: the access level, the pages of the
    // user, the user's own client order, and the first row's state.
    void firstShow();
    // Once per run: the user's opening statement and the alerts due.
    void firstActivation();
    bool firstActivationDone() const { return m_activated; }
    bool alertsShown() const { return m_alertsShown; }
    // Closing: the open page's data and the client are asked about; false
    // keeps the window open.
    bool closeQuery();
    // Whether the program was started with parameters (debug logging): the
    // window then warns of a transaction that should not be open.
    void setStartedWithParameters(bool withParameters) { m_startedWithParameters = withParameters; }

    // ---- the status bar ----
    QString dataDirectoryText() const;
    QString userText() const;
    QString filterText() const { return m_filterText; }
    QString recordStateText() const;
    QString transactionText() const { return m_inTransaction ? QStringLiteral("In Transaction") : QString(); }
    // The window opened a transaction (or closed it).
    void ShowTransactionStatus(bool inTransaction);

    // ---- access level ----
    // Level "O" sees no client at all: no header, pages or navigator.
    bool clientAreaVisible() const;
    // Level "R": the client's fields are read-only.
    bool fieldsReadOnly() const;
    bool isMenuVisible(const QString& path) const;
    bool isMenuEnabled(const QString& path) const;

    // ---- commands ----
    void setHandler(const QString& id, std::function<void()> handler);
    bool hasHandler(const QString& id) const { return m_handlers.contains(id); }
    // Whether the application, document and condition grids show their
    // title rows ("Show Column Headings"); kept in the user's settings.
    bool serviceColumnHeadings() const;
    CommandState commandState(const QString& id) const;
    // Runs a command: the client bookmark is kept around screens that may
    // move Clients, a failure is told, and SetControlsState runs with force
    // afterwards. False when the command is unknown, not usable or failed.
    bool run(const QString& id);

    // ---- moving and editing ----
    void first();
    void prior();
    void next();
    void last();
    // Moves to a row by its 0-based place in the list; a modified row is
    // posted first (the client rules run). False when it did not move.
    bool moveTo(int position);
    int position() const;
    int rowCount() const;
    // Ctrl+E: the client goes into edit state.
    bool edit();
    bool post();
    void cancel();
    bool isEditing() const;

    // The key list of "Search For:": every index of Clients, and the one in use.
    QStringList indexNames() const;
    QString indexName() const;
    // Changes the order of the clients (the search text is cleared by the view).
    void setIndexName(const QString& index);
    // The incremental search: moves to the first client whose key in the
    // current order starts with the text, or else the nearest after it.
    // False when the list is empty or the text empty.
    bool search(const QString& text);
    // The caption of an index in the key list ("Last Name, First Name").
    static QString indexCaption(const QString& index);

    // ---- fields ----
    QVariant value(const QString& field) const;
    // Puts the client into edit when needed; false (told) when refused.
    bool setValue(const QString& field, const QVariant& value);
    // Leaving a field: the field rules that act then (ZIP, contract dates,
    // masked entries, card number) and remembered entries.
    void fieldLeft(const QString& field);
    // A check list's box was checked or unchecked.
    bool setListBit(const QString& field, int bit, bool checked);
    QString label(const QString& field, const QString& fallback) const;
    // Hidden for everyone by the visibility tree of the configuration.
    bool isComponentVisible(const QString& component) const;
    QString entryMask(const QString& field) const;

    // ---- pages ----
    const ClientTabs& tabs() const { return m_tabs; }
    int currentPage() const { return m_currentPage; }
    // The page change: questions, closing and opening the page data.
    void changePage(int page);
    // The assessment and screening grids' columns (SetGridFields and
    // SetFieldVisibility), in order.
    const QList<VisibleField>& assessmentColumns() const { return m_assessmentColumns; }
    const QList<VisibleField>& screeningColumns() const { return m_screeningColumns; }

    // ---- the window's own steps ----
    void SetControlsState(bool force);
    const ClientControls& controls() const { return m_controls; }
    // The current row of a page grid moved or was typed into: the groups
    // that follow it (the funding use's rate groups) are set again.
    void pageRowChanged();
    // The grids of the "Client Services" and "Funding/Billing" pages, typed
    // into in their cells.
    PageGridEditing& pageGrids() { return *m_pageGrids; }
    void PopulateCombos();
    void SetTabVisibility();
    void SetFieldVisibility(VisibleFieldsList list);
    void SetGridFields();
    // Remembers the current client without firing any row-change work.
    void BookmarkClients();
    // Back to the remembered client when it is still there.
    void returnToBookmark();

    // ---- filters ----
    TFilterForm& filterForm() { return m_filterForm; }
    // The status filter dialog ended: OK applies its choices, Cancel takes
    // the filter off.
    void statusFilterClosed(bool ok);
    ClientCustomFilter& customFilter() { return m_customFilter; }
    // The custom filter dialog ended with OK.
    void customFilterClosed();
    bool isFiltered() const;

    // ---- the alternate address in the header ----
    // Shown first when one applies today; the fields then edit it.
    bool alternateAddressShown() const { return m_controls.alternateRecordId > 0; }
    QueryDataSet* alternateAddress();
    QVariant alternateValue(const QString& column) const;
    bool setAlternateValue(const QString& column, const QVariant& value);
    // Changing the address tab, or leaving the directions: an alternate
    // address in edit is posted.
    void alternateTabLeft();

    // ---- map, mail and print ----
    // "Get Map": Config.MAPPING_URL with the address filled in; empty when
    // there is no address template.
    QUrl mapUrl() const;
    // The e-mail button: a mailto: address carrying the agency's name; empty
    // without an address.
    QUrl mailUrl() const;
    static QString printBusyText()
    {
        return QStringLiteral(
            "A print job is already in progress.\r\nPlease try again after printing is completed.");
    }
    static QString printFailedText() { return QStringLiteral("Print job cancelled or error encountered!"); }

signals:
    // The current row or its values changed: the header and fields are drawn again.
    void rowChanged();
    // Rows came, went or changed order: the client list is read again.
    void rowsChanged();
    // The edit state, the filter or the transaction changed: the status bar.
    void stateChanged();
    // The lists were rebuilt.
    void listsChanged();
    void pageChanged(int page);
    // The groups that follow a page grid's current row changed (pageRowChanged).
    void pageGroupsChanged();
    // The window wants to close (Exit).
    void closeRequested();

private:
    template <typename Work> bool guarded(Work&& work);
    void installOwnHandlers();
    void installServiceHandlers();
    void installDatedDeliveryRules();
    void afterMove();
    void applyAccessLevel();
    void setClientIndex(const QString& index);
    void applyFilter(std::function<bool(const DataSet&)> filter, const QString& text);
    void readSuspendedToday();
    void computeControls();
    void computeAlternateAddress();
    void setFundingRateGroups(ClientControls& controls);
    bool rowsExist(const QString& sql, const Params& params) const;
    bool onInternet() const;
    bool isBold(const QString& id) const;

    // What the client rules see of the alternate address being edited.
    class AlternateEditor;

    TDataModule1& m_module;
    UserInterface& m_ui;
    ClientRules* m_rules;
    std::unique_ptr<AlternateEditor> m_alternateEditor;
    // Outlives the page data whose episodic grid carries its rules.
    std::unique_ptr<DatedDeliveries> m_datedDeliveries;
    std::unique_ptr<ClientPageData> m_pageData;
    std::unique_ptr<ClientFieldRules> m_fieldRules;
    std::unique_ptr<ServiceApplications> m_applications;
    std::unique_ptr<FundingUses> m_funding;
    std::unique_ptr<PageGridEditing> m_pageGrids;
    std::unique_ptr<QueryDataSet> m_staffRow;
    ClientLists m_lists;
    ClientTabs m_tabs;
    ClientControls m_controls;
    TFilterForm m_filterForm;
    ClientCustomFilter m_customFilter;
    QSet<qint64> m_suspendedToday; // Person_IDs, read when a suspension filter is applied
    QString m_filterText = TFilterForm::offText();
    QHash<QString, std::function<void()>> m_handlers;
    QList<VisibleField> m_assessmentColumns;
    QList<VisibleField> m_screeningColumns;
    DataSet::Bookmark m_bookmark;
    int m_currentPage = -1;
    int m_rowCount = -1;
    bool m_activated = false;
    bool m_alertsShown = false;
    bool m_inTransaction = false;
    bool m_startedWithParameters = false;
};

} // namespace kb
