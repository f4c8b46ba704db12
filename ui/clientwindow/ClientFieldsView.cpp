#include "clientwindow/ClientFieldsView.h"

#include "FormPlacement.h"
#include "clientwindow/DataSetTableModel.h"
#include "clientwindow/DateField.h"
#include "clientwindow/PageGridModel.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "records/RecordServices.h"
#include "session/TDataModule1.h"
#include "settings/SettingsFile.h"
#include "settings/TVisibleFieldsDlg.h"
#include "window/ClientCommands.h"
#include "window/ClientPageData.h"
#include "window/PageGridEditing.h"
#include "window/TFormClients.h"

#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QTableView>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

using K = ClientFieldKind;

const QString GridSection = QStringLiteral("ClientEdit");

// The keys the grids' column widths are kept under.
QString gridKey(const QString& grid)
{
    static const QHash<QString, QString> keys = {
        {QStringLiteral("QueryServiceApps"), QStringLiteral("ServiceApps")},
        {QStringLiteral("QueryDocs"), QStringLiteral("DocUses")},
        {QStringLiteral("QueryConditions"), QStringLiteral("ConditionUses")},
        {QStringLiteral("QueryRelationships"), QStringLiteral("Relationships")},
        {QStringLiteral("Individuals"), QStringLiteral("AllIndividuals")},
        {QStringLiteral("QuerySuspends"), QStringLiteral("Suspends")},
        {QStringLiteral("QueryEvents"), QStringLiteral("Events")},
        {QStringLiteral("QueryClientDiseases"), QStringLiteral("Diseases")},
        {QStringLiteral("QueryCaseManagement"), QStringLiteral("CaseManagement")},
    };
    return keys.value(grid, grid);
}

// The client's own address fields, which show the alternate address while
// its tab is chosen; the alternate row names its columns alike.
const QStringList AlternateFields = {QStringLiteral("ADDRESS1"),   QStringLiteral("ADDRESS2"),
                                     QStringLiteral("CITY"),       QStringLiteral("STATE"),
                                     QStringLiteral("ZIP"),        QStringLiteral("PHONE"),
                                     QStringLiteral("PHONE_DESC"), QStringLiteral("DIRECTIONS")};

bool wide(const ClientFieldInfo& info)
{
    return info.kind == K::Memo || info.kind == K::CheckList;
}

int characterWidth(const QWidget* w, int characters)
{
    return w->fontMetrics().averageCharWidth() * characters + 16;
}

} // namespace

ClientFieldsView::ClientFieldsView(TFormClients& presenter, SettingsFile& settings, QObject* parent)
    : QObject(parent), m_presenter(presenter), m_settings(settings)
{
    // The funding use's rate groups follow its method.
    connect(&m_presenter, &TFormClients::pageGroupsChanged, this, &ClientFieldsView::refresh);
}

bool ClientFieldsView::isAlternateField(const QString& field) const
{
    return m_alternate && AlternateFields.contains(field);
}

QVariant ClientFieldsView::shownValue(const ClientFieldInfo& info) const
{
    if (info.field == client_field::Age) return m_presenter.controls().ageText;
    if (isAlternateField(info.field)) return m_presenter.alternateValue(info.field);
    return m_presenter.value(info.field);
}

void ClientFieldsView::edited(const QString& field, const QVariant& value)
{
    if (m_loading) return;
    if (isAlternateField(field))
        m_presenter.setAlternateValue(field, value);
    else if (!m_presenter.setValue(field, value))
        refresh(); // refused: the field shows the row again
}

