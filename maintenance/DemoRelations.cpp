#include "DemoRelations.h"

#include "DemoContext.h"
#include "DemoPeople.h"
#include "DemoTable.h"
#include "DemoWords.h"
#include "store/Database.h"

#include <algorithm>

namespace kb::demo {

namespace {

// An individual as written to Individuals; the first relationship made
// with it dates it.
struct Individual
{
    int id = 0;
    QString first;
    QString last;
    QString salutation;
    QString organisation;
    DemoAddress address;
    QString phoneDesc;
    QString phone;
    QString phone2Desc;
    QString phone2;
    QString email;
    QString misc;
    QString user;
    QDate created;
};

struct Relation
{
    int personId = 0;
    int indivId = 0;
    QString name;
    bool hivAware = false;
    bool referrer = false;
    bool emergency = false;
    QString note;
    QString user;
    QDate created;
};

// The agency's own names for the bonds, as the configuration lists them:
// a bond whose name the agency has not configured is not made.
QStringList configuredNames(Database& db)
{
    const ResultSet rows = db.execute(QStringLiteral("select RELATIONSHIP_LIST from Config"));
    QStringList names;
    if (!rows.isEmpty())
        for (const QString& line : rows.value(0, 0).toString().split(u'\n'))
            if (!line.trimmed().isEmpty()) names << line.trimmed();
    return names;
}

QString demoPhone(DemoRandom& rnd)
{
    // 555 numbers are never given out to real lines.
    return QStringLiteral("555-%1-%2").arg(rnd.between(200, 999)).arg(rnd.below(10000), 4, 10, QLatin1Char('0'));
}

QString mailbox(const QString& first, const QString& last, const QString& domain)
{
    QString box = (first.left(1) + last).toLower();
    box.remove(u' ');
    box.remove(u'\'');
    return box + u'@' + domain;
}

class RelationMaker
{
public:
    explicit RelationMaker(DemoContext& ctx) : m_ctx(ctx), m_rnd(ctx.rnd), m_names(configuredNames(ctx.db)) {}

    bool has(const QString& name) const { return m_names.contains(name); }

    // Practitioners shared by many clients, as in a real service area.
    std::vector<int> pool(int count, const QStringList& organisations, const QString& salutation,
                          const QString& domain, const QString& misc)
    {
        std::vector<int> made;
        for (int i = 0; i < count; ++i) {
            Individual p = person();
            p.salutation = salutation;
            p.organisation = organisations[size_t(i) % size_t(organisations.size())];
            p.phoneDesc = QStringLiteral("Work");
            p.phone2Desc = QStringLiteral("Fax");
            p.phone2 = demoPhone(m_rnd);
            p.email = mailbox(p.first, p.last, domain);
            p.misc = misc;
            made.push_back(add(p));
        }
        return made;
    }

    // A relative or friend of one client: family mostly shares the name,
    // and half of them live nearby.
    int relative(const DemoClient& client, const QString& relation)
    {
        Individual p = person();
        if (relation == QLatin1String("Son"))
            p.first = m_rnd.pick(maleFirstNames());
        else if (relation == QLatin1String("Daughter"))
            p.first = m_rnd.pick(femaleFirstNames());
        const bool family = relation == QLatin1String("Son") || relation == QLatin1String("Daughter");
        if (family && (relation == QLatin1String("Son") || m_rnd.chance(0.5))) p.last = client.last;
        if (relation == QLatin1String("Neighbor")) {
            p.address = client.home;
            p.address.houseNo = QString::number(client.home.houseNo.toInt() + 2 * m_rnd.between(1, 3));
            p.address.address1 = client.home.address1.section(u' ', 1).prepend(p.address.houseNo + u' ');
            p.address.address2.clear();
        }
        p.phoneDesc = m_rnd.chance(0.6) ? QStringLiteral("Cell/Mobile") : QStringLiteral("Home");
        if (m_rnd.chance(0.3)) {
            p.phone2Desc = QStringLiteral("Work");
            p.phone2 = demoPhone(m_rnd);
        }
        if (m_rnd.chance(0.4)) p.email = mailbox(p.first, p.last, QStringLiteral("example.com"));
        return add(p);
    }

    int caregiver()
    {
        static const QStringList agencies = {QStringLiteral("Brookfield Home Care"),
                                             QStringLiteral("Valley Companion Services"),
                                             QStringLiteral("Mill River Home Health")};
        Individual p = person();
        p.organisation = m_rnd.pick(agencies);
        p.phoneDesc = QStringLiteral("Cell/Mobile");
        p.misc = QStringLiteral("Visits weekday mornings");
        return add(p);
    }

