#include "session/AccessLevel.h"

#include "MessageError.h"
#include "UserInterface.h"
#include "store/Database.h"

namespace kb {

bool AccessLevel::isKnown(const QString& code)
{
    return code.size() == 1 && QStringLiteral("AWRO").contains(code);
}

bool AccessLevel::admitScreen(const QString& code, UserInterface& ui)
{
    if (isKnown(code)) return true;
    ui.terminate(screenFaultText());
    return false;
}

AccessLevel AccessLevel::fromCode(const QString& code)
{
    if (!isKnown(code))
        throw MessageError(
            QStringLiteral("An unanticipated error has occurred... Kettlebrook will now terminate."));
    switch (code.at(0).unicode()) {
    case u'A':
        return AccessLevel(Level::FullA);
    case u'R':
        return AccessLevel(Level::ReadOnly);
    case u'O':
        return AccessLevel(Level::ReportsOnly);
    default:
        return AccessLevel(Level::FullW);
    }
}

QString AccessLevel::code() const
{
    switch (m_level) {
    case Level::FullW:
        return QStringLiteral("W");
    case Level::FullA:
        return QStringLiteral("A");
    case Level::ReadOnly:
        return QStringLiteral("R");
    case Level::ReportsOnly:
        return QStringLiteral("O");
    }
    return QStringLiteral("W");
}

QString AccessLevel::refusal() const
{
    switch (m_level) {
    case Level::ReadOnly:
        return QStringLiteral("You have read-only access: the data cannot be changed.");
    case Level::ReportsOnly:
        return QStringLiteral("You have reports-only access: the data cannot be changed.");
    default:
        return {};
    }
}

void AccessLevel::applyTo(Database& db) const
{
    db.setWriteRefusal(refusal());
}

} // namespace kb
