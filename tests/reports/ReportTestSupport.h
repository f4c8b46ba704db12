#pragma once

#include "data/DataPipe.h"
#include "data/RowsPipe.h"
#include "engine/ReportLayout.h"
#include "model/ReportTemplate.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <ostream>
#include <vector>

// Texts in test failures as text.
QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }
QT_END_NAMESPACE

namespace kb::test {

// Reports draw with fonts, which need the GUI application (offscreen).
void ensureGuiApplication();

QString reportTestData(const QString& file);
QString builtInTemplatePath(const QString& file);

std::shared_ptr<reports::ReportTemplate> templateFrom(const QString& text);
// A pipe over CSV text: a header line, then the rows.
std::unique_ptr<reports::RowsPipe> pipeFrom(const QString& name, const QString& csv);

struct LayoutOptions
{
    std::vector<std::pair<QString, QVariant>> parameters;
    int start = 1;
};
reports::ReportDocument layoutOf(const QString& templateText, const std::vector<reports::DataPipe*>& pipes,
                                 const LayoutOptions& options = {});
// Every text of every page, pages separated by "--- page N ---" lines.
QStringList documentTexts(const reports::ReportDocument& document);

// Runs a program and gives its standard output; fails the test when it
// cannot be started or ends with an error.
QString runTool(const QString& program, const QStringList& arguments);

} // namespace kb::test
