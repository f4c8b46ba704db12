#pragma once

#include <QString>
#include <QStringList>

namespace kb {

class SettingsFile;

// The household roles typed before, most recent first, kept in the per-user
// settings so every screen that asks for a role offers the same list. A
// role is remembered once, whatever its case, and the list keeps the
// latest twenty.
class RememberedRoles
{
public:
    // The settings section the roles are kept under.
    static QString section() { return QStringLiteral("wwDBComboBoxRole"); }
    // The roles as stored, without blanks or repeats.
    static QStringList read(const SettingsFile& settings);

    // settings may be null: the roles are then kept for this screen only.
    explicit RememberedRoles(SettingsFile* settings = nullptr);

    const QStringList& roles() const { return m_roles; }
    // Moves the role to the front (adding it when new) and stores the list.
    void remember(const QString& role);

private:
    SettingsFile* m_settings;
    QStringList m_roles;
};

} // namespace kb
