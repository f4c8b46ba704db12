#pragma once

namespace kb::demo {

struct DemoContext;

// What changes a client's deliveries on given dates: suspensions (past,
// current and ahead, some shared by a household), alternate addresses of
// each kind, and dated deliveries: episodic clients' dates and ongoing
// clients' scheduled extras, some with items of their own.
void makeSchedules(DemoContext& ctx);

} // namespace kb::demo
