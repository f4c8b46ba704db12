#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace kb {
class Database;
}

namespace kb::reports {

// "Report Item Limitation": one item to which a kitchen report is limited.
class TFormItemLimitation
{
public:
    static QString caption() { return QStringLiteral("Report Item Limitation"); }
    static QString prompt() { return QStringLiteral("Select an Item to which to limit the report:"); }

    // The items by name, "Meal_Item [Item_ID]".
    explicit TFormItemLimitation(Database& db);

    const QStringList& entries() const { return m_entries; }
    int choice() const { return m_choice; }
    void choose(int index) { m_choice = index >= 0 && index < int(m_entries.size()) ? index : -1; }
    // Chooses the entry of this item; false when there is none.
    bool chooseItem(int itemId);
    // OK is enabled once an item is chosen.
    bool okEnabled() const { return m_choice >= 0; }
    // The item number between the brackets of the chosen entry.
    std::optional<int> itemId() const;

private:
    QStringList m_entries;
    int m_choice = -1;
};

} // namespace kb::reports
