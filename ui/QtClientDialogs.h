#pragma once

#include "rules/ClientDialogs.h"

#include <QPointer>
#include <QString>

class QWidget;

namespace kb {
class SettingsFile;
}

namespace kb::ui {

// The screens of a client's save as modal dialogs over a window.
class QtClientDialogs final : public ClientDialogs
{
public:
    // settings: the per-user Kettbrk.ini where the dialogs keep their places.
    QtClientDialogs(QWidget* parent, SettingsFile& settings) : m_parent(parent), m_settings(settings) {}
    void setParent(QWidget* parent) { m_parent = parent; }

    void showHouseholdMembers(TFormShowHouseholdMembers& form) override;
    bool showResetStartDate(TFormResetStartDate& form) override;

private:
    QPointer<QWidget> m_parent;
    SettingsFile& m_settings;
};

} // namespace kb::ui
