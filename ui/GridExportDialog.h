#pragma once

#include "GridExport.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLineEdit;

namespace kb::ui {

// "Grid Export Options": the file, its type, and whether only the selected
// rows go. OK is enabled once a file name is given.
class GridExportDialog : public QDialog
{
    Q_OBJECT

public:
    explicit GridExportDialog(QWidget* parent = nullptr);
    GridExportOptions options() const;

private:
    void browse();

    QLineEdit* m_file;
    QComboBox* m_type;
    QCheckBox* m_selected;
    QDialogButtonBox* m_buttons;
};

} // namespace kb::ui
