#pragma once

#include <QString>
#include <QStringList>

namespace kb {
class SettingsFile;
}

namespace kb::reports {

// "Client Items Sort Order": the order of "Items and Delivery Details by
// Client", remembered in the section "ClientItemsSortOrder" of the per-user
// settings.
class TFormClientItemsSortOrder
{
public:
    static QString caption() { return QStringLiteral("Client Items Sort Order"); }
    static QString prompt() { return QStringLiteral("Select a sort order for the report"); }
    static QString section() { return QStringLiteral("ClientItemsSortOrder"); }
    static QStringList sortOrders()
    {
        return {QStringLiteral("by Client Name"), QStringLiteral("by Service then Client Name")};
    }

    explicit TFormClientItemsSortOrder(SettingsFile* settings);
    ~TFormClientItemsSortOrder();
    TFormClientItemsSortOrder(const TFormClientItemsSortOrder&) = delete;
    TFormClientItemsSortOrder& operator=(const TFormClientItemsSortOrder&) = delete;

    int sortOrder() const { return m_sortOrder; }
    void setSortOrder(int index) { m_sortOrder = index == 1 ? 1 : 0; }

private:
    SettingsFile* m_settings;
    int m_sortOrder = 0;
};

} // namespace kb::reports
