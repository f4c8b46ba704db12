#pragma once

#include "rules/ClientDialogs.h"

#include <QPointer>
#include <QString>

class QWidget;

namespace kb::ui {

// The screens of a client's save as modal dialogs over a window.
class QtClientDialogs final : public ClientDialogs
{
public:
    // iniPath: the per-user Kettbrk.ini where the dialogs keep their places.
    QtClientDialogs(QWidget* parent, QString iniPath) : m_parent(parent), m_iniPath(std::move(iniPath)) {}

    void showHouseholdMembers(TFormShowHouseholdMembers& form) override;
    bool showResetStartDate(TFormResetStartDate& form) override;

private:
    QPointer<QWidget> m_parent;
    QString m_iniPath;
};

} // namespace kb::ui
