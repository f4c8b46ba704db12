#include "dataset/ScratchSession.h"

#include "store/DbError.h"
#include "store/PostgresStore.h"
#include "store/SqliteStore.h"

#include <libpq-fe.h>

namespace kb {

std::unique_ptr<Database> openScratchSession(Database& main)
{
    if (auto* file = dynamic_cast<SqliteStore*>(&main.store()))
        return std::make_unique<Database>(std::make_unique<SqliteStore>(file->path(), false), main.catalogue(),
                                          main.clock());
    auto* server = dynamic_cast<PostgresStore*>(&main.store());
    if (!server)
        throw DbError(DbErrorCode::Other, QStringLiteral("This store cannot open a second session"));
    // The same server, database and schema as the main session.
    PGconn* conn = server->handle();
    ServerAddress address;
    address.host = QString::fromUtf8(PQhost(conn));
    address.port = QByteArray(PQport(conn)).toInt();
    address.database = QString::fromUtf8(PQdb(conn));
    auto schema = server->prepare(QStringLiteral("SELECT current_schema()"));
    schema->execute();
    const QString current = schema->next() ? schema->value(0, FieldType::String).toString() : QString();
    if (!current.isEmpty() && current != QLatin1String("public"))
        address.schema = current;
    return std::make_unique<Database>(std::make_unique<PostgresStore>(address), main.catalogue(), main.clock());
}

} // namespace kb
