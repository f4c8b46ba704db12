#pragma once

#include <QDialog>

class QListWidget;
class QPushButton;

namespace kb {
class TFormViewEpisodicClientInfo;
}

namespace kb::ui {

// "Episodic/Scheduled Client Information": the client's details and the
// check list of events not yet credited; "&Delete" asks first, deletes the
// checked ones and closes the screen (accepted), "&Close" leaves.
class EpisodicClientInfoView : public QDialog
{
    Q_OBJECT

public:
    EpisodicClientInfoView(TFormViewEpisodicClientInfo& presenter, QWidget* parent = nullptr);

    QListWidget* list() const { return m_list; }
    QPushButton* deleteButton() const { return m_delete; }

private:
    void showState();

    TFormViewEpisodicClientInfo& m_presenter;
    QListWidget* m_list;
    QPushButton* m_delete;
};

} // namespace kb::ui
