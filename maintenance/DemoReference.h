#pragma once

namespace kb::demo {

struct DemoContext;

// The agency's own code tables: services with their default item lists,
// diets, items, locations, routes, towns, funding sources, cuisines, cold
// bags, event codes and staff. Made first; written with the settings.
void makeReference(DemoContext& ctx);
void writeReference(DemoContext& ctx);

} // namespace kb::demo
