#pragma once

#include "window/ClientLists.h"

#include <QHash>
#include <QSet>
#include <QString>

namespace kb {

// What SetControlsState decides for the current row: which fields, groups
// and commands are enabled or shown, which buttons are bold because there
// is something behind them, the texts that follow the row, and the pop-up
// note. Controls not named keep their default (enabled, shown).
struct ClientControls
{
    QHash<QString, bool> enabled;  // by field name, group caption or command id
    QHash<QString, bool> visible;  // by group caption or command id
    QSet<QString> bold;            // command ids
    QHash<QString, QString> texts; // command captions that depend on the row or the level
    QSet<QString> marked;          // fields whose entry failed its check (the card number)

    QString ageText;            // "(" + whole years + ")", empty without a birth date
    QString socialSecurityText; // masked unless the row is being edited
    QList<ClientListEntry> statusChoices;
    bool popUpShown = false;
    QString popUpNote;

    // The alternate address in effect today: its RecordID (0 for none) and
    // the caption of its directions tab.
    qint64 alternateRecordId = 0;
    QString alternateDirectionsCaption;

    // The row the state was set for (its RecordID); -1 before the first.
    qint64 recordId = -1;

    bool isEnabled(const QString& id) const { return enabled.value(id, true); }
    bool isVisible(const QString& id) const { return visible.value(id, true); }
};

} // namespace kb
