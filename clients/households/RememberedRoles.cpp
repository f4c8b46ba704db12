#include "households/RememberedRoles.h"

#include "settings/SettingsFile.h"

#include <algorithm>

namespace kb {

namespace {

constexpr int MaxRememberedRoles = 20;

} // namespace

QStringList RememberedRoles::read(const SettingsFile& settings)
{
    QStringList keys = settings.readSection(section());
    std::sort(keys.begin(), keys.end(),
              [](const QString& a, const QString& b) { return a.mid(4).toInt() < b.mid(4).toInt(); });
    QStringList roles;
    for (const QString& key : keys) {
        const QString role = settings.readString(section(), key).trimmed();
        if (!role.isEmpty() && !roles.contains(role, Qt::CaseInsensitive)) roles.append(role);
    }
    return roles;
}

RememberedRoles::RememberedRoles(SettingsFile* settings)
    : m_settings(settings), m_roles(settings ? read(*settings) : QStringList())
{
}

void RememberedRoles::remember(const QString& role)
{
    const QString text = role.trimmed();
    if (text.isEmpty()) return;
    for (qsizetype i = 0; i < m_roles.size(); ++i)
        if (m_roles[i].compare(text, Qt::CaseInsensitive) == 0) {
            if (i == 0 && m_roles[i] == text) return;
            m_roles.removeAt(i);
            break;
        }
    m_roles.prepend(text);
    while (m_roles.size() > MaxRememberedRoles)
        m_roles.removeLast();
    if (!m_settings) return;
    m_settings->eraseSection(section());
    for (qsizetype i = 0; i < m_roles.size(); ++i)
        m_settings->writeString(section(), QStringLiteral("Item%1").arg(i), m_roles[i]);
}

} // namespace kb