QWidget* ClientFieldsView::makeEditor(const ClientFieldInfo& info, QWidget* parent)
{
    const QString field = info.field;
    const TableDataSet& clients = m_presenter.clients();
    const int index = clients.fieldIndex(field);
    const int width = index >= 0 ? clients.field(index).width : 0;
    switch (info.kind) {
    case K::Memo: {
        auto* memo = new QPlainTextEdit(parent);
        memo->setTabChangesFocus(true);
        memo->setMinimumHeight(memo->fontMetrics().lineSpacing() * 3 + 12);
        memo->setMaximumHeight(memo->fontMetrics().lineSpacing() * 6 + 12);
        connect(memo, &QPlainTextEdit::textChanged, this,
                [this, field, memo] { edited(field, memo->toPlainText()); });
        memo->installEventFilter(this);
        return memo;
    }
    case K::Date: {
        auto* date = new DateField(parent);
        connect(date, &DateField::dateEdited, this,
                [this, field](const QDate& d) { edited(field, d.isValid() ? QVariant(d) : QVariant()); });
        connect(date, &DateField::editingFinished, this, [this, field] { m_presenter.fieldLeft(field); });
        return date;
    }
    case K::Check:
    case K::YesNo: {
        auto* box =
            new QCheckBox(info.kind == K::Check ? m_presenter.label(field, info.label) : QString(), parent);
        const bool yesNo = info.kind == K::YesNo;
        connect(box, &QCheckBox::toggled, this, [this, field, yesNo](bool on) {
            edited(field, yesNo ? QVariant(on ? QStringLiteral("Y") : QStringLiteral("N")) : QVariant(on));
        });
        return box;
    }
    case K::Choice: {
        if (field == QLatin1String("SVCS_USED") && m_presenter.lists().deliveryServiceAsRadio) {
            auto* holder = new QWidget(parent);
            holder->setObjectName(QStringLiteral("RadioList"));
            auto* layout = new QGridLayout(holder);
            layout->setContentsMargins(0, 0, 0, 0);
            auto* group = new QButtonGroup(holder);
            group->setObjectName(QStringLiteral("Buttons"));
            connect(group, &QButtonGroup::idClicked, this, [this, field](int id) { edited(field, id); });
            return holder;
        }
        auto* list = new QComboBox(parent);
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list->setMinimumContentsLength(8);
        connect(list, &QComboBox::activated, this, [this, field, list](int i) {
            const QVariant value = list->itemData(i);
            edited(field,
                   value.toString().isEmpty() && field != QLatin1String("STATUS") ? QVariant() : value);
        });
        return list;
    }
    case K::History: {
        auto* list = new QComboBox(parent);
        list->setEditable(true);
        list->setInsertPolicy(QComboBox::NoInsert);
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list->setMinimumContentsLength(8);
        if (width > 0) list->lineEdit()->setMaxLength(width);
        connect(list->lineEdit(), &QLineEdit::textEdited, this,
                [this, field](const QString& text) { edited(field, text); });
        connect(list, &QComboBox::activated, this, [this, field, list](int i) {
            edited(field, list->itemText(i));
            m_presenter.fieldLeft(field);
        });
        connect(list->lineEdit(), &QLineEdit::editingFinished, this,
                [this, field] { m_presenter.fieldLeft(field); });
        return list;
    }
    case K::CheckList: {
        auto* list = new QListWidget(parent);
        list->setMinimumHeight(list->fontMetrics().lineSpacing() * 4 + 8);
        list->setMaximumHeight(list->fontMetrics().lineSpacing() * 7 + 8);
        connect(list, &QListWidget::itemChanged, this, [this, field](QListWidgetItem* item) {
            if (m_loading) return;
            if (!m_presenter.setListBit(field, item->data(Qt::UserRole).toInt(),
                                        item->checkState() == Qt::Checked))
                refresh();
        });
        return list;
    }
    case K::Display: {
        auto* label = new QLabel(parent);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        return label;
    }
    case K::Text:
    case K::Number:
    case K::Money: {
        auto* line = new QLineEdit(parent);
        if (width > 0 && info.kind == K::Text) {
            line->setMaxLength(width);
            line->setMinimumWidth(characterWidth(line, std::min(width, 10)));
        } else {
            line->setMaximumWidth(characterWidth(line, 12));
        }
        const bool number = info.kind != K::Text;
        connect(line, &QLineEdit::textEdited, this, [this, field, number](const QString& text) {
            edited(field, number && text.trimmed().isEmpty() ? QVariant() : QVariant(text));
        });
        connect(line, &QLineEdit::editingFinished, this, [this, field] { m_presenter.fieldLeft(field); });
        if (field == QLatin1String("SOCIAL_SECURITY_NUMBER")) line->installEventFilter(this);
        return line;
    }
    }
    return new QWidget(parent);
}

