#include "delivery/HiddenRunPreparation.h"

#include "TFormRunPrepare.h"
#include "UserInterface.h"
#include "store/Database.h"

namespace kb::reports {

namespace {

// The run screen's working table goes with it, also after a failure.
class FormClosed
{
public:
    explicit FormClosed(TFormRunPrepare& form) : m_form(form) {}
    ~FormClosed() { m_form.FormClose(); }

private:
    TFormRunPrepare& m_form;
};

} // namespace

HiddenRunPreparation::HiddenRunPreparation(Database& db, const SessionState& session, UserInterface& ui,
                                           std::function<void(TFormRunPrepare&)> showRunScreen)
    : m_db(db), m_session(session), m_ui(ui), m_showRunScreen(std::move(showRunScreen))
{
}

void HiddenRunPreparation::prepareAndSave(const QDate& date, bool show)
{
    TFormRunPrepare form(m_db, m_session, m_ui);
    FormClosed closed(form);
    form.FormShow();
    form.SetPrepareDate(date);
    form.SetDeliveryType(u'A');
    form.ActionPrepare();
    if (show && m_showRunScreen)
        m_showRunScreen(form);
    else
        saveAtOnce(form);
}

void HiddenRunPreparation::saveAtOnce(TFormRunPrepare& form)
{
    const qint64 rows = form.table().rowCount();
    if (rows == 0) {
        m_ui.information(QStringLiteral("No deliveries were identified to be saved!"));
        return;
    }
    const qint64 active =
        m_db.execute(QStringLiteral("Select Count( Person_ID ) as Counter from Clients where Status='A'"))
            .value(0, 0)
            .toLongLong();
    if (rows < active / 10)
        m_ui.warning(
            QStringLiteral("Fewer than 10% of the active clients \nwere identified to receive a delivery!"));
    savePreparedRun(form);
}

void savePreparedRun(TFormRunPrepare& form)
{
    // A failed save has told the user why; the report then shows the
    // deliveries as they were last saved.
    form.ActionSaveData();
    form.FormCleanUp();
}

} // namespace kb::reports
