#pragma once

#include "MapPointOptions.h"

#include <QStringList>

#include <vector>

namespace kb {

class Database;
class UserInterface;
struct SessionState;

// "Mapping Options" for "Send to Mapping" of the stop ordering screen: the
// action, the start and end location (the organisation's address or a
// distribution center), whether the optimised order is read back, the
// export file and the pushpin label. The choices are kept in the user's ini
// file under the form's name.
class TFormMapPointOptionsOrderRoutes
{
public:
    TFormMapPointOptionsOrderRoutes(Database& db, const SessionState& session, UserInterface& ui);

    static QString caption() { return QStringLiteral("Mapping Options"); }
    static QString formName() { return QStringLiteral("TFormMapPointOptionsOrderRoutes"); }
    static QStringList actionTexts();
    // The actions the agency's settings offer: integrating needs the map
    // (Config.MAPPING "M"); exporting a file is always there.
    std::vector<MappingAction> offeredActions() const;
    bool integrateOffered() const { return m_integrateOffered; }
    static QString actionText(MappingAction action);

    MapPointOptions& options() { return m_options; }
    const MapPointOptions& options() const { return m_options; }

    // "Organization Address", then each distribution center as code - name.
    const QStringList& locationEntries() const { return m_locationTexts; }
    int locationIndex() const { return m_locationIndex; }
    // Fills the name and address fields from the chosen location.
    void setLocationIndex(int index);
    bool locationFieldsEnabled() const { return m_options.includeStarting || m_options.includeEnding; }

    // "Optimize and Retrieve Stops" is offered with the labels that hold the client number.
    bool optimizeEnabled() const;
    void setLabelOption(int option);
    void setAction(MappingAction action);

    // The labels of the address fields by Config.POSTAL_FORMAT: city, state, postal code.
    QStringList addressLabels() const;

    bool okEnabled() const;
    // OK: refuses a missing export file name ("The export file name is
    // missing!"), else keeps the choices in the ini file.
    bool accept();

private:
    struct Location
    {
        QString text;
        MappingLocation place;
    };

    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    QString m_postalFormat;
    bool m_integrateOffered = false;
    std::vector<Location> m_locations;
    QStringList m_locationTexts;
    int m_locationIndex = 0;
    MapPointOptions m_options;
};

} // namespace kb
