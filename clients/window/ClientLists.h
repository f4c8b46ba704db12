#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace kb {

class ConfigRecord;
class Database;
class SettingsFile;
class UserInterface;

// One entry of a list of the client window: the value stored and the text shown.
struct ClientListEntry
{
    QVariant value;
    QString text;
};

// What PopulateCombos builds from the tables and Config: every list of the
// client window, the captions that Config gives, and the switches of the
// map page. Rebuilt at start-up, by "Refresh Lists" and after configuration.
struct ClientLists
{
    // By list name (ClientFieldInfo::list). For a check list, entry i is bit i.
    QHash<QString, QList<ClientListEntry>> lists;
    // Captions that replace a field's label, by field (USER_DEF1 ...).
    QHash<QString, QString> labels;
    // Delivery services as radio buttons (at most 10) or a drop-down.
    bool deliveryServiceAsRadio = true;
    // Captions of the five user-defined report commands.
    QStringList userReportCaptions;
    QString awareTitle; // the HIV_AWARE column of the relationship grid
    bool getMapEnabled = false;
    bool mapPointShown = false;
    QString postalFormat;
    // The Config fields hidden for everyone by the visibility tree, by the
    // tree's entry texts that are unchecked.
    QString visibleComponents;

    const QList<ClientListEntry>& list(const QString& name) const;
    // The text of a value in a list; empty when the list lacks it.
    QString textOf(const QString& list, const QVariant& value) const;

    // Builds the lists. The remembered entries of the free-text lists come
    // from the shared settings file.
    static ClientLists read(Database& db, const ConfigRecord& config, const SettingsFile& shared);
    // The lists whose entries users type and all users share.
    static const QStringList& historyLists();
    // Puts a typed entry first in its remembered list and saves the list in
    // the shared settings file; nothing for an empty text.
    void remember(const QString& list, const QString& entry, SettingsFile& shared);
};

} // namespace kb
