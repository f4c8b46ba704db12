#include "clients/HouseholdsView.h"

#include "FormPlacement.h"
#include "clients/HouseholdGrid.h"
#include "clients/HouseholdStep.h"
#include "households/TFormHouseholds.h"
#include "settings/SettingsFile.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

const HouseholdGridColumn HouseholdColumns[] = {{u"Household_Name", u"Household"},
                                                {u"Create_Date", u"Created"},
                                                {u"Last_Updated", u"Last Updated"},
                                                {u"User", u"Updated By"}};
const HouseholdGridColumn MemberColumns[] = {{u"FullName", u"Member"},
                                             {u"Client_ID", u"Client ID"},
                                             {u"Role", u"Role"},
                                             {u"Head_of_Household", u"Head"},
                                             {u"Person_ID", u"Person ID"}};

} // namespace

HouseholdsView::HouseholdsView(TFormHouseholds& presenter, RecordServices& services, UserInterface& ui,
                               SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_services(services), m_ui(ui), m_settings(settings),
      m_search(new QLineEdit), m_name(new QLineEdit),
      m_households(householdGrid(HouseholdColumns, QStringLiteral("Households"))),
      m_members(householdGrid(MemberColumns, QStringLiteral("Members"))),
      m_splitter(new QSplitter(Qt::Horizontal))
{
    setObjectName(TFormHouseholds::formName());
    setWindowTitle(TFormHouseholds::caption());
    m_name->setMaxLength(50);

    auto* search = new QHBoxLayout;
    search->addWidget(new QLabel(QStringLiteral("Search For:")));
    search->addWidget(m_search, 1);

    auto* right = new QWidget;
    auto* rightLayout = new QVBoxLayout(right);
    rightLayout->setContentsMargins(0, 0, 0, 0);
    auto* nameRow = new QFormLayout;
    nameRow->addRow(QStringLiteral("Household Name:"), m_name);
    rightLayout->addLayout(nameRow);
    rightLayout->addWidget(new QLabel(QStringLiteral("Members:")));
    rightLayout->addWidget(m_members, 1);
    m_splitter->addWidget(m_households);
    m_splitter->addWidget(right);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 1);

    auto* buttons = new QHBoxLayout;
    const auto add = [&](const QString& caption, auto slot) {
        auto* b = new QPushButton(caption);
        buttons->addWidget(b);
        m_buttons.append(b);
        connect(b, &QPushButton::clicked, this, slot);
        return b;
    };
    add(QStringLiteral("&New Household"), [this] { run([this] { m_presenter.ActionNewHousehold(); }); });
    add(QStringLiteral("&Add Person to"), [this] { run([this] { m_presenter.ActionAddPersonTo(); }); });
    add(QStringLiteral("&Edit Members"), [this] { run([this] { m_presenter.ActionEditMembers(); }); });
    add(QStringLiteral("&Delete Household"),
        [this] { run([this] { m_presenter.ActionDeleteHousehold(); }); });
    buttons->addStretch();
    auto* close = new QPushButton(QStringLiteral("Close"));
    buttons->addWidget(close);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(search);
    layout->addWidget(m_splitter, 1);
    layout->addLayout(buttons);

    connect(m_search, &QLineEdit::textEdited, this,
            [this](const QString& text) { run([this, text] { m_presenter.search(text); }); });
    connect(m_households, &QTableWidget::currentCellChanged, this, [this](int row) {
        if (m_filling || row < 0) return;
        householdStep(m_services, m_ui, [this, row] { m_presenter.households().setRecNo(row + 1); });
        fillMembers();
    });
    connect(m_name, &QLineEdit::editingFinished, this, [this] {
        if (m_filling || m_name->text() == m_presenter.currentHouseholdName()) return;
        run([this] { m_presenter.renameHousehold(m_name->text()); });
    });
    connect(m_members, &QTableWidget::cellDoubleClicked, this,
            [this] { run([this] { m_presenter.ActionEditMembers(); }); });

    householdStep(m_services, m_ui, [this] { m_presenter.FormShow(); });
    fill();
    restoreColumnWidths(*m_households->horizontalHeader(), settings, TFormHouseholds::formName(),
                        QStringLiteral("HouseholdColumns"));
    restoreColumnWidths(*m_members->horizontalHeader(), settings, TFormHouseholds::formName(),
                        QStringLiteral("MemberColumns"));
    restoreSplitter(*m_splitter, settings, TFormHouseholds::formName(), QStringLiteral("Splitter"));
    keepPlacement(*this, settings, TFormHouseholds::formName(), QSize(980, 520));
}

HouseholdsView::~HouseholdsView()
{
    saveColumnWidths(*m_households->horizontalHeader(), m_settings, TFormHouseholds::formName(),
                     QStringLiteral("HouseholdColumns"));
    saveColumnWidths(*m_members->horizontalHeader(), m_settings, TFormHouseholds::formName(),
                     QStringLiteral("MemberColumns"));
    saveSplitter(*m_splitter, m_settings, TFormHouseholds::formName(), QStringLiteral("Splitter"));
    m_presenter.FormClose();
}

QPushButton* HouseholdsView::button(const QString& caption) const
{
    for (QPushButton* b : m_buttons)
        if (b->text() == caption) return b;
    return nullptr;
}

template <typename Work> void HouseholdsView::run(Work&& work)
{
    householdStep(m_services, m_ui, std::forward<Work>(work));
    fill();
}

void HouseholdsView::fill()
{
    m_filling = true;
    fillHouseholdGrid(*m_households, m_presenter.households(), HouseholdColumns);
    m_filling = false;
    fillMembers();
}

void HouseholdsView::fillMembers()
{
    m_filling = true;
    fillHouseholdGrid(*m_members, m_presenter.members(), MemberColumns);
    m_name->setText(m_presenter.currentHouseholdName());
    m_filling = false;
    showState();
}

void HouseholdsView::showState()
{
    const bool chosen = m_presenter.currentHousehold() > 0;
    m_name->setReadOnly(!m_presenter.canChange());
    m_name->setEnabled(chosen);
    for (QPushButton* b : m_buttons) {
        const QString caption = b->text();
        if (caption == QLatin1String("&New Household"))
            b->setEnabled(!m_presenter.readOnly());
        else if (caption == QLatin1String("&Edit Members"))
            b->setEnabled(chosen);
        else
            b->setEnabled(m_presenter.canChange());
    }
}

} // namespace kb::ui
