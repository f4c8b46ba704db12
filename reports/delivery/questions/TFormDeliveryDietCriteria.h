#pragma once

#include "delivery/DietCheckList.h"

#include <QString>
#include <QStringList>

namespace kb {
class Database;
class SettingsFile;
} // namespace kb

namespace kb::reports {

// "Delivery Diet Criteria": which diets a "Selected Diet Restrictions"
// report lists, whether a delivery must have any or all of them, its sort
// order and its title. The sort order and the match are remembered in the
// section "FormDeliveryDietCriteria" of the per-user settings.
class TFormDeliveryDietCriteria
{
public:
    static QString caption() { return QStringLiteral("Delivery Diet Criteria"); }
    static QString section() { return QStringLiteral("FormDeliveryDietCriteria"); }
    static QStringList sortOrders();

    // Reads the diets ("DIET_DESC - DIET_CODE", by Diet_ID) and the settings.
    TFormDeliveryDietCriteria(Database& db, SettingsFile* settings);
    // Writes the settings.
    ~TFormDeliveryDietCriteria();
    TFormDeliveryDietCriteria(const TFormDeliveryDietCriteria&) = delete;
    TFormDeliveryDietCriteria& operator=(const TFormDeliveryDietCriteria&) = delete;

    DietCheckList& diets() { return m_diets; }
    const DietCheckList& diets() const { return m_diets; }
    // The descriptions of the diets, in the list's order.
    const QStringList& descriptions() const { return m_diets.descriptions(); }
    // The codes, for choosing diets by code.
    const QStringList& codes() const { return m_diets.codes(); }
    // Checks the diet of this code (without regard to case); false when
    // there is none.
    bool checkCode(const QString& code) { return m_diets.checkCode(code); }

    bool matchAll() const { return m_matchAll; }
    void setMatchAll(bool all) { m_matchAll = all; }
    int sortOrder() const { return m_sortOrder; }
    void setSortOrder(int index);
    const QString& title() const { return m_title; }
    void setTitle(const QString& title) { m_title = title; }

    // OK is enabled while at least one diet is checked.
    bool okEnabled() const { return m_diets.checkedCount() > 0; }
    // Bit i for checked entry i.
    qint64 dietMask() const { return m_diets.mask(); }
    // The report's title line: the checked diets' descriptions, each with a
    // blank after it, "One or more of: " first when any of several will do.
    QString reportTitle() const;

private:
    SettingsFile* m_settings;
    DietCheckList m_diets;
    bool m_matchAll = false;
    int m_sortOrder = 0;
    QString m_title;
};

} // namespace kb::reports