QWidget* ClientFieldsView::makeRowEditor(const ClientFieldInfo& info, const QString& grid, QWidget* parent)
{
    const QString field = info.field;
    if (info.kind == K::Choice) {
        auto* list = new QComboBox(parent);
        list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        connect(list, &QComboBox::activated, this,
                [this, grid, field, list](int i) { rowEdited(grid, field, list->itemData(i), list); });
        return list;
    }
    auto* line = new QLineEdit(parent);
    line->setMaximumWidth(characterWidth(line, 12));
    const bool amount = info.kind == K::Money || info.kind == K::Number;
    if (amount)
        line->setValidator(new QRegularExpressionValidator(
            QRegularExpression(QStringLiteral("\\d{0,9}([.]\\d{0,4})?")), line));
    connect(line, &QLineEdit::textEdited, this, [this, grid, field, line, amount](const QString& text) {
        if (!amount || text.trimmed().isEmpty()) {
            rowEdited(grid, field, text.trimmed().isEmpty() ? QVariant() : QVariant(text), line);
            return;
        }
        bool ok = false;
        const double number = QLocale::c().toDouble(text, &ok);
        if (ok) rowEdited(grid, field, number, line);
    });
    // Enter saves the row through its rules, as it does in the grid.
    connect(line, &QLineEdit::returnPressed, this, [this, grid] {
        m_presenter.pageGrids().postRow(grid);
        refresh();
        cellRowsChanged(grid);
    });
    return line;
}

// What is typed beside a grid goes into its current row as a cell would:
// the row goes into edit and is saved, through its rules, when it is left.
void ClientFieldsView::rowEdited(const QString& grid, const QString& field, const QVariant& value,
                                 QWidget* editor)
{
    if (m_loading) return;
    PageGridEditing& editing = m_presenter.pageGrids();
    m_typingIn = editor;
    const bool done = editing.setCell(grid, editing.currentRow(grid), field, value);
    m_typingIn = nullptr;
    if (!done) refresh(); // refused: the field shows the row again
    cellRowsChanged(grid);
}

void ClientFieldsView::showRowField(Bound& bound)
{
    const PageGridEditing& editing = m_presenter.pageGrids();
    const int row = editing.currentRow(bound.row);
    const QVariant value = editing.editValue(bound.row, row, bound.info.field);
    const bool readOnly = !editing.isEditable(bound.row, row, bound.info.field);
    if (auto* line = qobject_cast<QLineEdit*>(bound.editor)) {
        if (line != m_typingIn) {
            const QString text = value.isNull()                ? QString()
                                 : bound.info.kind == K::Money ? QString::number(value.toDouble(), 'f', 2)
                                                               : DataSetTableModel::displayText(value);
            if (line->text() != text) line->setText(text);
        }
        line->setReadOnly(readOnly);
    } else if (auto* combo = qobject_cast<QComboBox*>(bound.editor)) {
        const int index = value.isNull() ? 0 : combo->findData(value.toString().trimmed());
        combo->setCurrentIndex(std::max(0, index));
        combo->setEnabled(!readOnly);
    }
}

void ClientFieldsView::bindCellEditing(QTableView& view, PageGridModel& model)
{
    PageGridEditing& editing = m_presenter.pageGrids();
    const QString grid = model.grid();
    view.setItemDelegate(new PageGridDelegate(editing, model, &view));
    view.setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                         QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    view.setToolTip(QStringLiteral("Type into the cells; the row is saved when you leave it or press Enter, "
                                   "and Esc undoes its changes"));
    view.installEventFilter(this);
    // Leaving a row saves it; a row its rules refuse keeps the cursor.
    connect(view.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this, grid, &view, &editing](const QModelIndex& current) {
                if (m_syncing || !current.isValid()) return;
                if (!editing.moveTo(grid, current.row())) showCurrentRow(view, grid);
                cellRowsChanged(grid);
            });
    connect(&model, &QAbstractItemModel::dataChanged, this, [this, grid] { cellRowsChanged(grid); });
}

