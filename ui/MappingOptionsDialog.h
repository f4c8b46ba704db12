#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLineEdit;

namespace kb {
class TFormMapPointOptionsOrderRoutes;
}

namespace kb::ui {

// "Mapping Options" over its presenter.
class MappingOptionsDialog : public QDialog
{
    Q_OBJECT

public:
    MappingOptionsDialog(TFormMapPointOptionsOrderRoutes& presenter, QWidget* parent = nullptr);

    void accept() override;
    QComboBox* actionList() const { return m_action; }

private:
    void showState();
    void readFields();

    TFormMapPointOptionsOrderRoutes& m_presenter;
    QComboBox* m_action;
    QCheckBox* m_start;
    QCheckBox* m_end;
    QComboBox* m_location;
    QLineEdit* m_name;
    QLineEdit* m_address;
    QLineEdit* m_city;
    QLineEdit* m_state;
    QLineEdit* m_zip;
    QCheckBox* m_optimize;
    QLineEdit* m_file;
    QComboBox* m_label;
    QDialogButtonBox* m_buttons;
    bool m_showing = false;
};

} // namespace kb::ui
