#include "data/PipeCsv.h"

#include "Csv.h"
#include "data/DataPipe.h"

namespace kb::reports {

void writePipeCsv(DataPipe& pipe, QTextStream& out)
{
    const QStringList names = pipe.fieldNames();
    for (qsizetype c = 0; c < names.size(); ++c)
        out << (c ? "," : "") << csvField(names[c]);
    out << '\n';
    const qsizetype rows = pipe.rowCount();
    for (qsizetype r = 0; r < rows; ++r) {
        pipe.seek(r);
        for (int c = 0; c < names.size(); ++c) {
            const QVariant v = pipe.value(c);
            const QString text = csvText(v);
            if (c)
                out << ',';
            // An empty text that is not null is written quoted, as every
            // command does, so that reading it back tells the two apart.
            out << (text.isEmpty() && !v.isNull() && v.isValid() ? QStringLiteral("\"\"") : csvField(text));
        }
        out << '\n';
    }
}

} // namespace kb::reports
