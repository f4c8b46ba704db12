#include "outcomes/ClientBillsView.h"

#include "FormPlacement.h"
#include "bills/TFormClientBills.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

QLineEdit* withBrowse(QFormLayout* form, const QString& label, QWidget* parent,
                      std::function<QString()> choose)
{
    auto* edit = new QLineEdit;
    auto* browse = new QPushButton(QStringLiteral("..."));
    auto* row = new QHBoxLayout;
    row->addWidget(edit);
    row->addWidget(browse);
    form->addRow(label, row);
    QObject::connect(browse, &QPushButton::clicked, parent, [edit, choose] {
        const QString path = choose();
        if (!path.isEmpty()) edit->setText(path);
    });
    return edit;
}

} // namespace

ClientBillsView::ClientBillsView(TFormClientBills& presenter, SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter)
{
    setWindowTitle(TFormClientBills::caption());
    m_start = new QDateEdit(presenter.start());
    m_end = new QDateEdit(presenter.end());
    for (QDateEdit* e : {m_start, m_end}) {
        e->setDisplayFormat(QStringLiteral("MM/dd/yyyy"));
        e->setCalendarPopup(true);
    }
    m_method = new QComboBox;
    m_method->addItems(TFormClientBills::methodTexts());
    m_method->setCurrentIndex(presenter.methodIndex());
    m_pledges = new QComboBox;
    m_pledges->addItems(TFormClientBills::pledgeTexts());
    m_pledges->setCurrentIndex(presenter.pledgeIndex());

    auto* items = new QGroupBox;
    m_all = new QRadioButton(QStringLiteral("Include all delivered items"));
    m_include = new QRadioButton(QStringLiteral("Include only this/these item(s)"));
    m_exclude = new QRadioButton(QStringLiteral("Exclude this/these item(s)"));
    m_tree = new QTreeWidget;
    m_tree->setHeaderHidden(true);
    for (const auto& category : presenter.itemTree()) {
        auto* top = new QTreeWidgetItem(m_tree, {category.text});
        top->setFlags(top->flags() | Qt::ItemIsUserCheckable | Qt::ItemIsAutoTristate);
        top->setCheckState(0, Qt::Unchecked);
        for (const auto& item : category.items) {
            auto* leaf = new QTreeWidgetItem(top, {item.text});
            leaf->setData(0, Qt::UserRole, item.itemId);
            leaf->setFlags(leaf->flags() | Qt::ItemIsUserCheckable);
            leaf->setCheckState(0, presenter.itemChecked(item.itemId) ? Qt::Checked : Qt::Unchecked);
        }
    }
    auto* itemsLayout = new QVBoxLayout(items);
    for (QWidget* w : {static_cast<QWidget*>(m_all), static_cast<QWidget*>(m_include),
                       static_cast<QWidget*>(m_exclude), static_cast<QWidget*>(m_tree)})
        itemsLayout->addWidget(w);

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Select the Start Date of the period:"), m_start);
    form->addRow(QStringLiteral("Select the Ending Date of the period:"), m_end);
    form->addRow(QStringLiteral("Calculate the amount by using:"), m_method);
    form->addRow(QString(), m_pledges);
    m_invoice = new QLineEdit(presenter.startingInvoice());
    form->addRow(QStringLiteral("Starting Invoice Number:"), m_invoice);
    m_history = new QCheckBox(QStringLiteral("Post the bill to Client History?"));
    m_history->setChecked(presenter.postToHistory());
    form->addRow(QString(), m_history);
    m_file = withBrowse(form, QStringLiteral("Specify a file for the exported data:"), this, [this] {
        QFileDialog dialog(this, TFormClientBills::saveDialogTitle());
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setDefaultSuffix(QStringLiteral("txt"));
        return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
    });
    m_file->setText(presenter.fileName());
    m_launch = new QCheckBox(QStringLiteral("Launch Word at completion?"));
    m_launch->setChecked(presenter.launchWord());
    form->addRow(QString(), m_launch);
    m_master = withBrowse(form, QStringLiteral("Specify the merge master document:"), this,
                          [this] { return QFileDialog::getOpenFileName(this); });
    m_master->setText(presenter.masterDocument());

    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_ok = box->button(QDialogButtonBox::Ok);
    m_ok->setText(QStringLiteral("&OK"));
    auto* columns = new QHBoxLayout;
    columns->addLayout(form, 3);
    columns->addWidget(items, 2);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns);
    layout->addWidget(box);

    switch (presenter.filter()) {
    case BillOptions::ItemFilter::All:
        m_all->setChecked(true);
        break;
    case BillOptions::ItemFilter::IncludeOnly:
        m_include->setChecked(true);
        break;
    case BillOptions::ItemFilter::Exclude:
        m_exclude->setChecked(true);
        break;
    }

    connect(m_start, &QDateEdit::dateChanged, this, [this](const QDate& d) {
        if (m_updating) return;
        m_presenter.setStart(d);
        showState();
    });
    connect(m_end, &QDateEdit::dateChanged, this, [this](const QDate& d) {
        if (m_updating) return;
        m_presenter.setEnd(d);
        showState();
    });
    connect(m_method, &QComboBox::currentIndexChanged, this, [this](int i) {
        m_presenter.setMethodIndex(i);
        showState();
    });
    connect(m_pledges, &QComboBox::currentIndexChanged, this,
            [this](int i) { m_presenter.setPledgeIndex(i); });
    connect(m_all, &QRadioButton::toggled, this, [this](bool on) {
        if (on) m_presenter.setFilter(BillOptions::ItemFilter::All);
    });
    connect(m_include, &QRadioButton::toggled, this, [this](bool on) {
        if (on) m_presenter.setFilter(BillOptions::ItemFilter::IncludeOnly);
    });
    connect(m_exclude, &QRadioButton::toggled, this, [this](bool on) {
        if (on) m_presenter.setFilter(BillOptions::ItemFilter::Exclude);
    });
    connect(m_tree, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) {
        if (m_updating || !item->parent()) return;
        m_presenter.setItemChecked(item->data(0, Qt::UserRole).toLongLong(),
                                   item->checkState(0) == Qt::Checked);
        showState();
    });
    connect(m_invoice, &QLineEdit::textChanged, this,
            [this](const QString& t) { m_presenter.setStartingInvoice(t); });
    connect(m_history, &QCheckBox::toggled, this, [this](bool on) { m_presenter.setPostToHistory(on); });
    connect(m_launch, &QCheckBox::toggled, this, [this](bool on) { m_presenter.setLaunchWord(on); });
    connect(m_master, &QLineEdit::textChanged, this,
            [this](const QString& t) { m_presenter.setMasterDocument(t); });
    connect(m_file, &QLineEdit::textChanged, this, [this](const QString& t) {
        m_presenter.setFileName(t);
        showState();
    });
    connect(box, &QDialogButtonBox::accepted, this, [this] {
        if (m_presenter.ActionOK()) accept();
    });
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    showState();
    keepPlacement(*this, settings, QStringLiteral("TFormClientBills"), QSize(1000, 560));
}

ClientBillsView::~ClientBillsView()
{
    m_presenter.FormClose();
}

void ClientBillsView::showState()
{
    m_updating = true;
    m_start->setDate(m_presenter.start());
    m_end->setDate(m_presenter.end());
    if (m_presenter.filter() == BillOptions::ItemFilter::IncludeOnly) m_include->setChecked(true);
    m_updating = false;
    m_pledges->setVisible(m_presenter.pledgeOptionVisible());
    m_ok->setEnabled(m_presenter.okEnabled());
}

} // namespace kb::ui
