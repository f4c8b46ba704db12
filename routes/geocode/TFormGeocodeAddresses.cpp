#include "TFormGeocodeAddresses.h"

#include "ClientGeocoding.h"
#include "GeocoderSettings.h"

#include "map/NominatimGeocoder.h"
#include "session/SessionState.h"
#include "UserInterface.h"

#include <QLocale>

namespace kb {

TFormGeocodeAddresses::TFormGeocodeAddresses(Database& db, const SessionState& session, UserInterface& ui,
                                             QObject* parent)
    : QObject(parent), m_db(db), m_session(session), m_ui(ui), m_webAddress(GeocoderSettings::webAddress(db))
{
    refresh();
}

QStringList TFormGeocodeAddresses::columnTitles()
{
    return {QStringLiteral("Client ID"), QStringLiteral("Name"),      QStringLiteral("Address"),
            QStringLiteral("City"),      QStringLiteral("State"),     QStringLiteral("ZIP"),
            QStringLiteral("Match"),     QStringLiteral("Found In"),  QStringLiteral("Latitude"),
            QStringLiteral("Longitude"), QStringLiteral("Now Latitude"), QStringLiteral("Now Longitude"),
            QStringLiteral("Found As")};
}

QStringList TFormGeocodeAddresses::columnValues(const GeocodeMatch& m)
{
    const QLocale c = QLocale::c();
    const auto number = [&](const QVariant& v) { return v.isNull() ? QString() : c.toString(v.toDouble(), 'f', 6); };
    return {m.clientId,
            m.name,
            m.address1,
            m.city,
            m.state,
            m.zip,
            m.qualityText(),
            m.source == QLatin1String("W") ? QStringLiteral("Web service") : QStringLiteral("Agency addresses"),
            m.found() ? c.toString(m.latitude, 'f', 6) : QString(),
            m.found() ? c.toString(m.longitude, 'f', 6) : QString(),
            number(m.currentLatitude),
            number(m.currentLongitude),
            m.foundName};
}

bool TFormGeocodeAddresses::saveWebAddress(const QString& address)
{
    const QString trimmed = address.trimmed();
    if (!trimmed.isEmpty()) {
        try {
            map::NominatimGeocoder check(trimmed);
        } catch (const std::exception& e) {
            m_ui.warning(QString::fromUtf8(e.what()));
            return false;
        }
    }
    GeocoderSettings::setWebAddress(m_db, trimmed);
    m_webAddress = trimmed;
    emit changed();
    return true;
}

void TFormGeocodeAddresses::refresh()
{
    m_matches = ClientGeocoding::latestMatches(m_db);
    emit changed();
}

void TFormGeocodeAddresses::lookUp(const std::vector<qint64>& persons)
{
    if (persons.empty()) {
        m_ui.information(QStringLiteral("Every client with an address has coordinates."));
        return;
    }
    try {
        BusyGuard busy(m_ui);
        ClientGeocoding(m_db, m_ui, m_session.userFullName).lookUp(persons);
    } catch (const std::exception& e) {
        m_ui.error(QString::fromUtf8(e.what()));
    }
    refresh();
}

void TFormGeocodeAddresses::ActionLookUpMissing(bool activeOnly)
{
    lookUp(ClientGeocoding::clientsWithoutCoordinates(m_db, activeOnly));
}

void TFormGeocodeAddresses::ActionLookUpClient(const QString& clientId)
{
    const qint64 person = ClientGeocoding::personOfClient(m_db, clientId);
    if (person == 0) {
        m_ui.warning(QStringLiteral("There is no client with the number %1.").arg(clientId.trimmed()));
        return;
    }
    lookUp({person});
}

void TFormGeocodeAddresses::ActionAccept(const QList<int>& rows)
{
    std::vector<GeocodeMatch> chosen;
    for (int r : rows)
        if (r >= 0 && r < int(m_matches.size()))
            chosen.push_back(m_matches[size_t(r)]);
    try {
        const int written = ClientGeocoding(m_db, m_ui, m_session.userFullName).accept(chosen);
        m_ui.information(QStringLiteral("%1 clients were given coordinates.").arg(written));
    } catch (const std::exception& e) {
        m_ui.error(QString::fromUtf8(e.what()));
    }
    refresh();
}

} // namespace kb
