#pragma once

#include <QDialog>

class QLineEdit;
class QPushButton;

namespace kb {
class TPasswordDlg;
}

namespace kb::ui {

// The sign-in dialog over its presenter: a name, OK and Cancel.
class PasswordDialog : public QDialog
{
    Q_OBJECT

public:
    explicit PasswordDialog(TPasswordDlg& presenter, QWidget* parent = nullptr);

    // Shows the dialog modally until a user signs in (true) or it is
    // cancelled or a fatal failure ends it (false; see fatalMessage).
    bool run();
    const QString& fatalMessage() const { return m_fatal; }
    bool signedIn() const { return m_signedIn; }

    QLineEdit* nameEdit() const { return m_name; }
    QPushButton* okButton() const { return m_ok; }

private:
    void onOk();

    TPasswordDlg& m_presenter;
    QLineEdit* m_name;
    QPushButton* m_ok;
    bool m_retry = false;
    bool m_signedIn = false;
    QString m_fatal;
};

} // namespace kb::ui
