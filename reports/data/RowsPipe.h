#pragma once

#include "data/DataPipe.h"
#include "store/ResultSet.h"

#include <QHash>

#include <memory>
#include <utility>

namespace kb::reports {

// A pipe over rows held in memory: a statement's result, a CSV file, rows
// made by the program.
//
// Linked to a master, it shows only the rows whose link fields hold the
// master's values, found through an index made once, so that a detail of
// a long report costs no scan per master row.
class RowsPipe final : public DataPipe
{
public:
    RowsPipe(QString name, ResultSet rows);
    RowsPipe(QString name, std::shared_ptr<const ResultSet> rows);

    // Pairs of (field of this pipe, field of the master). Throws
    // MessageError when either pipe lacks a field.
    void linkTo(DataPipe& master, const std::vector<std::pair<QString, QString>>& fields);

    QStringList fieldNames() const override;
    const ResultSet& allRows() const { return *m_rows; }

protected:
    void reload() override;
    qsizetype rows() const override;
    void moveTo(qsizetype) override {}
    QVariant fieldValue(qsizetype row, int field) const override;

private:
    std::shared_ptr<const ResultSet> m_rows;
    bool m_linked = false;
    std::vector<int> m_keyFields;
    std::vector<int> m_masterFields;
    QHash<QString, std::vector<qsizetype>> m_index;
    bool m_indexed = false;
    const std::vector<qsizetype>* m_view = nullptr;
};

// The text two link values share when they are equal: numbers compare by
// value whatever their type (an Int field links with a Float one), texts as
// they stand.
QString linkKeyText(const QVariant& value);

} // namespace kb::reports
