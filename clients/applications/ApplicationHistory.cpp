#include "applications/ApplicationHistory.h"

#include <QHash>

namespace kb {

namespace {

QString statusWord(const QString& code)
{
    static const QHash<QString, QString> words = {
        {QStringLiteral("I"), QStringLiteral("In Process")},
        {QStringLiteral("P"), QStringLiteral("Pending")},
        {QStringLiteral("A"), QStringLiteral("Approved")},
        {QStringLiteral("D"), QStringLiteral("Denied")},
        {QStringLiteral("C"), QStringLiteral("Cancelled")},
        {QStringLiteral("W"), QStringLiteral("Wait-Listed")},
    };
    return words.value(code.trimmed().toUpper());
}

} // namespace

QString applicationStatusWord(const QString& status)
{
    const QString code = status.trimmed().toUpper();
    return code == QLatin1String("A") ? QStringLiteral("Accepted") : statusWord(code);
}

QString applicationStatusEvent(const QString& oldStatus, const QString& newStatus)
{
    if (newStatus.trimmed().isEmpty()) return QStringLiteral("Service App created.");
    const QString from = statusWord(oldStatus);
    const QString start = from.isEmpty()
                              ? QStringLiteral("Service App created with status of ")
                              : QStringLiteral("App status changed from ") + from + QStringLiteral(" to ");
    QString to = statusWord(newStatus);
    if (to.isEmpty()) to = newStatus.trimmed();
    return start + to + QLatin1Char('.');
}

} // namespace kb
