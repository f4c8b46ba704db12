#include "routes/AddressOverrideView.h"

#include "FormPlacement.h"
#include "clientwindow/DataSetTableModel.h"
#include "clientwindow/DateField.h"
#include "dataset/QueryDataSet.h"
#include "overrides/AddressOverrideRules.h"
#include "overrides/TFormAddressOverride.h"
#include "records/RecordServices.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

const QList<std::pair<QString, QString>> Days = {
    {QStringLiteral("SUN"), QStringLiteral("Sunday")},   {QStringLiteral("MON"), QStringLiteral("Monday")},
    {QStringLiteral("TUE"), QStringLiteral("Tuesday")},  {QStringLiteral("WED"), QStringLiteral("Wednesday")},
    {QStringLiteral("THU"), QStringLiteral("Thursday")}, {QStringLiteral("FRI"), QStringLiteral("Friday")},
    {QStringLiteral("SAT"), QStringLiteral("Saturday")}};

struct Line
{
    const char* label;
    std::initializer_list<const char*> columns;
};

const Line Lines[] = {
    {"Address Description:", {"Addr_Desc"}},
    {"Address OverrideType", {"Override_Type"}},
    {"Single Delivery Date:", {"Deliv_Date"}},
    {"Day of Week:", {"DOW"}},
    {"In effect From:", {"Effective_Date"}},
    {"Through:", {"Expire_Date"}},
    {"Address:", {"Address1", "Address2"}},
    {"", {"City", "State", "ZIP"}},
    {"Phone Description & Phone:", {"Phone_Desc", "Phone"}},
    {"Directions:", {"Directions"}},
    {"Route and Stop:", {"Route", "Stop"}},
    {"Created By:", {"Created_By", "Create_Date"}},
};

} // namespace

AddressOverrideView::AddressOverrideView(TFormAddressOverride& presenter, RecordServices& services,
                                         SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_services(services), m_grid(new QTableView(this)),
      m_model(new DataSetTableModel(this))
{
    setWindowTitle(TFormAddressOverride::caption());
    m_model->setDataSet(&presenter.dataSet(),
                        {{QStringLiteral("Addr_Desc"), QStringLiteral("Description")},
                         {QStringLiteral("Deliv_Date"), QStringLiteral("Single Date")},
                         {QStringLiteral("DOW"), QStringLiteral("DOW")},
                         {QStringLiteral("Effective_Date"), QStringLiteral("Effective")},
                         {QStringLiteral("Expire_Date"), QStringLiteral("Expires")}});
    m_grid->setModel(m_model);
    m_grid->setToolTip(TFormAddressOverride::gridHint());
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->verticalHeader()->hide();
    m_grid->horizontalHeader()->setStretchLastSection(true);
    m_grid->resizeColumnsToContents();
    m_grid->setMinimumHeight(m_grid->fontMetrics().height() * 6);
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (m_showing || !current.isValid()) return;
                m_services.guarded([&] { m_presenter.dataSet().setRecNo(current.row() + 1); });
                showRow();
            });

    auto* form = new QGridLayout;
    int row = 0;
    for (const Line& line : Lines) {
        QString label = QString::fromLatin1(line.label);
        auto* caption = new QLabel(label, this);
        if (label.isEmpty()) {
            m_cityLabel = caption;
            caption->setText(presenter.cityLabel());
        }
        form->addWidget(caption, row, 0);
        auto* fields = new QHBoxLayout;
        for (const char* column : line.columns) {
            const QString name = QString::fromLatin1(column);
            QWidget* editor = makeEditor(name);
            editor->setObjectName(name);
            m_editors.insert(name.toUpper(), editor);
            m_rows.insert(name.toUpper(), caption);
            fields->addWidget(editor,
                              name == QLatin1String("State") || name == QLatin1String("Stop") ? 0 : 1);
        }
        form->addLayout(fields, row++, 1);
    }
    form->setColumnStretch(1, 1);

    auto* commands = new QHBoxLayout;
    const auto command = [&](const QString& text, std::function<void()> run, bool available = true) {
        auto* button = new QPushButton(text, this);
        m_buttons.insert(text, button);
        commands->addWidget(button);
        if (!available) {
            button->setEnabled(false);
            button->setToolTip(QStringLiteral("Not available yet"));
            return;
        }
        connect(button, &QPushButton::clicked, this, [this, run] {
            m_services.guarded(run);
            reload();
        });
    };
    command(QStringLiteral("Add Address"), [this] { m_presenter.ActionAddAddress(); });
    command(QStringLiteral("Duplicate Address"), [this] { m_presenter.ActionDuplicateAddress(); });
    command(QStringLiteral("Delete Address"), [this] { m_presenter.ActionDeleteAddress(); });
    command(QStringLiteral("Locate address for specific date"), [this] { locateDate(); });
    command(QStringLiteral("Locate address on map"), [this] { locateOnMap(); });
    command(QStringLiteral("Print Delivery Directions"), [this] { m_presenter.ActionPrintDeliveryDirections(); });
    commands->addStretch();
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    commands->addWidget(close);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    auto* hint = new QLabel(TFormAddressOverride::gridHint(), this);
    layout->addWidget(hint);
    layout->addWidget(m_grid, 1);
    layout->addLayout(form);
    layout->addLayout(commands);
    reload();
    keepPlacement(*this, settings, QStringLiteral("TFormAddressOverride"), QSize(780, 620));
}