    void relate(const DemoClient& client, int indivId, const QString& name, bool emergency, bool aware,
                bool referrer, const QString& note = {})
    {
        if (!has(name)) return;
        Relation r;
        r.personId = client.personId;
        r.indivId = indivId;
        r.name = name;
        r.emergency = emergency;
        r.hivAware = aware;
        r.referrer = referrer;
        r.note = note;
        r.user = m_ctx.anyStaff();
        const QDate added = client.added.isValid() ? client.added : m_ctx.today;
        r.created = std::min(m_ctx.today, added.addDays(m_rnd.below(60)));
        Individual& who = m_people[size_t(indivId - 1)];
        if (!who.created.isValid() || r.created < who.created) {
            who.created = r.created;
            who.user = r.user;
        }
        m_relations.push_back(r);
    }

    void write()
    {
        DemoTable individuals(
            m_ctx.db, QStringLiteral("Individuals"),
            {QStringLiteral("INDIV_ID"), QStringLiteral("FIRST_NAME"), QStringLiteral("LAST_NAME"),
             QStringLiteral("SALUTATION"), QStringLiteral("ORGANIZATION"), QStringLiteral("ADDRESS1"),
             QStringLiteral("ADDRESS2"), QStringLiteral("CITY"), QStringLiteral("STATE"), QStringLiteral("ZIP"),
             QStringLiteral("PHONE1_DESC"), QStringLiteral("PHONE1"), QStringLiteral("PHONE2_DESC"),
             QStringLiteral("PHONE2"), QStringLiteral("EMAIL"), QStringLiteral("MISC_INFO"), QStringLiteral("USER"),
             QStringLiteral("CREATE_DATE"), QStringLiteral("LAST_UPDATED")});
        for (const Individual& p : m_people) {
            // An individual nobody ended up related to (its bond is not
            // configured) is not kept.
            if (!p.created.isValid()) continue;
            individuals.insert({p.id, orNull(p.first), orNull(p.last), orNull(p.salutation),
                                orNull(p.organisation), orNull(p.address.address1), orNull(p.address.address2),
                                orNull(p.address.city), orNull(p.address.state), orNull(p.address.zip),
                                orNull(p.phoneDesc), orNull(p.phone), orNull(p.phone2Desc), orNull(p.phone2),
                                orNull(p.email), orNull(p.misc), p.user.left(20), p.created,
                                m_ctx.at(p.created, 9, 40)});
        }
        DemoTable relationships(m_ctx.db, QStringLiteral("Relationships"),
                                {QStringLiteral("Person_ID"), QStringLiteral("Indiv_ID"),
                                 QStringLiteral("Relationship"), QStringLiteral("Note"), QStringLiteral("HIV_Aware"),
                                 QStringLiteral("Referrer"), QStringLiteral("Emergency_Contact"),
                                 QStringLiteral("User"), QStringLiteral("Create_Date"),
                                 QStringLiteral("Last_Updated")});
        for (const Relation& r : m_relations)
            relationships.insert({r.personId, r.indivId, r.name, orNull(r.note), r.hivAware, r.referrer,
                                  r.emergency, r.user.left(25), r.created, r.created});
    }

private:
    Individual person()
    {
        Individual p;
        p.first = m_rnd.pick(m_rnd.chance(0.5) ? femaleFirstNames() : maleFirstNames());
        p.last = m_rnd.pick(lastNames());
        p.address = randomAddress(m_ctx);
        p.phone = demoPhone(m_rnd);
        return p;
    }

    int add(Individual p)
    {
        p.id = int(m_people.size()) + 1;
        m_people.push_back(p);
        return p.id;
    }

