#include "rules/ClientHistoryTexts.h"

#include "DietCodes.h"
#include "rules/ClientStatus.h"

namespace kb::client_history {

namespace {

QString orNone(const QString& text)
{
    return text.isEmpty() ? QStringLiteral("none") : text;
}

} // namespace

QString dateText(const QDate& date)
{
    return date.toString(QStringLiteral("M/d/yyyy"));
}

QString statusChange(const QString& oldCode, const QString& newCode)
{
    if (oldCode == newCode) return {};
    if (oldCode.isEmpty() && newCode == client_status::NeverStarted)
        return QStringLiteral("Client created with status of Never Started.");
    const QString from = oldCode.isEmpty() ? QStringLiteral("Added status of ")
                                           : QStringLiteral("Status changed from ") +
                                                 client_status::word(oldCode) + QStringLiteral(" to ");
    const QString to = newCode.isEmpty() ? QStringLiteral("no status") : client_status::word(newCode);
    return from + to + QLatin1Char('.');
}

QString reactivationNotice(bool recertifies)
{
    return recertifies ? QStringLiteral("Please reset the Re-Certification and Start Dates for this client!")
                       : QStringLiteral("Please reset the Start Date for this client!");
}

QString serviceChange(bool hadService, const std::optional<QString>& oldName,
                      const std::optional<QString>& newName)
{
    if (!hadService)
        return newName ? QStringLiteral("Started on ") + *newName
                       : QStringLiteral("Started on new, unnamed service");
    const QString from = oldName ? QStringLiteral("Changed from ") + *oldName + QStringLiteral(" to ")
                                 : QStringLiteral("Changed from unnamed service to ");
    return from + (newName ? *newName : QStringLiteral("unnamed service"));
}

QStringList dietChange(qint64 oldMask, qint64 newMask, const QStringList& dietCodes)
{
    const QString separator = QStringLiteral("/");
    if (oldMask == newMask) return {};
    if (oldMask == 0)
        return {QStringLiteral("Diet added: ") + ConvertDietCode(newMask, dietCodes, separator)};
    if (newMask == 0) return {QStringLiteral("Dietary restriction removed")};
    return {QStringLiteral("Diet chgd frm: ") + ConvertDietCode(oldMask, dietCodes, separator),
            QStringLiteral("Diet chgd to: ") + ConvertDietCode(newMask, dietCodes, separator)};
}

QString deliveryTypeChange(const QString& oldType, const QString& newType)
{
    if (newType.isEmpty() || newType == oldType) return {};
    const QString verb = oldType.isEmpty() ? QStringLiteral("set") : QStringLiteral("changed");
    if (newType == QLatin1String("O")) return QStringLiteral("Delivery type %1 to Ongoing").arg(verb);
    if (newType == QLatin1String("E")) return QStringLiteral("Delivery type %1 to Episodic").arg(verb);
    return {};
}

QString defaultRouteChange(const QString& oldRoute, const QString& newRoute)
{
    return QStringLiteral("Default rte chgd frm ") + orNone(oldRoute) + QStringLiteral(" to ") +
           orNone(newRoute);
}

QString futureDeliveriesRouteNotice(bool episodic)
{
    return episodic ? QStringLiteral(
                          "There is at least one future Episodic Delivery.\r\nYou may want to see if any "
                          "Episodic Deliveries need to have their route changed.")
                    : QStringLiteral(
                          "There is at least one future Scheduled Delivery.\r\nYou may want to see if any "
                          "Scheduled Deliveries need to have their route changed.");
}

QStringList addressChange(const QString& oldAddress, const QString& newAddress)
{
    return {oldAddress.isEmpty() ? QStringLiteral("Empty address replaced")
                                 : QStringLiteral("Old address: ") + oldAddress,
            newAddress.isEmpty() ? QStringLiteral("Replaced with empty address.")
                                 : QStringLiteral("New address: ") + newAddress};
}

QString phoneChange(const QString& oldPhone, const QVariant& oldDescription)
{
    if (oldDescription.isNull()) return QStringLiteral("Old Phone: ") + oldPhone;
    static const QHash<QString, QString> words = {{QStringLiteral("P"), QStringLiteral("Primary")},
                                                  {QStringLiteral("H"), QStringLiteral("Home")},
                                                  {QStringLiteral("W"), QStringLiteral("Work")},
                                                  {QStringLiteral("C"), QStringLiteral("Mobile")},
                                                  {QStringLiteral("M"), QStringLiteral("Mother")},
                                                  {QStringLiteral("F"), QStringLiteral("Father")},
                                                  {QStringLiteral("S"), QStringLiteral("Sister")},
                                                  {QStringLiteral("B"), QStringLiteral("Brother")},
                                                  {QStringLiteral("D"), QStringLiteral("Daughter")},
                                                  {QStringLiteral("N"), QStringLiteral("Son")},
                                                  {QStringLiteral("G"), QStringLiteral("Grandparent")},
                                                  {QStringLiteral("R"), QStringLiteral("Friend")},
                                                  {QStringLiteral("O"), QStringLiteral("Other")},
                                                  {QStringLiteral("X"), QStringLiteral("No Phone")}};
    const auto word = words.constFind(oldDescription.toString());
    if (word == words.constEnd()) return QStringLiteral("Old phone: ") + oldPhone;
    return QStringLiteral("Old phone (") + *word + QStringLiteral("): ") + oldPhone;
}

QString daysChange(const QString& oldDays, const QString& newDays)
{
    const QString lead =
        oldDays.size() == 2 ? QStringLiteral("Deliv Day chgd frm ") : QStringLiteral("Deliv Days chgd frm ");
    return lead + orNone(oldDays) + QStringLiteral(" to ") + orNone(newDays);
}

Entry stopDateChange(const QDate& oldDate, const QDate& newDate, const std::optional<QString>& stopReason,
                     const QString& stopNote)
{
    if (!newDate.isValid())
        return {QStringLiteral("Stop date of ") + dateText(oldDate) + QStringLiteral(" removed."), oldDate};
    if (stopReason)
        return {QStringLiteral("Stop date of ") + dateText(newDate) + QStringLiteral(" - ") + *stopReason +
                    QLatin1Char(' ') + stopNote,
                newDate};
    return {QStringLiteral("Stop date of ") + dateText(newDate) + QStringLiteral(" added."), newDate};
}

Entry startDateChange(const QDate& oldDate, const QDate& newDate)
{
    if (!newDate.isValid())
        return {QStringLiteral("Start date of ") + dateText(oldDate) + QStringLiteral(" removed."), oldDate};
    return {QStringLiteral("Start Date of ") + dateText(newDate) + QStringLiteral(" added."), newDate};
}

Entry recertificationChange(const QDate& oldDate, const QDate& newDate)
{
    if (!newDate.isValid())
        return {QStringLiteral("Recertification Date (") + dateText(oldDate) + QStringLiteral(") removed"),
                oldDate};
    return {QStringLiteral("Recertification Date updated from ") + dateText(oldDate), oldDate};
}

QString stopDateClearedByReactivation(const QDate& stopDate)
{
    return QStringLiteral("Due to reactivation, stop date ") + dateText(stopDate) +
           QStringLiteral(" cleared.");
}

QString stopDateClearedByStartDate(const QDate& stopDate)
{
    return QStringLiteral("Due to new start date, stop date ") + dateText(stopDate) +
           QStringLiteral(" cleared.");
}

} // namespace kb::client_history
