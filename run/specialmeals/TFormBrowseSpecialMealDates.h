#pragma once

#include "specialmeals/SpecialMealNames.h"

#include <QDate>
#include <QList>
#include <QObject>

#include <array>

namespace kb {

class Database;
class RunDialogs;
class UserInterface;

// "Special Meals by Date": every date with a special meals setup,
// newest first, with a mark for each meal that has something set. Dates
// are added and edited here; none is deleted.
class TFormBrowseSpecialMealDates : public QObject
{
    Q_OBJECT

public:
    struct Row
    {
        qint64 recordId = 0;
        QDate date;
        // Meal n is marked unless its Selection_Option is null, its
        // Filter_All false or null and its Special_Restr 0 or null.
        std::array<bool, 5> marks{};
    };

    TFormBrowseSpecialMealDates(Database& db, UserInterface& ui, RunDialogs& dialogs,
                                QObject* parent = nullptr);

    static QString caption() { return QStringLiteral("Special Meals by Date"); }
    static QString marksHeading() { return QStringLiteral("Specials Defined"); }
    // The mark columns shown: the meals in use, at least one.
    int mealColumns() const { return m_names.mealsShown(); }
    // A mark column's title: the start of its meal's label.
    QString mealTitle(int meal) const;

    void refresh();
    const QList<Row>& rows() const { return m_rows; }
    int currentRow() const { return m_current; }
    void setCurrentRow(int row);

    // "Add Date": a date on the calendar (tomorrow proposed); a new date
    // gets an empty setup, an existing one is told; either way it
    // is then edited.
    void ActionAddDate();
    // "Edit Date" (also a double click): the dialog for the current row; OK
    // writes its twenty values back, Cancel leaves the row as it was.
    void ActionEditDate();

signals:
    void changed();

private:
    void selectDate(const QDate& date);

    Database& m_db;
    UserInterface& m_ui;
    RunDialogs& m_dialogs;
    SpecialMealNames m_names;
    QList<Row> m_rows;
    int m_current = -1;
};

} // namespace kb
