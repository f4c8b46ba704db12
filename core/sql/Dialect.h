#pragma once

namespace kb {

// The stores behind the statement layer.
enum class Dialect { SQLite, PostgreSQL };

} // namespace kb
