#include "settings/SettingsFile.h"

#include "MessageError.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace kb {

namespace {

IniFile readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    const IniFile::Limits limits;
    // A file over the limit reads as empty without being read whole.
    if (file.size() > limits.maxBytes) return {};
    return IniFile::parse(file.read(limits.maxBytes + 1), limits);
}

} // namespace

SettingsFile::SettingsFile(const QString& folder)
    : m_path(folder.isEmpty() ? fileName() : QDir(folder).filePath(fileName())), m_ini(readFile(m_path))
{
}

QString SettingsFile::readString(const QString& section, const QString& key, const QString& fallback) const
{
    return m_ini.value(section, key, fallback);
}

int SettingsFile::readInteger(const QString& section, const QString& key, int fallback) const
{
    bool ok = false;
    const int value = m_ini.value(section, key).trimmed().toInt(&ok);
    return ok ? value : fallback;
}

bool SettingsFile::readBool(const QString& section, const QString& key, bool fallback) const
{
    const QString text = m_ini.value(section, key).trimmed();
    for (const char* yes : {"1", "true", "Checked"})
        if (text.compare(QLatin1String(yes), Qt::CaseInsensitive) == 0) return true;
    for (const char* no : {"0", "false", "Unchecked"})
        if (text.compare(QLatin1String(no), Qt::CaseInsensitive) == 0) return false;
    return fallback;
}

void SettingsFile::record(Change change)
{
    apply(m_ini, change);
    m_changes.push_back(std::move(change));
}

void SettingsFile::apply(IniFile& ini, const Change& change)
{
    if (change.key.isEmpty())
        ini.removeSection(change.section);
    else if (change.value)
        ini.setValue(change.section, change.key, *change.value);
    else
        ini.removeKey(change.section, change.key);
}

void SettingsFile::writeString(const QString& section, const QString& key, const QString& value)
{
    if (m_ini.hasKey(section, key) && m_ini.value(section, key) == value) return;
    record(Change{section, key, value});
}

void SettingsFile::writeInteger(const QString& section, const QString& key, int value)
{
    writeString(section, key, QString::number(value));
}

void SettingsFile::writeChecked(const QString& section, const QString& key, bool value)
{
    writeString(section, key, value ? QStringLiteral("Checked") : QStringLiteral("Unchecked"));
}

void SettingsFile::deleteKey(const QString& section, const QString& key)
{
    if (m_ini.hasKey(section, key)) record(Change{section, key, std::nullopt});
}

void SettingsFile::eraseSection(const QString& section)
{
    if (m_ini.hasSection(section)) record(Change{section, {}, std::nullopt});
}

std::optional<QRect> SettingsFile::formPosition(const QString& formName) const
{
    const QStringList parts = readString(positionsSection(), formName).split(u',');
    if (parts.size() != 4) return std::nullopt; // "Default", nothing saved, or damaged
    int numbers[4];
    for (int i = 0; i < 4; ++i) {
        bool ok = false;
        numbers[i] = parts[i].trimmed().toInt(&ok);
        if (!ok || std::abs(numbers[i]) > 100000) return std::nullopt;
    }
    if (numbers[2] <= 0 || numbers[3] <= 0) return std::nullopt;
    return QRect(numbers[0], numbers[1], numbers[2], numbers[3]);
}

void SettingsFile::setFormPosition(const QString& formName, const QRect& geometry)
{
    writeString(positionsSection(), formName,
                QStringLiteral("%1,%2,%3,%4")
                    .arg(geometry.x())
                    .arg(geometry.y())
                    .arg(geometry.width())
                    .arg(geometry.height()));
}

void SettingsFile::save()
{
    if (m_path.isEmpty() || m_changes.empty()) return;
    IniFile merged = readFile(m_path);
    for (const Change& change : m_changes)
        apply(merged, change);
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly) || file.write(merged.serialize()) < 0 || !file.commit())
        throw MessageError(
            QStringLiteral("Cannot write the settings file %1: %2").arg(m_path, file.errorString()));
    m_ini = std::move(merged);
    m_changes.clear();
}

} // namespace kb
