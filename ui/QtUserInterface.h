#pragma once

#include "UserInterface.h"

#include <QPointer>

class QProgressDialog;
class QWidget;

namespace kb::ui {

// Messages and questions as modal message boxes over a parent window, the
// progress window as a progress dialog, busy as the wait cursor.
class QtUserInterface final : public UserInterface
{
public:
    explicit QtUserInterface(QWidget* parent = nullptr) : m_parent(parent) {}
    ~QtUserInterface() override;
    void setParent(QWidget* parent) { m_parent = parent; }

    void information(const QString& text) override;
    void warning(const QString& text) override;
    void error(const QString& text) override;
    Answer question(const QString& text, Buttons buttons) override;
    void progressStart(const QString& text) override;
    void progressStep(int percent) override;
    void progressEnd() override;
    void setBusy(bool busy) override;
    // Tells the text, then every event loop of the program ends, modal
    // screens' ones included, and the program returns 1.
    void terminate(const QString& text) override;

private:
    QPointer<QWidget> m_parent;
    QProgressDialog* m_progress = nullptr;
};

} // namespace kb::ui
