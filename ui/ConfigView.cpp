#include "ConfigView.h"

#include "DisplayLoginsView.h"
#include "FormPlacement.h"
#include "defaults/TFormSetDefaultDeliveries.h"
#include "schedule/SetDefaultDeliveriesView.h"
#include "ReferenceEditorsMenu.h"
#include "UserInterface.h"
#include "VisibleFieldsView.h"
#include "catalogue/Catalogue.h"
#include "session/TDataModule1.h"
#include "session/TFormDisplayLogins.h"
#include "settings/TFormEditConfig.h"
#include "settings/TVisibleFieldsDlg.h"
#include "store/Database.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFontDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

using Command = TFormEditConfig::Command;

// The commands each page offers below its settings.
QList<Command> pageCommands(const QString& title)
{
    if (title == QLatin1String("Meal Deliveries")) return {Command::SetDefaultItems, Command::SelectFont};
    if (title == QLatin1String("Nutritional Counseling"))
        return {Command::AssessmentVisibility, Command::AssessmentChoices};
    if (title == QLatin1String("Client Services"))
        return {Command::SetIntakeDocuments, Command::SetIntakeConditions};
    if (title == QLatin1String("Case Management"))
        return {Command::ScreeningChoices, Command::ScreeningVisibility};
    return {};
}

bool isServiceDay(const QString& column)
{
    return column.size() == 4 && column.startsWith(u'D') &&
           QStringLiteral("MON TUE WED THU FRI SAT SUN").contains(column.mid(1));
}

QWidget* scrolled(QWidget* content, QWidget* parent)
{
    auto* area = new QScrollArea(parent);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidget(content);
    return area;
}

} // namespace

ConfigView::ConfigView(TFormEditConfig& presenter, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_pages(new QTabWidget(this))
{
    setWindowTitle(TFormEditConfig::caption());
    setObjectName(TFormEditConfig::formName());
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pages);
    for (int i = 0; i < configPages().size(); ++i)
        m_pages->addTab(scrolled(buildPage(i), m_pages), configPages()[i].title);
    m_pages->addTab(scrolled(buildPreferences(), m_pages), QStringLiteral("User Preferences"));
    m_pages->addTab(buildUsers(), QStringLiteral("System Users"));

    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(commandButtonFor(int(Command::Close), this));
    layout->addLayout(bottom);

    resize(1100, 680);
    restoreFormPosition(*this, m_presenter.module().userSettings(), objectName());
    showValues();
}

ConfigView::~ConfigView() = default;

QPushButton* ConfigView::commandButtonFor(int command, QWidget* parent)
{
    auto* button = new QPushButton(TFormEditConfig::commandText(Command(command)), parent);
    button->setEnabled(m_presenter.isEnabled(Command(command)));
    connect(button, &QPushButton::clicked, this, [this, command] { runCommand(command); });
    m_commands.insert(command, button);
    return button;
}

QWidget* ConfigView::buildPage(int index)
{
    const ConfigPage& page = configPages()[index];
    auto* widget = new QWidget;
    auto* column = new QVBoxLayout(widget);
    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    QHBoxLayout* days = nullptr; // the organization's service days share one row
    for (const ConfigField& field : page.fields) {
        QWidget* editor = makeEditor(field);
        editor->setObjectName(field.column);
        m_editors.insert(field.column.toUpper(), editor);
        if (qobject_cast<QAbstractSpinBox*>(editor)) editor->setMaximumWidth(120);
        if (isServiceDay(field.column)) {
            if (!days) {
                days = new QHBoxLayout;
                form->addRow(QStringLiteral("Organization Service Days:"), days);
            }
            days->addWidget(editor);
            if (field.column == QLatin1String("DSUN")) days->addStretch();
            continue;
        }
        if (field.editor == ConfigEditor::Check || field.editor == ConfigEditor::YesNoCheck)
            form->addRow(QString(), editor);
        else
            form->addRow(field.label, editor);
        if (field.column == QLatin1String("CASE_MGT_DEFAULT_LENGTH")) {
            m_sessionWords = new QLabel(widget);
            form->addRow(QString(), m_sessionWords);
        }
    }
    column->addLayout(form);
    if (page.title == QLatin1String("Meal Deliveries")) column->addWidget(buildMeals());
    if (page.title == QLatin1String("Application Defaults")) column->addWidget(buildComponentTree());
    if (page.title == QLatin1String("Nutritional Counseling")) column->addWidget(buildEventDefaults());
    const QList<Command> commands = pageCommands(page.title);
    if (!commands.isEmpty()) {
        auto* row = new QHBoxLayout;
        for (Command command : commands)
            row->addWidget(commandButtonFor(int(command), widget));
        row->addStretch();
        column->addLayout(row);
    }
    column->addStretch();
    return widget;
}