QWidget* AddressOverrideView::makeEditor(const QString& column)
{
    const QString upper = column.toUpper();
    if (upper == QLatin1String("ADDR_DESC") || upper == QLatin1String("OVERRIDE_TYPE") ||
        upper == QLatin1String("DOW")) {
        auto* list = new QComboBox(this);
        list->setEditable(upper == QLatin1String("ADDR_DESC"));
        if (upper == QLatin1String("ADDR_DESC"))
            list->addItems(m_presenter.descriptionChoices());
        else if (upper == QLatin1String("OVERRIDE_TYPE"))
            for (const auto& [code, text] : AddressOverrideRules::types())
                list->addItem(text, code);
        else
            for (const auto& [code, text] : Days)
                list->addItem(text, code);
        if (list->isEditable())
            connect(list, &QComboBox::currentTextChanged, this,
                    [this, column](const QString& text) { setValue(column, text); });
        else
            connect(list, &QComboBox::activated, this, [this, column, list](int i) {
                if (column == QLatin1String("Override_Type")) {
                    m_services.guarded([&] { m_presenter.setType(list->itemData(i).toString()); });
                    showRow();
                } else {
                    setValue(column, list->itemData(i));
                }
            });
        return list;
    }
    if (upper.endsWith(QLatin1String("_DATE"))) {
        auto* date = new DateField(this);
        if (upper == QLatin1String("CREATE_DATE")) date->setReadOnly(true);
        connect(date, &DateField::dateEdited, this,
                [this, column](const QDate& d) { setValue(column, d.isValid() ? QVariant(d) : QVariant()); });
        return date;
    }
    if (upper == QLatin1String("DIRECTIONS")) {
        auto* memo = new QPlainTextEdit(this);
        memo->setMaximumHeight(memo->fontMetrics().lineSpacing() * 4 + 12);
        memo->setTabChangesFocus(true);
        connect(memo, &QPlainTextEdit::textChanged, this,
                [this, column, memo] { setValue(column, memo->toPlainText()); });
        return memo;
    }
    auto* line = new QLineEdit(this);
    if (upper == QLatin1String("CREATED_BY")) line->setReadOnly(true);
    if (upper == QLatin1String("ZIP"))
        connect(line, &QLineEdit::editingFinished, this, [this] {
            if (m_showing) return;
            bool filled = false;
            m_services.guarded([&] { filled = m_presenter.zipLeft(); });
            if (filled) showRow();
        });
    if (upper == QLatin1String("STATE") || upper == QLatin1String("PHONE_DESC"))
        line->setMaximumWidth(line->fontMetrics().averageCharWidth() * 5 + 16);
    connect(line, &QLineEdit::textEdited, this, [this, column](const QString& text) {
        setValue(column, text.isEmpty() ? QVariant() : QVariant(text));
    });
    return line;
}