// The grid's cursor on the row its data set stands on.
void ClientFieldsView::showCurrentRow(QTableView& view, const QString& grid)
{
    const int row = m_presenter.pageGrids().currentRow(grid);
    m_syncing = true;
    if (row >= 0 && row < view.model()->rowCount())
        view.selectionModel()->setCurrentIndex(
            view.model()->index(row, std::max(0, view.currentIndex().column())),
            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_syncing = false;
}

// A row of a page grid was typed into, left or saved: its details follow
// it, and the grid shows what the rules made of it.
void ClientFieldsView::cellRowsChanged(const QString& grid)
{
    if (m_syncing) return;
    m_syncing = true;
    QStringList moved{grid};
    if (auto* own = qobject_cast<PageGridModel*>(m_models.value(grid))) own->sync();
    for (const PageQueryDefinition& d : pageQueryDefinitions())
        if (d.master == grid && m_models.contains(d.name)) {
            m_models.value(d.name)->reload();
            moved.append(d.name);
        }
    m_syncing = false;
    for (const QString& name : moved) {
        QTableView* view = m_grids.value(name);
        if (!view) continue;
        if (qobject_cast<PageGridModel*>(view->model())) showCurrentRow(*view, name);
        // Until the user sets them, columns fit what was typed.
        if (!m_sizedByUser.contains(name) && view->model()->columnCount() > 0) {
            m_autoSizing = true;
            view->horizontalHeader()->resizeSections(QHeaderView::ResizeToContents);
            m_autoSizing = false;
        }
    }
}

void ClientFieldsView::editCurrentRow(const QString& grid)
{
    QTableView* view = m_grids.value(grid);
    auto* model = view ? qobject_cast<PageGridModel*>(view->model()) : nullptr;
    if (!model) return;
    model->sync();
    showCurrentRow(*view, grid);
    const int row = m_presenter.pageGrids().currentRow(grid);
    for (int c = 0; row >= 0 && c < model->columnCount(); ++c) {
        const QModelIndex index = model->index(row, c);
        if (model->flags(index) & Qt::ItemIsEditable) {
            view->setFocus();
            m_syncing = true;
            view->setCurrentIndex(index);
            m_syncing = false;
            view->edit(index);
            return;
        }
    }
}

bool ClientFieldsView::eventFilter(QObject* watched, QEvent* event)
{
    // Enter saves the row of a page grid, Esc undoes it, while no cell is open.
    if (auto* view = qobject_cast<QTableView*>(watched); view && event->type() == QEvent::KeyPress) {
        auto* model = qobject_cast<PageGridModel*>(view->model());
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (model && !view->indexWidget(view->currentIndex()) &&
            (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape)) {
            PageGridEditing& editing = m_presenter.pageGrids();
            if (!editing.isEditing(model->grid())) return false;
            if (key == Qt::Key_Escape)
                editing.cancelRow(model->grid());
            else
                editing.postRow(model->grid());
            model->sync();
            cellRowsChanged(model->grid());
            return true;
        }
    }
    if (event->type() == QEvent::FocusIn) {
        // The full number shows once the record is being edited.
        for (const Bound& b : m_bound)
            if (b.editor == watched && b.info.field == QLatin1String("SOCIAL_SECURITY_NUMBER") &&
                !m_presenter.isEditing() && !m_presenter.fieldsReadOnly())
                m_presenter.edit();
    } else if (event->type() == QEvent::FocusOut) {
        for (const Bound& b : m_bound)
            if (b.editor == watched && b.info.kind == K::Memo) {
                if (isAlternateField(b.info.field))
                    m_presenter.alternateTabLeft();
                else
                    m_presenter.fieldLeft(b.info.field);
            }
    }
    return QObject::eventFilter(watched, event);
}

void ClientFieldsView::addWeekdayPopUp(QWidget& owner, const std::array<QString, 3>& commands,
                                       const std::function<void()>& before)
{
    static const QString texts[] = {QStringLiteral("Reverse Weekdays"), QStringLiteral("Reverse Weekends"),
                                    QStringLiteral("Reverse All Days")};
    owner.setContextMenuPolicy(Qt::ActionsContextMenu);
    for (size_t i = 0; i < commands.size(); ++i) {
        auto* action = new QAction(texts[i], &owner);
        action->setObjectName(commands[i]);
        connect(action, &QAction::triggered, this, [this, command = commands[i], before] {
            if (before) before();
            m_presenter.run(command);
        });
        owner.addAction(action);
    }
}

QGroupBox* ClientFieldsView::buildGroup(const ClientFieldGroup& group, QWidget* parent)
{
    auto* box = new QGroupBox(group.caption, parent);
    box->setObjectName(group.caption);
    auto* layout = new QVBoxLayout(box);
    const bool days = group.caption == QLatin1String("Service Days");
    if (!group.fields.empty()) {
        if (days) {
            auto* row = new QHBoxLayout;
            for (const ClientFieldInfo& info : group.fields) {
                QWidget* editor = makeEditor(info, box);
                editor->setObjectName(info.field);
                row->addWidget(editor);
                m_bound.append({info, editor, nullptr});
            }
            row->addStretch();
            layout->addLayout(row);
            // The pop-up of the weekday boxes.
            addWeekdayPopUp(*box, {client_command::InvertWeekdays, client_command::InvertWeekends,
                                   client_command::InvertAllDays},
                            {});
        } else {
            auto* grid = new QGridLayout;
            grid->setHorizontalSpacing(10);
            int narrow = 0;
            for (const ClientFieldInfo& info : group.fields)
                narrow += wide(info) ? 0 : 1;
            const int columns = narrow > 6 ? 2 : 1;
            int row = 0;
            int column = 0;
            for (const ClientFieldInfo& info : group.fields) {
                QWidget* editor =
                    group.row.isEmpty() ? makeEditor(info, box) : makeRowEditor(info, group.row, box);
                editor->setObjectName(info.field);
                QWidget* cell = editor;
                if (!info.command.isEmpty()) {
                    // The field and its button share the cell.
                    cell = new QWidget(box);
                    auto* row = new QHBoxLayout(cell);
                    row->setContentsMargins(0, 0, 0, 0);
                    row->setSpacing(4);
                    editor->setParent(cell);
                    row->addWidget(editor, 1);
                    auto* button = new QPushButton(cell);
                    button->setObjectName(info.command);
                    const QString id = info.command;
                    connect(button, &QPushButton::clicked, this, [this, id] { m_presenter.run(id); });
                    m_buttons.insert(id, button);
                    row->addWidget(button);
                }
                QLabel* label = nullptr;
                if (info.kind != K::Check && !info.label.isEmpty()) {
                    label = new QLabel(info.label, box);
                    label->setBuddy(editor);
                }
                // A click on "Schedule:" shows the delivery weeks.
                if (label && info.field == QLatin1String("ONGOING_FREQUENCY")) {
                    label->setText(QStringLiteral("<a href=\"#\">%1</a>").arg(info.label.toHtmlEscaped()));
                    label->setToolTip(QStringLiteral("Show the delivery weeks of this schedule"));
                    connect(label, &QLabel::linkActivated, this,
                            [this] { m_presenter.run(client_command::ScheduleCalendar); });
                }
                if (wide(info)) {
                    if (column != 0) {
                        ++row;
                        column = 0;
                    }
                    if (label) grid->addWidget(label, row, 0, Qt::AlignTop);
                    grid->addWidget(cell, row, 1, 1, columns * 2 - 1);
                    ++row;
                } else {
                    if (label) grid->addWidget(label, row, column * 2);
                    // Short entries keep to the left of their cell.
                    const bool narrow = info.kind == K::Number || info.kind == K::Money ||
                                        info.kind == K::Display || info.kind == K::YesNo ||
                                        !group.row.isEmpty();
                    grid->addWidget(cell, row, column * 2 + 1, narrow ? Qt::AlignLeft : Qt::Alignment());
                    if (++column == columns) {
                        column = 0;
                        ++row;
                    }
                }
                m_bound.append({info, editor, label, group.row});
            }
            for (int c = 0; c < columns; ++c)
                grid->setColumnStretch(c * 2 + 1, 1);
            layout->addLayout(grid);
        }
    }
    if (!group.grid.isEmpty()) {
        auto* view = new QTableView(box);
        view->setObjectName(group.grid);
        const bool inCells = PageGridEditing::isEditableGrid(group.grid);
        DataSetTableModel* model = inCells ? new PageGridModel(m_presenter.pageGrids(), group.grid, view)
                                           : new DataSetTableModel(view);
        view->setModel(model);
        view->setSelectionBehavior(QAbstractItemView::SelectRows);
        view->setSelectionMode(QAbstractItemView::SingleSelection);
        view->setEditTriggers(QAbstractItemView::NoEditTriggers);
        if (inCells) bindCellEditing(*view, *static_cast<PageGridModel*>(model));
        view->setAlternatingRowColors(true);
        view->setWordWrap(false);
        view->verticalHeader()->hide();
        view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 6);
        view->horizontalHeader()->setStretchLastSection(true);
        view->setMinimumHeight(view->fontMetrics().height() * 6);
        if (!group.editable)
            view->setToolTip(QStringLiteral("Shown for reading; changing it here is not available yet"));
        else if (!inCells)
            connect(view, &QTableView::doubleClicked, this,
                    [this, name = group.grid](const QModelIndex& index) { emit gridRowActivated(name, index.row()); });
        // The weekday pop-up of the funding grid works on the row it was opened on.
        if (group.grid == QLatin1String("QueryFundUses"))
            addWeekdayPopUp(*view, {client_command::ReverseWeekdays, client_command::ReverseWeekends,
                                    client_command::ReverseAllDays},
                            [this, view] {
                                DataSet* set = gridData(QStringLiteral("QueryFundUses"));
                                const int row = view->currentIndex().row();
                                if (set && set->isActive() && row >= 0)
                                    m_presenter.module().services().guarded([&] { set->setRecNo(row + 1); });
                            });
        m_grids.insert(group.grid, view);
        m_models.insert(group.grid, model);
        m_gridColumns.insert(group.grid, group.columns);
        const QString name = group.grid;
        // The last column stretches with the window: that is no choice of the user's.
        connect(view->horizontalHeader(), &QHeaderView::sectionResized, this, [this, name, view](int section) {
            if (!m_autoSizing && section != view->horizontalHeader()->count() - 1) m_sizedByUser.insert(name);
        });
        layout->addWidget(view, 1);
    }
    if (!group.commands.isEmpty()) {
        auto* row = new QHBoxLayout;
        for (const QString& id : group.commands) {
            auto* button = new QPushButton(box);
            button->setObjectName(id);
            connect(button, &QPushButton::clicked, this, [this, id] {
                m_presenter.run(id);
                // Hiding or showing the title rows is a change of layout: keep it.
                if (id == client_command::ShowColumnHeadings) {
                    applyServiceHeadings();
                    refreshButtons();
                    saveLayouts();
                }
            });
            m_buttons.insert(id, button);
            row->addWidget(button);
        }
        row->addStretch();
        layout->addLayout(row);
    }
    if (group.grid.isEmpty()) layout->addStretch();
    m_groups.append({&group, box});
    return box;
}

