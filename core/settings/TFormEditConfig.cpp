#include "settings/TFormEditConfig.h"

#include "UserInterface.h"
#include "catalogue/Catalogue.h"
#include "dataset/Abort.h"
#include "dataset/TableDataSet.h"
#include "records/RecordServices.h"
#include "session/TDataModule1.h"
#include "store/Database.h"

#include <cmath>

namespace kb {

namespace {

const QString MealsColumn = QStringLiteral("MEALS_LINE_ITEMS");
const QString TreeColumn = QStringLiteral("VISIBLE_COMPONENTS");

bool is(const QString& a, const char* b)
{
    return a.compare(QLatin1String(b), Qt::CaseInsensitive) == 0;
}

} // namespace

TFormEditConfig::TFormEditConfig(TDataModule1& module) : m_module(module), m_preferences(module) {}

TFormEditConfig::~TFormEditConfig()
{
    m_preferences.close();
}

QString TFormEditConfig::commandText(Command command)
{
    switch (command) {
    case Command::SetDefaultItems:
        return QStringLiteral("Set Default Items");
    case Command::SetIntakeDocuments:
        return QStringLiteral("Set Intake Documents");
    case Command::SetIntakeConditions:
        return QStringLiteral("Set Intake Conditions");
    case Command::SelectFont:
        return QStringLiteral("Select Font and Size");
    case Command::AssessmentVisibility:
        return QStringLiteral("Set Assessment Data: Order and Visibility");
    case Command::AssessmentChoices:
        return QStringLiteral("Set Assessment Drop-Down Choices");
    case Command::ScreeningChoices:
        return QStringLiteral("Set NSI/ADL/IADL Drop-Down Choices");
    case Command::ScreeningVisibility:
        return QStringLiteral("Set NSI/ADL/IADL Field Visibility");
    case Command::ShowLogIns:
        return QStringLiteral("Show Log-Ins");
    case Command::RepopulateTree:
        return QStringLiteral("Repopulate Component Visibility Tree");
    case Command::Close:
        return QStringLiteral("Close");
    }
    return {};
}

DataSet& TFormEditConfig::config() const
{
    return m_module.config();
}

bool TFormEditConfig::open()
{
    return m_module.services().guarded([this] {
        DataSet& set = config();
        set.first();
        m_meals = int(set.fieldValue(MealsColumn).toLongLong() & 0x7F);
        m_tree = ComponentTree::fromText(set.fieldValue(TreeColumn).toString());
        m_treeChanged = false;
        m_preferences.open();
        m_open = true;
    });
}

bool TFormEditConfig::isEditing() const
{
    const DataSet::State state = config().state();
    return state == DataSet::State::Edit || state == DataSet::State::Insert || m_preferences.isEditing();
}

bool TFormEditConfig::close()
{
    if (!m_open) return true;
    leaveComponentTree();
    if (value(MealsColumn).toInt() != m_meals && !setValue(MealsColumn, m_meals)) return false;
    if (isEditing()) {
        if (m_module.ui().question(closeQuestion(), Buttons::YesNo) == Answer::Yes) {
            const DataSet::State state = config().state();
            if ((state == DataSet::State::Edit || state == DataSet::State::Insert) &&
                !m_module.services().guarded([this] { config().post(); }))
                return false;
            if (!m_preferences.post()) return false;
        } else {
            m_module.services().guarded([this] { config().cancel(); });
            m_preferences.cancel();
        }
    }
    m_preferences.close();
    m_open = false;
    return true;
}

QVariant TFormEditConfig::value(const QString& column) const
{
    const DataSet& set = config();
    return set.isActive() && !set.isEmpty() ? set.fieldValue(column) : QVariant();
}

bool TFormEditConfig::setValue(const QString& column, const QVariant& value)
{
    const bool done = m_module.services().guarded([&] {
        DataSet& set = config();
        if (set.state() != DataSet::State::Edit && set.state() != DataSet::State::Insert) set.edit();
        set.setFieldValue(column, value);
    });
    if (done && column.startsWith(QLatin1String("SPECIAL"), Qt::CaseInsensitive))
        clearUnallowedSpecialMeals();
    return done;
}

QList<Choice> TFormEditConfig::choices(const QString& column) const
{
    const ConfigField* f = configField(column);
    if (!f) return {};
    if (f->editor == ConfigEditor::ClientIndex) {
        QList<Choice> list;
        if (const TableDef* def = Catalogue::standard().table(u"Clients"))
            for (const IndexDef& index : def->indexes())
                if (!index.primary) list.append(Choice{index.name, index.name});
        return list;
    }
    if (f->editor != ConfigEditor::Lookup) return f->choices;
    QList<Choice> list;
    const ResultSet rows = m_module.db().execute(f->lookup);
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        list.append(Choice{rows.value(r, 0), rows.value(r, 1).toString()});
    return list;
}

bool TFormEditConfig::specialMealAllowed(int n) const
{
    if (n <= 1) return true;
    return !value(specialLabelColumn(n - 1)).toString().trimmed().isEmpty() ||
           !value(specialAbbrevColumn(n - 1)).toString().trimmed().isEmpty();
}

void TFormEditConfig::clearUnallowedSpecialMeals()
{
    DataSet& set = config();
    for (int n = 2; n <= 5; ++n) {
        if (specialMealAllowed(n)) continue;
        for (const QString& column : {specialLabelColumn(n), specialAbbrevColumn(n)})
            if (!set.fieldValue(column).toString().isEmpty()) set.setFieldValue(column, QString());
    }
}

bool TFormEditConfig::isFieldEnabled(const QString& column) const
{
    for (int n = 2; n <= 5; ++n)
        if (column.compare(specialLabelColumn(n), Qt::CaseInsensitive) == 0 ||
            column.compare(specialAbbrevColumn(n), Qt::CaseInsensitive) == 0)
            return specialMealAllowed(n);
    if (is(column, "NSI_SCORE_COMPARISON_OPERATOR") || is(column, "NSI_SCORE_VALUE") ||
        is(column, "NSI_FOLLOWUP_DAYS"))
        return !value(QStringLiteral("NSI_SCORE_FIELDNAME")).toString().isEmpty();
    return true;
}

int TFormEditConfig::lineCount(const QString& memo)
{
    QString text = memo;
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    if (text.endsWith(u'\n')) text.chop(1);
    return text.isEmpty() ? 0 : int(text.count(u'\n')) + 1;
}

bool TFormEditConfig::leaveMemo(const QString& column)
{
    const ConfigField* f = configField(column);
    if (!f || f->editor != ConfigEditor::ListMemo || lineCount(value(column).toString()) <= MaxListEntries)
        return true;
    m_module.ui().warning(listLimitMessage());
    return false;
}

bool TFormEditConfig::mealsListVisible() const
{
    return value(QStringLiteral("DELIV_REPORT_SHOW_ITEMS")).toString() == QLatin1String("M");
}

void TFormEditConfig::setMealChecked(int bit, bool checked)
{
    if (bit < 0 || bit >= mealLineItemNames().size()) return;
    m_meals = checked ? m_meals | (1 << bit) : m_meals & ~(1 << bit);
}

QString TFormEditConfig::hoursInWords(double hours)
{
    const qint64 totalMinutes = std::llround(std::max(hours, 0.0) * 60.0);
    const qint64 whole = totalMinutes / 60;
    const qint64 minutes = totalMinutes % 60;
    return (whole == 1 ? QStringLiteral("1 hour ") : QString::number(whole) + QStringLiteral(" hours ")) +
           QString::number(minutes) + QStringLiteral(" minutes");
}

QString TFormEditConfig::sessionLengthWords() const
{
    return hoursInWords(value(QStringLiteral("CASE_MGT_DEFAULT_LENGTH")).toDouble());
}

bool TFormEditConfig::setDeliveryFont(const QString& family, int pointSize)
{
    return setValue(QStringLiteral("DELIV_DEFAULT_FONT_NAME"), family.left(25)) &&
           setValue(QStringLiteral("DELIV_DEFAULT_FONT_SIZE"), pointSize);
}

void TFormEditConfig::setComponentChecked(int node, bool checked)
{
    if (node < 0 || node >= m_tree.nodes().size() || m_tree.nodes()[node].checked == checked) return;
    m_tree.setChecked(node, checked);
    m_treeChanged = true;
}

void TFormEditConfig::leaveComponentTree()
{
    if (m_treeChanged && setValue(TreeColumn, m_tree.toText())) m_treeChanged = false;
}

void TFormEditConfig::repopulateComponentTree()
{
    m_tree = m_tree.repopulated();
    m_treeChanged = true;
}

QList<TFormEditConfig::EventDefault> TFormEditConfig::eventDefaults() const
{
    QList<EventDefault> rows;
    const ResultSet codes = m_module.db().execute(QStringLiteral(
        "Select EVENT_ID, EVENT_DESC, DEFAULT_HOURS, DEFAULT_SESSIONS from EventCds order by EVENT_ID"));
    for (qsizetype r = 0; r < codes.rowCount(); ++r)
        rows.append(EventDefault{codes.value(r, 0), codes.value(r, 1).toString(), codes.value(r, 2),
                                 codes.value(r, 3)});
    return rows;
}

bool TFormEditConfig::setEventDefault(const QVariant& eventId, const QString& column, int value)
{
    if (!is(column, "DEFAULT_HOURS") && !is(column, "DEFAULT_SESSIONS")) return false;
    DataSet& codes = m_module.table(QStringLiteral("EventCds"));
    const DataSet::Bookmark returnTo = codes.bookmark();
    const bool done = m_module.services().guarded([&] {
        codes.refresh();
        if (!codes.locate(QStringLiteral("EVENT_ID"), eventId)) return;
        codes.edit();
        codes.setFieldValue(column, value);
        codes.post();
    });
    if (!done && codes.state() == DataSet::State::Edit) codes.cancel();
    if (codes.bookmarkValid(returnTo)) m_module.services().guarded([&] { codes.gotoBookmark(returnTo); });
    return done;
}

ResultSet TFormEditConfig::systemUsers() const
{
    return m_module.db().execute(QStringLiteral("Select User_ID, Staff_Name, Nutritionist, Driver, "
                                                "Volunteer, PreferredTab from Staff order by Staff_Name"));
}

bool TFormEditConfig::isEnabled(Command command) const
{
    switch (command) {
    // Their screens (intake documents and conditions) are not part of the
    // program yet.
    case Command::SetIntakeDocuments:
    case Command::SetIntakeConditions:
        return false;
    default:
        return true;
    }
}

} // namespace kb
