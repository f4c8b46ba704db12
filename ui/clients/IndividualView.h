#pragma once

#include <QDialog>

namespace kb {
class DataSet;
class RecordServices;
class SettingsFile;
class TFormIndividual;
} // namespace kb

namespace kb::ui {

class IndividualFieldsPanel;

// "Related Individuals Maintenance" over its presenter: the individual's
// fields, "Import Client" (the current client's name, address and phones,
// each after its question), OK and Cancel.
class IndividualView : public QDialog
{
    Q_OBJECT

public:
    // client: the client window's current client, for "Import Client".
    IndividualView(TFormIndividual& presenter, RecordServices& services, const DataSet& client,
                   SettingsFile& settings, QWidget* parent = nullptr);

    IndividualFieldsPanel* fields() const { return m_fields; }

    void accept() override;
    void reject() override;

private:
    TFormIndividual& m_presenter;
    RecordServices& m_services;
    IndividualFieldsPanel* m_fields;
};

} // namespace kb::ui
