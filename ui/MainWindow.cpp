#include "MainWindow.h"

#include "ConfigView.h"
#include "FormPlacement.h"
#include "ReferenceEditorsMenu.h"
#include "RunPrepareView.h"
#include "TFormRunPrepare.h"
#include "GeocodingView.h"
#include "OrderRoutesView.h"
#include "TFormGeocodeAddresses.h"
#include "TFormOrderRoutes.h"
#include "deliveryreports/ClientIdCardPrint.h"
#include "deliveryreports/DeliveryReportChoice.h"
#include "dataset/TableDataSet.h"
#include "session/TDataModule1.h"
#include "settings/TFormEditConfig.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>

namespace kb::ui {

MainWindow::MainWindow(TDataModule1& data, UserInterface& ui, QWidget* parent)
    : QMainWindow(parent), m_data(data), m_ui(ui), m_user(new QLabel(this))
{
    setWindowTitle(QStringLiteral("Kettlebrook Clients"));
    setObjectName(QStringLiteral("TFormClients"));
    resize(900, 600);
    restoreFormPosition(*this, m_data.userSettings(), objectName());

    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    file->addAction(QStringLiteral("E&xit"), this, &QWidget::close);
    m_edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    m_tableMaintenance = m_edit->addMenu(QStringLiteral("Table Maintenance"));
    m_configuration = m_tableMaintenance->addAction(QStringLiteral("Configuration"), this, &MainWindow::openConfiguration);
    m_configuration->setObjectName(TFormEditConfig::formName());
    addReferenceEditorsMenu(m_tableMaintenance, m_data.services(), this);
    // Menus of screens still to come are there but not yet usable.
    for (const char* name : {"&Clients", "&Schedule"})
        menuBar()->addMenu(QString::fromLatin1(name))->setEnabled(false);
    m_process = menuBar()->addMenu(QStringLiteral("&Process"));
    m_runPreparation = m_process->addAction(QStringLiteral("Daily Run Preparation"), this, &MainWindow::openRunPreparation);
    QMenu* reports = menuBar()->addMenu(QStringLiteral("&Reports"));
    reports
        ->addAction(QStringLiteral("Delivery Reports and Labels"), this,
                    [this] { openDeliveryReportChoice(m_data, m_ui, this); })
        ->setObjectName(QStringLiteral("DeliveryReports1"));
    m_driverMessages = reports->addAction(QStringLiteral("Edit Delivery Report Driver Messages"), this,
                                          [this] { openDeliveryReportMessages(m_data, m_ui, this); });
    // The card of the current client; the client window takes this action
    // over when it comes.
    reports
        ->addAction(QStringLiteral("Client ID Card"), this,
                    [this] {
                        TableDataSet& clients = m_data.clients();
                        if (clients.isActive() && !clients.isEmpty())
                            printClientIdCard(m_data, m_ui, this, clients.fieldValue(u"Person_ID").toInt());
                    })
        ->setObjectName(QStringLiteral("ActionPrintClientID"));
    reports->addAction(QStringLiteral("Label Stock..."), this, [this] { openLabelStockSettings(m_data, this); });
    m_analyze = menuBar()->addMenu(QStringLiteral("&Analyze"));
    m_analyze->setEnabled(false);
    menuBar()->addMenu(QStringLiteral("&Maintenance"))->setEnabled(false);
    QMenu* utilities = menuBar()->addMenu(QStringLiteral("&Utilities"));
    utilities->addAction(QStringLiteral("Order Stops by Route"), this, &MainWindow::openOrderRoutes)
        ->setObjectName(QStringLiteral("OrderStopsbyRoute1"));
    utilities->addAction(QStringLiteral("Find Coordinates for Addresses"), this, &MainWindow::openGeocoding)
        ->setObjectName(QStringLiteral("GeocodeAddresses1"));

    statusBar()->addPermanentWidget(m_user);
}

void MainWindow::showUser()
{
    m_user->setText(m_data.session().userFullName);
    applyAccessLevel();
}

// Read-only users keep what only shows data; reports-only users keep the
// reports and nothing that edits or prepares.
void MainWindow::applyAccessLevel()
{
    const AccessLevel access = m_data.session().access();
    m_tableMaintenance->setEnabled(access.mayChangeData());
    m_driverMessages->setEnabled(access.mayChangeData());
    m_process->setEnabled(access.mayChangeData());
    m_edit->menuAction()->setVisible(!access.reportsOnly());
    m_process->menuAction()->setVisible(!access.reportsOnly());
    m_analyze->menuAction()->setVisible(!access.reportsOnly());
}

void MainWindow::openRunPreparation()
{
    TFormRunPrepare presenter(m_data.db(), m_data.session(), m_ui);
    RunPrepareView view(presenter, m_ui, this);
    view.exec();
}

void MainWindow::openConfiguration()
{
    TFormEditConfig presenter(m_data);
    if (!presenter.open())
        return;
    ConfigView view(presenter, this);
    view.exec();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    saveFormPosition(*this, m_data.userSettings(), objectName());
    if (!m_data.closeQuery()) {
        event->ignore();
        return;
    }
    QMainWindow::closeEvent(event);
}

void MainWindow::openOrderRoutes()
{
    TFormOrderRoutes presenter(m_data.db(), m_data.session(), m_ui);
    OrderRoutesView view(presenter, m_data.db(), m_data.session(), m_ui, this);
    view.exec();
}

void MainWindow::openGeocoding()
{
    TFormGeocodeAddresses presenter(m_data.db(), m_data.session(), m_ui);
    GeocodingView view(presenter, m_data.session(), m_ui, this);
    view.exec();
}

} // namespace kb::ui