    DemoContext& m_ctx;
    DemoRandom& m_rnd;
    QStringList m_names;
    std::vector<Individual> m_people;
    std::vector<Relation> m_relations;
};

void writeIndividuals(DemoContext& ctx)
{
    RelationMaker maker(ctx);
    const int n = int(ctx.clients.size());
    const std::vector<int> physicians =
        maker.pool(std::max(3, n / 60),
                   {QStringLiteral("Brookfield Family Medicine"), QStringLiteral("Mill River Medical Group"),
                    QStringLiteral("Riverside Internal Medicine"), QStringLiteral("Valley Geriatric Associates")},
                   QStringLiteral("Dr."), QStringLiteral("clinic.example.org"), QString());
    const std::vector<int> caseWorkers =
        maker.pool(std::max(2, n / 120),
                   {QStringLiteral("County Office for the Aging"), QStringLiteral("Brookfield Hospital Social Work"),
                    QStringLiteral("Area Agency on Aging")},
                   QString(), QStringLiteral("county.example.org"), QStringLiteral("Call before 3 PM"));
    DemoRandom& rnd = ctx.rnd;
    for (const DemoClient& c : ctx.clients) {
        if (c.org) continue;
        if (rnd.chance(0.45)) {
            const QString name = QStringList{QStringLiteral("Daughter"), QStringLiteral("Son"),
                                             QStringLiteral("Friend"),
                                             QStringLiteral("Neighbor")}[rnd.weighted({45, 35, 10, 10})];
            if (maker.has(name)) {
                const int relative = maker.relative(c, name);
                maker.relate(c, relative, name, rnd.chance(0.8), rnd.chance(0.3), false);
                // A few children pay for their parent's meals.
                if ((name == QLatin1String("Daughter") || name == QLatin1String("Son")) && rnd.chance(0.06))
                    maker.relate(c, relative, QStringLiteral("Bill-To"), false, false, false,
                                 QStringLiteral("Send the monthly bill here."));
            }
            if (rnd.chance(0.15) && maker.has(QStringLiteral("Friend")))
                maker.relate(c, maker.relative(c, QStringLiteral("Friend")), QStringLiteral("Friend"),
                             rnd.chance(0.5), false, false);
        }
        if (rnd.chance(0.3))
            maker.relate(c, rnd.pick(physicians), QStringLiteral("Physician"), false, true, rnd.chance(0.2));
        if (rnd.chance(c.status == QLatin1String("A") ? 0.2 : 0.1))
            maker.relate(c, rnd.pick(caseWorkers), QStringLiteral("Case Worker"), false, true, rnd.chance(0.6),
                         rnd.chance(0.3) ? QStringLiteral("Reassessment due each spring.") : QString());
        if (rnd.chance(0.06) && maker.has(QStringLiteral("Caregiver")))
            maker.relate(c, maker.caregiver(), QStringLiteral("Caregiver"), rnd.chance(0.5), true, false);
    }
    maker.write();
}

struct DemoList
{
    const char* name;
    const char* description;
    double share;     // of the clients on it
    bool activeOnly;  // only clients being served join it
    bool invitations; // members are invited and confirm
};

void writeLists(DemoContext& ctx)
{
    static const DemoList lists[] = {
        {"Holiday Card Mailing", "Clients who receive the December card", 0.4, true, false},
        {"Quarterly Newsletter", "Printed newsletter by post", 0.3, false, false},
        {"Birthday Cards", "A card in the month of the birthday", 0.25, true, false},
        {"Friendly Visitor Interest", "Would like a volunteer to visit", 0.08, true, false},
        {"Advisory Council Invitations", "Invited to the clients' advisory council", 0.03, false, true},
    };
    DemoRandom& rnd = ctx.rnd;
    const QDate created = ctx.today.addYears(-2);
    DemoTable listRows(ctx.db, QStringLiteral("Lists"),
                       {QStringLiteral("Record_ID"), QStringLiteral("List_Name"), QStringLiteral("List_Desc"),
                        QStringLiteral("Reason"), QStringLiteral("Active_Only"), QStringLiteral("Create_Date"),
                        QStringLiteral("Last_Update")});
    DemoTable members(ctx.db, QStringLiteral("List_Members"),
                      {QStringLiteral("List_ID"), QStringLiteral("Person_ID"), QStringLiteral("Client_ID"),
                       QStringLiteral("Invited"), QStringLiteral("Confirmed"), QStringLiteral("RecVisible"),
                       QStringLiteral("Create_Date"), QStringLiteral("Updated_By"), QStringLiteral("Last_Update")});
    int id = 0;
    for (const DemoList& l : lists) {
        ++id;
        listRows.insert({id, QString::fromLatin1(l.name), QString::fromLatin1(l.description),
                         QStringLiteral("LST"), l.activeOnly, created, ctx.at(created, 14, 0)});
        for (const DemoClient& c : ctx.clients) {
            if (c.org || (l.activeOnly && c.status != QLatin1String("A")) || !rnd.chance(l.share)) continue;
            const QDate joined =
                std::min(ctx.today, std::max(created, c.added.isValid() ? c.added : created).addDays(rnd.below(30)));
            const bool confirmed = l.invitations && rnd.chance(0.6);
            members.insert({id, c.personId, c.clientId,
                            l.invitations ? QVariant(QStringLiteral("Y")) : null(),
                            l.invitations ? QVariant(confirmed ? QStringLiteral("Y") : QStringLiteral("N")) : null(),
                            true, joined, ctx.anyStaff().left(25), ctx.at(joined, 15, 30)});
        }
    }
}

} // namespace

void writeRelations(DemoContext& ctx)
{
    writeIndividuals(ctx);
    writeLists(ctx);
}

} // namespace kb::demo
