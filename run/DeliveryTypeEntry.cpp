#include "DeliveryTypeEntry.h"

namespace kb {

const QList<DeliveryTypeEntry>& deliveryTypeEntries()
{
    static const QList<DeliveryTypeEntry> entries = {
        {u'A', QStringLiteral("All Delivery Types"), true, true, true},
        {u'O', QStringLiteral("Ongoing Only"), true, false, false},
        {u'E', QStringLiteral("Episodic Only"), false, true, false},
        {u'S', QStringLiteral("Scheduled Only"), false, false, true},
        {u'B', QStringLiteral("Episodic and Scheduled"), false, true, true},
    };
    return entries;
}

int deliveryTypeIndex(QChar letter)
{
    const QList<DeliveryTypeEntry>& entries = deliveryTypeEntries();
    for (int i = 0; i < entries.size(); ++i)
        if (entries[i].letter == letter.toUpper())
            return i;
    return -1;
}

} // namespace kb