QWidget* ConfigView::makeEditor(const ConfigField& field)
{
    const QString column = field.column;
    switch (field.editor) {
    case ConfigEditor::Check:
    case ConfigEditor::YesNoCheck: {
        auto* box = new QCheckBox(field.label);
        const bool letters = field.editor == ConfigEditor::YesNoCheck;
        connect(box, &QCheckBox::toggled, this, [this, column, letters](bool on) {
            changed(column,
                    letters ? QVariant(on ? QStringLiteral("Y") : QStringLiteral("N")) : QVariant(on));
        });
        return box;
    }
    case ConfigEditor::Memo:
    case ConfigEditor::ListMemo: {
        auto* text = new QPlainTextEdit;
        text->setMinimumHeight(90);
        text->setMaximumHeight(140);
        text->installEventFilter(this);
        connect(text, &QPlainTextEdit::textChanged, this,
                [this, column, text] { changed(column, text->toPlainText()); });
        return text;
    }
    case ConfigEditor::Choice:
    case ConfigEditor::Lookup:
    case ConfigEditor::ClientIndex: {
        auto* list = new QComboBox;
        for (const Choice& choice : m_presenter.choices(column))
            list->addItem(choice.text, choice.value);
        connect(list, &QComboBox::activated, this,
                [this, column, list](int i) { changed(column, list->itemData(i)); });
        return list;
    }
    case ConfigEditor::Integer: {
        auto* spin = new QSpinBox;
        spin->setRange(-999999, 999999);
        connect(spin, &QSpinBox::valueChanged, this, [this, column](int v) { changed(column, v); });
        return spin;
    }
    case ConfigEditor::Float: {
        auto* spin = new QDoubleSpinBox;
        spin->setRange(0, 24);
        spin->setSingleStep(0.25);
        connect(spin, &QDoubleSpinBox::valueChanged, this, [this, column](double v) { changed(column, v); });
        return spin;
    }
    case ConfigEditor::Text:
        break;
    }
    auto* line = new QLineEdit;
    if (field.width > 0) line->setMaxLength(field.width);
    connect(line, &QLineEdit::textEdited, this,
            [this, column](const QString& text) { changed(column, text); });
    return line;
}

QGroupBox* ConfigView::buildMeals()
{
    m_meals = new QGroupBox(QStringLiteral("Selected Meals"));
    auto* box = new QHBoxLayout(m_meals);
    for (int bit = 0; bit < mealLineItemNames().size(); ++bit) {
        auto* check = new QCheckBox(mealLineItemNames()[bit], m_meals);
        connect(check, &QCheckBox::toggled, this, [this, bit](bool on) {
            if (!m_showing) m_presenter.setMealChecked(bit, on);
        });
        m_mealBoxes.append(check);
        box->addWidget(check);
    }
    return m_meals;
}

