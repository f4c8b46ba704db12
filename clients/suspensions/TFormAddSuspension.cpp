#include "suspensions/TFormAddSuspension.h"

#include "dataset/DataSet.h"
#include "settings/SettingsFile.h"

namespace kb {

namespace {

const QString Section = QStringLiteral("FormAddSuspension");
const QString ViewKey = QStringLiteral("CalendarOrDates");
const QString Calendar = QStringLiteral("Calendar");
const QString Dates = QStringLiteral("Dates");

} // namespace

TFormAddSuspension::TFormAddSuspension(DataSet& suspends, SettingsFile* userSettings)
    : m_suspends(suspends), m_settings(userSettings)
{
    m_stop = suspends.fieldValue(u"Stop_Dt").toDate();
    m_resume = suspends.fieldValue(u"Resume_Dt").toDate();
    m_reason = suspends.fieldValue(u"Reason").toString();
    m_user = suspends.fieldValue(u"User").toString();
    if (m_settings && m_settings->readString(Section, ViewKey, Calendar) == Dates) m_view = View::Dates;
}

void TFormAddSuspension::setStopDate(const QDate& date)
{
    m_stop = date;
    if (m_stop.isValid() && m_resume.isValid() && m_stop > m_resume) m_resume = m_stop.addDays(1);
}

void TFormAddSuspension::setResumeDate(const QDate& date)
{
    m_resume = date;
    if (m_stop.isValid() && m_resume.isValid() && m_resume < m_stop) m_stop = m_resume.addDays(-1);
}

void TFormAddSuspension::setSelection(const QDate& first, const QDate& last)
{
    QDate from = first;
    QDate to = last;
    if (from.isValid() && to.isValid() && to < from) std::swap(from, to);
    if (from.isValid() && to.isValid() && from.daysTo(to) >= MaxSelectionDays)
        to = from.addDays(MaxSelectionDays - 1);
    m_stop = from;
    m_resume = to.isValid() ? to.addDays(1) : QDate();
}

void TFormAddSuspension::close()
{
    m_suspends.setFieldValue(u"Stop_Dt", m_stop);
    m_suspends.setFieldValue(u"Resume_Dt", m_resume);
    m_suspends.setFieldValue(u"Reason", m_reason);
    m_suspends.setFieldValue(u"User", m_user);
    if (m_settings) m_settings->writeString(Section, ViewKey, m_view == View::Calendar ? Calendar : Dates);
}

} // namespace kb
