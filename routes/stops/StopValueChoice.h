#pragma once

#include <QString>

namespace kb {

// The small screens that ask for one number for the selected clients:
// TFormResetStops ("Select a Stop Value") and TFormIncrementStops
// ("Increment/Decrement Stops").
struct StopValueChoice
{
    QString formName;
    QString caption;
    QString prompt;
    int minimum = 0;
    int maximum = 0;
    bool zeroAllowed = true;

    bool okEnabled(int value) const { return value >= minimum && value <= maximum && (zeroAllowed || value != 0); }

    static StopValueChoice resetStops()
    {
        return {QStringLiteral("TFormResetStops"), QStringLiteral("Select a Stop Value"),
                QStringLiteral("Set the Stop for the selected clients to"), 0, 9999, false};
    }
    static StopValueChoice incrementStops()
    {
        return {QStringLiteral("TFormIncrementStops"), QStringLiteral("Increment/Decrement Stops"),
                QStringLiteral("Increment the selected clients' Stops by"), -100, 100, true};
    }
};

} // namespace kb