QWidget* ConfigView::buildComponentTree()
{
    auto* group = new QGroupBox(QStringLiteral("Visible Components"));
    auto* layout = new QVBoxLayout(group);
    m_tree = new QTreeWidget(group);
    m_tree->setHeaderHidden(true);
    m_tree->setMinimumHeight(260);
    m_tree->installEventFilter(this);
    layout->addWidget(m_tree);
    auto* row = new QHBoxLayout;
    row->addWidget(commandButtonFor(int(Command::RepopulateTree), group));
    row->addStretch();
    layout->addLayout(row);
    connect(m_tree, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) {
        if (!m_showing)
            m_presenter.setComponentChecked(item->data(0, Qt::UserRole).toInt(),
                                            item->checkState(0) == Qt::Checked);
    });
    return group;
}

QWidget* ConfigView::buildPreferences()
{
    UserPreferences& prefs = m_presenter.preferences();
    auto* widget = new QWidget;
    auto* layout = new QVBoxLayout(widget);
    m_notEditable = new QLabel(UserPreferences::notEditableText(), widget);
    m_notEditable->setVisible(!prefs.isEditable());
    layout->addWidget(m_notEditable);
    auto* form = new QFormLayout;
    auto* sortOrder = new QComboBox(widget);
    sortOrder->setMaximumWidth(300);
    sortOrder->addItem(QStringLiteral("(the agency's default)"), QString());
    for (const Choice& c : m_presenter.choices(QStringLiteral("DSORT_ORDER")))
        sortOrder->addItem(c.text, c.value);
    connect(sortOrder, &QComboBox::activated, this, [this, sortOrder](int i) {
        if (!m_showing)
            m_presenter.preferences().setValue(QStringLiteral("DSort_Order"), sortOrder->itemData(i));
    });
    m_preferenceEditors.insert(QStringLiteral("DSORT_ORDER"), sortOrder);
    form->addRow(QStringLiteral("Client Sort Order:"), sortOrder);

    m_tabs = new QListWidget(widget);
    m_tabs->setObjectName(QStringLiteral("Visible_Tabs"));
    for (const UserPreferences::TabPage& page : UserPreferences::tabPages()) {
        auto* item = new QListWidgetItem(page.name, m_tabs);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    }
    m_tabs->setMaximumHeight(230);
    m_tabs->setMaximumWidth(300);
    m_tabs->installEventFilter(this);
    connect(m_tabs, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (m_showing) return;
        m_presenter.preferences().setTabChecked(m_tabs->row(item), item->checkState() == Qt::Checked);
        showPreferences();
    });
    form->addRow(QStringLiteral("Visible Tabs:"), m_tabs);

    m_preferredTab = new QComboBox(widget);
    m_preferredTab->setMaximumWidth(300);
    connect(m_preferredTab, &QComboBox::activated, this, [this](int i) {
        if (!m_showing)
            m_presenter.preferences().setValue(QStringLiteral("DTab"), m_preferredTab->itemData(i));
    });
    form->addRow(QStringLiteral("Preferred Tab:"), m_preferredTab);

    auto* conserve =
        new QCheckBox(QStringLiteral("Conserve Resources (build only the page in view)"), widget);
    connect(conserve, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_showing)
            m_presenter.preferences().setValue(QStringLiteral("Conserve_Resources"),
                                               on ? QStringLiteral("Y") : QStringLiteral("N"));
    });
    m_preferenceEditors.insert(QStringLiteral("CONSERVE_RESOURCES"), conserve);
    form->addRow(QString(), conserve);
    for (const auto& [column, label] : UserPreferences::preferredReportColumns()) {
        auto* spin = new QSpinBox(widget);
        spin->setRange(0, 999);
        spin->setMaximumWidth(120);
        const QString name = column;
        connect(spin, &QSpinBox::valueChanged, this, [this, name](int v) {
            if (!m_showing) m_presenter.preferences().setValue(name, v);
        });
        m_preferenceEditors.insert(column.toUpper(), spin);
        form->addRow(label, spin);
    }
    layout->addLayout(form);
    layout->addStretch();
    for (QWidget* w : m_preferenceEditors)
        w->setEnabled(prefs.isEditable());
    m_tabs->setEnabled(prefs.isEditable());
    m_preferredTab->setEnabled(prefs.isEditable());
    return widget;
}

