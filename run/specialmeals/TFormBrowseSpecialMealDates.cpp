#include "specialmeals/TFormBrowseSpecialMealDates.h"

#include "UserInterface.h"
#include "dialogs/DateChoice.h"
#include "dialogs/RunDialogs.h"
#include "specialmeals/SpecialMealsSetup.h"
#include "specialmeals/TFormSetSpecialMeals.h"
#include "store/Database.h"

#include <QLocale>

namespace kb {

TFormBrowseSpecialMealDates::TFormBrowseSpecialMealDates(Database& db, UserInterface& ui, RunDialogs& dialogs,
                                                         QObject* parent)
    : QObject(parent), m_db(db), m_ui(ui), m_dialogs(dialogs), m_names(SpecialMealNames::read(db))
{
    refresh();
}

QString TFormBrowseSpecialMealDates::mealTitle(int meal) const
{
    // Labels of meals 1 to 3 hold 15 characters; the column shows the first ten.
    const QString& label = m_names.label(meal);
    return label.isEmpty() ? QStringLiteral("Meal %1").arg(meal) : label.left(10);
}

void TFormBrowseSpecialMealDates::refresh()
{
    const ResultSet rows =
        m_db.execute(QStringLiteral("Select * from Special_Meals order by Deliv_Date desc, RecordID desc"));
    m_rows.clear();
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        Row row;
        row.recordId = rows.value(r, QStringLiteral("RecordID")).toLongLong();
        row.date = rows.value(r, QStringLiteral("Deliv_Date")).toDate();
        for (int n = 1; n <= 5; ++n) {
            const QString s = SpecialMealsSetup::suffix(n);
            const QVariant& option = rows.value(r, QStringLiteral("Selection_Option") + s);
            const bool all = rows.value(r, QStringLiteral("Filter_All") + s).toBool();
            const qint64 mask = rows.value(r, QStringLiteral("Special_Restr") + s).toLongLong();
            row.marks[size_t(n - 1)] = !option.isNull() || all || mask != 0;
        }
        m_rows.append(row);
    }
    if (m_current >= m_rows.size()) m_current = int(m_rows.size()) - 1;
    if (m_current < 0 && !m_rows.isEmpty()) m_current = 0;
    emit changed();
}

void TFormBrowseSpecialMealDates::setCurrentRow(int row)
{
    if (row >= 0 && row < m_rows.size()) m_current = row;
}

void TFormBrowseSpecialMealDates::selectDate(const QDate& date)
{
    for (int r = 0; r < m_rows.size(); ++r)
        if (m_rows[r].date == date) m_current = r;
}

void TFormBrowseSpecialMealDates::ActionAddDate()
{
    DateChoice choice{QStringLiteral("Special Meals"), QStringLiteral("Date of the special meals:"),
                      m_db.clock().today().addDays(1)};
    if (!m_dialogs.chooseDate(choice) || !choice.date.isValid()) return;
    if (SpecialMealsSetup::read(m_db, choice.date))
        m_ui.information(
            QStringLiteral("The Special Meal specifications for that date already exist. \r\nThat date "
                           "will be presented for editing in the next window."));
    else
        SpecialMealsSetup().insert(m_db, choice.date);
    refresh();
    selectDate(choice.date);
    ActionEditDate();
}

void TFormBrowseSpecialMealDates::ActionEditDate()
{
    if (m_current < 0 || m_current >= m_rows.size()) return;
    const Row row = m_rows[m_current];
    const ResultSet stored =
        m_db.execute(QStringLiteral("Select * from Special_Meals where RecordID = :RecordID"),
                     {{QStringLiteral("RecordID"), row.recordId}});
    if (stored.isEmpty()) {
        refresh();
        return;
    }
    TFormSetSpecialMeals form(m_db, m_ui, &m_dialogs);
    form.setDate(row.date);
    form.setCaption(TFormSetSpecialMeals::formCaption() + QStringLiteral(": ") +
                    QLocale().toString(row.date, QLocale::LongFormat));
    form.fill(SpecialMealsSetup::fromRow(stored, 0));
    if (m_dialogs.setSpecialMeals(form)) form.result().update(m_db, row.recordId);
    // Copies made from the dialog add dates even when it is cancelled.
    refresh();
    selectDate(row.date);
    emit changed();
}

} // namespace kb
