#include "schedule/dated/DatedDeliveriesView.h"

#include "FormPlacement.h"
#include "UserInterface.h"
#include "assign/TFormReassignScheduledAndEpisodicRoutes.h"
#include "dataset/Abort.h"
#include "dataset/QueryDataSet.h"
#include "dated/TFormClientEpisodicItems.h"
#include "dated/TFormEditEpisodicDeliveries.h"
#include "items/TFormSetEpisodicItems.h"
#include "records/RecordServices.h"
#include "recurrence/TFormRecurrence.h"
#include "routes/ReassignRoutesView.h"
#include "schedule/SetEpisodicItemsView.h"
#include "schedule/dated/ClientEpisodicItemsView.h"
#include "schedule/dated/DatedGridModel.h"
#include "schedule/dated/DeliveryDeletionOptionsDialog.h"
#include "schedule/dated/RecurrenceView.h"
#include "settings/SettingsFile.h"
#include "store/Database.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTableView>
#include <QTextCharFormat>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

const QString boldKey = QStringLiteral("BoldCalendarDates");

void fillCodes(QComboBox* box, Database& db, const QString& sql)
{
    const ResultSet rows = db.execute(sql);
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        box->addItem(rows.value(r, 1).toString().trimmed(), rows.value(r, 0));
}

void selectCode(QComboBox* box, const QVariant& code)
{
    int index = -1;
    for (int i = 0; i < box->count(); ++i)
        if (box->itemData(i).toString().trimmed() == code.toString().trimmed()) index = i;
    box->setCurrentIndex(index);
}

} // namespace

