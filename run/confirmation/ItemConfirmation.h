#pragma once

namespace kb {

class TFormConfirmDeliveryItems;

// Who answers "Confirm Delivery Items" at a save: the dialog on a screen, a
// given answer when a run is saved headless or in a test.
class ItemConfirmation
{
public:
    virtual ~ItemConfirmation() = default;
    // Lets the user check lines of the form; true for OK, false for Cancel.
    virtual bool confirm(TFormConfirmDeliveryItems& form) = 0;
};

} // namespace kb
