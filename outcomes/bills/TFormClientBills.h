#pragma once

#include "bills/BillOptions.h"
#include "bills/ClientBillsExport.h"

#include <QDate>
#include <QLocale>
#include <QStringList>

#include <functional>
#include <map>
#include <vector>

namespace kb {

class Database;
class SettingsFile;
class UserInterface;
struct SessionState;

// "Export Client Pledge Solicitation and Invoice Data": the choices of a
// client bills export, kept in the user's Kettbrk.ini, and the export. At
// the end the merge document (or, without one, the merge file) opens in
// the desktop's word processor through the injected opener.
class TFormClientBills
{
public:
    // Opens a document with the desktop's own handler; false when it could not.
    using DocumentOpener = std::function<bool(const QString& path)>;

    struct TreeItem
    {
        qint64 itemId = 0;
        QString text; // Meal_Item, five blanks, [Item_ID]
    };
    struct TreeCategory
    {
        QString code; // Items.Meal, "" for the uncategorized
        QString text; // "Lunches     [L ]"
        std::vector<TreeItem> items;
    };

    TFormClientBills(Database& db, const SessionState& session, UserInterface& ui, SettingsFile& settings);

    static QString caption() { return QStringLiteral("Export Client Pledge Solicitation and Invoice Data"); }
    static QString section() { return QStringLiteral("FormClientBills"); }
    static QString saveDialogTitle()
    {
        return QStringLiteral("Select a file name for the Client Invoice mail merge file");
    }
    static QStringList methodTexts()
    {
        return {QStringLiteral("Cost per item"), QStringLiteral("Pledged Amount")};
    }
    static QStringList pledgeTexts();

    void setDocumentOpener(DocumentOpener opener) { m_opener = std::move(opener); }
    void setLocale(const QLocale& locale) { m_locale = locale; }

    // Reads the remembered choices and proposes the previous month.
    void FormShow();
    // Writes the choices back.
    void FormClose();

    QDate start() const { return m_options.start; }
    QDate end() const { return m_options.end; }
    // Moving the start past the end takes the end to the start's month end;
    // moving the end before the start takes the start to its month's first.
    void setStart(const QDate& date);
    void setEnd(const QDate& date);

    int methodIndex() const { return m_options.method == BillOptions::Method::PledgedAmount ? 1 : 0; }
    void setMethodIndex(int index);
    // Shown only for "Pledged Amount".
    bool pledgeOptionVisible() const { return methodIndex() == 1; }
    int pledgeIndex() const { return int(m_options.pledges); }
    void setPledgeIndex(int index);

    BillOptions::ItemFilter filter() const { return m_options.filter; }
    void setFilter(BillOptions::ItemFilter filter) { m_options.filter = filter; }
    const std::vector<TreeCategory>& itemTree();
    bool itemChecked(qint64 itemId) const { return m_checked.contains(itemId); }
    // A click in the tree while all items are included switches to "Include only".
    void setItemChecked(qint64 itemId, bool checked);
    // Checks or clears every item of the category.
    void setCategoryChecked(const QString& code, bool checked);

    QString startingInvoice() const { return m_options.startingInvoice; }
    void setStartingInvoice(const QString& text) { m_options.startingInvoice = text; }
    bool postToHistory() const { return m_options.postToHistory; }
    void setPostToHistory(bool on) { m_options.postToHistory = on; }
    QString fileName() const { return m_fileName; }
    void setFileName(const QString& path) { m_fileName = path; }
    bool launchWord() const { return m_launch; }
    void setLaunchWord(bool on) { m_launch = on; }
    QString masterDocument() const { return m_master; }
    void setMasterDocument(const QString& path) { m_master = path; }

    bool okEnabled() const { return !m_fileName.trimmed().isEmpty(); }
    // Exports; true when something was exported.
    bool ActionOK();
    const ClientBillsExport::Result& result() const { return m_result; }
    const BillOptions& options() const { return m_options; }

private:
    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    SettingsFile& m_settings;
    DocumentOpener m_opener;
    QLocale m_locale;
    BillOptions m_options;
    std::map<qint64, bool> m_checked;
    std::vector<TreeCategory> m_tree;
    QString m_fileName;
    bool m_launch = true;
    QString m_master;
    ClientBillsExport::Result m_result;
};

} // namespace kb
