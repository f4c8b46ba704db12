#pragma once

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kb::ui {

// The client search of the batch lists: "Search" [choice] "for" [text], the
// list's own check box for the next client ("Excused", "Complimentary"), and
// "Add to List". In scanner mode only the text box and the button stay.
class ClientSearchBar : public QWidget
{
    Q_OBJECT

public:
    ClientSearchBar(const QStringList& choices, const QString& checkText, QWidget* parent = nullptr);

    QComboBox* searchBy() const { return m_searchBy; }
    QLineEdit* searchBox() const { return m_search; }
    QCheckBox* checkBox() const { return m_check; }
    QPushButton* addButton() const { return m_add; }

    // Shows the presenter's state without echoing it back as edits.
    void showState(bool scanner, int searchIndex, const QString& searchText, bool checked);
    // The search box, emptied, takes the focus.
    void focusSearch();

private:
    QLabel* m_searchLabel;
    QComboBox* m_searchBy;
    QLabel* m_forLabel;
    QLineEdit* m_search;
    QCheckBox* m_check;
    QPushButton* m_add;
};

} // namespace kb::ui
