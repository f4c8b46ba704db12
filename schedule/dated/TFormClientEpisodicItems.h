#pragma once

#include <QDate>
#include <QString>

#include <array>
#include <vector>

namespace kb {

class Database;
class UserInterface;

// "Calendar-Based Delivery Items": a client's dated deliveries that no run
// has saved yet, one line per date, with a quantity and an item for each of
// breakfast, lunch, dinner and medical food. Changing a meal replaces the
// delivery's lines of that meal; clearing Deliver deletes the delivery.
// Lines of other meals are left as they are.
class TFormClientEpisodicItems
{
public:
    static constexpr int MealCount = 4;
    struct Meal
    {
        int quantity = 0;
        qint64 itemId = 0; // 0: none
    };
    struct Row
    {
        qint64 recordId = 0;
        QDate date;
        qint64 service = 0;
        QString scheduleType;
        bool deliver = true;
        std::array<Meal, MealCount> meals;
        bool changed = false;
        // Only a changed meal is rewritten, so the lines of a meal beyond
        // the one shown survive a change to another meal.
        std::array<bool, MealCount> mealChanged{};
    };
    struct ItemChoice
    {
        qint64 itemId = 0;
        QString text;
    };

    TFormClientEpisodicItems(Database& db, UserInterface& ui, QString userName, qint64 personId,
                             const QDate& today);

    static QString caption() { return QStringLiteral("Calendar-Based Delivery Items"); }
    // Items.Meal of each column, and the column's caption.
    static QString mealCode(int meal);
    static QString mealCaption(int meal);

    void setBegin(const QDate& date) { m_begin = date; }
    void setEnd(const QDate& date) { m_end = date; }
    const QDate& begin() const { return m_begin; }
    const QDate& end() const { return m_end; }

    // The items of a meal column, by their sort order.
    const std::vector<ItemChoice>& items(int meal);

    // "Retrieve": the unfulfilled deliveries between the dates, each with
    // the first line of each meal (quantities of one meal's items added up
    // would hide which item goes; the screen shows one item per meal).
    void ActionRetrieve();
    const std::vector<Row>& rows() const { return m_rows; }
    bool modified() const;

    void setMeal(int row, int meal, int quantity, qint64 itemId);
    void setDeliver(int row, bool deliver);

    // After asking when deliveries are to be deleted: deletes those (each
    // in its own transaction, as every delivery deletion), then writes the
    // changed lines in one transaction. false when the user declined. Rows
    // are retrieved again afterwards.
    bool ActionSave();
    // Closing with changes asks "Save your changes to the delivery items?":
    // Yes saves, No drops them, Cancel keeps the screen open (false).
    bool close();

private:
    Database& m_db;
    UserInterface& m_ui;
    QString m_userName;
    qint64 m_personId;
    QString m_clientId;
    QDate m_begin;
    QDate m_end;
    std::vector<Row> m_rows;
    std::array<std::vector<ItemChoice>, MealCount> m_items;
    std::array<bool, MealCount> m_itemsRead{};
};

} // namespace kb
