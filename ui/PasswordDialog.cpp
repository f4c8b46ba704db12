#include "PasswordDialog.h"

#include "session/TPasswordDlg.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace kb::ui {

PasswordDialog::PasswordDialog(TPasswordDlg& presenter, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_name(new QLineEdit(this))
{
    setWindowTitle(TPasswordDlg::caption());
    // The title must fit the window frame, whose buttons take room of their own.
    setMinimumWidth(std::max(340, fontMetrics().horizontalAdvance(windowTitle()) + 160));
    m_name->setMaxLength(12);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(TPasswordDlg::prompt(), this));
    layout->addWidget(m_name);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    layout->addWidget(buttons);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    m_ok->setEnabled(m_presenter.okEnabled());

    connect(m_name, &QLineEdit::textChanged, &m_presenter, &TPasswordDlg::setUserName);
    connect(&m_presenter, &TPasswordDlg::userNameChanged, this, [this](const QString& text) {
        if (m_name->text() != text)
            m_name->setText(text);
        m_ok->setEnabled(m_presenter.okEnabled());
    });
    connect(&m_presenter, &TPasswordDlg::hideRequested, this, [this] {
        m_retry = true;
        hide();
    });
    connect(buttons, &QDialogButtonBox::accepted, this, &PasswordDialog::onOk);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void PasswordDialog::onOk()
{
    try {
        if (m_presenter.accept()) {
            m_signedIn = true;
            accept();
        }
    } catch (const std::exception& e) {
        // Failures here end the program; the caller tells the user.
        m_fatal = QString::fromUtf8(e.what());
        reject();
    }
}

bool PasswordDialog::run()
{
    // Hiding a refused dialog ends its modal loop; it opens again for the
    // next try once the reason has been told.
    for (;;) {
        m_retry = false;
        exec();
        if (m_signedIn)
            return true;
        if (!m_retry || !m_fatal.isEmpty())
            return false;
    }
}

} // namespace kb::ui