QWidget* ConfigView::buildUsers()
{
    auto* widget = new QWidget;
    auto* layout = new QVBoxLayout(widget);
    m_users = new QTableWidget(widget);
    m_users->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_users->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_users->verticalHeader()->setVisible(false);
    m_users->verticalHeader()->setDefaultSectionSize(m_users->fontMetrics().height() + 8);
    layout->addWidget(m_users);
    auto* row = new QHBoxLayout;
    row->addWidget(commandButtonFor(int(Command::ShowLogIns), widget));
    row->addStretch();
    layout->addLayout(row);
    showUsers();
    return widget;
}

QWidget* ConfigView::buildEventDefaults()
{
    auto* group = new QGroupBox(QStringLiteral("Default Hours and Sessions of Each Event"));
    auto* layout = new QVBoxLayout(group);
    m_eventDefaults = new QTableWidget(group);
    m_eventDefaults->setColumnCount(4);
    m_eventDefaults->setHorizontalHeaderLabels({QStringLiteral("Event"), QStringLiteral("Description"),
                                                QStringLiteral("Default Hours"),
                                                QStringLiteral("Default Sessions")});
    m_eventDefaults->verticalHeader()->setVisible(false);
    m_eventDefaults->verticalHeader()->setDefaultSectionSize(m_eventDefaults->fontMetrics().height() + 8);
    m_eventDefaults->setMinimumHeight(220);
    layout->addWidget(m_eventDefaults);
    connect(m_eventDefaults, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
        if (m_showing || item->column() < 2) return;
        bool ok = false;
        const int value = item->text().trimmed().toInt(&ok);
        const QVariant eventId = m_eventDefaults->item(item->row(), 0)->data(Qt::UserRole);
        if (ok)
            m_presenter.setEventDefault(eventId,
                                        item->column() == 2 ? QStringLiteral("DEFAULT_HOURS")
                                                            : QStringLiteral("DEFAULT_SESSIONS"),
                                        value);
        // The grid is filled again once this item's change has been handled.
        QMetaObject::invokeMethod(this, &ConfigView::showEventDefaults, Qt::QueuedConnection);
    });
    showEventDefaults();
    return group;
}

void ConfigView::showEventDefaults()
{
    m_showing = true;
    const QList<TFormEditConfig::EventDefault> rows = m_presenter.eventDefaults();
    m_eventDefaults->setRowCount(int(rows.size()));
    for (int r = 0; r < int(rows.size()); ++r) {
        auto* id = new QTableWidgetItem(rows[r].eventId.toString());
        id->setData(Qt::UserRole, rows[r].eventId);
        id->setFlags(id->flags() & ~Qt::ItemIsEditable);
        auto* description = new QTableWidgetItem(rows[r].description);
        description->setFlags(description->flags() & ~Qt::ItemIsEditable);
        m_eventDefaults->setItem(r, 0, id);
        m_eventDefaults->setItem(r, 1, description);
        m_eventDefaults->setItem(r, 2, new QTableWidgetItem(rows[r].hours.toString()));
        m_eventDefaults->setItem(r, 3, new QTableWidgetItem(rows[r].sessions.toString()));
    }
    m_eventDefaults->resizeColumnsToContents();
    m_showing = false;
}

void ConfigView::showUsers()
{
    const ResultSet rows = m_presenter.systemUsers();
    const QStringList titles = {QStringLiteral("User ID"),      QStringLiteral("Name"),
                                QStringLiteral("Nutritionist"), QStringLiteral("Driver"),
                                QStringLiteral("Volunteer"),    QStringLiteral("Preferred Tab")};
    m_users->setColumnCount(int(titles.size()));
    m_users->setHorizontalHeaderLabels(titles);
    m_users->setRowCount(int(rows.rowCount()));
    for (int r = 0; r < int(rows.rowCount()); ++r)
        for (int c = 0; c < int(titles.size()); ++c) {
            const QVariant v = rows.value(r, c);
            const QString text = v.typeId() == QMetaType::Bool
                                     ? (v.toBool() ? QStringLiteral("Yes") : QString())
                                     : v.toString();
            m_users->setItem(r, c, new QTableWidgetItem(text));
        }
    m_users->resizeColumnsToContents();
}

