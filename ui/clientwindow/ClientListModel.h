#pragma once

#include <QAbstractTableModel>
#include <QStringList>

#include <vector>

namespace kb {
class DataSet;
}

namespace kb::ui {

// The client list beside the client window's pages: a model straight over
// the shared Clients set, reading only the rows the view paints, so the list
// stays quick with tens of thousands of clients. Row r is the set's row at
// position r among those its filter lets through.
class ClientListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct Column
    {
        QString title;
        QStringList fields; // joined by ", " (names) or " " when shown
        QString index;      // the Clients index that sorts by it; empty for none
        int characters;     // a typical width, in characters
    };

    explicit ClientListModel(DataSet& clients, QObject* parent = nullptr);

    static const std::vector<Column>& columns();
    // The column sorted by an index, or -1.
    static int columnOfIndex(const QString& index);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // The rows came, went or changed order: everything is read again.
    void reload();
    // The values of one row changed.
    void rowChanged(int row);

private:
    DataSet& m_clients;
    std::vector<std::vector<int>> m_fieldIndexes; // per column, resolved at reload
    int m_rows = 0;
};

} // namespace kb::ui
