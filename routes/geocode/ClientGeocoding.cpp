#include "ClientGeocoding.h"

#include "AgencyGeocoder.h"

#include "map/Country.h"
#include "map/NominatimGeocoder.h"
#include "store/Database.h"
#include "UserInterface.h"

namespace kb {

namespace {

const QString clientColumns = QStringLiteral(
    "Select Person_ID, Client_ID, First_Name, Last_Name, Address1, City, State, Zip, Latitude, Longitude from Clients ");

GeocodeMatch clientOf(const ResultSet& r, qsizetype i)
{
    GeocodeMatch m;
    m.personId = r.value(i, 0).toLongLong();
    m.clientId = r.value(i, 1).toString().trimmed();
    m.name = (r.value(i, 2).toString().trimmed() + QLatin1Char(' ') + r.value(i, 3).toString().trimmed()).trimmed();
    m.address1 = r.value(i, 4).toString().trimmed();
    m.city = r.value(i, 5).toString().trimmed();
    m.state = r.value(i, 6).toString().trimmed();
    m.zip = r.value(i, 7).toString().trimmed();
    m.currentLatitude = r.value(i, 8);
    m.currentLongitude = r.value(i, 9);
    return m;
}

} // namespace

ClientGeocoding::ClientGeocoding(Database& db, UserInterface& ui, QString userName,
                                 std::shared_ptr<map::GeocoderChain> geocoder)
    : m_db(db), m_ui(ui), m_userName(std::move(userName)), m_geocoder(std::move(geocoder))
{
}

std::vector<qint64> ClientGeocoding::clientsWithoutCoordinates(Database& db, bool activeOnly)
{
    QString text = QStringLiteral(
        "Select Person_ID from Clients where (Latitude is Null or Longitude is Null or Latitude = 0 or Longitude = 0) "
        "and Address1 is not Null and Address1 <> ''");
    if (activeOnly)
        text += QStringLiteral(" and Status = 'A'");
    text += QStringLiteral(" order by Client_ID");
    const ResultSet r = db.execute(text);
    std::vector<qint64> persons;
    for (qsizetype i = 0; i < r.rowCount(); ++i)
        persons.push_back(r.value(i, 0).toLongLong());
    return persons;
}

qint64 ClientGeocoding::personOfClient(Database& db, const QString& clientId)
{
    const ResultSet r = db.execute(QStringLiteral("Select Person_ID from Clients where Client_ID = :Client_ID"),
                                   {{QStringLiteral("Client_ID"), clientId.trimmed()}});
    return r.isEmpty() ? 0 : r.value(0, 0).toLongLong();
}

std::vector<GeocodeMatch> ClientGeocoding::lookUp(const std::vector<qint64>& persons)
{
    if (!m_geocoder)
        m_geocoder = agencyGeocoder(m_db);
    const ResultSet config = m_db.execute(QStringLiteral("Select Postal_Format from Config"));
    const map::Country country =
        map::countryForPostalFormat(config.isEmpty() ? QString() : config.value(0, 0).toString());
    Query client = m_db.query(clientColumns + QStringLiteral("where Person_ID = :Person_ID"));
    Query keep = m_db.query(QStringLiteral(
        "Insert into Geocoded_Addresses (Person_ID, Address1, City, State, ZIP, Latitude, Longitude, Quality, Source, "
        "Found_Name, Looked_Up, Looked_Up_By) values (:Person_ID, :Address1, :City, :State, :ZIP, :Latitude, "
        ":Longitude, :Quality, :Source, :Found_Name, :Looked_Up, :Looked_Up_By)"));
    Query recordId = m_db.query(
        QStringLiteral("Select max(RecordID) from Geocoded_Addresses where Person_ID = :Person_ID"));

    std::vector<GeocodeMatch> matches;
    m_ui.progressStart(QStringLiteral("Looking up addresses..."));
    struct ProgressEnd
    {
        UserInterface& ui;
        ~ProgressEnd() { ui.progressEnd(); }
    } progressEnd{m_ui};
    for (size_t n = 0; n < persons.size(); ++n) {
        const ResultSet row = client.bind(QStringLiteral("Person_ID"), persons[n]).exec();
        if (row.isEmpty())
            continue;
        GeocodeMatch m = clientOf(row, 0);
        const map::AddressMatches found = m_geocoder->find({m.address1, m.city, m.state, m.zip, country});
        m.quality = found.quality();
        if (found.count() > 0) {
            m.latitude = found.first().latitude;
            m.longitude = found.first().longitude;
        }
        const int source = m_geocoder->lastSource();
        m.source = source <= 0 ? QStringLiteral("K") : QStringLiteral("W");
        if (source > 0)
            if (const auto* web = dynamic_cast<const map::NominatimGeocoder*>(&m_geocoder->source(source)))
                m.foundName = web->lastFoundName();
        keep.bind({{QStringLiteral("Person_ID"), m.personId},
                   {QStringLiteral("Address1"), m.address1},
                   {QStringLiteral("City"), m.city},
                   {QStringLiteral("State"), m.state},
                   {QStringLiteral("ZIP"), m.zip},
                   {QStringLiteral("Latitude"), m.found() ? QVariant(m.latitude) : QVariant()},
                   {QStringLiteral("Longitude"), m.found() ? QVariant(m.longitude) : QVariant()},
                   {QStringLiteral("Quality"), int(m.quality)},
                   {QStringLiteral("Source"), m.source},
                   {QStringLiteral("Found_Name"), m.foundName.isEmpty() ? QVariant() : QVariant(m.foundName)},
                   {QStringLiteral("Looked_Up"), m_db.clock().now()},
                   {QStringLiteral("Looked_Up_By"), m_userName}})
            .execCommand();
        m.recordId = recordId.bind(QStringLiteral("Person_ID"), m.personId).exec().value(0, 0).toLongLong();
        matches.push_back(std::move(m));
        m_ui.progressStep(int(100 * (n + 1) / persons.size()));
    }
    return matches;
}

std::vector<GeocodeMatch> ClientGeocoding::latestMatches(Database& db)
{
    const ResultSet r = db.execute(QStringLiteral(
        "Select c.Person_ID, c.Client_ID, c.First_Name, c.Last_Name, g.Address1, g.City, g.State, g.ZIP, c.Latitude, "
        "c.Longitude, g.RecordID, g.Quality, g.Latitude, g.Longitude, g.Source, g.Found_Name from Geocoded_Addresses g "
        "join Clients c on g.Person_ID = c.Person_ID where g.RecordID = (Select max(RecordID) from Geocoded_Addresses "
        "x where x.Person_ID = g.Person_ID) and g.Accepted is Null order by g.RecordID desc"));
    std::vector<GeocodeMatch> matches;
    for (qsizetype i = 0; i < r.rowCount(); ++i) {
        GeocodeMatch m = clientOf(r, i);
        m.recordId = r.value(i, 10).toLongLong();
        const int quality = r.value(i, 11).toInt();
        m.quality = quality >= 1 && quality <= 4 ? map::MatchQuality(quality) : map::MatchQuality::NotFound;
        m.latitude = r.value(i, 12).toDouble();
        m.longitude = r.value(i, 13).toDouble();
        m.source = r.value(i, 14).toString();
        m.foundName = r.value(i, 15).toString();
        matches.push_back(std::move(m));
    }
    return matches;
}

int ClientGeocoding::accept(const std::vector<GeocodeMatch>& matches)
{
    std::vector<const GeocodeMatch*> found;
    int replacing = 0;
    for (const GeocodeMatch& m : matches)
        if (m.found()) {
            found.push_back(&m);
            replacing += m.hasCoordinates() ? 1 : 0;
        }
    if (replacing > 0 &&
        m_ui.question(QStringLiteral("%1 of these clients already have coordinates.\r\nReplace them with the ones "
                                     "found?")
                          .arg(replacing),
                      Buttons::YesNo) != Answer::Yes) {
        std::erase_if(found, [](const GeocodeMatch* m) { return m->hasCoordinates(); });
    }
    if (found.empty())
        return 0;
    std::vector<Params> clients;
    std::vector<Params> kept;
    for (const GeocodeMatch* m : found) {
        clients.push_back({{QStringLiteral("Latitude"), m->latitude},
                           {QStringLiteral("Longitude"), m->longitude},
                           {QStringLiteral("Person_ID"), m->personId}});
        kept.push_back({{QStringLiteral("RecordID"), m->recordId}});
    }
    TransactionGuard transaction(m_db);
    m_db.query(QStringLiteral("Update Clients set Latitude = :Latitude, Longitude = :Longitude, Edit_Dte = :Edit_Dte "
                              "where Person_ID = :Person_ID"))
        .bind(QStringLiteral("Edit_Dte"), m_db.clock().today())
        .execBatch(clients);
    m_db.query(QStringLiteral("Update Geocoded_Addresses set Accepted = :Accepted where RecordID = :RecordID"))
        .bind(QStringLiteral("Accepted"), m_db.clock().now())
        .execBatch(kept);
    transaction.commit();
    return int(found.size());
}

} // namespace kb
