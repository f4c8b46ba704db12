#pragma once

#include "confirmation/ItemConfirmation.h"

#include <QList>
#include <QString>

#include <optional>

namespace kb {

// An answer decided beforehand: every item confirmed, none (as Cancel would),
// or the items of a list. An item of the list that the dialog does not offer
// is refused, so that a mistyped number cannot pass unnoticed.
class GivenItemConfirmation final : public ItemConfirmation
{
public:
    static GivenItemConfirmation all();
    static GivenItemConfirmation none();
    static GivenItemConfirmation items(QList<qint64> itemIds);
    // "all", "none" (without regard to case) or item numbers separated by
    // commas; nothing for any other text.
    static std::optional<GivenItemConfirmation> fromText(const QString& text);

    bool confirm(TFormConfirmDeliveryItems& form) override;

private:
    enum class Mode { All, None, Listed };
    GivenItemConfirmation(Mode mode, QList<qint64> itemIds) : m_mode(mode), m_itemIds(std::move(itemIds)) {}

    Mode m_mode;
    QList<qint64> m_itemIds;
};

} // namespace kb
