#include "window/TFilterForm.h"

namespace kb {

QStringList TFilterForm::statusChoices()
{
    return {QStringLiteral("Active"), QStringLiteral("Stopped"), QStringLiteral("Inactive"),
            QStringLiteral("Wait List"), QStringLiteral("All Regardless")};
}

QStringList TFilterForm::suspensionChoices()
{
    return {QStringLiteral("Not Suspended"), QStringLiteral("Suspended"), QStringLiteral("All Regardless")};
}

void TFilterForm::setStatus(Status status)
{
    m_status = status;
    if (!suspensionEnabled()) m_suspension = Suspension::AllRegardless;
}

void TFilterForm::setSuspension(Suspension suspension)
{
    m_suspension = suspensionEnabled() ? suspension : Suspension::AllRegardless;
}

bool TFilterForm::suspensionEnabled() const
{
    return m_status == Status::Active && !m_internet;
}

void TFilterForm::setInternet(bool internet)
{
    m_internet = internet;
    setStatus(m_status);
}

QString TFilterForm::statusCode() const
{
    switch (m_status) {
    case Status::Active:
        return QStringLiteral("A");
    case Status::Stopped:
        return QStringLiteral("S");
    case Status::Inactive:
        return QStringLiteral("I");
    case Status::WaitList:
        return QStringLiteral("W");
    case Status::AllRegardless:
        break;
    }
    return {};
}

QString TFilterForm::statusText() const
{
    switch (m_status) {
    case Status::Active:
        switch (m_suspension) {
        case Suspension::NotSuspended:
            return QStringLiteral("Filter: Active/Not Suspended");
        case Suspension::Suspended:
            return QStringLiteral("Filter: Active/Suspended");
        case Suspension::AllRegardless:
            return QStringLiteral("Filter: Active Status");
        }
        break;
    case Status::Stopped:
        return QStringLiteral("Filter: Stopped Status");
    case Status::Inactive:
        return QStringLiteral("Filter: Inactive Status");
    case Status::WaitList:
        return QStringLiteral("Filter: Wait List");
    case Status::AllRegardless:
        break;
    }
    return offText();
}

} // namespace kb
