#include "fields/CardNumber.h"

#include <initializer_list>

namespace kb {

namespace {

struct Card
{
    const char* name;
    std::initializer_list<const char*> prefixes;
    std::initializer_list<int> lengths;
    bool checkDigit;
};

// In the order they are tried: a Switch number also starts with a Visa
// prefix, and is a Switch card when its length fits.
const Card cards[] = {
    {"enRoute", {"2014", "2149"}, {15}, false},
    {"Switch", {"4903", "4905", "4911", "4936", "564182", "633110", "6333", "6759"}, {16, 18, 19}, false},
    {"Solo", {"6334", "6767"}, {16, 18, 19}, false},
    {"Discover", {"6011", "65"}, {16}, false},
    {"MasterCard", {"51", "52", "53", "54", "55"}, {16}, true},
    {"Visa", {"4"}, {13, 16}, true},
    {"Amex", {"34", "37"}, {15}, true},
    {"Diners Club", {"300", "301", "302", "303", "304", "305", "36", "38"}, {14}, true},
    {"JCB", {"3"}, {16}, true},
    {"JCB", {"2131", "1800"}, {15}, true},
};

} // namespace

bool CardNumberCheck::luhn(const QString& digits)
{
    int sum = 0;
    bool twice = false;
    for (qsizetype i = digits.size() - 1; i >= 0; --i) {
        int d = digits[i].unicode() - u'0';
        if (twice) {
            d *= 2;
            if (d > 9) d -= 9;
        }
        sum += d;
        twice = !twice;
    }
    return sum % 10 == 0;
}

CardNumberCheck CardNumberCheck::check(const QString& entry)
{
    QString digits;
    for (QChar c : entry) {
        if (c == u' ') continue;
        if (c.unicode() < u'0' || c.unicode() > u'9') return {Result::Incomplete, {}};
        digits.append(c);
    }
    if (digits.isEmpty()) return {Result::Empty, {}};
    if (digits.size() < 13 || digits.size() > 19) return {Result::Incomplete, {}};
    for (const Card& card : cards) {
        bool prefix = false;
        for (const char* p : card.prefixes)
            prefix = prefix || digits.startsWith(QLatin1String(p));
        bool length = false;
        for (int n : card.lengths)
            length = length || digits.size() == n;
        if (!prefix || !length) continue;
        const QString name = QString::fromLatin1(card.name);
        if (card.checkDigit && !luhn(digits)) return {Result::BadCheckDigit, name};
        return {Result::Valid, name};
    }
    return {Result::Unknown, {}};
}

} // namespace kb
