#include "FuzzTargets.h"

#include "catalogue/Catalogue.h"
#include "settings/IniFile.h"
#include "sql/Parser.h"
#include "sql/Translator.h"
#include "store/DbError.h"

#include "RoutingError.h"
#include "TsplibReader.h"

#include <QString>

#include <cstdlib>

namespace kb::fuzz {

namespace {

// The catalogue's tables, and one memory table with a column of each kind.
class FuzzSchema final : public sql::SchemaLookup
{
public:
    FuzzSchema() : m_memory(QStringLiteral("Work"))
    {
        m_memory.str("Name", 20).integer("Number").flt("Amount").currency("Price").boolean("Flag").date("Day").datetime(
            "Stamp");
    }
    const TableDef* persistentTable(QStringView name) const override { return Catalogue::standard().table(name); }
    const TableDef* memoryTable(QStringView name) const override
    {
        return name.compare(m_memory.name(), Qt::CaseInsensitive) == 0 ? &m_memory : nullptr;
    }

private:
    TableDef m_memory;
};

} // namespace

void statementText(const std::uint8_t* data, std::size_t size)
{
    static const FuzzSchema schema;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    try {
        for (const sql::ParsedStatement& statement : sql::parseStatements(text)) {
            for (const Dialect dialect : {Dialect::SQLite, Dialect::PostgreSQL}) {
                try {
                    sql::translate(statement, dialect, schema);
                } catch (const DbError&) {
                    // A statement the stores cannot take, told in words.
                }
            }
        }
    } catch (const DbError&) {
        // A text the dialect cannot read, told in words.
    }
}

void tsplibFile(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    try {
        routes::TsplibReader::parse(text, QStringLiteral("fuzz.tsp"));
    } catch (const routes::RoutingError&) {
        // A file that does not add up, told in words.
    }
}

void settingsFile(const std::uint8_t* data, std::size_t size)
{
    const IniFile first = IniFile::parse(QByteArrayView(reinterpret_cast<const char*>(data), qsizetype(size)));
    const IniFile again = IniFile::parse(first.serialize());
    // What was read is what the next save writes and the next start reads.
    for (const QString& section : first.sections())
        for (const QString& key : first.keys(section))
            if (again.value(section, key) != first.value(section, key))
                std::abort();
}

} // namespace kb::fuzz
