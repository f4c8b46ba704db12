#include "labels/ClientIdCard.h"

#include "MessageError.h"
#include "ReportHolder.h"
#include "UserInterface.h"
#include "data/RowsPipe.h"
#include "labels/LabelStockSettings.h"
#include "model/LabelStock.h"
#include "settings/SettingsFile.h"
#include "store/Database.h"
#include "template/TemplateRegistry.h"

#include <QDir>
#include <QFileInfo>

namespace kb::reports {

QString ClientIdCard::nameAndId(const QString& first, const QString& middle, const QString& last,
                                const QString& clientId)
{
    QString text;
    if (!first.isEmpty()) text += first + u' ';
    if (!middle.isEmpty()) text += middle + u' ';
    return text + last + QStringLiteral(",    Client ID: ") + clientId;
}

ClientIdCard::ClientIdCard(const DeliveryReportContext& context)
    : m_context(context), m_stock(LabelStockSettings::read(context.settings, LabelStockSettings::cardKey()))
{
}

QString ClientIdCard::stock() const
{
    return LabelStock::find(m_stock) ? m_stock : QString();
}

bool ClientIdCard::prepare(ReportHolder& holder, int personId)
{
    holder.clearPipes();
    holder.clearParameters();
    holder.setDatabase(&m_context.db);
    holder.setLabelStartPosition(1);
    holder.setLabelStock(LabelStock::find(stock()));
    // Without a folder of its own (a server's data) the card prints with the
    // program's template.
    if (m_context.templateFolder.isEmpty()) {
        holder.loadText(TemplateRegistry::builtInText(templateFileName()), templateFileName());
    } else {
        const QString path = QDir(m_context.templateFolder).filePath(templateFileName());
        if (!QFileInfo(path).isFile()) {
            m_context.ui.error(QStringLiteral("Could not locate the label template file:\n") +
                               QDir::toNativeSeparators(path));
            return false;
        }
        holder.setTemplateFileName(path);
        holder.loadTemplate();
    }

    const ResultSet client = m_context.db.execute(
        QStringLiteral("Select Person_ID, Client_ID, First_Name, Mid_Name, Last_Name from "
                       "Clients where Person_ID = :Person_ID"),
        {{QStringLiteral("Person_ID"), personId}});
    if (client.rowCount() == 0)
        throw MessageError(QStringLiteral("There is no client with the person number %1.").arg(personId));
    const auto text = [&](const char* column) {
        return client.value(0, QString::fromLatin1(column)).toString().trimmed();
    };
    ResultSet fields({sql::OutputColumn{QStringLiteral("Client Name and ID"), FieldType::String, 0},
                      sql::OutputColumn{QStringLiteral("Barcode"), FieldType::String, 0}});
    fields.setHasRows(true);
    fields.appendRow(
        QVariantList{nameAndId(text("First_Name"), text("Mid_Name"), text("Last_Name"), text("Client_ID")),
                     QString::number(personId)});
    holder.addPipe(std::make_unique<RowsPipe>(fieldsPipe(), std::move(fields)));
    holder.addPipe(std::make_unique<RowsPipe>(QStringLiteral("DBPipelineConfig"),
                                              m_context.db.execute(QStringLiteral("Select * from Config"))));
    return true;
}

bool ClientIdCard::print(ReportHolder& holder, int personId)
{
    if (!prepare(holder, personId)) return false;
    holder.setDestination(ReportDestination::Printer);
    holder.setShowPrintDialog(true);
    if (m_context.settings)
        holder.setPrinterName(m_context.settings->readString(section(), QStringLiteral("Printer")));
    const bool printed = holder.print();
    holder.clearPipes();
    if (printed && m_context.settings)
        m_context.settings->writeString(section(), QStringLiteral("Printer"), holder.printerName());
    return printed;
}

} // namespace kb::reports
