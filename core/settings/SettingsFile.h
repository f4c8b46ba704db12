#pragma once

#include "settings/IniFile.h"

#include <QRect>
#include <QString>

#include <optional>
#include <vector>

namespace kb {

// One Kettbrk.ini: the per-user copy (window positions, layouts, last
// choices) or the copy in the data directory (the remembered entries of
// combo boxes, shared by every user). Screens read and write through this
// one class.
//
// A missing, empty or damaged file reads as defaults and never stops the
// program. save() writes the whole file anew: it reads what is on disk at
// that moment (another workstation may have saved the shared copy since),
// lays this session's changes over it and replaces the file in one step, so
// damage is gone after the next save and nothing another user saved is
// lost.
class SettingsFile
{
public:
    static QString fileName() { return QStringLiteral("Kettbrk.ini"); }
    // The section of window positions, one key per window.
    static QString positionsSection() { return QStringLiteral("Form_Positions"); }

    // Loads folder/Kettbrk.ini; an empty folder means the current directory.
    explicit SettingsFile(const QString& folder);
    // Settings that live in memory only (no folder to keep them in).
    SettingsFile() = default;

    const QString& path() const { return m_path; }
    const IniFile& contents() const { return m_ini; }

    QString readString(const QString& section, const QString& key, const QString& fallback = {}) const;
    // A value that is not a whole number reads as the fallback.
    int readInteger(const QString& section, const QString& key, int fallback) const;
    // "1", "true" or "Checked" read as true and "0", "false" or "Unchecked"
    // as false; anything else as the fallback.
    bool readBool(const QString& section, const QString& key, bool fallback) const;
    QStringList readSection(const QString& section) const { return m_ini.keys(section); }

    void writeString(const QString& section, const QString& key, const QString& value);
    void writeInteger(const QString& section, const QString& key, int value);
    // Written as "Checked" or "Unchecked", the way the screens keep check boxes.
    void writeChecked(const QString& section, const QString& key, bool value);
    void deleteKey(const QString& section, const QString& key);
    void eraseSection(const QString& section);

    // A window's saved place, or none when it has none or it says "Default".
    std::optional<QRect> formPosition(const QString& formName) const;
    void setFormPosition(const QString& formName, const QRect& geometry);

    bool isModified() const { return !m_changes.empty(); }
    // Writes the file as described above when something changed; throws
    // MessageError when it cannot. Without a path (in-memory settings)
    // nothing is written.
    void save();

private:
    struct Change
    {
        QString section;
        QString key;                  // empty: the whole section goes
        std::optional<QString> value; // none: the key goes
    };
    void record(Change change);
    static void apply(IniFile& ini, const Change& change);

    QString m_path;
    IniFile m_ini;
    std::vector<Change> m_changes;
};

} // namespace kb