void ClientFieldsView::fillList(Bound& bound)
{
    const ClientFieldInfo& info = bound.info;
    const ClientLists& lists = m_presenter.lists();
    m_loading = true;
    if (auto* combo = qobject_cast<QComboBox*>(bound.editor)) {
        combo->clear();
        if (!bound.row.isEmpty()) {
            for (const ClientListEntry& e : m_presenter.pageGrids().choices(bound.row, info.field))
                combo->addItem(e.text, e.value);
        } else if (info.kind == K::History) {
            for (const ClientListEntry& e : lists.list(info.list))
                combo->addItem(e.text);
        } else if (info.field != QLatin1String("STATUS")) {
            combo->addItem(QString(), QString());
            for (const ClientListEntry& e : lists.list(info.list))
                combo->addItem(e.text, e.value);
        }
    } else if (auto* list = qobject_cast<QListWidget*>(bound.editor)) {
        list->clear();
        for (const ClientListEntry& e : lists.list(info.list)) {
            auto* item = new QListWidgetItem(e.text, list);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
            item->setData(Qt::UserRole, e.value);
            item->setCheckState(Qt::Unchecked);
        }
    } else if (bound.editor->objectName() == QLatin1String("SVCS_USED") &&
               bound.editor->findChild<QButtonGroup*>(QStringLiteral("Buttons"))) {
        auto* group = bound.editor->findChild<QButtonGroup*>(QStringLiteral("Buttons"));
        for (QAbstractButton* b : group->buttons()) {
            group->removeButton(b);
            delete b;
        }
        auto* grid = static_cast<QGridLayout*>(bound.editor->layout());
        int n = 0;
        for (const ClientListEntry& e : lists.list(info.list)) {
            auto* radio = new QRadioButton(e.text, bound.editor);
            group->addButton(radio, e.value.toInt());
            grid->addWidget(radio, n / 2, n % 2);
            ++n;
        }
    }
    m_loading = false;
}

