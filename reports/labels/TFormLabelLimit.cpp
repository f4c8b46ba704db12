#include "labels/TFormLabelLimit.h"

#include "settings/SettingsFile.h"

namespace kb::reports {

TFormLabelLimit::TFormLabelLimit(Database& db, SettingsFile* settings) : m_settings(settings)
{
    m_diets.read(db);
}

TFormLabelLimit::~TFormLabelLimit()
{
    if (!m_settings) return;
    m_settings->writeString(section(), QStringLiteral("LabelSortOrder"), QString::number(m_sort));
    m_settings->writeString(section(), QStringLiteral("LabelLimit"), QString::number(m_limit));
}

void TFormLabelLimit::FormShow()
{
    if (!m_settings) {
        setLimitIndex(0);
        return;
    }
    setSortOrder(m_settings->readInteger(section(), QStringLiteral("LabelSortOrder"), 0));
    setLimitIndex(m_settings->readInteger(section(), QStringLiteral("LabelLimit"), 0));
}

void TFormLabelLimit::setLimitIndex(int index)
{
    m_limit = index >= 0 && index < int(LabelRules::limitEntries().size()) ? index : 0;
    m_match = dietsEnabled() ? Match::Any : Match::None;
}

void TFormLabelLimit::setSortOrder(int index)
{
    m_sort = index >= 0 && index < int(LabelRules::sortOrders().size()) ? index : 0;
}

LabelSelection TFormLabelLimit::selection() const
{
    LabelSelection s;
    s.cLabelLimit = LabelRules::ruleOf(m_limit);
    s.nLabelDiet = dietsEnabled() ? m_diets.mask() : 0;
    s.lFilterAll = m_match == Match::All;
    s.sortOrder = m_sort;
    return s;
}

LabelSelection TFormLabelLimit::cancelled() const
{
    LabelSelection s;
    s.sortOrder = m_sort;
    return s;
}

} // namespace kb::reports
