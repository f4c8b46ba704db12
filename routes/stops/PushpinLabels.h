#pragma once

#include <QString>
#include <QStringList>

namespace kb {

// The names a client's pushpin can carry. Only the labels that hold the
// client number (2, 5, 6, 7 and 8) let an optimised order be read back:
// the number is at the end of 2 and 5 and in front in 6, 7 and 8.
class PushpinLabels
{
public:
    static constexpr int count = 9;
    static const QStringList& captions();
    static QString label(int option, const QString& firstName, const QString& lastName, const QString& clientId);
    static bool holdsClientNumber(int option);
    // The client number a label of that option holds; empty for the others.
    static QString clientNumber(int option, const QString& label);
};

} // namespace kb
