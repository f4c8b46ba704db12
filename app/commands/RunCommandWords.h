#pragma once

#include "CommandLine.h"

#include "confirmation/GivenItemConfirmation.h"

#include <QChar>
#include <QCommandLineOption>

namespace kb {
class TFormRunPrepare;
}

namespace kb::app {

// What the run commands (prepare, save) read alike: the delivery type and
// the items confirmed.

// --type A|O|E|S|B, A when not given.
QCommandLineOption deliveryTypeOption();
QChar deliveryTypeLetter(const CommandArgs& args);

// --confirm all|none|ID,..., with what it means for the command.
QCommandLineOption confirmOption(const QString& description);
// none when not given; a UsageError for any other word.
GivenItemConfirmation itemConfirmation(const CommandArgs& args);

// Shows the run screen's presenter and prepares the date for the delivery
// type letter, as a user at the screen would.
void prepareRun(TFormRunPrepare& form, const QDate& date, QChar letter);

} // namespace kb::app
