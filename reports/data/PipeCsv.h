#pragma once

#include <QTextStream>

namespace kb::reports {

class DataPipe;

// Writes a pipe's rows as the commands' CSV: a header line of field names,
// then one line per row, in the pipe's order.
void writePipeCsv(DataPipe& pipe, QTextStream& out);

} // namespace kb::reports
