#pragma once

#include <QList>
#include <QString>
#include <QVariant>

namespace kb {

class Database;
class UserInterface;

// The diet combinations that clients have and no cold bag rule covers yet,
// offered as a check list; the checked ones become Cold_Bag_Usage rows
// (without a bag) for the user to complete.
class TFormDietCombinations
{
public:
    struct Combination
    {
        QVariant mask; // as the clients hold it; may be null
        QString words;
        bool checked = false;
    };

    TFormDietCombinations(Database& db, UserInterface& ui);

    const QString& caption() const { return m_caption; }
    const QList<Combination>& combinations() const { return m_combinations; }
    void setChecked(int index, bool checked);

    // Appends one row for each checked combination (a null mask as 0) and
    // tells the user it is done.
    void createChecked();

private:
    Database& m_db;
    UserInterface& m_ui;
    QString m_caption;
    QList<Combination> m_combinations;
};

} // namespace kb
