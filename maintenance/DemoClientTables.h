#pragma once

namespace kb::demo {

struct DemoContext;

// Writes the clients and what hangs on them: households and their members,
// funding uses, own standing items and the history of their records.
void writeClients(DemoContext& ctx);

} // namespace kb::demo
