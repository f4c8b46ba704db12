#include "TFormMapPointOptionsOrderRoutes.h"

#include "PushpinLabels.h"
#include "UserIni.h"

#include "store/Database.h"
#include "UserInterface.h"

#include <QSettings>

namespace kb {

namespace {

QString checked(bool on) { return on ? QStringLiteral("Checked") : QStringLiteral("Unchecked"); }

} // namespace

TFormMapPointOptionsOrderRoutes::TFormMapPointOptionsOrderRoutes(Database& db, const SessionState& session,
                                                                 UserInterface& ui)
    : m_db(db), m_session(session), m_ui(ui)
{
    const ResultSet config = m_db.execute(QStringLiteral(
        "Select Organizatn, Org_Addr, Org_City, Org_State, Org_Zip, Postal_Format, Mapping from Config"));
    Location organisation{QStringLiteral("Organization Address"), {}};
    if (!config.isEmpty()) {
        organisation.place = {config.value(0, 0).toString(), config.value(0, 1).toString(),
                              config.value(0, 2).toString(), config.value(0, 3).toString(),
                              config.value(0, 4).toString()};
        m_postalFormat = config.value(0, 5).toString().trimmed();
        m_integrateOffered = config.value(0, 6).toString().trimmed() == QLatin1String("M");
    }
    m_locations.push_back(organisation);
    const ResultSet centers = m_db.execute(QStringLiteral("select * from Locatns where Distribution_Center"));
    for (qsizetype r = 0; r < centers.rowCount(); ++r) {
        const auto v = [&](const char* c) { return centers.value(r, QString::fromLatin1(c)).toString().trimmed(); };
        m_locations.push_back({v("Location_CD") + QStringLiteral(" - ") + v("Location"),
                               {v("Location"), v("Location_Address"), v("Location_City"), v("Location_State"),
                                v("Location_Zip")}});
    }
    for (const Location& l : m_locations)
        m_locationTexts << l.text;

    QSettings ini(userIniPath(m_session), QSettings::IniFormat);
    ini.beginGroup(formName());
    m_options.action = ini.value(QStringLiteral("Action"), 0).toInt() == 1 ? MappingAction::Export
                                                                           : MappingAction::Integrate;
    m_options.exportFile = ini.value(QStringLiteral("FileName")).toString();
    m_options.labelOption = qBound(0, ini.value(QStringLiteral("LabelOptions"), 0).toInt(), PushpinLabels::count - 1);
    m_options.optimizeAndRetrieve = ini.value(QStringLiteral("OptimizeAndRetrieve")).toString() == QLatin1String("Checked");
    m_options.includeStarting =
        ini.value(QStringLiteral("IncludeStartingLocation")).toString() == QLatin1String("Checked");
    m_options.includeEnding = ini.value(QStringLiteral("IncludeEndingLocation")).toString() == QLatin1String("Checked");
    setLocationIndex(qBound(0, ini.value(QStringLiteral("DistCenters"), 0).toInt(), int(m_locations.size()) - 1));
    if (!m_integrateOffered) m_options.action = MappingAction::Export;
    if (!optimizeEnabled())
        m_options.optimizeAndRetrieve = false;
}

QStringList TFormMapPointOptionsOrderRoutes::actionTexts()
{
    return {actionText(MappingAction::Integrate), actionText(MappingAction::Export)};
}

QString TFormMapPointOptionsOrderRoutes::actionText(MappingAction action)
{
    return action == MappingAction::Integrate ? QStringLiteral("Integrate with MapPoint")
                                              : QStringLiteral("Export to mapping software");
}

std::vector<MappingAction> TFormMapPointOptionsOrderRoutes::offeredActions() const
{
    if (m_integrateOffered) return {MappingAction::Integrate, MappingAction::Export};
    return {MappingAction::Export};
}

void TFormMapPointOptionsOrderRoutes::setLocationIndex(int index)
{
    if (index < 0 || index >= int(m_locations.size()))
        return;
    m_locationIndex = index;
    m_options.location = m_locations[size_t(index)].place;
}

bool TFormMapPointOptionsOrderRoutes::optimizeEnabled() const
{
    return m_options.action == MappingAction::Integrate && PushpinLabels::holdsClientNumber(m_options.labelOption);
}

void TFormMapPointOptionsOrderRoutes::setLabelOption(int option)
{
    m_options.labelOption = qBound(0, option, PushpinLabels::count - 1);
    if (!optimizeEnabled())
        m_options.optimizeAndRetrieve = false;
}

void TFormMapPointOptionsOrderRoutes::setAction(MappingAction action)
{
    m_options.action = m_integrateOffered ? action : MappingAction::Export;
    if (!optimizeEnabled())
        m_options.optimizeAndRetrieve = false;
}

QStringList TFormMapPointOptionsOrderRoutes::addressLabels() const
{
    if (m_postalFormat == QLatin1String("CAN"))
        return {QStringLiteral("City:"), QStringLiteral("Province:"), QStringLiteral("Postal:")};
    if (m_postalFormat == QLatin1String("UK"))
        return {QStringLiteral("Town:"), QStringLiteral("State:"), QStringLiteral("Postal:")};
    if (m_postalFormat == QLatin1String("OTH"))
        return {QStringLiteral("City:"), QStringLiteral("State:"), QStringLiteral("Postal:")};
    return {QStringLiteral("City:"), QStringLiteral("State:"), QStringLiteral("ZIP:")};
}

bool TFormMapPointOptionsOrderRoutes::okEnabled() const
{
    return m_options.action == MappingAction::Integrate || !m_options.exportFile.trimmed().isEmpty();
}

bool TFormMapPointOptionsOrderRoutes::accept()
{
    if (m_options.action == MappingAction::Export && m_options.exportFile.trimmed().isEmpty()) {
        m_ui.warning(QStringLiteral("The export file name is missing!"));
        return false;
    }
    QSettings ini(userIniPath(m_session), QSettings::IniFormat);
    ini.beginGroup(formName());
    ini.setValue(QStringLiteral("Action"), m_options.action == MappingAction::Export ? 1 : 0);
    ini.setValue(QStringLiteral("FileName"), m_options.exportFile);
    ini.setValue(QStringLiteral("OptimizeAndRetrieve"), checked(m_options.optimizeAndRetrieve));
    ini.setValue(QStringLiteral("LabelOptions"), m_options.labelOption);
    ini.setValue(QStringLiteral("DistCenters"), m_locationIndex);
    ini.setValue(QStringLiteral("IncludeStartingLocation"), checked(m_options.includeStarting));
    ini.setValue(QStringLiteral("IncludeEndingLocation"), checked(m_options.includeEnding));
    return true;
}

} // namespace kb
