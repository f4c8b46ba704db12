#include "records/TFormCompDel.h"

#include "UserInterface.h"
#include "store/Database.h"

namespace kb {

TFormCompDel::TFormCompDel(Database& db, UserInterface& ui, delivery_records::Delivery delivery,
                           QString recordedBy)
    : m_db(db), m_ui(ui), m_delivery(std::move(delivery)), m_recordedBy(std::move(recordedBy))
{
}

bool TFormCompDel::ActionOK()
{
    // Another workstation may have comped, missed or deleted it meanwhile.
    const ResultSet now =
        m_db.execute(QStringLiteral("Select Deliv_Dt, Delivery_Status from Deliveri where Deliv_ID = "
                                    ":Deliv_ID"),
                     {{QStringLiteral("Deliv_ID"), m_delivery.delivId}});
    if (!now.isEmpty()) {
        const QString status = now.value(0, 1).toString().trimmed();
        if (status == QLatin1String("C")) {
            m_ui.information(QStringLiteral("That delivery has already been Comped."));
            return false;
        }
        if ((status == QLatin1String("M") || status == QLatin1String("E")) &&
            m_ui.question(QStringLiteral("That delivery was missed! Change it to Comped?"), Buttons::YesNo) !=
                Answer::Yes)
            return false;
    } else {
        m_ui.information(QStringLiteral("The client did not receive a delivery on that date."));
        return false;
    }
    delivery_records::comp(m_db, m_delivery, m_reason.trimmed(), m_recordedBy);
    return true;
}

} // namespace kb
