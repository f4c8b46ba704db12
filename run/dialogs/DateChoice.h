#pragma once

#include <QDate>
#include <QString>

namespace kb {

// A small modal dialog that asks for one date on a calendar: its caption,
// its prompt and the date it proposes, which the answer replaces.
struct DateChoice
{
    QString caption;
    QString prompt;
    QDate date;
};

} // namespace kb
