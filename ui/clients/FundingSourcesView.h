#pragma once

#include "EditBaseView.h"

class QGroupBox;
class QPushButton;
class QTableWidget;

namespace kb {
class TFormEditFundingSources;
}

namespace kb::ui {

// "Funding Sources Maintenance": the generic editor of Fundsrcs with the
// source's item rates under it, behind "View Rates".
class FundingSourcesView : public EditBaseView
{
    Q_OBJECT

public:
    FundingSourcesView(TFormEditFundingSources& presenter, SettingsFile& settings, QWidget* parent = nullptr);
    ~FundingSourcesView() override;

    QGroupBox* ratesBox() const { return m_ratesBox; }
    QPushButton* ratesButton() const { return m_ratesButton; }
    QTableWidget* ratesGrid() const { return m_rates; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void done(int result) override;

private:
    void showRates();
    void rateEdited(int row, int column);

    TFormEditFundingSources& m_funding;
    QPushButton* m_ratesButton;
    QGroupBox* m_ratesBox;
    QTableWidget* m_rates;
    bool m_showing = false;
};

} // namespace kb::ui
