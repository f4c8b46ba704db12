#include "clients/HouseholdMembersView.h"

#include "FormPlacement.h"
#include "clients/HouseholdGrid.h"
#include "clients/HouseholdStep.h"
#include "households/TFormHouseholdMembers.h"
#include "settings/SettingsFile.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

const QString AddCaption = QStringLiteral("&Add Member");
const QString RemoveCaption = QStringLiteral("&Remove Selected");
const QString LocateCaption = QStringLiteral("&Locate Selected Household Member");
const QString SaveCaption = QStringLiteral("&Save Member");
const QString CancelCaption = QStringLiteral("Ca&ncel Changes");

const HouseholdGridColumn Columns[] = {{u"FullName", u"Member"},
                                       {u"ClientID", u"Client ID"},
                                       {u"Role", u"Role"},
                                       {u"head_of_household", u"Head of Household"},
                                       {u"Last_Updated", u"Last Updated"}};

} // namespace

HouseholdMembersView::HouseholdMembersView(TFormHouseholdMembers& presenter, RecordServices& services,
                                           UserInterface& ui, SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_services(services), m_ui(ui), m_settings(settings),
      m_members(householdGrid(Columns, QStringLiteral("Members"))), m_editor(new QWidget),
      m_search(new QLineEdit), m_people(new QComboBox), m_role(new QComboBox),
      m_head(new QCheckBox(QStringLiteral("Head of Household")))
{
    setObjectName(TFormHouseholdMembers::formName());
    setWindowTitle(presenter.windowCaption());

    m_search->setPlaceholderText(QStringLiteral("Last name or Client ID"));
    m_people->setMinimumContentsLength(40);
    m_role->setEditable(true);
    m_role->setInsertPolicy(QComboBox::NoInsert);
    m_role->lineEdit()->setMaxLength(50);
    auto* personRow = new QHBoxLayout;
    personRow->addWidget(m_search);
    personRow->addWidget(m_people, 1);
    auto* form = new QFormLayout(m_editor);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(QStringLiteral("Client:"), personRow);
    form->addRow(QStringLiteral("Role:"), m_role);
    form->addRow(QString(), m_head);

    auto* buttons = new QHBoxLayout;
    const auto add = [&](const QString& caption, auto slot) {
        auto* b = new QPushButton(caption);
        buttons->addWidget(b);
        m_buttons.append(b);
        connect(b, &QPushButton::clicked, this, slot);
    };
    add(AddCaption, [this] {
        run([this] { m_presenter.ActionAddMember(); });
        m_search->setFocus();
    });
    add(RemoveCaption, [this] { run([this] { m_presenter.ActionRemoveSelected(); }); });
    add(SaveCaption, [this] { run([this] { m_presenter.post(); }); });
    add(CancelCaption, [this] { run([this] { m_presenter.cancel(); }); });
    add(LocateCaption, [this] { run([this] { m_presenter.ActionLocateSelected(); }); });
    buttons->addStretch();
    auto* close = new QPushButton(QStringLiteral("Close"));
    buttons->addWidget(close);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_members, 1);
    layout->addWidget(m_editor);
    layout->addLayout(buttons);

    // Read-only levels see the members, without a command that changes them.
    if (!presenter.editingAllowed()) {
        m_editor->hide();
        for (QPushButton* b : m_buttons)
            b->setVisible(b->text() == LocateCaption);
    }

    connect(m_members, &QTableWidget::currentCellChanged, this, [this](int row) {
        if (m_filling || row < 0) return;
        run([this, row] {
            if (m_presenter.isEditing() && !m_presenter.post()) return;
            m_presenter.members().setRecNo(row + 1);
        });
    });
    connect(m_search, &QLineEdit::textEdited, this, [this] { findPeople(); });
    connect(m_people, &QComboBox::activated, this, [this](int index) {
        const qint64 person = m_people->itemData(index).toLongLong();
        householdStep(m_services, m_ui, [this, person] { m_presenter.setPerson(person); });
        fill();
    });
    connect(m_role, &QComboBox::currentTextChanged, this, [this](const QString& text) {
        if (m_filling) return;
        householdStep(m_services, m_ui, [this, text] { m_presenter.setRole(text); });
        showState();
    });
    connect(m_head, &QCheckBox::toggled, this, [this](bool on) {
        if (m_filling) return;
        householdStep(m_services, m_ui, [this, on] { m_presenter.setHead(on); });
        showState();
    });

    fill();
    restoreColumnWidths(*m_members->horizontalHeader(), settings, TFormHouseholdMembers::formName(),
                        QStringLiteral("Columns"));
    keepPlacement(*this, settings, TFormHouseholdMembers::formName(), QSize(760, 420));
}

HouseholdMembersView::~HouseholdMembersView()
{
    saveColumnWidths(*m_members->horizontalHeader(), m_settings, TFormHouseholdMembers::formName(),
                     QStringLiteral("Columns"));
}

QPushButton* HouseholdMembersView::button(const QString& caption) const
{
    for (QPushButton* b : m_buttons)
        if (b->text() == caption) return b;
    return nullptr;
}

void HouseholdMembersView::done(int result)
{
    bool closing = true;
    householdStep(m_services, m_ui, [this, &closing] { closing = m_presenter.FormClose(); });
    if (!closing) {
        fill();
        return;
    }
    QDialog::done(result);
}

template <typename Work> void HouseholdMembersView::run(Work&& work)
{
    householdStep(m_services, m_ui, std::forward<Work>(work));
    fill();
}

void HouseholdMembersView::fill()
{
    m_filling = true;
    fillHouseholdGrid(*m_members, m_presenter.members(), Columns);
    m_filling = false;
    showMember();
}

void HouseholdMembersView::showMember()
{
    m_filling = true;
    const bool any = m_presenter.hasMember();
    DataSet& set = m_presenter.members();
    m_role->clear();
    m_role->addItems(m_presenter.roles());
    m_role->setCurrentText(any ? set.fieldValue(u"Role").toString() : QString());
    m_head->setChecked(any && set.fieldValue(u"head_of_household").toBool());
    if (!m_presenter.personChoosable()) {
        m_search->clear();
        m_people->clear();
        if (any) m_people->addItem(set.fieldValue(u"FullName").toString());
    }
    m_filling = false;
    showState();
}

void HouseholdMembersView::findPeople()
{
    m_people->clear();
    QList<TFormHouseholdMembers::Candidate> found;
    householdStep(m_services, m_ui, [this, &found] { found = m_presenter.findPeople(m_search->text()); });
    for (const TFormHouseholdMembers::Candidate& c : found)
        m_people->addItem(c.householdId > 0 ? c.text + QStringLiteral("  (in a household)") : c.text,
                          c.personId);
    if (!found.isEmpty()) {
        m_people->setCurrentIndex(0);
        householdStep(m_services, m_ui, [this, &found] { m_presenter.setPerson(found.first().personId); });
        fill();
        return;
    }
    showState();
}

void HouseholdMembersView::showState()
{
    const bool any = m_presenter.hasMember();
    const bool editing = m_presenter.isEditing();
    m_search->setEnabled(m_presenter.personChoosable());
    m_people->setEnabled(m_presenter.personChoosable());
    m_role->setEnabled(any);
    m_head->setEnabled(any);
    for (QPushButton* b : m_buttons) {
        const QString caption = b->text();
        if (caption == SaveCaption || caption == CancelCaption)
            b->setEnabled(editing);
        else if (caption == AddCaption)
            b->setEnabled(m_presenter.householdId() > 0);
        else
            b->setEnabled(any);
    }
}

} // namespace kb::ui
