#pragma once

namespace kb {

// The commands of "Order Stops within Routes".
enum class OrderRoutesAction {
    Retrieve,
    MoveUp,
    MoveDown,
    ResetStops,
    ResetRoutes,
    IncrementStops,
    SendToMapping,
    PrintListing,
    ExportData,
    ViewClientAddressInfo,
    Optimise,
};

inline constexpr int orderRoutesActionCount = int(OrderRoutesAction::Optimise) + 1;

} // namespace kb
