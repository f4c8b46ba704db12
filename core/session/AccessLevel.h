#pragma once

#include <QString>

namespace kb {

class Database;
class UserInterface;

// Staff.Access_Level as the program applies it. "W" and "A" have full use
// ("A" without the route editor of the main window), "R" may look at
// everything and change nothing, "O" may run reports and change nothing.
//
// This is the one place that decides what a level may do. Screens ask it
// which commands to offer; the data session refuses every change a level
// does not allow (applyTo), so a write path that forgets to ask is still
// refused, headless commands included.
class AccessLevel
{
public:
    enum class Level { FullW, FullA, ReadOnly, ReportsOnly };

    // Full use ("W"), the level of the built-in administrator and of a
    // session nobody has signed into.
    AccessLevel() = default;
    explicit AccessLevel(Level level) : m_level(level) {}

    // Whether the text is one of "A", "W", "R" and "O".
    static bool isKnown(const QString& code);
    // Throws MessageError for a code outside "AWRO".
    static AccessLevel fromCode(const QString& code);

    // For the screens that test the level themselves as they open: a level
    // outside "AWRO" means the session is damaged, so the user is told
    // screenFaultText() and the program is asked to end (UserInterface::
    // terminate). False then, and the screen must not open.
    static bool admitScreen(const QString& code, UserInterface& ui);
    static QString screenFaultText()
    {
        return QStringLiteral("An unanticipated error has occurred... the application will now terminate.");
    }

    Level level() const { return m_level; }
    QString code() const;

    // Whether the user may change stored data at all.
    bool mayChangeData() const { return m_level == Level::FullW || m_level == Level::FullA; }
    // Reports-only users see no client records and no maintenance menus.
    bool reportsOnly() const { return m_level == Level::ReportsOnly; }
    bool readOnly() const { return m_level == Level::ReadOnly; }
    // The route editor of the main window is off for "A" as well.
    bool mayEditRoutes() const { return m_level == Level::FullW; }

    // What the user is told when a change is refused; empty at full use.
    QString refusal() const;
    // Makes the session refuse what the level does not allow.
    void applyTo(Database& db) const;

private:
    Level m_level = Level::FullW;
};

} // namespace kb
