#pragma once

#include <QString>

#include <functional>

namespace kb {

class DataSet;
class UserInterface;

// Moves the client window to a person of a household. A filter that could
// hide the person is taken off first, after telling the user why; the
// window's own way of taking it off is given (its status line follows),
// else the set's filter is simply switched off.
class ClientLocator
{
public:
    ClientLocator(DataSet& clients, UserInterface& ui);

    void setFilterOff(std::function<void()> filterOff) { m_filterOff = std::move(filterOff); }

    // False when the person is not among the clients (the caller tells).
    bool moveTo(qint64 personId, const QString& filterNotice);

private:
    DataSet& m_clients;
    UserInterface& m_ui;
    std::function<void()> m_filterOff;
};

} // namespace kb
