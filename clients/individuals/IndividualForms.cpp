#include "individuals/IndividualForms.h"

#include "reference/ReferenceRules.h"
#include "store/Database.h"

namespace kb {

IndividualPostalForm individualPostalForm(const QString& format)
{
    const QString code = format.trimmed().toUpper();
    const QString phone = kb::postalFormat(code).phoneMask;
    if (code == QLatin1String("USA")) return {QStringLiteral("City / State / ZIP:"), true, QString(), phone};
    if (code == QLatin1String("CAN"))
        return {QStringLiteral("City / Prov / Postal:"), false, QStringLiteral("&#& #&#"), phone};
    if (code == QLatin1String("UK")) return {QStringLiteral("Town / / Postcode:"), false, QString(), phone};
    return {QStringLiteral("City / State / ZIP:"), false, QString(), QString()};
}

namespace {

// The client's phone codes in the order of their words.
const QString PhoneCodes = QStringLiteral("PHWCMFSBDNGROX");

} // namespace

const QStringList& individualPhoneWords()
{
    static const QStringList words = {
        QStringLiteral("Primary"),     QStringLiteral("Home"),         QStringLiteral("Work"),
        QStringLiteral("Cell/Mobile"), QStringLiteral("Mother"),       QStringLiteral("Father"),
        QStringLiteral("Sister"),      QStringLiteral("Brother"),      QStringLiteral("Daughter"),
        QStringLiteral("Son"),         QStringLiteral("Grandparents"), QStringLiteral("Friend"),
        QStringLiteral("Other"),       QStringLiteral("No Phone")};
    return words;
}

QString individualPhoneWord(const QString& code)
{
    const QString c = code.trimmed().toUpper();
    if (c.size() != 1) return {};
    const qsizetype at = PhoneCodes.indexOf(c);
    return at < 0 ? QString() : individualPhoneWords().at(at);
}

QString individualDisplayName(const QString& first, const QString& last, const QString& organization)
{
    const QString name = (first.trimmed() + QLatin1Char(' ') + last.trimmed()).trimmed();
    const QString org = organization.trimmed();
    if (name.isEmpty()) return org;
    if (org.isEmpty()) return name;
    return name + QStringLiteral(", ") + org;
}

std::vector<IndividualChoice> individualChoices(Database& db)
{
    const ResultSet rows = db.execute(
        QStringLiteral("Select Indiv_ID, First_Name, Last_Name, Organization from Individuals order by "
                       "Upper(Last_Name), Upper(First_Name), Upper(Organization), Indiv_ID"));
    std::vector<IndividualChoice> choices;
    choices.reserve(size_t(rows.rowCount()));
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        const QString first = rows.value(r, 1).toString().trimmed();
        const QString last = rows.value(r, 2).toString().trimmed();
        const QString org = rows.value(r, 3).toString().trimmed();
        QString text = last;
        if (!first.isEmpty()) text += (text.isEmpty() ? QString() : QStringLiteral(", ")) + first;
        if (!org.isEmpty()) text += text.isEmpty() ? org : QStringLiteral(" (") + org + QLatin1Char(')');
        const qint64 id = rows.value(r, 0).toLongLong();
        choices.push_back({id, text + QStringLiteral("   [%1]").arg(id)});
    }
    return choices;
}

qint64 individualIdOfChoice(const QString& text)
{
    const qsizetype open = text.lastIndexOf(QLatin1Char('['));
    const qsizetype close = text.lastIndexOf(QLatin1Char(']'));
    if (open < 0 || close <= open) return 0;
    bool ok = false;
    const qint64 id = text.mid(open + 1, close - open - 1).trimmed().toLongLong(&ok);
    return ok && id > 0 ? id : 0;
}

} // namespace kb
