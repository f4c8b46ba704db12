#include "clients/IndividualFieldsPanel.h"

#include "MessageError.h"
#include "fields/EditMask.h"
#include "individuals/TFormIndividual.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace kb::ui {

namespace {

QString labelOf(const QString& column)
{
    for (const TFormIndividual::Field& f : TFormIndividual::fields())
        if (f.column == column) return f.label;
    return column;
}

} // namespace

IndividualFieldsPanel::IndividualFieldsPanel(const IndividualPostalForm& postal, QWidget* parent)
    : QWidget(parent), m_postal(postal)
{
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    int row = 0;
    const auto addRow = [&](const QString& label, QWidget* first, QWidget* second = nullptr,
                            QWidget* third = nullptr) {
        grid->addWidget(new QLabel(label, this), row, 0);
        auto* cells = new QHBoxLayout;
        for (QWidget* w : {first, second, third})
            if (w) cells->addWidget(w, w == first && !second ? 1 : 0);
        if (second) cells->addStretch(1);
        grid->addLayout(cells, row, 1);
        ++row;
    };
    addRow(labelOf(QStringLiteral("SALUTATION")), line(QStringLiteral("SALUTATION"), 16, 25));
    addRow(labelOf(QStringLiteral("FIRST_NAME")), line(QStringLiteral("FIRST_NAME"), 16, 20));
    addRow(labelOf(QStringLiteral("LAST_NAME")), line(QStringLiteral("LAST_NAME"), 16, 20));
    addRow(labelOf(QStringLiteral("ORGANIZATION")), line(QStringLiteral("ORGANIZATION"), 30, 40));
    addRow(labelOf(QStringLiteral("ADDRESS1")), line(QStringLiteral("ADDRESS1"), 34, 50));
    addRow(labelOf(QStringLiteral("ADDRESS2")), line(QStringLiteral("ADDRESS2"), 34, 50));
    QLineEdit* zip = line(QStringLiteral("ZIP"), 9, 10);
    addRow(m_postal.cityLabel, line(QStringLiteral("CITY"), 18, 25), line(QStringLiteral("STATE"), 3, 2),
           zip);
    addRow(labelOf(QStringLiteral("PHONE1_DESC")), phoneWords(QStringLiteral("PHONE1_DESC")),
           line(QStringLiteral("PHONE1"), 16, 19));
    addRow(labelOf(QStringLiteral("PHONE2_DESC")), phoneWords(QStringLiteral("PHONE2_DESC")),
           line(QStringLiteral("PHONE2"), 16, 19));
    addRow(labelOf(QStringLiteral("EMAIL")), line(QStringLiteral("EMAIL"), 34, 65));
    addRow(labelOf(QStringLiteral("MISC_INFO")), line(QStringLiteral("MISC_INFO"), 40, 75));
    grid->setColumnStretch(1, 1);

    if (!m_postal.postalPattern.isEmpty()) {
        zip->setPlaceholderText(m_postal.postalPattern);
        connect(zip, &QLineEdit::editingFinished, this,
                [this, zip] { checkMask(zip, m_postal.postalPattern); });
    }
    connect(zip, &QLineEdit::editingFinished, this, [this] {
        if (m_zipLeft && !m_showing) {
            m_zipLeft();
            showValues();
        }
    });
    for (const char* phone : {"PHONE1", "PHONE2"}) {
        QLineEdit* edit = m_lines.value(QString::fromLatin1(phone));
        if (m_postal.phoneMask.isEmpty()) continue;
        edit->setToolTip(QStringLiteral("Entered as ") + m_postal.phoneMask);
        connect(edit, &QLineEdit::editingFinished, this,
                [this, edit] { checkMask(edit, m_postal.phoneMask); });
    }
}

QLineEdit* IndividualFieldsPanel::line(const QString& column, int width, int maxLength)
{
    auto* edit = new QLineEdit(this);
    edit->setObjectName(column);
    edit->setMaxLength(maxLength);
    const int wanted = edit->fontMetrics().horizontalAdvance(QLatin1Char('M')) * width * 2 / 3 + 12;
    edit->setMinimumWidth(wanted);
    // Short codes (state, postal code) keep to their size.
    if (width <= 10) edit->setMaximumWidth(wanted);
    connect(edit, &QLineEdit::textEdited, this, [this, column](const QString& text) {
        if (m_writer && !m_showing) m_writer(column, text);
    });
    m_lines.insert(column, edit);
    return edit;
}

QComboBox* IndividualFieldsPanel::phoneWords(const QString& column)
{
    auto* combo = new QComboBox(this);
    combo->setObjectName(column);
    combo->setEditable(true);
    combo->addItem(QString());
    combo->addItems(individualPhoneWords());
    combo->setMinimumContentsLength(12);
    connect(combo, &QComboBox::currentTextChanged, this, [this, column](const QString& text) {
        if (m_writer && !m_showing) m_writer(column, text);
    });
    m_combos.insert(column, combo);
    return combo;
}

// A phone or postal code that does not fit the agency's picture is marked,
// not refused: old entries of other forms must stay editable.
void IndividualFieldsPanel::checkMask(QLineEdit* edit, const QString& picture)
{
    if (m_showing) return;
    try {
        const EditMask mask(picture);
        const QString text = edit->text();
        const bool fits = text.isEmpty() || mask.fit(text) == EditMask::Fit::Complete;
        edit->setStyleSheet(fits ? QString() : QStringLiteral("QLineEdit { background: #fff0f0; }"));
        edit->setToolTip(fits ? QStringLiteral("Entered as ") + picture
                              : QStringLiteral("This does not look like ") + picture);
        if (fits && !text.isEmpty() && mask.normalized(text) != text && m_writer) {
            edit->setText(mask.normalized(text));
            m_writer(edit->objectName(), edit->text());
        }
    } catch (const MessageError&) {
        // A picture the agency mistyped checks nothing.
    }
}

void IndividualFieldsPanel::bind(Reader reader, Writer writer, std::function<void()> zipLeft)
{
    m_reader = std::move(reader);
    m_writer = std::move(writer);
    m_zipLeft = std::move(zipLeft);
    showValues();
}

void IndividualFieldsPanel::showValues()
{
    m_showing = true;
    for (auto it = m_lines.cbegin(); it != m_lines.cend(); ++it) {
        const QString text = m_reader ? m_reader(it.key()).toString().trimmed() : QString();
        if (it.value()->text() != text) it.value()->setText(text);
    }
    for (auto it = m_combos.cbegin(); it != m_combos.cend(); ++it)
        it.value()->setCurrentText(m_reader ? m_reader(it.key()).toString().trimmed() : QString());
    m_showing = false;
}

void IndividualFieldsPanel::setEditable(bool editable)
{
    for (QLineEdit* edit : std::as_const(m_lines))
        edit->setReadOnly(!editable);
    for (QComboBox* combo : std::as_const(m_combos))
        combo->setEnabled(editable);
}

} // namespace kb::ui