void AddressOverrideView::setValue(const QString& column, const QVariant& value)
{
    if (m_showing) return;
    QueryDataSet& set = m_presenter.dataSet();
    m_services.guarded([&] {
        if (set.state() == DataSet::State::Browse) set.edit();
        set.setFieldValue(column, value);
    });
}

void AddressOverrideView::showRow()
{
    m_showing = true;
    QueryDataSet& set = m_presenter.dataSet();
    const bool enabled = m_presenter.fieldsEnabled();
    for (auto it = m_editors.cbegin(); it != m_editors.cend(); ++it) {
        const QString column = it.key();
        QWidget* editor = it.value();
        const QVariant value = enabled ? set.fieldValue(column) : QVariant();
        editor->setEnabled(enabled);
        const bool shown = !enabled || m_presenter.isShown(column);
        editor->setVisible(shown);
        if (QWidget* label = m_rows.value(column))
            label->setVisible(shown || label == m_rows.value(QStringLiteral("ADDRESS1")));
        if (auto* list = qobject_cast<QComboBox*>(editor)) {
            if (list->isEditable())
                list->setEditText(value.toString());
            else
                list->setCurrentIndex(list->findData(value.toString()));
        } else if (auto* date = qobject_cast<DateField*>(editor)) {
            date->setDate(value.toDate());
        } else if (auto* memo = qobject_cast<QPlainTextEdit*>(editor)) {
            if (memo->toPlainText() != value.toString()) memo->setPlainText(value.toString());
        } else if (auto* line = qobject_cast<QLineEdit*>(editor)) {
            line->setText(DataSetTableModel::displayText(value));
        }
    }
    m_buttons.value(QStringLiteral("Duplicate Address"))->setEnabled(enabled);
    m_buttons.value(QStringLiteral("Locate address on map"))->setEnabled(enabled && m_presenter.canLocateOnMap());
    m_buttons.value(QStringLiteral("Print Delivery Directions"))->setEnabled(m_presenter.canPrintDirections());
    m_buttons.value(QStringLiteral("Delete Address"))->setEnabled(enabled);
    m_showing = false;
}

void AddressOverrideView::reload()
{
    m_showing = true;
    m_model->reload();
    const int row = m_presenter.dataSet().recNo() - 1;
    if (row >= 0)
        m_grid->selectionModel()->setCurrentIndex(
            m_model->index(row, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_showing = false;
    showRow();
}

void AddressOverrideView::locateDate()
{
    QDialog ask(this);
    ask.setWindowTitle(QStringLiteral("Locate Address"));
    auto* calendar = new QCalendarWidget(&ask);
    calendar->setSelectedDate(m_presenter.locateDateDefault());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &ask);
    auto* layout = new QVBoxLayout(&ask);
    layout->addWidget(new QLabel(QStringLiteral("Which address applies on this date?"), &ask));
    layout->addWidget(calendar);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, &ask, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &ask, &QDialog::reject);
    if (ask.exec() == QDialog::Accepted) m_presenter.ActionLocateDate(calendar->selectedDate());
}

void AddressOverrideView::locateOnMap()
{
    const QUrl url = m_presenter.mappedAddressUrl();
    if (!url.isEmpty() && !QDesktopServices::openUrl(url))
        QMessageBox::warning(this, TFormAddressOverride::caption(),
                             QStringLiteral("The address could not be opened:\n") + url.toString());
}

void AddressOverrideView::done(int result)
{
    if (!m_presenter.close()) return;
    QDialog::done(result);
}

} // namespace kb::ui