DatedDeliveriesView::DatedDeliveriesView(TFormEditEpisodicDeliveries& presenter, Database& db,
                                         UserInterface& ui, SettingsFile& settings, QString userName,
                                         QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_db(db), m_ui(ui), m_settings(settings),
      m_userName(std::move(userName)), m_calendar(new QCalendarWidget(this)), m_grid(new QTableView(this)),
      m_model(new DatedGridModel(presenter, this)),
      m_bold(new QCheckBox(QStringLiteral("Bold calendar dates with deliveries"), this)),
      m_date(new QDateEdit(this)), m_service(new QComboBox(this)), m_route(new QComboBox(this)),
      m_stop(new QDoubleSpinBox(this)), m_type(new QComboBox(this))
{
    setWindowTitle(m_presenter.caption());
    m_calendar->setMinimumDate(m_presenter.lowestDate());
    m_calendar->setMaximumDate(m_presenter.highestDate());
    m_calendar->setSelectedDate(m_presenter.initialDate());
    m_calendar->setGridVisible(true);

    m_model->setDataSet(&m_presenter.dataSet(),
                        {{QStringLiteral("Deliv_Date"), QStringLiteral("Delivery Date")},
                         {QStringLiteral("Service"), QStringLiteral("Service")},
                         {QStringLiteral("Route"), QStringLiteral("Route")},
                         {QStringLiteral("Stop"), QStringLiteral("Stop")},
                         {QStringLiteral("Delivery_Type"), QStringLiteral("Type")},
                         {QStringLiteral("Fulfilled"), QStringLiteral("Credit")},
                         {QStringLiteral("Created_By"), QStringLiteral("Created By")}});
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->verticalHeader()->hide();
    m_grid->horizontalHeader()->setStretchLastSection(true);
    m_grid->setMinimumWidth(560);

    m_date->setCalendarPopup(true);
    m_date->setDisplayFormat(QStringLiteral("ddd, MMM d, yyyy"));
    fillCodes(
        m_service, m_db,
        QStringLiteral("Select Service_ID, Service_Desc from Services where Service_Type = 'D' order by "
                       "Service_Desc"));
    fillCodes(m_route, m_db,
              QStringLiteral("Select Route_ID, Route_ID || ' - ' || Route_Desc from Routes order by "
                             "Route_ID"));
    m_stop->setRange(0, 99999);
    m_stop->setDecimals(2);
    m_type->addItem(QStringLiteral("Delivered"), QStringLiteral("D"));
    m_type->addItem(QStringLiteral("Walk-In"), QStringLiteral("W"));
    auto* fields = new QFormLayout;
    fields->addRow(QStringLiteral("Delivery Date:"), m_date);
    fields->addRow(QStringLiteral("Service:"), m_service);
    fields->addRow(QStringLiteral("Route:"), m_route);
    fields->addRow(QStringLiteral("Stop:"), m_stop);
    fields->addRow(QStringLiteral("Delivery Type:"), m_type);

    auto* commands = new QHBoxLayout;
    commands->addWidget(addButton(QStringLiteral("Add Delivery"), QStringLiteral("Ctrl+A"), [this] {
        m_presenter.ActionAddDelivery(std::nullopt);
        reload();
    }));
    commands->addWidget(addButton(QStringLiteral("Delete "), QStringLiteral("Ctrl+D"), [this] { remove(); }));
    commands->addWidget(
        addButton(QStringLiteral("Set Delivery Items"), QStringLiteral("Ctrl+I"), [this] { setItems(); }));
    commands->addWidget(addButton(QStringLiteral("Auto Schedule"), {}, [this] { autoSchedule(); }));
    commands->addWidget(
        addButton(QStringLiteral("Items Month View"), QStringLiteral("Ctrl+Shift+F12"), [this] { itemsView(); }));
    commands->addWidget(addButton(QStringLiteral("Address Overrides"), QStringLiteral("Ctrl+O"), [this] {
        if (m_addressOverrides) m_addressOverrides();
    }));
    commands->addWidget(addButton(QStringLiteral("Reassign Routes"), {}, [this] { reassignRoutes(); }));
    commands->addStretch();
    commands->addWidget(addButton(QStringLiteral("Close"), QStringLiteral("Ctrl+S"), [this] { accept(); }));

    auto* left = new QVBoxLayout;
    left->addWidget(m_calendar);
    left->addWidget(m_bold);
    left->addStretch();
    auto* right = new QVBoxLayout;
    right->addWidget(m_grid, 1);
    right->addLayout(fields);
    auto* body = new QHBoxLayout;
    body->addLayout(left);
    body->addLayout(right, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body, 1);
    layout->addLayout(commands);

    m_bold->setChecked(m_settings.readString(m_presenter.formName(), boldKey, QStringLiteral("Checked")) ==
                       QLatin1String("Checked"));
    connect(m_bold, &QCheckBox::toggled, this, [this] { paintCalendar(); });
    connect(m_calendar, &QCalendarWidget::clicked, this, [this](const QDate& date) {
        if (m_presenter.locateDate(date)) showRow();
    });
    connect(m_calendar, &QCalendarWidget::activated, this, [this](const QDate& date) {
        m_presenter.ActionAddDelivery(date);
        reload();
    });
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& index) {
                if (m_showing || !index.isValid()) return;
                m_presenter.dataSet().setRecNo(index.row() + 1);
                showRow();
            });
    // A double click opens the row's items, also on a credited row, which
    // is told first that the change waits for the date to be saved again.
    connect(m_grid, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (index.isValid()) guarded([this] { setItems(); });
    });
    connect(m_date, &QDateEdit::editingFinished, this,
            [this] { edit(QStringLiteral("Deliv_Date"), m_date->date()); });
    connect(m_service, &QComboBox::activated, this,
            [this] { edit(QStringLiteral("Svcs_Used"), m_service->currentData()); });
    connect(m_route, &QComboBox::activated, this,
            [this] { edit(QStringLiteral("Route"), m_route->currentData()); });
    connect(m_stop, &QDoubleSpinBox::editingFinished, this,
            [this] { edit(QStringLiteral("Stop"), m_stop->value()); });
    connect(m_type, &QComboBox::activated, this,
            [this] { edit(QStringLiteral("Delivery_Type"), m_type->currentData()); });

    reload();
    new WindowPlacement(*this, m_settings, m_presenter.formName(), QSize(1100, 560));
}

QPushButton* DatedDeliveriesView::addButton(const QString& text, const QString& shortcut,
                                            std::function<void()> action)
{
    auto* button = new QPushButton(text.trimmed(), this);
    button->setAutoDefault(false);
    if (!shortcut.isEmpty()) {
        button->setToolTip(shortcut);
        auto* key = new QShortcut(QKeySequence(shortcut), this);
        connect(key, &QShortcut::activated, button, &QPushButton::click);
    }
    connect(button, &QPushButton::clicked, this, [this, action] { guarded(action); });
    m_buttons.insert(text, button);
    return button;
}

