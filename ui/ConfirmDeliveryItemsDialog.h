#pragma once

#include "confirmation/ItemConfirmation.h"

#include <QPointer>
#include <QWidget>

namespace kb::ui {

// The answer of a person at a screen: "Confirm Delivery Items" shown
// modally over the screen that saves.
class ConfirmDeliveryItemsDialog final : public ItemConfirmation
{
public:
    explicit ConfirmDeliveryItemsDialog(QWidget* parent = nullptr) : m_parent(parent) {}
    bool confirm(TFormConfirmDeliveryItems& form) override;

private:
    QPointer<QWidget> m_parent;
};

} // namespace kb::ui
