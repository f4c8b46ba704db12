#pragma once

#include "engine/ReportDocument.h"

#include <QDateTime>
#include <QVariant>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace kb {
class Database;
}

namespace kb::reports {

class DataPipe;

// What a run of a template is given: the program's pipes and parameters,
// the time it runs at, and, for templates that bring their own data, the
// database their statements run on.
struct ReportInputs
{
    std::vector<DataPipe*> pipes;
    std::vector<std::pair<QString, QVariant>> parameters;
    QDateTime now;
    Database* database = nullptr;
    // The first label to print on a partly used sheet, counted from 1
    // across the first row.
    int labelStartPosition = 1;
    // Called with 0 to 100 as the report's rows are laid out.
    std::function<void(int)> progress;
};

// The longest report a run makes; a template or data that would print
// more is refused rather than filling the memory.
inline constexpr int MaxPages = 50000;

// Lays the report out: binds the template's names to the pipes and
// parameters, walks the rows into bands, and breaks them into pages.
// Throws TemplateError for a name the inputs do not have or a misplaced
// aggregate (with the template line), MessageError for data the report
// cannot print.
ReportDocument layoutReport(std::shared_ptr<ReportTemplate> report, const ReportInputs& inputs);

// The text a late text prints on its page.
QString resolveDeferred(const ReportDocument& document, const Page& page, const DeferredText& text);

// Every text of a page in the order it was laid out, late texts resolved:
// what tests and text exports read.
QStringList pageTexts(const ReportDocument& document, int page);

} // namespace kb::reports
