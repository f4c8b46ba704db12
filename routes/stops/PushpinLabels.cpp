#include "PushpinLabels.h"

namespace kb {

const QStringList& PushpinLabels::captions()
{
    static const QStringList texts = {
        QStringLiteral("John S : First Name Surname Initial"),
        QStringLiteral("John Smith : First Name Surname"),
        QStringLiteral("John S / 1011.0 : First Name Surname Initial / Client ID"),
        QStringLiteral("Smith, J : Surname, First Name Initial"),
        QStringLiteral("Smith, John : Surname, First Name"),
        QStringLiteral("Smith, J / 1011.0 : Last Name, First Initial / Client ID"),
        QStringLiteral("1011.0 / John S : Client ID / First Name Surname Initial"),
        QStringLiteral("1011.0 / Smith, J : Client ID / Last Name, First Initial"),
        QStringLiteral("1011.0 : Client ID only"),
    };
    return texts;
}

QString PushpinLabels::label(int option, const QString& firstName, const QString& lastName, const QString& clientId)
{
    const QString first = firstName;
    const QString last = lastName;
    const QString id = clientId;
    switch (option) {
    case 1: return first + QLatin1Char(' ') + last;
    case 2: return first + QLatin1Char(' ') + last.left(1) + QLatin1Char(' ') + id;
    case 3: return last + QStringLiteral(", ") + first.left(1);
    case 4: return last + QStringLiteral(", ") + first;
    case 5: return last + QStringLiteral(", ") + first.left(1) + QLatin1Char(' ') + id;
    case 6: return id + QLatin1Char(' ') + first + QLatin1Char(' ') + last.left(1);
    case 7: return id + QLatin1Char(' ') + last + QStringLiteral(", ") + first.left(1);
    case 8: return id;
    default: return first + QLatin1Char(' ') + last.left(1);
    }
}

bool PushpinLabels::holdsClientNumber(int option)
{
    return option == 2 || option == 5 || option == 6 || option == 7 || option == 8;
}

QString PushpinLabels::clientNumber(int option, const QString& label)
{
    if (option == 2 || option == 5) {
        // Client numbers run to seven characters; a shorter one leaves part
        // of the name in those seven, which the last blank cuts off.
        const QString tail = label.right(7).trimmed();
        return tail.mid(tail.lastIndexOf(QLatin1Char(' ')) + 1);
    }
    if (option >= 6 && option <= 8)
        return label.trimmed().section(QLatin1Char(' '), 0, 0);
    return {};
}

} // namespace kb
