#pragma once

namespace kb::demo {

struct DemoContext;

// Gives every client a default route and stop. Driving routes are sectors
// around the city centre with about the same number of clients each, their
// stops numbered in the order a driver would reach them from the kitchen;
// the members of a household share a whole stop number (12.1, 12.2).
// Organisations and a few clients eat at the congregate sites or pick up at
// the kitchen. Some clients take another route on one weekday.
void assignRoutes(DemoContext& ctx);

} // namespace kb::demo
