#include "deliveryreports/ClientIdCardPrint.h"

#include "QtReportOutput.h"
#include "ReportHolder.h"
#include "UserInterface.h"
#include "delivery/FailureText.h"
#include "deliveryreports/DeliveryReportChoice.h"
#include "labels/ClientIdCard.h"
#include "labels/LabelStockSettings.h"
#include "session/TDataModule1.h"
#include "settings/SettingsFile.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>

namespace kb::ui {

void printClientIdCard(TDataModule1& data, UserInterface& ui, QWidget* parent, int personId)
{
    const reports::DeliveryReportContext context = deliveryReportContext(data, ui);
    QtReportOutput output(parent, ui, data.userSettings().path());
    reports::ReportHolder holder(output, data.clock());
    holder.setDocumentName(reports::ClientIdCard::caption());
    try {
        reports::ClientIdCard(context).print(holder, personId);
    } catch (const std::exception& failure) {
        holder.clearPipes();
        ui.error(reports::failureText(failure));
    }
}

void openLabelStockSettings(TDataModule1& data, QWidget* parent)
{
    using reports::LabelStockSettings;
    SettingsFile& settings = data.userSettings();
    QDialog dialog(parent);
    dialog.setWindowTitle(QStringLiteral("Label Stock"));
    auto* labels = new QComboBox(&dialog);
    auto* card = new QComboBox(&dialog);
    for (QComboBox* list : {labels, card}) {
        list->addItems(LabelStockSettings::entries());
        list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    }
    labels->setCurrentIndex(
        LabelStockSettings::indexOf(LabelStockSettings::read(&settings, LabelStockSettings::labelsKey())));
    card->setCurrentIndex(
        LabelStockSettings::indexOf(LabelStockSettings::read(&settings, LabelStockSettings::cardKey())));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    auto* layout = new QFormLayout(&dialog);
    layout->addRow(QStringLiteral("Delivery labels print on:"), labels);
    layout->addRow(QStringLiteral("The Client ID Card prints on:"), card);
    layout->addRow(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted) return;
    LabelStockSettings::write(&settings, LabelStockSettings::labelsKey(),
                              LabelStockSettings::stockAt(labels->currentIndex()));
    LabelStockSettings::write(&settings, LabelStockSettings::cardKey(),
                              LabelStockSettings::stockAt(card->currentIndex()));
}

} // namespace kb::ui
