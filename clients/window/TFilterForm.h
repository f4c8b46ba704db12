#pragma once

#include <QString>
#include <QStringList>

namespace kb {

// "Limit Clients View": the status filter of the client window. Two
// choices, the status and, for active clients only, the suspension; the
// dialog keeps them for the next time it opens.
class TFilterForm
{
public:
    enum class Status { Active, Stopped, Inactive, WaitList, AllRegardless };
    enum class Suspension { NotSuspended, Suspended, AllRegardless };

    static QString caption() { return QStringLiteral("Limit Clients View"); }
    static QStringList statusChoices();
    static QStringList suspensionChoices();

    Status status() const { return m_status; }
    Suspension suspension() const { return m_suspension; }
    void setStatus(Status status);
    // Ignored while the suspension choice is disabled.
    void setSuspension(Suspension suspension);
    // Only for "Active", and not on an Internet connection; otherwise the
    // choice falls back to "All Regardless".
    bool suspensionEnabled() const;
    void setInternet(bool internet);

    // The status code the filter keeps, empty for "All Regardless".
    QString statusCode() const;
    // What the status bar says for the choices.
    QString statusText() const;
    static QString offText() { return QStringLiteral("Filter: Off"); }

private:
    Status m_status = Status::AllRegardless;
    Suspension m_suspension = Suspension::AllRegardless;
    bool m_internet = false;
};

} // namespace kb
