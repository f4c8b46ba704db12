#pragma once

#include <QString>

namespace kb {

// The check of a payment card number as typed into a client's record.
// Blanks are dropped; what is left must be digits only, at least 13 of
// them, with the prefix and length of a known card: enRoute, Switch, Solo,
// Discover, MasterCard, Visa, Amex, Diners Club or JCB, tried in that
// order. All but the first four must also pass the Luhn check digit. The
// check only marks the field: the record is saved whatever the result.
struct CardNumberCheck
{
    enum class Result {
        Empty,      // nothing typed: nothing to check
        Incomplete, // not 13 to 19 digits: the entry is not a whole number
        Unknown,    // no card has that prefix and length
        BadCheckDigit,
        Valid,
    };

    Result result = Result::Incomplete;
    QString card; // the card's name when its prefix and length fit

    // Whether the field is marked: anything but a valid number.
    bool marked() const { return result != Result::Valid && result != Result::Empty; }

    static CardNumberCheck check(const QString& entry);
    // The Luhn check over a string of digits.
    static bool luhn(const QString& digits);
};

} // namespace kb
