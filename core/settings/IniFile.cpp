#include "settings/IniFile.h"

namespace kb {

namespace {

// Binary garbage shows as control characters; a line holding any is damaged.
bool hasControlCharacters(QStringView text)
{
    for (QChar c : text)
        if (c.unicode() < 0x20 && c != u'\t') return true;
    return false;
}

} // namespace

IniFile IniFile::parse(QByteArrayView bytes)
{
    return parse(bytes, Limits());
}

IniFile IniFile::parse(QByteArrayView bytes, const Limits& limits)
{
    int skipped = 0;
    return parse(bytes, limits, skipped);
}

IniFile IniFile::parse(QByteArrayView bytes, const Limits& limits, int& skippedLines)
{
    IniFile ini;
    skippedLines = 0;
    if (bytes.size() > limits.maxBytes) return ini;
    if (bytes.startsWith("\xEF\xBB\xBF")) bytes = bytes.sliced(3);
    Section* current = nullptr; // null: keys here belong to no readable section
    qsizetype start = 0;
    while (start < bytes.size()) {
        qsizetype end = bytes.indexOf('\n', start);
        if (end < 0) end = bytes.size();
        QByteArrayView raw = bytes.sliced(start, end - start);
        start = end + 1;
        if (raw.endsWith('\r')) raw.chop(1);
        if (raw.size() > limits.maxLineLength) {
            ++skippedLines;
            continue;
        }
        // A byte order mark is invisible and means nothing inside a line; the
        // UTF-8 decoder drops one at the start of its input but keeps one
        // anywhere else, so drop them all and a line reads alike wherever it
        // stood.
        const QString line = QString::fromUtf8(raw).remove(QChar(0xFEFF)).trimmed();
        if (line.isEmpty() || line.startsWith(u';') || line.startsWith(u'#')) continue;
        if (hasControlCharacters(line) || line.contains(QChar::ReplacementCharacter)) {
            ++skippedLines;
            continue;
        }
        if (line.startsWith(u'[')) {
            current = nullptr;
            const QString name = line.endsWith(u']') ? line.mid(1, line.size() - 2).trimmed() : QString();
            if (name.isEmpty() || name.size() > limits.maxNameLength || name.contains(u'[') ||
                name.contains(u']')) {
                ++skippedLines;
                continue;
            }
            current = ini.findSection(name);
            if (!current) {
                if (ini.m_sections.size() >= limits.maxSections) {
                    ++skippedLines;
                    continue;
                }
                current = &ini.addSection(name);
            }
            continue;
        }
        const qsizetype eq = line.indexOf(u'=');
        const QString key = eq > 0 ? line.left(eq).trimmed() : QString();
        if (!current || key.isEmpty() || key.size() > limits.maxNameLength ||
            current->entries.size() >= limits.maxKeysPerSection) {
            ++skippedLines;
            continue;
        }
        QString value = line.mid(eq + 1).trimmed();
        // A value written with enclosing quotes keeps its own blanks and quotes.
        if (value.size() >= 2 && value.startsWith(u'"') && value.endsWith(u'"'))
            value = value.mid(1, value.size() - 2);
        if (findEntry(*current, key) < 0) // the first of two equal keys counts
            appendEntry(*current, key, value);
    }
    return ini;
}

QByteArray IniFile::serialize() const
{
    QString text;
    for (const Section& section : m_sections) {
        if (!text.isEmpty()) text += u'\n';
        text += u'[' + section.name + QStringLiteral("]\n");
        for (const Entry& entry : section.entries) {
            QString value = entry.value;
            value.replace(u'\r', u' ').replace(u'\n', u' ');
            // Blanks at either end, or quotes at both, would be lost on reading.
            if (value != value.trimmed() ||
                (value.size() >= 2 && value.startsWith(u'"') && value.endsWith(u'"')))
                value = u'"' + value + u'"';
            text += entry.key + u'=' + value + u'\n';
        }
    }
    return text.toUtf8();
}

const IniFile::Section* IniFile::findSection(const QString& name) const
{
    const qsizetype i = m_sectionByLowerName.value(name.toLower(), -1);
    return i < 0 ? nullptr : &m_sections[i];
}

IniFile::Section& IniFile::addSection(const QString& name)
{
    m_sectionByLowerName.insert(name.toLower(), m_sections.size());
    m_sections.append(Section{name, {}, {}});
    return m_sections.last();
}

IniFile::Section* IniFile::findSection(const QString& name)
{
    return const_cast<Section*>(std::as_const(*this).findSection(name));
}

qsizetype IniFile::findEntry(const Section& section, const QString& key)
{
    return section.byLowerKey.value(key.toLower(), -1);
}

void IniFile::appendEntry(Section& section, const QString& key, const QString& value)
{
    section.byLowerKey.insert(key.toLower(), section.entries.size());
    section.entries.append(Entry{key, value});
}

bool IniFile::hasSection(const QString& section) const
{
    return findSection(section) != nullptr;
}

bool IniFile::hasKey(const QString& section, const QString& key) const
{
    const Section* s = findSection(section);
    return s && findEntry(*s, key) >= 0;
}

QStringList IniFile::sections() const
{
    QStringList names;
    for (const Section& section : m_sections)
        names.append(section.name);
    return names;
}

QStringList IniFile::keys(const QString& section) const
{
    QStringList names;
    if (const Section* s = findSection(section))
        for (const Entry& entry : s->entries)
            names.append(entry.key);
    return names;
}

QString IniFile::value(const QString& section, const QString& key, const QString& fallback) const
{
    const Section* s = findSection(section);
    const qsizetype i = s ? findEntry(*s, key) : -1;
    return i < 0 ? fallback : s->entries[i].value;
}

void IniFile::setValue(const QString& section, const QString& key, const QString& value)
{
    Section* s = findSection(section);
    if (!s) s = &addSection(section);
    const qsizetype i = findEntry(*s, key);
    if (i < 0)
        appendEntry(*s, key, value);
    else
        s->entries[i].value = value;
}

void IniFile::removeKey(const QString& section, const QString& key)
{
    if (Section* s = findSection(section)) {
        const qsizetype i = findEntry(*s, key);
        if (i >= 0) {
            s->entries.removeAt(i);
            s->byLowerKey.clear();
            for (qsizetype k = 0; k < s->entries.size(); ++k)
                s->byLowerKey.insert(s->entries[k].key.toLower(), k);
        }
    }
}

void IniFile::removeSection(const QString& section)
{
    const qsizetype i = m_sectionByLowerName.value(section.toLower(), -1);
    if (i < 0) return;
    m_sections.removeAt(i);
    m_sectionByLowerName.clear();
    for (qsizetype k = 0; k < m_sections.size(); ++k)
        m_sectionByLowerName.insert(m_sections[k].name.toLower(), k);
}

} // namespace kb
