#pragma once

namespace kb::demo {

struct DemoContext;

// The people around the clients and the lists they are on: outside
// individuals (relatives, physicians, case workers, paid caregivers)
// related to a share of the clients under the agency's configured
// relationship names, a few of them receiving the client's bill, and the
// agency's mailing and interest lists with their members. Drawn after
// everything else, so the rest of the agency is the same as without them.
void writeRelations(DemoContext& ctx);

} // namespace kb::demo
