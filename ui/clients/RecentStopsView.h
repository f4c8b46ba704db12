#pragma once

#include <QDialog>

class QDateEdit;
class QRadioButton;

namespace kb {
class SettingsFile;
class TFormRecentStops;
} // namespace kb

namespace kb::ui {

// "Recent Stops and Suspensions" over its presenter: the delivery date, the
// day from which changes count, and the destination; Print runs the report
// and the screen stays for another date.
class RecentStopsView : public QDialog
{
    Q_OBJECT

public:
    RecentStopsView(TFormRecentStops& presenter, SettingsFile& settings, QWidget* parent = nullptr);

    QDateEdit* stopDateEdit() const { return m_stopDate; }
    QDateEdit* recencyDateEdit() const { return m_recencyDate; }
    QRadioButton* printerButton() const { return m_printer; }
    void print();

private:
    TFormRecentStops& m_presenter;
    QDateEdit* m_stopDate;
    QDateEdit* m_recencyDate;
    QRadioButton* m_screen;
    QRadioButton* m_printer;
};

} // namespace kb::ui
