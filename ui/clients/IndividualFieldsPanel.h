#pragma once

#include "individuals/IndividualForms.h"

#include <QHash>
#include <QVariant>
#include <QWidget>

#include <functional>

class QComboBox;
class QLineEdit;

namespace kb::ui {

// The fields of an individual (name, organization, address by the postal
// format, two phones with their descriptions, e-mail, other information),
// shared by the individual's own screen and the relationship screen, which
// shows the related individual's fields beside the relationship's.
class IndividualFieldsPanel : public QWidget
{
    Q_OBJECT

public:
    using Reader = std::function<QVariant(const QString& column)>;
    using Writer = std::function<void(const QString& column, const QVariant& value)>;

    IndividualFieldsPanel(const IndividualPostalForm& postal, QWidget* parent = nullptr);

    // Where the values come from and go to; zipLeft runs when the ZIP field
    // is left (the city and state may fill in), after which the panel reads
    // its values again.
    void bind(Reader reader, Writer writer, std::function<void()> zipLeft = {});
    void showValues();
    void setEditable(bool editable);
    QLineEdit* lineEdit(const QString& column) const { return m_lines.value(column); }

private:
    QLineEdit* line(const QString& column, int width, int maxLength);
    QComboBox* phoneWords(const QString& column);
    void checkMask(QLineEdit* edit, const QString& picture);

    IndividualPostalForm m_postal;
    QHash<QString, QLineEdit*> m_lines;
    QHash<QString, QComboBox*> m_combos;
    Reader m_reader;
    Writer m_writer;
    std::function<void()> m_zipLeft;
    bool m_showing = false;
};

} // namespace kb::ui
