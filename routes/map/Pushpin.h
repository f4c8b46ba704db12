#pragma once

#include "Location.h"

#include <QString>

namespace kb::map {

// A marked place on the map. Its name is the only record of whom it stands
// for (callers put the client's identity in it), so it is kept exactly as given.
class Pushpin
{
public:
    Pushpin(const Location& location, const QString& name) : m_location(location), m_name(name) {}

    const Location& location() const { return m_location; }
    const QString& name() const { return m_name; }
    int symbol() const { return m_symbol; }
    void setSymbol(int symbol) { m_symbol = symbol; }

private:
    Location m_location;
    QString m_name;
    int m_symbol = 1;
};

} // namespace kb::map
