#include "MainWindow.h"

#include "ReferenceEditorsMenu.h"
#include "RunPrepareView.h"
#include "session/TDataModule1.h"
#include "TFormRunPrepare.h"
#include "GeocodingView.h"
#include "OrderRoutesView.h"
#include "TFormGeocodeAddresses.h"
#include "TFormOrderRoutes.h"

#include <QApplication>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>

namespace kb::ui {

MainWindow::MainWindow(TDataModule1& data, UserInterface& ui, QWidget* parent)
    : QMainWindow(parent), m_data(data), m_ui(ui), m_user(new QLabel(this))
{
    setWindowTitle(QStringLiteral("Kettlebrook Clients"));
    resize(900, 600);

    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    file->addAction(QStringLiteral("E&xit"), this, &QWidget::close);
    QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    addReferenceEditorsMenu(edit->addMenu(QStringLiteral("Table Maintenance")), m_data.services(), this);
    // Menus of screens still to come are there but not yet usable.
    for (const char* name : {"&Clients", "&Schedule"})
        menuBar()->addMenu(QString::fromLatin1(name))->setEnabled(false);
    QMenu* process = menuBar()->addMenu(QStringLiteral("&Process"));
    m_runPreparation = process->addAction(QStringLiteral("Daily Run Preparation"), this, &MainWindow::openRunPreparation);
    for (const char* name : {"&Reports", "&Analyze", "&Maintenance"})
        menuBar()->addMenu(QString::fromLatin1(name))->setEnabled(false);
    QMenu* utilities = menuBar()->addMenu(QStringLiteral("&Utilities"));
    utilities->addAction(QStringLiteral("Order Stops by Route"), this, &MainWindow::openOrderRoutes)
        ->setObjectName(QStringLiteral("OrderStopsbyRoute1"));
    utilities->addAction(QStringLiteral("Find Coordinates for Addresses"), this, &MainWindow::openGeocoding)
        ->setObjectName(QStringLiteral("GeocodeAddresses1"));

    statusBar()->addPermanentWidget(m_user);
}

void MainWindow::showUser() { m_user->setText(m_data.session().userFullName); }

void MainWindow::openRunPreparation()
{
    TFormRunPrepare presenter(m_data.db(), m_data.session(), m_ui);
    RunPrepareView view(presenter, m_ui, this);
    view.exec();
}

} // namespace kb::ui

namespace kb::ui {

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
