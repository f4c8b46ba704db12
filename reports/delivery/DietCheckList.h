#pragma once

#include "delivery/ReportChoices.h"

namespace kb {
class Database;
}

namespace kb::reports {

// The diets as the report dialogs offer them to check: "DIET_DESC -
// DIET_CODE" in the order of Diet_ID, so that entry i is bit i of a diet
// mask.
class DietCheckList : public CheckedList
{
public:
    void read(Database& db);

    const QStringList& descriptions() const { return m_descriptions; }
    const QStringList& codes() const { return m_codes; }
    // Checks the diet of this code (without regard to case); false when
    // there is none.
    bool checkCode(const QString& code);

private:
    QStringList m_descriptions;
    QStringList m_codes;
};

} // namespace kb::reports