void ConfigView::changed(const QString& column, const QVariant& value)
{
    if (m_showing) return;
    m_presenter.setValue(column, value);
    showDependent();
}

void ConfigView::showValues()
{
    m_showing = true;
    for (auto it = m_editors.cbegin(); it != m_editors.cend(); ++it) {
        const QVariant value = m_presenter.value(it.key());
        QWidget* editor = it.value();
        if (auto* box = qobject_cast<QCheckBox*>(editor))
            box->setChecked(value.typeId() == QMetaType::Bool ? value.toBool()
                                                              : value.toString() == QLatin1String("Y"));
        else if (auto* text = qobject_cast<QPlainTextEdit*>(editor)) {
            if (text->toPlainText() != value.toString()) text->setPlainText(value.toString());
        } else if (auto* list = qobject_cast<QComboBox*>(editor))
            list->setCurrentIndex(list->findData(value.isNull() ? QVariant(QString()) : value));
        else if (auto* spin = qobject_cast<QSpinBox*>(editor))
            spin->setValue(value.toInt());
        else if (auto* real = qobject_cast<QDoubleSpinBox*>(editor))
            real->setValue(value.toDouble());
        else if (auto* line = qobject_cast<QLineEdit*>(editor)) {
            if (line->text() != value.toString()) line->setText(value.toString());
        }
    }
    for (int bit = 0; bit < m_mealBoxes.size(); ++bit)
        m_mealBoxes[bit]->setChecked(m_presenter.isMealChecked(bit));
    m_showing = false;
    showTree();
    showPreferences();
    showDependent();
}

// What follows other settings: the special meals, the follow-up fields, the
// meals list and the session length in words.
void ConfigView::showDependent()
{
    m_showing = true;
    for (auto it = m_editors.cbegin(); it != m_editors.cend(); ++it) {
        it.value()->setEnabled(m_presenter.isFieldEnabled(it.key()));
        if (it.key().startsWith(QLatin1String("SPECIAL")))
            if (auto* line = qobject_cast<QLineEdit*>(it.value()))
                if (line->text() != m_presenter.value(it.key()).toString())
                    line->setText(m_presenter.value(it.key()).toString());
    }
    if (m_meals) m_meals->setVisible(m_presenter.mealsListVisible());
    if (m_sessionWords) m_sessionWords->setText(m_presenter.sessionLengthWords());
    m_showing = false;
}

void ConfigView::showTree()
{
    if (!m_tree) return;
    m_showing = true;
    m_tree->clear();
    QList<QTreeWidgetItem*> parents;
    const QList<ComponentTree::Node>& nodes = m_presenter.componentTree().nodes();
    for (int i = 0; i < nodes.size(); ++i) {
        const ComponentTree::Node& node = nodes[i];
        while (parents.size() > node.level)
            parents.removeLast();
        auto* item = parents.isEmpty() ? new QTreeWidgetItem(m_tree) : new QTreeWidgetItem(parents.last());
        item->setText(0, node.text);
        item->setData(0, Qt::UserRole, i);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(0, node.checked ? Qt::Checked : Qt::Unchecked);
        while (parents.size() < node.level + 1)
            parents.append(item);
    }
    m_tree->expandToDepth(0);
    m_showing = false;
}

