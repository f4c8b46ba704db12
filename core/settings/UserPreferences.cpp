#include "settings/UserPreferences.h"

#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/TableDataSet.h"
#include "records/RecordServices.h"
#include "session/TDataModule1.h"

namespace kb {

const QList<UserPreferences::TabPage>& UserPreferences::tabPages()
{
    static const QList<TabPage> pages = {{QStringLiteral("Client Services"), 10},
                                         {QStringLiteral("Case Management"), 9},
                                         {QStringLiteral("Biographic Info"), 8},
                                         {QStringLiteral("Status/Dates"), 7},
                                         {QStringLiteral("Relationships"), 6},
                                         {QStringLiteral("Service/Diet"), 5},
                                         {QStringLiteral("Funding/Billing"), 4},
                                         {QStringLiteral("Delivery/Route"), 3},
                                         {QStringLiteral("Suspensions"), 2},
                                         {QStringLiteral("Health/Nutrition"), 1},
                                         {QStringLiteral("Map"), 0}};
    return pages;
}

const QList<std::pair<QString, QString>>& UserPreferences::preferredReportColumns()
{
    static const QList<std::pair<QString, QString>> columns = {
        {QStringLiteral("Preferred_Delivery_Report"), QStringLiteral("Preferred Delivery Report:")},
        {QStringLiteral("Preferred_Counseling_Report"), QStringLiteral("Preferred Counseling Report:")},
        {QStringLiteral("Preferred_Alerts_Report"), QStringLiteral("Preferred Alerts Report:")},
        {QStringLiteral("Preferred_Agency_Report"), QStringLiteral("Preferred Agency Report:")}};
    return columns;
}

UserPreferences::UserPreferences(TDataModule1& module) : m_module(module) {}

UserPreferences::~UserPreferences() = default;

bool UserPreferences::open()
{
    TableDataSet& staff = m_module.staff();
    m_returnTo = staff.bookmark();
    m_opened = true;
    const SessionState& session = m_module.session();
    // Staff_ID -1 is the built-in administrator, who has no row.
    m_editable = session.staffId >= 0 && !session.cUserName.isEmpty() &&
                 staff.locate(QStringLiteral("User_ID"), session.cUserName);
    leaveTabList();
    return m_editable;
}

QVariant UserPreferences::value(const QString& column) const
{
    return m_editable ? m_module.staff().fieldValue(column) : QVariant();
}

bool UserPreferences::setValue(const QString& column, const QVariant& value)
{
    if (!m_editable) return false;
    DataSet& staff = m_module.staff();
    return m_module.services().guarded([&] {
        if (!isEditing()) staff.edit();
        staff.setFieldValue(column, value);
    });
}

int UserPreferences::tabMask() const
{
    return value(QStringLiteral("Visible_Tabs")).toInt();
}

bool UserPreferences::isTabChecked(int item) const
{
    const int mask = tabMask();
    return mask == 0 || (mask & (1 << item)) != 0;
}

void UserPreferences::setTabChecked(int item, bool checked)
{
    if (!m_editable || item < 0 || item >= tabPages().size()) return;
    int mask = tabMask();
    if (mask == 0) mask = (1 << tabPages().size()) - 1;
    mask = checked ? mask | (1 << item) : mask & ~(1 << item);
    if (mask == 0) {
        m_module.ui().warning(lastTabMessage());
        mask = 1;
    }
    setValue(QStringLiteral("Visible_Tabs"), mask);
}

void UserPreferences::leaveTabList()
{
    m_tabChoices.clear();
    for (int i = 0; i < tabPages().size(); ++i)
        if (!m_editable || isTabChecked(i))
            m_tabChoices.append(
                Choice{tabPages()[i].pageNumber,
                       tabPages()[i].name + u'\t' + QString::number(tabPages()[i].pageNumber)});
}

bool UserPreferences::isEditing() const
{
    const DataSet::State state = m_module.staff().state();
    return state == DataSet::State::Edit || state == DataSet::State::Insert;
}

bool UserPreferences::post()
{
    return !isEditing() || m_module.services().guarded([this] { m_module.staff().post(); });
}

void UserPreferences::cancel()
{
    if (isEditing()) m_module.services().guarded([this] { m_module.staff().cancel(); });
}

void UserPreferences::close()
{
    if (!m_opened) return;
    m_opened = false;
    cancel();
    TableDataSet& staff = m_module.staff();
    if (staff.bookmarkValid(m_returnTo)) m_module.services().guarded([&] { staff.gotoBookmark(m_returnTo); });
}

} // namespace kb
