#pragma once

#include <QString>

namespace kb {
class Database;
class UserInterface;
} // namespace kb

namespace kb::reports {

// "Delivery Report Messages": the texts printed at the top and the bottom
// of the drivers' run sheets, Config's DELIV_REPORT_MSG_TOP and
// DELIV_REPORT_MSG_BOT.
class TFormDeliveryReportMessages
{
public:
    static QString caption() { return QStringLiteral("Delivery Report Messages"); }

    // Reads the two texts from Config.
    TFormDeliveryReportMessages(Database& db, UserInterface& ui);

    const QString& top() const { return m_top; }
    const QString& bottom() const { return m_bottom; }
    void setTop(const QString& text) { m_top = text; }
    void setBottom(const QString& text) { m_bottom = text; }
    bool isModified() const { return m_top != m_savedTop || m_bottom != m_savedBottom; }

    // OK: writes both texts into the Config row.
    void ok();
    // Cancel: the edit is discarded.
    void cancel();
    // Closing the window: with a change unsaved, "Save your changes to the
    // Driver Messages?" Yes saves, No discards, Cancel keeps the window
    // open (false).
    bool closeQuery();

private:
    Database& m_db;
    UserInterface& m_ui;
    QString m_top;
    QString m_bottom;
    QString m_savedTop;
    QString m_savedBottom;
};

} // namespace kb::reports
