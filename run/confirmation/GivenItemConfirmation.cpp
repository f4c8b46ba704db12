#include "confirmation/GivenItemConfirmation.h"

#include "MessageError.h"
#include "confirmation/TFormConfirmDeliveryItems.h"

namespace kb {

GivenItemConfirmation GivenItemConfirmation::all()
{
    return {Mode::All, {}};
}

GivenItemConfirmation GivenItemConfirmation::none()
{
    return {Mode::None, {}};
}

GivenItemConfirmation GivenItemConfirmation::items(QList<qint64> itemIds)
{
    return {Mode::Listed, std::move(itemIds)};
}

std::optional<GivenItemConfirmation> GivenItemConfirmation::fromText(const QString& text)
{
    const QString word = text.trimmed();
    if (word.compare(QLatin1String("all"), Qt::CaseInsensitive) == 0) return all();
    if (word.compare(QLatin1String("none"), Qt::CaseInsensitive) == 0) return none();
    QList<qint64> ids;
    for (const QString& part : word.split(u',')) {
        bool ok = false;
        const qint64 id = part.trimmed().toLongLong(&ok);
        if (!ok || id <= 0) return std::nullopt;
        ids.append(id);
    }
    return items(ids);
}

bool GivenItemConfirmation::confirm(TFormConfirmDeliveryItems& form)
{
    switch (m_mode) {
    case Mode::None:
        return false;
    case Mode::All:
        form.ActionCheckAll();
        break;
    case Mode::Listed:
        for (qint64 id : m_itemIds) {
            const qsizetype line = form.lineOfItem(id);
            if (line < 0)
                throw MessageError(
                    QStringLiteral("Item %1 does not need confirmation for this run.").arg(id));
            form.setChecked(line, true);
        }
        break;
    }
    return form.okEnabled();
}

} // namespace kb
