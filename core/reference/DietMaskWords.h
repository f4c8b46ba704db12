#pragma once

#include <QString>
#include <QStringList>

namespace kb {

class Database;

// A whole diet mask in words: the codes of its diets, lowest bit first,
// joined by " / " (bit i is the Diet row with DIET_ID i + 1). A mask of 0
// has no words. The codes are read once, when the object is made.
class DietMaskWords
{
public:
    explicit DietMaskWords(Database& db);
    QString words(qint64 mask) const;

private:
    QStringList m_codes; // by bit
};

} // namespace kb
