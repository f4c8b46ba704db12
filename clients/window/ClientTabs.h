#pragma once

#include <QHash>
#include <QList>
#include <QString>

namespace kb {

// The pages a user sees (SetTabVisibility): the checked pages of the user's
// Staff.Visible_Tabs, or all of them when the user has no row or checked
// none; each shown page captioned "&" + its ordinal among the shown ones +
// ". " + its name, padded with blanks and cut to 20 characters; and the page
// the window starts on.
struct ClientTabs
{
    QList<int> shown; // page numbers, in order
    QHash<int, QString> captions;
    int startPage = 0;
    bool conserveResources = false;

    bool isShown(int page) const { return shown.contains(page); }

    // visibleTabs: bit n for item n of the user preferences' tab list;
    // dtab: Staff.DTab; conserve: Staff.Conserve_Resources is "Y".
    static ClientTabs make(bool hasStaffRow, qint64 visibleTabs, int dtab, bool conserve);
    // The start page: DTab when it is above 0 and shown, else page 8 when
    // shown, else the highest shown page.
    static int startPageOf(const QList<int>& shown, int dtab);
};

} // namespace kb
