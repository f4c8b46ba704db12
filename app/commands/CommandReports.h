#pragma once

#include "delivery/DeliveryReportContext.h"

#include <QString>

namespace kb {
class TDataModule1;
class UserInterface;
namespace reports {
class ReportHolder;
}
} // namespace kb

namespace kb::app {

struct CommandContext;

// What a command's report reads: the session's data and clock, and the
// templates of the data directory (the built-in ones on a server).
reports::DeliveryReportContext commandReportContext(TDataModule1& data, UserInterface& ui);

// Prints a prepared report to the PDF file its holder writes to, without a
// dialog, lets its data go and says where it went.
void printToPdf(reports::ReportHolder& holder, CommandContext& context, const QString& pdf);

} // namespace kb::app
