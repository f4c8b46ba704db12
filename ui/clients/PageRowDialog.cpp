#include "clients/PageRowDialog.h"

#include "FormPlacement.h"
#include "dataset/QueryDataSet.h"
#include "defaults/Weekdays.h"
#include "funding/FundingTerms.h"
#include "records/RecordServices.h"
#include "session/TDataModule1.h"
#include "window/ClientPageData.h"
#include "window/TFormClients.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace kb::ui {

enum class RowKind { Choice, Codes, Text, Memo, Money, Days };

struct PageRowDialog::Field
{
    QString field;
    QString label;
    RowKind kind = RowKind::Text;
    QString list;                         // a list of the client window (Choice)
    QList<QPair<QString, QString>> codes; // value and text (Codes)
    QString group = {};                   // the group box it stands in; empty: the form itself
};

namespace {

using F = QList<QPair<QString, QString>>;

const F Methods = {{QString(), QString()},
                   {QStringLiteral("T"), QStringLiteral("Time Period")},
                   {QStringLiteral("I"), QStringLiteral("Meals or Meal Items")}};
const F Periods = {{QString(), QString()}, {QStringLiteral("D"), QStringLiteral("Day")}};
const F Statuses = {{QString(), QString()},
                    {QStringLiteral("I"), QStringLiteral("In Process")},
                    {QStringLiteral("P"), QStringLiteral("Pending")},
                    {QStringLiteral("A"), QStringLiteral("Accepted")},
                    {QStringLiteral("D"), QStringLiteral("Denied")},
                    {QStringLiteral("C"), QStringLiteral("Cancelled")},
                    {QStringLiteral("W"), QStringLiteral("Wait-Listed")}};

bool editing(const DataSet& set)
{
    return set.state() == DataSet::State::Edit || set.state() == DataSet::State::Insert;
}

} // namespace

const QList<PageRowDialog::Field>& PageRowDialog::fieldsOf(const QString& grid)
{
    static const QHash<QString, QList<Field>> forms = {
        {QStringLiteral("QueryFundUses"),
         {{QStringLiteral("Service_ID"), QStringLiteral("Service"), RowKind::Choice,
           QStringLiteral("FundedServices")},
          {QStringLiteral("Fund_CD"), QStringLiteral("Funding Source"), RowKind::Choice,
           QStringLiteral("FundingSources")},
          {QStringLiteral("Reimbursement_Method"),
           QStringLiteral("Reimbursement Method"),
           RowKind::Codes,
           {},
           Methods},
          {QStringLiteral("Reimbursement_Rate"),
           QStringLiteral("Reimbursement Rate"),
           RowKind::Money,
           {},
           {},
           TimeRatesGroup},
          {QStringLiteral("Reimbursement_Period"),
           QStringLiteral("Reimbursement Period"),
           RowKind::Codes,
           {},
           Periods,
           TimeRatesGroup},
          {QStringLiteral("#Days"), QStringLiteral("Days"), RowKind::Days}}},
        {QStringLiteral("QueryClientSpecificFundingRates"),
         {{QStringLiteral("Unit"), QStringLiteral("Item or Meal"), RowKind::Choice,
           QStringLiteral("FundingItems")},
          {QStringLiteral("Amount"), QStringLiteral("Reimbursement Rate"), RowKind::Money}}},
        {QStringLiteral("QueryItemPledgeRates"),
         {{QStringLiteral("Unit"), QStringLiteral("Item or Meal"), RowKind::Choice,
           QStringLiteral("PledgeItems")},
          {QStringLiteral("Amount"), QStringLiteral("Pledge"), RowKind::Money}}},
        {QStringLiteral("QueryServiceApps"),
         {{QStringLiteral("Service_ID"), QStringLiteral("Service"), RowKind::Choice,
           QStringLiteral("OtherServices")},
          {QStringLiteral("App_Status"), QStringLiteral("Status"), RowKind::Codes, {}, Statuses},
          {QStringLiteral("Assigned_To"), QStringLiteral("Assigned To"), RowKind::Choice,
           QStringLiteral("Staff")},
          {QStringLiteral("Physical_Location"), QStringLiteral("Physical Location"), RowKind::Text},
          {QStringLiteral("Status_Comments"), QStringLiteral("Comments"), RowKind::Memo}}},
    };
    static const QList<Field> none;
    const auto it = forms.constFind(grid);
    return it == forms.constEnd() ? none : *it;
}

bool PageRowDialog::hasForm(const QString& grid)
{
    return !fieldsOf(grid).isEmpty();
}

