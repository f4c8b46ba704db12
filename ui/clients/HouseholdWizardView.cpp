#include "clients/HouseholdWizardView.h"

#include "FormPlacement.h"
#include "clients/HouseholdStep.h"
#include "households/TFormHouseholdWizard.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

using Step = TFormHouseholdWizard::Step;
using Choice = TFormHouseholdWizard::Choice;

QLabel* prompt(const QString& text)
{
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

// A page: its prompt, its controls, and room below.
QWidget* page(std::initializer_list<QWidget*> widgets)
{
    auto* w = new QWidget;
    auto* layout = new QVBoxLayout(w);
    for (QWidget* child : widgets)
        layout->addWidget(child);
    layout->addStretch();
    return w;
}

} // namespace

HouseholdWizardView::HouseholdWizardView(TFormHouseholdWizard& presenter, RecordServices& services,
                                         UserInterface& ui, SettingsFile& settings,
                                         QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_services(services), m_ui(ui), m_pages(new QStackedWidget),
      m_new(new QRadioButton(TFormHouseholdWizard::newChoiceText())),
      m_existing(new QRadioButton(TFormHouseholdWizard::existingChoiceText())), m_name(new QLineEdit),
      m_search(new QLineEdit), m_found(new QListWidget), m_role(new QComboBox),
      m_head(new QCheckBox(QStringLiteral("Head of Household"))),
      m_back(new QPushButton(QStringLiteral("< &Back"))), m_next(new QPushButton(QStringLiteral("&Next >"))),
      m_finish(new QPushButton(QStringLiteral("&Finish")))
{
    setObjectName(TFormHouseholdWizard::formName());
    setWindowTitle(TFormHouseholdWizard::caption());
    auto* group = new QButtonGroup(this);
    group->addButton(m_new);
    group->addButton(m_existing);
    m_name->setMaxLength(50);
    m_role->setEditable(true);
    m_role->setInsertPolicy(QComboBox::NoInsert);
    m_role->lineEdit()->setMaxLength(50);
    m_role->addItems(m_presenter.roles());
    m_role->setCurrentText(QString());

    auto* start = new QLabel(TFormHouseholdWizard::startText());
    start->setWordWrap(true);
    m_pages->addWidget(page({start}));
    m_pages->addWidget(page({prompt(TFormHouseholdWizard::choiceText()), m_new, m_existing}));
    m_pages->addWidget(page({prompt(TFormHouseholdWizard::nameText()), m_name}));
    auto* searchPage = new QWidget;
    auto* searchLayout = new QVBoxLayout(searchPage);
    searchLayout->addWidget(prompt(TFormHouseholdWizard::searchText()));
    searchLayout->addWidget(m_search);
    searchLayout->addWidget(m_found, 1);
    m_pages->addWidget(searchPage);
    m_pages->addWidget(page({prompt(TFormHouseholdWizard::roleText()), m_role,
                             prompt(TFormHouseholdWizard::headText()), m_head}));

    auto* cancel = new QPushButton(QStringLiteral("Cancel"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton* b : {m_back, m_next, m_finish, cancel})
        buttons->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pages, 1);
    layout->addLayout(buttons);

    connect(m_back, &QPushButton::clicked, this, [this] {
        m_presenter.back();
        showStep();
    });
    connect(m_next, &QPushButton::clicked, this, [this] {
        householdStep(m_services, m_ui, [this] { m_presenter.next(); });
        showStep();
    });
    connect(m_finish, &QPushButton::clicked, this, [this] { finish(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_new, &QRadioButton::toggled, this, [this](bool on) {
        if (m_filling) return;
        m_presenter.setChoice(on ? Choice::NewHousehold : Choice::ExistingHousehold);
        showStep();
    });
    connect(m_name, &QLineEdit::textEdited, this, [this](const QString& text) {
        m_presenter.setName(text);
        showStep();
    });
    connect(m_search, &QLineEdit::textEdited, this, [this](const QString& text) {
        householdStep(m_services, m_ui, [this, text] { m_presenter.search(text); });
        fillFound();
        showStep();
    });
    connect(m_found, &QListWidget::currentRowChanged, this, [this](int row) {
        if (m_filling || row < 0 || row >= m_presenter.found().size()) return;
        m_presenter.choose(m_presenter.found()[row].id);
        showStep();
    });
    connect(m_found, &QListWidget::itemDoubleClicked, this, [this] {
        m_presenter.next();
        showStep();
    });
    connect(m_role, &QComboBox::currentTextChanged, this,
            [this](const QString& text) { m_presenter.setRole(text); });
    connect(m_head, &QCheckBox::toggled, this, [this](bool on) { m_presenter.setHead(on); });

    householdStep(m_services, m_ui, [this] { m_presenter.FormShow(); });
    m_name->setText(m_presenter.name());
    showStep();
    keepPlacement(*this, settings, TFormHouseholdWizard::formName(), QSize(560, 360));
}

void HouseholdWizardView::fillFound()
{
    m_filling = true;
    m_found->clear();
    int chosen = -1;
    for (const TFormHouseholdWizard::Household& h : m_presenter.found()) {
        if (h.id == m_presenter.chosenHousehold()) chosen = m_found->count();
        m_found->addItem(h.name);
    }
    m_found->setCurrentRow(chosen);
    m_filling = false;
}

void HouseholdWizardView::showStep()
{
    m_filling = true;
    m_pages->setCurrentIndex(int(m_presenter.step()));
    m_existing->setEnabled(m_presenter.existingOffered());
    m_new->setChecked(m_presenter.choice() == Choice::NewHousehold);
    m_existing->setChecked(m_presenter.choice() == Choice::ExistingHousehold);
    m_filling = false;
    if (m_presenter.step() == Step::Search && m_found->count() != m_presenter.found().size()) fillFound();
    m_back->setEnabled(m_presenter.canBack());
    m_next->setEnabled(m_presenter.canNext());
    m_finish->setEnabled(m_presenter.canFinish());
    (m_presenter.canFinish() ? m_finish : m_next)->setDefault(true);
}

void HouseholdWizardView::finish()
{
    bool joined = false;
    householdStep(m_services, m_ui, [this, &joined] { joined = m_presenter.Finish(); });
    if (joined) accept();
}

} // namespace kb::ui
