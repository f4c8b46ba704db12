#include "bills/TFormClientBills.h"

#include "UserInterface.h"
#include "session/SessionState.h"
#include "settings/SettingsFile.h"
#include "store/Database.h"

namespace kb {

namespace {

const QString IncludeAll = QStringLiteral("RzRadioButtonIncludeAll");
const QString Include = QStringLiteral("RzRadioButtonInclude");
const QString Exclude = QStringLiteral("RzRadioButtonExclude");
const QString PostToHistory = QStringLiteral("wwCheckBoxPostToHistory");
const QString LaunchWord = QStringLiteral("wwCheckBoxLaunchWord");
const QString MasterFile = QStringLiteral("MergeMasterFileName");
const QString MethodCombo = QStringLiteral("ComboBoxMethod");
const QString PledgeCombo = QStringLiteral("ComboBoxPledgeMethod");

QString trueFalse(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

} // namespace

TFormClientBills::TFormClientBills(Database& db, const SessionState& session, UserInterface& ui,
                                   SettingsFile& settings)
    : m_db(db), m_session(session), m_ui(ui), m_settings(settings)
{
}

QStringList TFormClientBills::pledgeTexts()
{
    return {QStringLiteral("Use Per-Item pledges"), QStringLiteral("Use Per-Item & Per-Day pledges"),
            QStringLiteral("Use Monthly pledges"), QStringLiteral("Use Yearly pledges")};
}

void TFormClientBills::FormShow()
{
    const QDate today = m_db.clock().today();
    const QDate firstOfMonth(today.year(), today.month(), 1);
    m_options.start = firstOfMonth.addMonths(-1);
    m_options.end = firstOfMonth.addDays(-1);
    const QString s = section();
    if (m_settings.readBool(s, Include, false))
        m_options.filter = BillOptions::ItemFilter::IncludeOnly;
    else if (m_settings.readBool(s, Exclude, false))
        m_options.filter = BillOptions::ItemFilter::Exclude;
    else
        m_options.filter = BillOptions::ItemFilter::All;
    m_options.postToHistory = m_settings.readBool(s, PostToHistory, true);
    m_launch = m_settings.readBool(s, LaunchWord, true);
    m_master = m_settings.readString(s, MasterFile);
    setMethodIndex(m_settings.readInteger(s, MethodCombo, 0));
    setPledgeIndex(m_settings.readInteger(s, PledgeCombo, 0));
}

void TFormClientBills::FormClose()
{
    const QString s = section();
    m_settings.writeString(s, IncludeAll, trueFalse(m_options.filter == BillOptions::ItemFilter::All));
    m_settings.writeString(s, Include, trueFalse(m_options.filter == BillOptions::ItemFilter::IncludeOnly));
    m_settings.writeString(s, Exclude, trueFalse(m_options.filter == BillOptions::ItemFilter::Exclude));
    m_settings.writeString(s, PostToHistory, trueFalse(m_options.postToHistory));
    m_settings.writeString(s, LaunchWord, trueFalse(m_launch));
    m_settings.writeString(s, MasterFile, m_master);
    m_settings.writeInteger(s, MethodCombo, methodIndex());
    m_settings.writeInteger(s, PledgeCombo, pledgeIndex());
}

void TFormClientBills::setStart(const QDate& date)
{
    m_options.start = date;
    if (date.isValid() && m_options.end.isValid() && date > m_options.end)
        m_options.end = QDate(date.year(), date.month(), date.daysInMonth());
}

void TFormClientBills::setEnd(const QDate& date)
{
    m_options.end = date;
    if (date.isValid() && m_options.start.isValid() && date < m_options.start)
        m_options.start = QDate(date.year(), date.month(), 1);
}

void TFormClientBills::setMethodIndex(int index)
{
    m_options.method = index == 1 ? BillOptions::Method::PledgedAmount : BillOptions::Method::CostPerItem;
}

void TFormClientBills::setPledgeIndex(int index)
{
    m_options.pledges = BillOptions::Pledges(std::clamp(index, 0, 3));
}

const std::vector<TFormClientBills::TreeCategory>& TFormClientBills::itemTree()
{
    if (!m_tree.empty()) return m_tree;
    static const std::pair<const char*, const char*> categories[] = {
        {"B", "Breakfasts     [B ]"},
        {"L", "Lunches     [L ]"},
        {"D", "Dinners     [D ]"},
        {"S", "Snacks     [S ]"},
        {"O", "Other Meals     [O ]"},
        {"MF", "Medical Food     [MF]"},
        {"SM", "Specialized Medical Food     [SM]"},
        {"", "Uncategorized           []"}};
    for (const auto& [code, text] : categories)
        m_tree.push_back({QString::fromLatin1(code), QString::fromLatin1(text), {}});
    const ResultSet r =
        m_db.execute(QStringLiteral("Select Item_ID, Meal_Item, Meal from Items order by Meal_Item"));
    for (qsizetype i = 0; i < r.rowCount(); ++i) {
        const QString meal = r.value(i, 2).toString().trimmed();
        TreeCategory* home = &m_tree.back();
        for (TreeCategory& c : m_tree)
            if (c.code == meal) home = &c;
        const qint64 id = r.value(i, 0).toLongLong();
        home->items.push_back(
            {id, QStringLiteral("%1     [%2]").arg(r.value(i, 1).toString().trimmed()).arg(id)});
    }
    return m_tree;
}

void TFormClientBills::setItemChecked(qint64 itemId, bool checked)
{
    if (m_options.filter == BillOptions::ItemFilter::All)
        m_options.filter = BillOptions::ItemFilter::IncludeOnly;
    if (checked)
        m_checked[itemId] = true;
    else
        m_checked.erase(itemId);
}

void TFormClientBills::setCategoryChecked(const QString& code, bool checked)
{
    for (const TreeCategory& c : itemTree())
        if (c.code == code)
            for (const TreeItem& item : c.items)
                setItemChecked(item.itemId, checked);
}

bool TFormClientBills::ActionOK()
{
    m_result = {};
    if (!okEnabled()) return false;
    m_options.items.clear();
    for (const auto& [id, on] : m_checked)
        m_options.items << id;
    {
        BusyGuard busy(m_ui);
        m_result = ClientBillsExport::run(m_db, m_ui, m_options, m_fileName.trimmed(), m_session.userFullName,
                                          m_locale);
    }
    if (m_result.bills.empty()) return false;
    if (m_launch && m_opener) {
        // The merge document when one is named; otherwise the data itself,
        // so the user sees what was exported.
        const QString document = m_master.trimmed().isEmpty() ? m_fileName.trimmed() : m_master.trimmed();
        if (!m_opener(document))
            m_ui.warning(QStringLiteral("Could not open %1 in the word processor.").arg(document));
    }
    return true;
}

} // namespace kb
