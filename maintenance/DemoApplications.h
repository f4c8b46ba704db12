#pragma once

namespace kb::demo {

struct DemoContext;

// The paperwork of the clients' services and what they are charged: the
// intake documents and conditions of each delivery service, every served
// client's application with its documents and conditions and their
// history, some clients' own reimbursement rates, and some pledges.
void writeApplications(DemoContext& ctx);

} // namespace kb::demo
