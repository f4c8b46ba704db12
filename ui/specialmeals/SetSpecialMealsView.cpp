#include "specialmeals/SetSpecialMealsView.h"

#include "specialmeals/TFormSetSpecialMeals.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace kb::ui {

SetSpecialMealsView::SetSpecialMealsView(TFormSetSpecialMeals& presenter, QWidget* parent)
    : QDialog(parent), m_presenter(presenter)
{
    setWindowTitle(presenter.caption());
    auto* panels = new QWidget(this);
    auto* row = new QHBoxLayout(panels);
    for (int meal = 1; meal <= presenter.panelCount(); ++meal) {
        Panel p;
        p.box = new QGroupBox(TFormSetSpecialMeals::heading(meal), panels);
        auto* column = new QVBoxLayout(p.box);
        column->addWidget(new QLabel(TFormSetSpecialMeals::rulePrompt(), p.box));
        p.rules = new QComboBox(p.box);
        p.rules->addItems(TFormSetSpecialMeals::ruleEntries(meal));
        column->addWidget(p.rules);
        column->addWidget(new QLabel(TFormSetSpecialMeals::dietPrompt(), p.box));
        p.diets = new QListWidget(p.box);
        for (const QString& line : presenter.dietLines()) {
            auto* item = new QListWidgetItem(line, p.diets);
            item->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
            item->setCheckState(Qt::Unchecked);
        }
        column->addWidget(p.diets, 1);
        p.any = new QRadioButton(TFormSetSpecialMeals::matchAnyText(), p.box);
        p.all = new QRadioButton(TFormSetSpecialMeals::matchAllText(), p.box);
        auto* match = new QHBoxLayout;
        match->addWidget(p.any);
        match->addWidget(p.all);
        match->addStretch();
        column->addLayout(match);
        auto* actionLabel = new QLabel(TFormSetSpecialMeals::actionPrompt(), p.box);
        p.action = new QLineEdit(presenter.action(meal), p.box);
        p.action->setMaxLength(50);
        actionLabel->setVisible(presenter.actionVisible());
        p.action->setVisible(presenter.actionVisible());
        column->addWidget(actionLabel);
        column->addWidget(p.action);
        p.box->setMinimumWidth(240);
        row->addWidget(p.box);

        connect(p.rules, &QComboBox::currentIndexChanged, this, [this, meal](int index) {
            if (!m_showing) m_presenter.setRuleIndex(meal, index);
        });
        connect(p.diets, &QListWidget::itemChanged, this,
                [this, meal, list = p.diets](QListWidgetItem* item) {
                    if (!m_showing)
                        m_presenter.setDietChecked(meal, list->row(item), item->checkState() == Qt::Checked);
                });
        connect(p.all, &QRadioButton::toggled, this, [this, meal](bool on) {
            if (!m_showing) m_presenter.setMatchAll(meal, on);
        });
        connect(p.action, &QLineEdit::textEdited, this,
                [this, meal](const QString& text) { m_presenter.setAction(meal, text); });
        m_panels.append(p);
    }
    auto* scroll = new QScrollArea(this);
    scroll->setWidget(panels);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    m_copy = buttons->addButton(QStringLiteral("Copy..."), QDialogButtonBox::ActionRole);
    m_copy->setVisible(presenter.copyVisible());
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(scroll, 1);
    layout->addWidget(buttons);
    // Side by side up to four panels at 1366 x 768; more scroll.
    resize(std::min(290 * presenter.panelCount() + 40, 1300), 540);

    connect(buttons, &QDialogButtonBox::accepted, this, &SetSpecialMealsView::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SetSpecialMealsView::reject);
    connect(m_copy, &QPushButton::clicked, &m_presenter, &TFormSetSpecialMeals::ActionCopy);
    connect(&m_presenter, &TFormSetSpecialMeals::changed, this, &SetSpecialMealsView::showState);
    showState();
}

void SetSpecialMealsView::showState()
{
    m_showing = true;
    for (int meal = 1; meal <= m_panels.size(); ++meal) {
        const Panel& p = m_panels[meal - 1];
        p.rules->setCurrentIndex(m_presenter.ruleIndex(meal));
        for (int line = 0; line < p.diets->count(); ++line)
            p.diets->item(line)->setCheckState(m_presenter.isDietChecked(meal, line) ? Qt::Checked
                                                                                     : Qt::Unchecked);
        (m_presenter.matchAll(meal) ? p.all : p.any)->setChecked(true);
        const bool diets = m_presenter.dietEnabled(meal);
        p.diets->setEnabled(diets);
        p.any->setEnabled(diets);
        p.all->setEnabled(diets);
        if (p.action->text() != m_presenter.action(meal)) p.action->setText(m_presenter.action(meal));
    }
    m_showing = false;
}

void SetSpecialMealsView::accept()
{
    if (m_presenter.accept()) QDialog::accept();
}

void SetSpecialMealsView::reject()
{
    m_presenter.reject();
    QDialog::reject();
}

} // namespace kb::ui
