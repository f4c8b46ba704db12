#pragma once

class QWidget;

namespace kb {
class TDataModule1;
class TFormOrderRoutes;
class UserInterface;
} // namespace kb

namespace kb::ui {

// Gives "Order Stops within Routes" its "Print Listing": the listing laid out
// by the report engine with RouteList.rtm and shown in the report preview,
// from which it prints.
void connectRouteListPrinter(TFormOrderRoutes& presenter, TDataModule1& data, UserInterface& ui,
                             QWidget* parent);

} // namespace kb::ui
