#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <array>
#include <functional>
#include <memory>

namespace kb {

class Database;
class QueryDataSet;
class RecordServices;
class UserInterface;

// "Set Default Deliveries": the default item list of each delivery service
// and weekday (Defdels rows with Person_ID 0 and no Deliv_ID), one list at a
// time. The lists are templates the run reads afresh, so every change here
// reaches every client without a list of his own from the next prepared run
// on. Lines are edited live, row by row, without a transaction.
class TFormSetDefaultDeliveries
{
public:
    struct ItemChoice
    {
        qint64 itemId = 0;
        QString name;
    };

    explicit TFormSetDefaultDeliveries(RecordServices& services);
    virtual ~TFormSetDefaultDeliveries();
    TFormSetDefaultDeliveries(const TFormSetDefaultDeliveries&) = delete;
    TFormSetDefaultDeliveries& operator=(const TFormSetDefaultDeliveries&) = delete;

    static QString caption() { return QStringLiteral("Set Default Deliveries"); }
    static QString formName() { return QStringLiteral("TFormSetDefaultDeliveries"); }
    static QString deleteQuestion() { return QStringLiteral("Delete the selected delivery item?"); }
    static QString closeQuestion()
    {
        return QStringLiteral("Save your changes to the data before closing this window?");
    }
    static QString rangeText() { return QStringLiteral("Enter a number from 0 to 999."); }
    // The window's title and its section of the ini file.
    virtual QString title() const { return caption(); }
    virtual QString screenName() const { return formName(); }

    // A user who may not change data reads the lists only: the commands
    // that change them are hidden and off.
    bool readOnly() const;

    // Showing: the services, the day buttons, the first service and day.
    virtual void FormShow();
    // "Close": a pending edit is asked about (Yes posts, No cancels), then
    // the queries close. False while a refused post keeps the screen open.
    virtual bool FormClose();

    // "1 - Home Delivered Meals": the delivery services but those whose
    // description is part of the word "CUSTOM".
    const QStringList& serviceEntries() const { return m_serviceEntries; }
    int serviceIndex() const { return m_serviceIndex; }
    void setServiceIndex(int index);
    // The number of the chosen entry: its text before the first "-".
    qint64 serviceId() const;
    static qint64 serviceIdOf(const QString& entry);

    // Day buttons "Mon" ... "Sun", enabled by the agency's service days.
    bool isDayEnabled(int day) const { return m_dayEnabled[size_t(day)]; }
    // The selected day, -1 when the agency serves no day.
    int day() const { return m_day; }
    void setDay(int day);

    // The list: Del_Day, Quantity, Item (the item's name) and Sort_Order.
    QueryDataSet& list() { return *m_list; }
    const QList<ItemChoice>& itemChoices() const { return m_items; }
    // Typing into the current line (Quantity, ITEM_ID, Sort_Order); false
    // when refused, the user told why.
    bool setValue(const QString& field, const QVariant& value);
    bool post();

    virtual void ActionAddItem();
    void ActionDeleteItem();
    void ActionMoveUp();
    void ActionMoveDown();
    void ActionDupeMonday();

protected:
    // A screen of the same shape over another item list, read by listText.
    TFormSetDefaultDeliveries(RecordServices& services, const QString& listText);

    // The parameters of the list statement for the shown service and day.
    virtual void bindList(QueryDataSet& list);
    // The highest Sort_Order of the shown list, 0 when it has no line.
    virtual int highestSortOrder();
    // Gives the other lines of the shown list that stand at oldSort the
    // place newSort, out of the way of the line recordId that moves.
    virtual void shiftOthers(int newSort, int oldSort, qint64 recordId);
    // Shows one service and one day and makes neither choosable: a list
    // that belongs to one delivery.
    void showOnly(const QString& serviceEntry, int day);

    // Runs work, telling the user a failure; false when it failed.
    bool guarded(const std::function<void()>& work);
    void readItems();
    void reopen();

    RecordServices& m_recordServices;
    Database& m_db;
    UserInterface& m_ui;
    std::unique_ptr<QueryDataSet> m_list;
    QStringList m_serviceEntries;
    int m_serviceIndex = -1;
    std::array<bool, 7> m_dayEnabled{};
    int m_day = -1;
    QList<ItemChoice> m_items;

private:
    void readServices();
    void readDays();
    void moveBy(int step);
};

} // namespace kb
