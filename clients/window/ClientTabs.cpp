#include "window/ClientTabs.h"

#include "settings/UserPreferences.h"
#include "window/ClientPages.h"

#include <algorithm>

namespace kb {

namespace {

constexpr int CaptionWidth = 20;

} // namespace

int ClientTabs::startPageOf(const QList<int>& shown, int dtab)
{
    if (dtab > 0 && shown.contains(dtab)) return dtab;
    if (shown.contains(client_page::BiographicInfo)) return client_page::BiographicInfo;
    return shown.isEmpty() ? client_page::BiographicInfo : *std::max_element(shown.begin(), shown.end());
}

ClientTabs ClientTabs::make(bool hasStaffRow, qint64 visibleTabs, int dtab, bool conserve)
{
    ClientTabs tabs;
    QList<bool> visible(client_page::Count, true);
    if (hasStaffRow && visibleTabs != 0) {
        visible.fill(false);
        const QList<UserPreferences::TabPage>& items = UserPreferences::tabPages();
        for (qsizetype bit = 0; bit < items.size(); ++bit)
            if (visibleTabs & (qint64(1) << bit)) visible[items[bit].pageNumber] = true;
    }
    for (int page = 0; page < client_page::Count; ++page)
        if (visible[page]) tabs.shown.append(page);
    for (qsizetype i = 0; i < tabs.shown.size(); ++i) {
        const int page = tabs.shown[i];
        const QString caption = QStringLiteral("&%1. %2")
                                    .arg(i + 1)
                                    .arg(clientPage(page).caption)
                                    .leftJustified(CaptionWidth, u' ', true);
        tabs.captions.insert(page, caption);
    }
    tabs.startPage = startPageOf(tabs.shown, hasStaffRow ? dtab : 0);
    tabs.conserveResources = hasStaffRow && conserve;
    return tabs;
}

} // namespace kb
