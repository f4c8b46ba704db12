#pragma once

namespace kb::demo {

struct DemoContext;
struct DemoAddress;

// The agency's clients in memory: who they are, where they live, their
// households, status and dates, service, weekdays and frequency, diets,
// funding and their own standing items. Routes come after (DemoRouting).
void makeClients(DemoContext& ctx);

// A street address in one of the agency's towns, scattered around the town
// centre and never further than about 15 km from the city centre.
DemoAddress randomAddress(DemoContext& ctx);

} // namespace kb::demo
