// kettlebrook --user NAME geocode [--client ID] [--all-statuses] [--apply]:
// finds coordinates for clients' addresses, first among the agency's own
// known addresses, then at the web geocoding service of Config.GEOCODER_URL
// when one is set. Without --client it looks up every active client who has
// an address and no coordinates. Prints each answer with its quality; every
// answer is kept for the geocoding screen. --apply makes the exact and close
// answers the clients' coordinates in one transaction; replacing coordinates
// a client already has is a question (--yes to answer it).

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "Csv.h"
#include "geocode/ClientGeocoding.h"

namespace {

using namespace kb;

int geocode(app::CommandContext& context, const app::CommandArgs& args)
{
    app::CommandSession session(context);
    Database& db = session.data().db();
    std::vector<qint64> persons;
    if (args.isSet(QStringLiteral("client"))) {
        const QString clientId = args.value(QStringLiteral("client"));
        const qint64 person = ClientGeocoding::personOfClient(db, clientId);
        if (person == 0) {
            context.err << "There is no client " << clientId << ".\n";
            session.close();
            return 1;
        }
        persons.push_back(person);
    } else {
        persons = ClientGeocoding::clientsWithoutCoordinates(db, !args.isSet(QStringLiteral("all-statuses")));
    }

    ClientGeocoding geocoding(db, session.ui(), session.data().session().userFullName);
    const std::vector<GeocodeMatch> matches = geocoding.lookUp(persons);
    context.out << "person_id,client_id,name,address1,city,state,zip,quality,source,latitude,longitude,"
                   "current_latitude,current_longitude\n";
    std::vector<GeocodeMatch> good;
    for (const GeocodeMatch& m : matches) {
        context.out << m.personId << ',' << csvField(m.clientId) << ',' << csvField(m.name) << ','
                    << csvField(m.address1) << ',' << csvField(m.city) << ',' << csvField(m.state) << ','
                    << csvField(m.zip) << ',' << m.qualityText() << ',' << m.source << ','
                    << (m.found() ? csvText(m.latitude) : QString()) << ','
                    << (m.found() ? csvText(m.longitude) : QString()) << ',' << csvText(m.currentLatitude) << ','
                    << csvText(m.currentLongitude) << '\n';
        if (m.quality == map::MatchQuality::Exact || m.quality == map::MatchQuality::Close)
            good.push_back(m);
    }
    if (args.isSet(QStringLiteral("apply"))) {
        const int written = geocoding.accept(good);
        context.err << written << " clients were given coordinates.\n";
    }
    session.close();
    return 0;
}

const app::CommandRegistration registration(
    {.name = QStringLiteral("geocode"),
     .description = QStringLiteral(
         "Finds coordinates for the addresses of active clients who have none (or of one client), among the "
         "agency's own addresses and then at the configured web geocoding service, and prints each answer with "
         "its quality. --apply stores the exact and close answers as the clients' coordinates."),
     .options = {QCommandLineOption(QStringLiteral("client"), QStringLiteral("Only this client."), QStringLiteral("ID")),
                 QCommandLineOption(QStringLiteral("all-statuses"),
                                    QStringLiteral("Clients of every status, not the active ones only.")),
                 QCommandLineOption(QStringLiteral("apply"),
                                    QStringLiteral("Store the exact and close answers as the clients' coordinates."))},
     .asksQuestions = true,
     .needsUser = true},
    geocode);

} // namespace
