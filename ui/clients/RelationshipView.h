#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QPlainTextEdit;

namespace kb {
class RecordServices;
class SettingsFile;
class TFormRelationship;
} // namespace kb

namespace kb::ui {

class IndividualFieldsPanel;

// "Relationship" over its presenter: the relationship's name, the related
// individual chosen by its look-up with the individual's own fields beside
// it, the three flags and the note.
class RelationshipView : public QDialog
{
    Q_OBJECT

public:
    RelationshipView(TFormRelationship& presenter, RecordServices& services, SettingsFile& settings,
                     QWidget* parent = nullptr);

    QComboBox* relationshipBox() const { return m_relationship; }
    QComboBox* individualBox() const { return m_individual; }
    IndividualFieldsPanel* fields() const { return m_fields; }

    void accept() override;
    void reject() override;

private:
    void showIndividual();

    TFormRelationship& m_presenter;
    RecordServices& m_services;
    QComboBox* m_relationship;
    QComboBox* m_individual;
    IndividualFieldsPanel* m_fields;
    QPlainTextEdit* m_note;
    bool m_showing = false;
};

} // namespace kb::ui