PageRowDialog::PageRowDialog(TFormClients& form, const QString& grid, QWidget* parent)
    : QDialog(parent), m_form(form), m_set(form.pageData().query(grid)), m_grid(grid)
{
    setObjectName(QStringLiteral("PageRow_") + grid);
    auto* layout = new QVBoxLayout(this);
    auto* rows = new QFormLayout;
    layout->addLayout(rows);
    const bool readOnly = m_set.isReadOnly() || form.fieldsReadOnly();
    for (const Field& f : fieldsOf(grid)) {
        QWidget* editor = nullptr;
        switch (f.kind) {
        case RowKind::Choice:
        case RowKind::Codes: {
            auto* combo = new QComboBox(this);
            if (f.kind == RowKind::Codes)
                for (const auto& [value, text] : f.codes)
                    combo->addItem(text, value);
            else {
                combo->addItem(QString(), QVariant());
                for (const ClientListEntry& e : form.lists().list(f.list))
                    combo->addItem(e.text, e.value);
            }
            const QVariant current = m_set.fieldValue(f.field);
            int index = -1;
            for (int i = 0; i < combo->count() && index < 0; ++i)
                if (combo->itemData(i).toString().trimmed() == current.toString().trimmed() &&
                    combo->itemData(i).isNull() == current.isNull())
                    index = i;
            combo->setCurrentIndex(std::max(0, index));
            editor = combo;
            break;
        }
        case RowKind::Money: {
            auto* spin = new QDoubleSpinBox(this);
            spin->setRange(0, 99999);
            spin->setDecimals(2);
            spin->setValue(m_set.fieldValue(f.field).toDouble());
            editor = spin;
            break;
        }
        case RowKind::Memo:
            editor = new QPlainTextEdit(m_set.fieldValue(f.field).toString(), this);
            break;
        case RowKind::Text:
            editor = new QLineEdit(m_set.fieldValue(f.field).toString(), this);
            break;
        case RowKind::Days: {
            auto* box = new QWidget(this);
            auto* days = new QGridLayout(box);
            days->setContentsMargins(0, 0, 0, 0);
            for (int d = 0; d < 7; ++d) {
                auto* check = new QCheckBox(weekdays()[size_t(d)].caption, box);
                check->setObjectName(weekdays()[size_t(d)].column);
                check->setChecked(m_set.fieldValue(weekdays()[size_t(d)].column).toBool());
                check->setEnabled(!readOnly);
                days->addWidget(check, 0, d);
                m_editors.insert(weekdays()[size_t(d)].column, check);
            }
            editor = box;
            break;
        }
        }
        editor->setObjectName(f.field);
        editor->setEnabled(!readOnly);
        m_editors.insert(f.field, editor);
        if (f.group.isEmpty()) {
            rows->addRow(f.label, editor);
        } else {
            QGroupBox*& box = m_groups[f.group];
            if (!box) {
                box = new QGroupBox(f.group, this);
                box->setObjectName(f.group);
                box->setLayout(new QFormLayout);
                rows->addRow(box);
            }
            static_cast<QFormLayout*>(box->layout())->addRow(f.label, editor);
        }
    }
    // The method brings up the time rate group for "T"; "I" is paid by the item rates.
    if (QGroupBox* time = m_groups.value(TimeRatesGroup)) {
        auto* method = qobject_cast<QComboBox*>(m_editors.value(QStringLiteral("Reimbursement_Method")));
        const auto follow = [time, method] {
            time->setVisible(method->currentData().toString() == QLatin1String("T"));
        };
        follow();
        connect(method, &QComboBox::currentIndexChanged, this, follow);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    keepPlacement(*this, form.module().userSettings(), objectName(), QSize(460, 0));
}

QVariant PageRowDialog::typed(const Field& f) const
{
    QWidget* editor = m_editors.value(f.field);
    if (auto* combo = qobject_cast<QComboBox*>(editor)) {
        const QVariant v = combo->currentData();
        return v.toString().isEmpty() ? QVariant() : v;
    }
    if (auto* spin = qobject_cast<QDoubleSpinBox*>(editor)) return spin->value();
    if (auto* memo = qobject_cast<QPlainTextEdit*>(editor)) return memo->toPlainText();
    if (auto* line = qobject_cast<QLineEdit*>(editor)) return line->text();
    return {};
}

void PageRowDialog::done(int result)
{
    RecordServices& services = m_form.module().services();
    if (result == Accepted && !m_set.isReadOnly() && !m_form.fieldsReadOnly()) {
        const bool saved = services.guarded([this] {
            if (!editing(m_set)) m_set.edit();
            for (const Field& f : fieldsOf(m_grid)) {
                if (f.kind == RowKind::Days) {
                    for (const Weekday& d : weekdays())
                        m_set.setFieldValue(d.column,
                                            qobject_cast<QCheckBox*>(m_editors.value(d.column))->isChecked());
                } else {
                    m_set.setFieldValue(f.field, typed(f));
                }
            }
            m_set.post();
        });
        if (!saved) return;
    } else if (editing(m_set)) {
        services.guarded([this] { m_set.cancel(); });
    }
    QDialog::done(result);
}

} // namespace kb::ui
