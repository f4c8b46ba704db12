#pragma once

#include <QString>
#include <QStringList>

namespace kb {
class SettingsFile;
}

namespace kb::reports {

// The label stock each workstation prints on, kept in the section
// "LabelStock" of the per-user settings: "Labels" for the three delivery
// label reports and "ClientIDCard" for the client's card. A value is a
// name of LabelStock's catalogue; empty (or a name the catalogue does not
// know) prints on the stock the template is laid out for.
class LabelStockSettings
{
public:
    static QString section() { return QStringLiteral("LabelStock"); }
    static QString labelsKey() { return QStringLiteral("Labels"); }
    static QString cardKey() { return QStringLiteral("ClientIDCard"); }

    // The choices of a stock list: first "As laid out in the template", then
    // each stock of the catalogue with its description.
    static QStringList entries();
    // The stock name of a list index; empty for the first entry.
    static QString stockAt(int index);
    // The list index of a stock name; 0 for empty or unknown.
    static int indexOf(const QString& stock);

    // The stock of the key; empty without settings.
    static QString read(const SettingsFile* settings, const QString& key);
    static void write(SettingsFile* settings, const QString& key, const QString& stock);
};

} // namespace kb::reports
