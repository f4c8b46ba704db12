#include "delivery/ReportChoices.h"

namespace kb::reports {

void CheckedList::setEntries(const QStringList& list)
{
    entries = list;
    checked.assign(size_t(list.size()), false);
}

void CheckedList::setChecked(int index, bool on)
{
    if (index >= 0 && index < int(checked.size())) checked[size_t(index)] = on;
}

void CheckedList::setAll(bool on)
{
    checked.assign(size_t(entries.size()), on);
}

int CheckedList::checkedCount() const
{
    int n = 0;
    for (bool c : checked)
        n += c ? 1 : 0;
    return n;
}

QStringList CheckedList::checkedEntries() const
{
    QStringList list;
    for (int i = 0; i < int(entries.size()); ++i) {
        if (isChecked(i)) list << entries[i];
    }
    return list;
}

qint64 CheckedList::mask() const
{
    qint64 m = 0;
    for (int i = 0; i < int(checked.size()) && i < 31; ++i) {
        if (checked[size_t(i)]) m |= qint64(1) << i;
    }
    return m;
}

void CheckedList::setMask(qint64 mask)
{
    for (int i = 0; i < int(checked.size()); ++i)
        checked[size_t(i)] = i < 31 && (mask >> i & 1) != 0;
}

std::vector<QDate> DeliveryReportChoices::separateDates() const
{
    std::vector<QDate> list;
    for (const QDate& d : dates) {
        if (!d.isValid() || d.year() < 1900) break;
        list.push_back(d);
    }
    return list;
}

QString DeliveryReportChoices::servicesText() const
{
    return services.checkedEntries().join(QStringLiteral(", "));
}

QString DeliveryReportChoices::routesText() const
{
    QStringList quoted;
    for (const QString& entry : routes.checkedEntries())
        quoted << u'\'' + entry + u'\'';
    return quoted.join(u',');
}

} // namespace kb::reports
