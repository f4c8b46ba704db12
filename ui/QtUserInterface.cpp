#include "QtUserInterface.h"

#include <QApplication>
#include <QMessageBox>
#include <QProgressDialog>

namespace kb::ui {

QtUserInterface::~QtUserInterface() { delete m_progress; }

void QtUserInterface::information(const QString& text)
{
    QMessageBox::information(m_parent, QApplication::applicationName(), text);
}

void QtUserInterface::warning(const QString& text)
{
    QMessageBox::warning(m_parent, QApplication::applicationName(), text);
}

void QtUserInterface::error(const QString& text)
{
    QMessageBox::critical(m_parent, QApplication::applicationName(), text);
}

Answer QtUserInterface::question(const QString& text, Buttons buttons)
{
    QMessageBox::StandardButtons shown = QMessageBox::Yes | QMessageBox::No;
    if (buttons == Buttons::YesNoCancel)
        shown |= QMessageBox::Cancel;
    else if (buttons == Buttons::OkCancel)
        shown = QMessageBox::Ok | QMessageBox::Cancel;
    switch (QMessageBox::question(m_parent, QApplication::applicationName(), text, shown)) {
    case QMessageBox::Yes: return Answer::Yes;
    case QMessageBox::No: return Answer::No;
    case QMessageBox::Ok: return Answer::Ok;
    default: return Answer::Cancel;
    }
}

void QtUserInterface::progressStart(const QString& text)
{
    if (!m_progress) {
        m_progress = new QProgressDialog(m_parent);
        m_progress->setCancelButton(nullptr);
        m_progress->setRange(0, 100);
        m_progress->setWindowModality(Qt::WindowModal);
    }
    m_progress->setLabelText(text);
    m_progress->setValue(0);
    m_progress->show();
}

void QtUserInterface::progressStep(int percent)
{
    if (m_progress) {
        m_progress->setValue(percent);
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents); // repaint only
    }
}

void QtUserInterface::progressEnd()
{
    if (m_progress)
        m_progress->hide();
}

void QtUserInterface::terminate(const QString& text)
{
    error(text);
    QApplication::exit(1);
}

void QtUserInterface::setBusy(bool busy)
{
    if (busy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

} // namespace kb::ui
