#include "ReportTestSupport.h"

#include "data/CsvRows.h"
#include "template/TemplateReader.h"

#include <QDir>
#include <QGuiApplication>
#include <QProcess>

#include <gtest/gtest.h>

namespace kb::test {

void ensureGuiApplication()
{
    static int argc = 1;
    static char name[] = "reports_tests";
    static char* argv[] = {name, nullptr};
    if (!QCoreApplication::instance())
        new QGuiApplication(argc, argv);
}

QString reportTestData(const QString& file) { return QDir(QStringLiteral(KB_REPORT_TEST_DATA)).filePath(file); }

QString builtInTemplatePath(const QString& file) { return QDir(QStringLiteral(KB_REPORT_TEMPLATES)).filePath(file); }

std::shared_ptr<reports::ReportTemplate> templateFrom(const QString& text)
{
    return std::make_shared<reports::ReportTemplate>(reports::TemplateReader::readText(text, QStringLiteral("test.rtm")));
}

std::unique_ptr<reports::RowsPipe> pipeFrom(const QString& name, const QString& csv)
{
    return std::make_unique<reports::RowsPipe>(name, reports::readCsvText(csv, name));
}

reports::ReportDocument layoutOf(const QString& templateText, const std::vector<reports::DataPipe*>& pipes,
                                 const LayoutOptions& options)
{
    ensureGuiApplication();
    reports::ReportInputs inputs;
    inputs.pipes = pipes;
    inputs.parameters = options.parameters;
    inputs.now = QDateTime(QDate(2024, 3, 6), QTime(10, 30));
    inputs.labelStartPosition = options.start;
    return reports::layoutReport(templateFrom(templateText), inputs);
}

QStringList documentTexts(const reports::ReportDocument& document)
{
    QStringList texts;
    for (int p = 0; p < document.pageCount(); ++p) {
        texts << QStringLiteral("--- page %1 ---").arg(p + 1);
        texts << reports::pageTexts(document, p);
    }
    return texts;
}

QString runTool(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForStarted(10000)) {
        ADD_FAILURE() << program.toStdString() << " could not be started; scripts/install-deps.sh installs it";
        return {};
    }
    process.waitForFinished(60000);
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        ADD_FAILURE() << program.toStdString() << " failed: " << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace kb::test