void ClientFieldsView::refreshLists()
{
    for (Bound& bound : m_bound) {
        fillList(bound);
        const QString caption = m_presenter.label(bound.info.field, bound.info.label);
        if (bound.label)
            bound.label->setText(caption);
        else if (auto* box = qobject_cast<QCheckBox*>(bound.editor);
                 box && bound.info.kind == K::YesNo && !bound.label)
            box->setText(caption);
    }
    refresh();
}

void ClientFieldsView::show(Bound& bound)
{
    if (!bound.row.isEmpty()) {
        showRowField(bound);
        return;
    }
    const ClientFieldInfo& info = bound.info;
    const ClientControls& controls = m_presenter.controls();
    const QVariant value = shownValue(info);
    const bool readOnly =
        m_presenter.fieldsReadOnly() || (!isAlternateField(info.field) && !controls.isEnabled(info.field));
    const bool visible = m_presenter.isComponentVisible(info.component);
    (info.command.isEmpty() ? bound.editor : bound.editor->parentWidget())->setVisible(visible);
    if (bound.label) bound.label->setVisible(visible);
    if (auto* line = qobject_cast<QLineEdit*>(bound.editor)) {
        QString text = DataSetTableModel::displayText(value);
        if (info.field == QLatin1String("SOCIAL_SECURITY_NUMBER") && !m_presenter.isEditing())
            text = controls.socialSecurityText;
        if (line->text() != text) line->setText(text);
        line->setReadOnly(readOnly);
        line->setStyleSheet(controls.marked.contains(info.field) ? QStringLiteral("background: #fde2e2;")
                                                                 : QString());
    } else if (auto* memo = qobject_cast<QPlainTextEdit*>(bound.editor)) {
        if (memo->toPlainText() != value.toString()) memo->setPlainText(value.toString());
        memo->setReadOnly(readOnly);
    } else if (auto* date = qobject_cast<DateField*>(bound.editor)) {
        date->setDate(value.toDate());
        date->setReadOnly(readOnly);
        date->setEnabled(!readOnly);
    } else if (auto* box = qobject_cast<QCheckBox*>(bound.editor)) {
        box->setChecked(info.kind == K::YesNo ? value.toString() == QLatin1String("Y") : value.toBool());
        box->setEnabled(!readOnly);
    } else if (auto* combo = qobject_cast<QComboBox*>(bound.editor)) {
        if (info.field == QLatin1String("STATUS")) {
            combo->clear();
            bool found = false;
            for (const ClientListEntry& e : controls.statusChoices) {
                combo->addItem(e.text, e.value);
                found |= e.value.toString() == value.toString();
            }
            if (!found) combo->insertItem(0, value.toString(), value.toString());
        }
        if (info.kind == K::History) {
            if (combo->currentText() != value.toString()) combo->setEditText(value.toString());
        } else {
            int index = combo->findData(value.toString());
            if (index < 0 && !value.isNull()) {
                // A code the list does not hold is still shown as it stands.
                combo->addItem(value.toString(), value.toString());
                index = combo->count() - 1;
            }
            combo->setCurrentIndex(index < 0 ? 0 : index);
        }
        combo->setEnabled(!readOnly);
    } else if (auto* list = qobject_cast<QListWidget*>(bound.editor)) {
        const qint64 mask = value.toLongLong();
        for (int i = 0; i < list->count(); ++i) {
            QListWidgetItem* item = list->item(i);
            const int bit = item->data(Qt::UserRole).toInt();
            const Qt::CheckState state = (mask >> bit) & 1 ? Qt::Checked : Qt::Unchecked;
            if (item->checkState() != state) item->setCheckState(state);
            item->setFlags(readOnly ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        }
    } else if (auto* label = qobject_cast<QLabel*>(bound.editor)) {
        QString text =
            info.field == client_field::Suspended ? value.toString() : DataSetTableModel::displayText(value);
        if (info.field == QLatin1String("STATUS")) text = value.toString();
        label->setText(text);
        if (info.field == client_field::Suspended)
            label->setStyleSheet(text.isEmpty() ? QString()
                                                : QStringLiteral("color: #b00020; font-weight: bold;"));
    } else if (auto* group = bound.editor->findChild<QButtonGroup*>(QStringLiteral("Buttons"))) {
        group->setExclusive(false);
        for (QAbstractButton* b : group->buttons()) {
            b->setChecked(group->id(b) == value.toInt() && !value.isNull());
            b->setEnabled(!readOnly);
        }
        group->setExclusive(true);
    }
}

void ClientFieldsView::refresh()
{
    m_loading = true;
    for (Bound& bound : m_bound)
        show(bound);
    const ClientControls& controls = m_presenter.controls();
    for (const Group& g : m_groups) {
        if (!g.box) continue;
        const ClientFieldGroup& layout = *g.layout;
        // The directions of an alternate address say whose they are.
        if (layout.caption == QLatin1String("Directions"))
            g.box->setTitle(m_alternate ? controls.alternateDirectionsCaption : layout.caption);
        g.box->setVisible(controls.isVisible(layout.caption) &&
                          m_presenter.isComponentVisible(layout.component));
        g.box->setEnabled(controls.isEnabled(layout.caption));
        if (QTableView* view = m_grids.value(layout.grid)) view->setEnabled(controls.isEnabled(layout.grid));
    }
    m_loading = false;
    applyServiceHeadings();
    refreshButtons();
}

void ClientFieldsView::applyServiceHeadings()
{
    const bool shown = m_presenter.serviceColumnHeadings();
    for (const QString& grid :
         {QStringLiteral("QueryServiceApps"), QStringLiteral("QueryDocs"), QStringLiteral("QueryConditions")})
        if (QTableView* view = m_grids.value(grid)) view->horizontalHeader()->setVisible(shown);
}

void ClientFieldsView::refreshButtons()
{
    for (auto it = m_buttons.cbegin(); it != m_buttons.cend(); ++it) {
        const TFormClients::CommandState state = m_presenter.commandState(it.key());
        QPushButton* button = it.value();
        button->setText(QString(clientButtonCaption(it.key(), state.text))
                            .replace(QLatin1Char('&'), QStringLiteral("&&")));
        button->setVisible(state.visible);
        button->setEnabled(state.enabled);
        button->setToolTip(state.toolTip);
        button->setCheckable(state.checkable);
        if (state.checkable) button->setChecked(state.checked);
        QFont font = button->font();
        font.setBold(state.bold);
        button->setFont(font);
    }
}

DataSet* ClientFieldsView::gridData(const QString& name) const
{
    if (name == QLatin1String("Individuals"))
        return &m_presenter.module().table(QStringLiteral("Individuals"));
    return &m_presenter.pageData().query(name);
}

void ClientFieldsView::reloadGrids()
{
    for (auto it = m_models.cbegin(); it != m_models.cend(); ++it) {
        DataSetTableModel* model = it.value();
        QTableView* view = m_grids.value(it.key());
        if (!model->dataSet()) {
            QList<DataSetTableModel::Column> columns;
            const QList<VisibleField>* fields = nullptr;
            if (it.key() == QLatin1String("QueryAssessments"))
                fields = &m_presenter.assessmentColumns();
            else if (it.key() == QLatin1String("QueryNSIADLIADL"))
                fields = &m_presenter.screeningColumns();
            if (fields)
                for (const VisibleField& f : *fields)
                    columns.append({f.name, f.label});
            for (const QString& column : m_gridColumns.value(it.key())) {
                const QString field = column.section(QLatin1Char('='), 0, 0);
                QString title = column.section(QLatin1Char('='), 1);
                if (field.compare(QLatin1String("HIV_Aware"), Qt::CaseInsensitive) == 0)
                    title = m_presenter.lists().awareTitle;
                columns.append({field, title});
            }
            model->setDataSet(gridData(it.key()), columns);
            // Widths the user set in an earlier session come back.
            if (!m_settings.readString(GridSection, gridKey(it.key())).isEmpty()) {
                m_autoSizing = true;
                restoreColumnWidths(*view->horizontalHeader(), m_settings, GridSection, gridKey(it.key()));
                m_autoSizing = false;
                m_sizedByUser.insert(it.key());
            }
        } else if (view->isVisibleTo(view->window()) || model->rowCount() > 0) {
            model->reload();
        }
        if (qobject_cast<PageGridModel*>(model)) showCurrentRow(*view, it.key());
        // Until the user sets them, columns fit their titles and contents.
        if (!m_sizedByUser.contains(it.key()) && model->columnCount() > 0) {
            m_autoSizing = true;
            view->horizontalHeader()->resizeSections(QHeaderView::ResizeToContents);
            m_autoSizing = false;
        }
    }
}

void ClientFieldsView::saveLayouts()
{
    for (auto it = m_grids.cbegin(); it != m_grids.cend(); ++it)
        if (m_sizedByUser.contains(it.key()) && it.value()->model()->columnCount() > 0)
            saveColumnWidths(*it.value()->horizontalHeader(), m_settings, GridSection, gridKey(it.key()));
}

void ClientFieldsView::setAlternate(bool alternate)
{
    if (m_alternate == alternate) return;
    m_presenter.alternateTabLeft();
    m_alternate = alternate;
    refresh();
}

QWidget* ClientFieldsView::editor(const QString& field) const
{
    for (const Bound& b : m_bound)
        if (b.info.field.compare(field, Qt::CaseInsensitive) == 0) return b.editor;
    return nullptr;
}

QList<QWidget*> ClientFieldsView::editors(const QString& field) const
{
    QList<QWidget*> list;
    for (const Bound& b : m_bound)
        if (b.info.field.compare(field, Qt::CaseInsensitive) == 0) list.append(b.editor);
    return list;
}

} // namespace kb::ui
