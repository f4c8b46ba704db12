#include "EditBaseView.h"

#include "reference/TFormDietCombinations.h"
#include "reference/TFormEditBase.h"
#include "FormPlacement.h"
#include "catalogue/ColumnLabels.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

using Command = TFormEditBase::Command;

struct NavigatorButton
{
    Command command;
    const char* text;
};

const NavigatorButton Navigator[] = {
    {Command::First, "First"},   {Command::Prior, "Prior"},   {Command::Next, "Next"},
    {Command::Last, "Last"},     {Command::Insert, "Add"},    {Command::Delete, "Delete"},
    {Command::Post, "Post"},     {Command::Cancel, "Cancel"}, {Command::Refresh, "Refresh"},
};

const char* const Tips[] = {"First row", "Prior row", "Next row", "Last row", "Add a new row",
                            "Delete the selected row", "Save the changes to this row",
                            "Undo the changes to this row", "Read the rows again"};

QString shown(const QVariant& value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? QStringLiteral("Yes") : QStringLiteral("No");
    return value.toString();
}

} // namespace

EditBaseView::EditBaseView(TFormEditBase& presenter, QWidget* parent, SettingsFile* settings)
    : QDialog(parent), m_presenter(presenter), m_pages(new QTabWidget(this)), m_grid(new QTableWidget(this))
{
    setWindowTitle(presenter.caption());
    setObjectName(presenter.screen().formName);
    auto* layout = new QVBoxLayout(this);

    auto* navigator = new QHBoxLayout;
    for (const NavigatorButton& b : Navigator) {
        auto* button = new QPushButton(QString::fromLatin1(b.text), this);
        button->setToolTip(QString::fromLatin1(Tips[int(b.command)]));
        button->setAutoDefault(false);
        m_buttons.insert(int(b.command), button);
        navigator->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, command = b.command] {
            if (m_presenter.run(command) && command == Command::Insert) focusNewRow();
        });
    }
    navigator->addStretch();
    layout->addLayout(navigator);

    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->horizontalHeader()->setStretchLastSection(false);
    m_grid->setAlternatingRowColors(true);
    m_grid->setWordWrap(false);
    m_grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_grid->verticalHeader()->setDefaultSectionSize(m_grid->fontMetrics().height() + 6);
    connect(m_grid, &QTableWidget::cellDoubleClicked, this,
            [this](int row, int) { m_presenter.openRow(row); });
    if (presenter.hasIncrementalSearch()) {
        auto* browse = new QWidget(this);
        auto* browseLayout = new QVBoxLayout(browse);
        auto* searchRow = new QHBoxLayout;
        m_search = new QLineEdit(browse);
        m_search->setObjectName(QStringLiteral("IncrementalSearch"));
        m_search->setPlaceholderText(QStringLiteral("Type the first letters of a code or description"));
        m_search->setClearButtonEnabled(true);
        searchRow->addWidget(new QLabel(QStringLiteral("Search:"), browse));
        searchRow->addWidget(m_search, 1);
        browseLayout->addLayout(searchRow);
        browseLayout->addWidget(m_grid);
        connect(m_search, &QLineEdit::textEdited, this,
                [this](const QString& text) { m_presenter.searchIncrementally(text); });
        // Typing on the grid goes to the search.
        m_grid->installEventFilter(this);
        m_pages->addTab(browse, QStringLiteral("Browse"));
    } else {
        m_pages->addTab(m_grid, QStringLiteral("Browse"));
    }
    buildEditPage();
    connect(m_pages, &QTabWidget::currentChanged, this, [this](int index) {
        if (!m_showing)
            m_presenter.setPage(index == 0 ? TFormEditBase::Page::Browse : TFormEditBase::Page::Edit);
    });
    layout->addWidget(m_pages);

    if (presenter.offersMissingCombinations()) {
        m_missing = new QPushButton(QStringLiteral("Missing Combinations"), this);
        connect(m_missing, &QPushButton::clicked, this, &EditBaseView::chooseMissingCombinations);
        layout->addWidget(m_missing, 0, Qt::AlignLeft);
    }

    presenter.setOnChanged([this] { showState(); });
    showState();
    m_grid->resizeColumnsToContents();
    if (settings)
        keepPlacement(*this, *settings, objectName(), QSize(760, 560));
    else
        resize(fittingSize(*this, QSize(760, 560)));
}

