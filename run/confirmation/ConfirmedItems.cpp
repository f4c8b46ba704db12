#include "confirmation/ConfirmedItems.h"

namespace kb {

bool needsConfirmation(const QString& confirmationRequired, bool dated)
{
    return confirmationRequired == QLatin1String("A") ||
           confirmationRequired == (dated ? QLatin1String("S") : QLatin1String("O"));
}

bool ConfirmedItems::allows(qint64 itemId, const QString& confirmationRequired, bool dated) const
{
    if (!needsConfirmation(confirmationRequired, dated)) return true;
    return (dated ? scheduled : ongoing).contains(itemId);
}

} // namespace kb
