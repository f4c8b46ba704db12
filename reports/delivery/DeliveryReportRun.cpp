#include "delivery/DeliveryReportRun.h"

#include "delivery/DeliveryReportList.h"

#include "MessageError.h"
#include "ReportHolder.h"
#include "UserInterface.h"
#include "model/LabelStock.h"
#include "template/TemplateError.h"
#include "template/TemplateRegistry.h"

#include <QDir>
#include <QFileInfo>

namespace kb::reports {

DeliveryReportRun::DeliveryReportRun(const DeliveryReportContext& context, ReportQuestions& questions)
    : m_context(context), m_questions(questions), m_module(context.db, context.clock)
{
}

QString DeliveryReportRun::templatePath(const QString& fileName) const
{
    return m_context.templateFolder.isEmpty() ? fileName : QDir(m_context.templateFolder).filePath(fileName);
}

bool DeliveryReportRun::loadTemplate(ReportHolder& holder, const QString& fileName, bool userDefined)
{
    const QString path = templatePath(fileName);
    if (!m_context.templateFolder.isEmpty() && QFileInfo(path).isFile()) {
        holder.setTemplateFileName(path);
        holder.loadTemplate();
        return true;
    }
    // Without a folder of their own the fixed reports print with the
    // program's templates.
    const QString builtIn = m_context.templateFolder.isEmpty() && !userDefined
                                ? TemplateRegistry::builtInText(fileName)
                                : QString();
    if (!builtIn.isEmpty()) {
        holder.loadText(builtIn, fileName);
        return true;
    }
    m_context.ui.error(userDefined ? missingTemplateMessage(path)
                                   : QStringLiteral("The requested report template file:\n") + path +
                                         QStringLiteral("\ncould not be found."));
    return false;
}

void DeliveryReportRun::setLabelStock(ReportHolder& holder, const DeliveryReportChoices& choices)
{
    if (!DeliveryReports::isLabel(choices.report)) {
        holder.setLabelStock(nullptr);
        holder.setLabelStartPosition(1);
        return;
    }
    const LabelStock* stock = nullptr;
    if (!choices.labelStock.isEmpty()) {
        stock = LabelStock::find(choices.labelStock);
        if (!stock)
            throw MessageError(
                QStringLiteral("There is no label stock named \"%1\".").arg(choices.labelStock));
    }
    holder.setLabelStock(stock);
    holder.setLabelStartPosition(choices.labelStart);
}

bool DeliveryReportRun::prepare(ReportHolder& holder, const DeliveryReportChoices& choices)
{
    m_data.reset();
    holder.clearPipes();
    holder.clearParameters();
    holder.setDatabase(&m_context.db);
    setLabelStock(holder, choices);
    if (choices.report >= DeliveryReports::fixedCount) {
        // Its statements are its own; it reads the parameters and Config,
        // and the period as the parameters dStart and dEnd.
        if (!loadTemplate(holder, DeliveryReports::userReportFile(choices.userReport), true)) return false;
        m_data = ReportData();
        m_module.addCommonPipes(*m_data, TDataModule2::periodOf(choices));
        for (const auto& pipe : m_data->pipes)
            holder.setPipe(*pipe);
        holder.setParameter(QStringLiteral("dStart"), choices.from);
        holder.setParameter(QStringLiteral("dEnd"), choices.to);
        return true;
    }
    const QString file = DeliveryReports::templateFile(choices.report);
    // A missing template ends the report before its data is read.
    if (!m_context.templateFolder.isEmpty() && !QFileInfo(templatePath(file)).isFile()) {
        m_context.ui.error(QStringLiteral("The requested report template file:\n") + templatePath(file) +
                           QStringLiteral("\ncould not be found."));
        return false;
    }
    m_data = m_module.build(choices, m_questions, m_context.ui, m_context.settings);
    if (!m_data) return false;
    for (const auto& pipe : m_data->pipes)
        holder.setPipe(*pipe);
    holder.setParameter(QStringLiteral("SeparateDates"),
                        choices.page == DatePage::NonContiguous &&
                            DeliveryReports::takesSeparateDates(choices.report));
    return loadTemplate(holder, file, false);
}

} // namespace kb::reports
