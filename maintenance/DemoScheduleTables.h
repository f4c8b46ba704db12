#pragma once

namespace kb::demo {

struct DemoContext;

// Writes suspensions, alternate addresses and dated deliveries with their
// own item lines.
void writeSchedules(DemoContext& ctx);

} // namespace kb::demo
