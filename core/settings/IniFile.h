#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace kb {

// The text of a Kettbrk.ini: "[Section]" lines, each followed by
// "Key=Value" lines, read and written as they stand. Texts keep their commas,
// quotes and blanks ("Checked", "10,20,800,600", "Apt "B", rear"), keys are
// found without regard to case and keep their spelling, and the order of
// sections and keys is kept.
//
// The file may have been damaged (cut off, overwritten, edited by hand), so
// reading never fails: whatever is not a well-formed line is passed over, the
// keys under a damaged section header go with it, and a file over the size
// limit reads as empty. Everything is bounded: the size of the file, the
// length of a line, the number of sections and of keys in one.
class IniFile
{
public:
    struct Limits
    {
        qsizetype maxBytes = 4 * 1024 * 1024;
        qsizetype maxLineLength = 16 * 1024;
        int maxSections = 2048;
        int maxKeysPerSection = 8192;
        int maxNameLength = 255; // of a section or a key
    };

    // Reads the bytes of a file; never throws.
    static IniFile parse(QByteArrayView bytes);
    static IniFile parse(QByteArrayView bytes, const Limits& limits);
    // skippedLines tells how many lines were passed over as damaged.
    static IniFile parse(QByteArrayView bytes, const Limits& limits, int& skippedLines);
    // The whole text, UTF-8, one "Key=Value" per line, a blank line between
    // sections. Line breaks inside a value become blanks.
    QByteArray serialize() const;

    bool hasSection(const QString& section) const;
    bool hasKey(const QString& section, const QString& key) const;
    QStringList sections() const;
    QStringList keys(const QString& section) const;
    // The stored text, or fallback when the key is absent.
    QString value(const QString& section, const QString& key, const QString& fallback = {}) const;

    void setValue(const QString& section, const QString& key, const QString& value);
    void removeKey(const QString& section, const QString& key);
    void removeSection(const QString& section);
    bool isEmpty() const { return m_sections.isEmpty(); }

private:
    struct Entry
    {
        QString key;
        QString value;
    };
    struct Section
    {
        QString name;
        QList<Entry> entries;
        QHash<QString, qsizetype> byLowerKey; // position of each entry
    };

    const Section* findSection(const QString& name) const;
    Section* findSection(const QString& name);
    static qsizetype findEntry(const Section& section, const QString& key);
    static void appendEntry(Section& section, const QString& key, const QString& value);

    Section& addSection(const QString& name);

    QList<Section> m_sections;
    QHash<QString, qsizetype> m_sectionByLowerName;
};

} // namespace kb
