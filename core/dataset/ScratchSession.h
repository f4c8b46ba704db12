#pragma once

#include "store/Database.h"

#include <memory>

namespace kb {

// A second session on the same data, for scratch work beside a transaction
// of the main session: its statements are not part of that transaction,
// and its memory tables are its own. The main session's catalogue and clock
// are shared, so the main session must outlive it.
std::unique_ptr<Database> openScratchSession(Database& main);

} // namespace kb
