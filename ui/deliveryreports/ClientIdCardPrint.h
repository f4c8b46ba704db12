#pragma once

class QWidget;

namespace kb {
class TDataModule1;
class UserInterface;
} // namespace kb

namespace kb::ui {

// "Client ID Card": prints the card of the person on a label printer,
// through the print dialog, on the stock of the user's settings. What goes
// wrong is shown; nothing is thrown.
void printClientIdCard(TDataModule1& data, UserInterface& ui, QWidget* parent, int personId);

// "Label Stock": the stock the delivery labels and the client's card print
// on, kept in the user's settings.
void openLabelStockSettings(TDataModule1& data, QWidget* parent);

} // namespace kb::ui
