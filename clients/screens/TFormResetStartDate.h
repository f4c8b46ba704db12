#pragma once

#include <QDate>
#include <QString>

namespace kb {

// "Reset Start Date": after an inactive client was made active again, the
// start date and, when the agency recertifies clients, the
// recertification date, for the user to set anew. OK keeps the dates as
// shown for the save; Cancel leaves the client's dates as they are. The
// save goes on in the same way after either.
class TFormResetStartDate
{
public:
    TFormResetStartDate(const QDate& startDate, const QDate& recertificationDate,
                        bool recertificationVisible);

    static QString caption() { return QStringLiteral("Reset Start Date"); }
    static QString startDateLabel() { return QStringLiteral("Meals Start Date:"); }
    static QString recertificationDateLabel() { return QStringLiteral("Recertification Date:"); }

    bool recertificationVisible() const { return m_recertificationVisible; }
    // No date is an empty date.
    QDate startDate() const { return m_startDate; }
    void setStartDate(const QDate& date) { m_startDate = date; }
    QDate recertificationDate() const { return m_recertificationDate; }
    void setRecertificationDate(const QDate& date) { m_recertificationDate = date; }

private:
    QDate m_startDate;
    QDate m_recertificationDate;
    bool m_recertificationVisible;
};

} // namespace kb
