#pragma once

#include "schedule/SetDefaultDeliveriesView.h"

class QLabel;
class QTableWidget;

namespace kb {
class TFormSetEpisodicItems;
} // namespace kb

namespace kb::ui {

// "Set Episodic Items": the item screen over one dated delivery's list, its
// day and service fixed, with the list the delivery would get otherwise
// shown beneath for comparison, and the commands that clear the list or
// copy that one into it.
class SetEpisodicItemsView : public SetDefaultDeliveriesView
{
    Q_OBJECT

public:
    SetEpisodicItemsView(TFormSetEpisodicItems& presenter, SettingsFile& settings, QWidget* parent = nullptr);

    QTableWidget* comparison() const { return m_comparison; }

private:
    void showComparison();

    TFormSetEpisodicItems& m_episodic;
    QLabel* m_comparisonText;
    QTableWidget* m_comparison;
};

} // namespace kb::ui
