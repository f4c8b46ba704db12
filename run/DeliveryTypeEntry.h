#pragma once

#include <QChar>
#include <QList>
#include <QString>

namespace kb {

// One entry of the run screen's delivery type list: its letter (by which
// other screens choose it), its text and the selections it runs.
struct DeliveryTypeEntry
{
    QChar letter;
    QString text;
    bool ongoing;
    bool episodic;
    bool scheduled;
};

// The list in its order: A, O, E, S, B.
const QList<DeliveryTypeEntry>& deliveryTypeEntries();
// The position of a letter in the list, -1 when no entry has it.
int deliveryTypeIndex(QChar letter);

} // namespace kb