void ConfigView::showPreferences()
{
    UserPreferences& prefs = m_presenter.preferences();
    if (!prefs.isEditable()) return;
    m_showing = true;
    for (int i = 0; i < m_tabs->count(); ++i)
        m_tabs->item(i)->setCheckState(prefs.isTabChecked(i) ? Qt::Checked : Qt::Unchecked);
    auto* sort = qobject_cast<QComboBox*>(m_preferenceEditors.value(QStringLiteral("DSORT_ORDER")));
    sort->setCurrentIndex(std::max(0, sort->findData(prefs.value(QStringLiteral("DSort_Order")).toString())));
    qobject_cast<QCheckBox*>(m_preferenceEditors.value(QStringLiteral("CONSERVE_RESOURCES")))
        ->setChecked(prefs.value(QStringLiteral("Conserve_Resources")).toString() == QLatin1String("Y"));
    for (const auto& [column, label] : UserPreferences::preferredReportColumns())
        qobject_cast<QSpinBox*>(m_preferenceEditors.value(column.toUpper()))
            ->setValue(prefs.value(column).toInt());
    m_preferredTab->clear();
    for (const Choice& c : prefs.preferredTabChoices())
        m_preferredTab->addItem(c.text.section(u'\t', 0, 0), c.value);
    m_preferredTab->setCurrentIndex(m_preferredTab->findData(prefs.value(QStringLiteral("DTab")).toInt()));
    m_showing = false;
}

bool ConfigView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusOut && !m_closing) {
        if (watched == m_tree) {
            m_presenter.leaveComponentTree();
        } else if (watched == m_tabs) {
            m_presenter.preferences().leaveTabList();
            showPreferences();
        } else if (auto* text = qobject_cast<QPlainTextEdit*>(watched)) {
            if (!m_presenter.leaveMemo(text->objectName()))
                QMetaObject::invokeMethod(
                    text, [text] { text->setFocus(); }, Qt::QueuedConnection);
        }
    }
    return QDialog::eventFilter(watched, event);
}

void ConfigView::runCommand(int command)
{
    TDataModule1& module = m_presenter.module();
    switch (Command(command)) {
    case Command::SelectFont: {
        bool ok = false;
        const QFont current(
            m_presenter.value(QStringLiteral("DELIV_DEFAULT_FONT_NAME")).toString(),
            std::max(6, m_presenter.value(QStringLiteral("DELIV_DEFAULT_FONT_SIZE")).toInt()));
        const QFont font =
            QFontDialog::getFont(&ok, current, this, TFormEditConfig::commandText(Command::SelectFont));
        if (ok && m_presenter.setDeliveryFont(font.family(), font.pointSize())) {
            showValues();
            if (auto* sample = editor(QStringLiteral("DELIV_DEFAULT_FONT_DEMO"))) sample->setFont(font);
        }
        break;
    }
    case Command::AssessmentVisibility:
    case Command::ScreeningVisibility: {
        TVisibleFieldsDlg dialog(module, Command(command) == Command::AssessmentVisibility
                                             ? VisibleFieldsList::Assessments
                                             : VisibleFieldsList::Screening);
        VisibleFieldsView view(dialog, module.ui(), this);
        keepPlacement(view, module.userSettings(), QStringLiteral("TVisibleFieldsDlg"), QSize(760, 480));
        view.exec();
        break;
    }
    case Command::AssessmentChoices:
    case Command::ScreeningChoices:
        showReferenceEditor(QStringLiteral("TFormCustomLookupChoices"), module.services(), this, &module.userSettings());
        break;
    case Command::SetDefaultItems: {
        TFormSetDefaultDeliveries defaults(module.services());
        SetDefaultDeliveriesView view(defaults, module.userSettings(), this);
        view.exec();
        break;
    }
    case Command::ShowLogIns: {
        TFormDisplayLogins logins(module.db());
        DisplayLoginsView view(logins, module.ui(), module.userSettings(), this);
        view.exec();
        break;
    }
    case Command::RepopulateTree:
        m_presenter.repopulateComponentTree();
        showTree();
        break;
    case Command::Close:
        close();
        break;
    default:
        break;
    }
}

void ConfigView::done(int result)
{
    // Escape and the window's close button both come here.
    m_closing = true;
    const bool mayClose = m_presenter.close();
    m_closing = false;
    if (!mayClose) return;
    saveFormPosition(*this, m_presenter.module().userSettings(), objectName());
    QDialog::done(result);
}

} // namespace kb::ui