EditBaseView::~EditBaseView()
{
    m_presenter.setOnChanged({});
}

bool EditBaseView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_grid && m_search && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        const QString text = key->text();
        if (!text.isEmpty() && text.at(0).isPrint() &&
            !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
            m_search->setFocus();
            m_search->setText(m_search->text() + text);
            m_presenter.searchIncrementally(m_search->text());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void EditBaseView::focusNewRow()
{
    if (QWidget* editor = m_editors.value(m_presenter.newRowField().toUpper())) editor->setFocus();
}

void EditBaseView::buildEditPage()
{
    auto* page = new QWidget(this);
    m_form = new QFormLayout(page);
    for (int i = 0; i < m_presenter.fields().size(); ++i) {
        const EditorField& field = m_presenter.fields()[i];
        QWidget* editor = makeEditor(i);
        editor->setObjectName(field.name);
        if (!field.mask.isEmpty()) editor->setToolTip(field.mask);
        if (field.readOnly) editor->setEnabled(false);
        m_editors.insert(field.name.toUpper(), editor);
        m_form->addRow(field.label, editor);
    }
    m_pages->addTab(page, QStringLiteral("Edit"));
}

// Each editor hands what the user typed to the presenter as the field's value.
QWidget* EditBaseView::makeEditor(int fieldIndex)
{
    const EditorField& field = m_presenter.fields()[fieldIndex];
    const QString name = field.name;
    auto set = [this, name](const QVariant& value) {
        if (!m_showing) m_presenter.setValue(name, value);
    };
    switch (field.editor) {
    case FieldEditor::Check: {
        auto* box = new QCheckBox(this);
        connect(box, &QCheckBox::toggled, this, [set](bool on) { set(on); });
        return box;
    }
    case FieldEditor::Memo: {
        auto* text = new QPlainTextEdit(this);
        connect(text, &QPlainTextEdit::textChanged, this, [set, text] { set(text->toPlainText()); });
        return text;
    }
    case FieldEditor::Date:
    case FieldEditor::DateTime: {
        auto* date = new QDateTimeEdit(this);
        date->setCalendarPopup(true);
        date->setDisplayFormat(field.editor == FieldEditor::Date ? QStringLiteral("MM/dd/yyyy")
                                                                 : QStringLiteral("MM/dd/yyyy hh:mm:ss"));
        const bool dateOnly = field.editor == FieldEditor::Date;
        connect(date, &QDateTimeEdit::dateTimeChanged, this, [set, dateOnly](const QDateTime& value) {
            set(dateOnly ? QVariant(value.date()) : QVariant(value));
        });
        return date;
    }
    case FieldEditor::Choice:
    case FieldEditor::EditableChoice: {
        auto* list = new QComboBox(this);
        list->setEditable(field.editor == FieldEditor::EditableChoice);
        connect(list, &QComboBox::activated, this, [set, list](int index) { set(list->itemData(index)); });
        if (list->isEditable())
            connect(list, &QComboBox::editTextChanged, this, [set](const QString& text) { set(text); });
        return list;
    }
    case FieldEditor::Text:
    case FieldEditor::Number: {
        auto* line = new QLineEdit(this);
        if (field.width > 0) line->setMaxLength(field.width);
        connect(line, &QLineEdit::textEdited, this, [set](const QString& text) { set(text); });
        return line;
    }
    }
    return new QWidget(this);
}

void EditBaseView::showState()
{
    m_showing = true;
    m_pages->setCurrentIndex(m_presenter.page() == TFormEditBase::Page::Browse ? 0 : 1);
    for (auto it = m_buttons.cbegin(); it != m_buttons.cend(); ++it)
        it.value()->setEnabled(m_presenter.isEnabled(Command(it.key())));
    showGrid();
    showFields();
    m_showing = false;
    emit stateShown();
}

void EditBaseView::showGrid()
{
    const TFormEditBase::Grid& grid = m_presenter.grid();
    m_grid->setColumnCount(int(grid.fields.size()));
    QStringList titles;
    for (const QString& field : grid.fields)
        titles.append(plainColumnLabel(field));
    m_grid->setHorizontalHeaderLabels(titles);
    const bool firstFill = m_grid->rowCount() == 0 && !grid.rows.isEmpty();
    m_grid->setRowCount(int(grid.rows.size()));
    for (int r = 0; r < grid.rows.size(); ++r)
        for (int c = 0; c < grid.fields.size(); ++c)
            m_grid->setItem(r, c, new QTableWidgetItem(shown(grid.rows[r].value(c))));
    if (firstFill) m_grid->resizeColumnsToContents();
    if (grid.current >= 0) m_grid->selectRow(grid.current);
}

void EditBaseView::showFields()
{
    bool rowsChanged = false;
    for (const EditorField& field : m_presenter.fields()) {
        QWidget* editor = m_editors.value(field.name.toUpper());
        const bool visible = m_presenter.isFieldVisible(field.name);
        if (editor->isHidden() == visible) {
            // Label and field go together, and the rows below move up.
            m_form->setRowVisible(editor, visible);
            rowsChanged = true;
        }
        const QVariant value = m_presenter.value(field.name);
        if (auto* box = qobject_cast<QCheckBox*>(editor)) {
            box->setChecked(value.toBool());
        } else if (auto* text = qobject_cast<QPlainTextEdit*>(editor)) {
            if (text->toPlainText() != value.toString()) text->setPlainText(value.toString());
        } else if (auto* date = qobject_cast<QDateTimeEdit*>(editor)) {
            date->setDateTime(value.isNull() ? QDateTime() : value.toDateTime());
        } else if (auto* list = qobject_cast<QComboBox*>(editor)) {
            list->clear();
            for (const Choice& choice : m_presenter.choices(field.name))
                list->addItem(choice.text, choice.value);
            const int index = list->findData(value);
            list->setCurrentIndex(index);
            if (list->isEditable() && index < 0) list->setEditText(value.toString());
        } else if (auto* line = qobject_cast<QLineEdit*>(editor)) {
            if (line->text() != value.toString()) line->setText(value.toString());
        }
    }
    // The form closes up now, not at the next pass of the event loop, so no
    // stale gap is ever drawn where a hidden row stood.
    if (rowsChanged) m_form->activate();
}

void EditBaseView::chooseMissingCombinations()
{
    std::unique_ptr<TFormDietCombinations> combinations = m_presenter.missingCombinations();
    if (!combinations) return;
    QDialog dialog(this);
    dialog.setWindowTitle(combinations->caption());
    auto* layout = new QVBoxLayout(&dialog);
    auto* list = new QListWidget(&dialog);
    for (const TFormDietCombinations::Combination& c : combinations->combinations()) {
        auto* item = new QListWidgetItem(QStringLiteral("%1  %2").arg(c.mask.toString(), c.words), list);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    layout->addWidget(list);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout->addWidget(buttons);
    if (dialog.exec() != QDialog::Accepted) return;
    for (int i = 0; i < list->count(); ++i)
        combinations->setChecked(i, list->item(i)->checkState() == Qt::Checked);
    combinations->createChecked();
    m_presenter.combinationsCreated();
}

void EditBaseView::closeEvent(QCloseEvent* event)
{
    if (m_presenter.close())
        event->accept();
    else
        event->ignore();
}

// Escape and the like end the dialog without a close event; they ask too.
void EditBaseView::done(int result)
{
    if (m_presenter.close()) QDialog::done(result);
}

} // namespace kb::ui
