#pragma once

#include <QDialog>

class QPlainTextEdit;

namespace kb {
class SettingsFile;
class TFormAppComments;
} // namespace kb

namespace kb::ui {

// "Application Comments": the application's status comments in a large box.
class AppCommentsView : public QDialog
{
    Q_OBJECT

public:
    AppCommentsView(TFormAppComments& presenter, SettingsFile& settings, QWidget* parent = nullptr);
    QPlainTextEdit* text() const { return m_text; }

protected:
    void done(int result) override;

private:
    TFormAppComments& m_presenter;
    QPlainTextEdit* m_text;
};

} // namespace kb::ui
