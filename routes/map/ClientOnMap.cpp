#include "ClientOnMap.h"

#include "Country.h"
#include "MapServer.h"

#include "UserInterface.h"

namespace kb::map {

QString ClientOnMap::pinName(const Client& client)
{
    const QString name =
        (client.firstName.trimmed() + QLatin1Char(' ') + client.lastName.trimmed()).trimmed();
    if (!name.isEmpty()) return name;
    if (!client.address1.trimmed().isEmpty()) return client.address1.trimmed();
    return QStringLiteral("Client Address");
}

int ClientOnMap::pinSymbol(const QString& version)
{
    return version.section(QLatin1Char('.'), 0, 0).toInt() >= 16 ? 1 : 292;
}

bool ClientOnMap::isPostOfficeBox(const QString& street)
{
    const QString s = street.trimmed().toUpper();
    for (const char* prefix : {"P.O. BOX", "P. O. BOX", "PO BOX", "P O BOX"})
        if (s.startsWith(QLatin1String(prefix))) return true;
    return false;
}

bool ClientOnMap::show(MapServer& server, UserInterface& ui, const Client& client,
                       const QString& postalFormat)
{
    const bool hasCoordinates = !client.latitude.isNull() && !client.longitude.isNull() &&
                                client.latitude.toDouble() != 0.0 && client.longitude.toDouble() != 0.0;
    if (!hasCoordinates && isPostOfficeBox(client.address1)) {
        ui.warning(QStringLiteral("Post office boxes can't be mapped!"));
        return false;
    }
    server.connect(regionForPostalFormat(postalFormat));
    server.setVisible(true);
    server.setUserControl(true);
    server.setPaneState(PaneState::None);
    server.deletePushpins();
    server.clearRoute();

    Location at;
    if (hasCoordinates) {
        at = server.locationFromCoordinates(client.latitude.toDouble(), client.longitude.toDouble());
    } else {
        const AddressMatches found = server.findAddress(
            {client.address1, client.city, client.state, client.zip, countryForPostalFormat(postalFormat)});
        if (!found.isGood()) {
            ui.warning(QStringLiteral("MapPoint had trouble mapping this address!"));
            if (found.count() == 0) return false;
        }
        at = found.first();
    }
    const std::shared_ptr<Pushpin> pin = server.addPushpin(at, pinName(client));
    pin->setSymbol(pinSymbol(server.version()));
    server.setSaved(true);
    return true;
}

} // namespace kb::map
