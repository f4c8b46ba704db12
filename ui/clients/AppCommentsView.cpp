#include "clients/AppCommentsView.h"

#include "FormPlacement.h"
#include "applications/TFormAppComments.h"

#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace kb::ui {

AppCommentsView::AppCommentsView(TFormAppComments& presenter, SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_text(new QPlainTextEdit(presenter.text(), this))
{
    setObjectName(TFormAppComments::formName());
    setWindowTitle(TFormAppComments::caption());
    m_text->setReadOnly(presenter.readOnly());
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_text, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    keepPlacement(*this, settings, TFormAppComments::formName(), QSize(480, 300));
}

void AppCommentsView::done(int result)
{
    if (result == Accepted) {
        m_presenter.setText(m_text->toPlainText());
        if (!m_presenter.ok()) return;
    }
    QDialog::done(result);
}

} // namespace kb::ui