void DatedDeliveriesView::guarded(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Abort&) {
        // A rule refused and has told the user why.
        reload();
    } catch (const std::exception& e) {
        m_ui.error(QString::fromUtf8(e.what()));
        reload();
    }
}

void DatedDeliveriesView::reload()
{
    m_model->reload();
    m_grid->resizeColumnsToContents();
    paintCalendar();
    showRow();
}

void DatedDeliveriesView::showRow()
{
    m_showing = true;
    QueryDataSet& set = m_presenter.dataSet();
    const bool hasRow = !set.isEmpty();
    if (hasRow) m_grid->selectRow(set.recNo() - 1);
    const bool editable = m_presenter.setItemsEnabled();
    for (QWidget* w : std::initializer_list<QWidget*>{m_date, m_service, m_route, m_stop, m_type})
        w->setEnabled(editable);
    if (hasRow) {
        m_date->setDate(set.fieldValue(u"Deliv_Date").toDate());
        selectCode(m_service, set.fieldValue(u"Svcs_Used"));
        selectCode(m_route, set.fieldValue(u"Route"));
        m_stop->setValue(set.fieldValue(u"Stop").toDouble());
        selectCode(m_type, set.fieldValue(u"Delivery_Type"));
    }
    m_buttons.value(QStringLiteral("Delete "))->setEnabled(m_presenter.deleteEnabled());
    m_buttons.value(QStringLiteral("Set Delivery Items"))->setEnabled(editable);
    m_buttons.value(QStringLiteral("Address Overrides"))
        ->setEnabled(editable && m_addressOverrides != nullptr);
    m_buttons.value(QStringLiteral("Reassign Routes"))->setEnabled(m_presenter.reassignRoutesEnabled());
    m_showing = false;
}

void DatedDeliveriesView::paintCalendar()
{
    m_calendar->setDateTextFormat(QDate(), QTextCharFormat());
    if (!m_bold->isChecked()) return;
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    for (const QDate& date : m_presenter.deliveryDates())
        m_calendar->setDateTextFormat(date, bold);
}

void DatedDeliveriesView::edit(const QString& column, const QVariant& value)
{
    if (m_showing || m_presenter.dataSet().isEmpty()) return;
    if (m_presenter.dataSet().fieldValue(column) == value) return;
    m_presenter.setRowValue(column, value);
    m_model->reload();
    paintCalendar();
    showRow();
}

void DatedDeliveriesView::itemsView()
{
    TFormClientEpisodicItems items(m_db, m_ui, m_userName, m_presenter.client().personId, m_db.clock().today());
    ClientEpisodicItemsView view(items, m_settings, this);
    view.exec();
    m_presenter.reload(); // dates may have been dropped there
    reload();
}

void DatedDeliveriesView::setItems()
{
    RecordServices services(m_db, m_ui);
    const std::unique_ptr<TFormSetEpisodicItems> items = m_presenter.ActionSetItems(services);
    if (!items) return;
    SetEpisodicItemsView view(*items, m_settings, this);
    view.exec();
    m_presenter.reload(); // the Items column shows the new lines
    reload();
}

void DatedDeliveriesView::reassignRoutes()
{
    TFormReassignScheduledAndEpisodicRoutes reassign(m_db, m_presenter.client().personId,
                                                     m_presenter.client().deliveryType);
    ReassignRoutesView view(reassign, m_ui, m_settings, this);
    if (view.exec() != QDialog::Accepted) return;
    m_presenter.reload();
    reload();
}

void DatedDeliveriesView::autoSchedule()
{
    TFormRecurrence recurrence(m_db, m_ui, m_userName, m_presenter.client());
    recurrence.SetDeliveryType(datedTitleWord(m_presenter.kind()));
    RecurrenceView view(recurrence, m_settings, this);
    if (view.exec() == QDialog::Accepted) {
        m_presenter.reload();
        reload();
    }
}

void DatedDeliveriesView::remove()
{
    DeliveryDeletionOptionsDialog options(m_db.clock().today(), this);
    if (options.exec() != QDialog::Accepted) return;
    m_presenter.ActionDelete(options.options());
    reload();
}

void DatedDeliveriesView::done(int result)
{
    m_presenter.close();
    m_settings.writeString(m_presenter.formName(), boldKey,
                           m_bold->isChecked() ? QStringLiteral("Checked") : QStringLiteral("Unchecked"));
    QDialog::done(result);
}

} // namespace kb::ui
