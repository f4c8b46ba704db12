// kettlebrook --user NAME config get [KEY] | config set KEY VALUE: reads or
// changes one setting of the agency's Config row through the System
// Configuration screen's own rules (a level that may not change data, a
// list of more than 31 entries, a code the screen does not offer, a value of
// the wrong kind are refused with the screen's message and a non-zero exit,
// and nothing changes). get prints CSV: the setting's name as the header and
// its value; without KEY every setting of the screen, one row each.

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "Csv.h"
#include "session/TDataModule1.h"
#include "settings/ConfigPages.h"
#include "settings/TFormEditConfig.h"

#include <stdexcept>

namespace {

using kb::ConfigEditor;
using kb::ConfigField;

const ConfigField& settingOf(const QString& key)
{
    const ConfigField* field = kb::configField(key);
    if (!field)
        throw kb::app::UsageError(
            QStringLiteral("'%1' is not a setting of the System Configuration screen.").arg(key));
    return *field;
}

// What the screen's control would hand over for the typed text; throws with
// the reason the screen would not take it.
QVariant valueFor(kb::TFormEditConfig& form, const ConfigField& field, const QString& text)
{
    const auto refuse = [&](const QString& why) {
        throw std::runtime_error(QStringLiteral("%1: %2").arg(field.column, why).toStdString());
    };
    switch (field.editor) {
    case ConfigEditor::Check: {
        const QString t = text.trimmed().toLower();
        if (t == QLatin1String("true") || t == QLatin1String("false")) return t == QLatin1String("true");
        refuse(QStringLiteral("give true or false"));
        break;
    }
    case ConfigEditor::YesNoCheck:
        if (text == QLatin1String("Y") || text == QLatin1String("N")) return text;
        refuse(QStringLiteral("give Y or N"));
        break;
    case ConfigEditor::Integer: {
        bool ok = false;
        const int n = text.trimmed().toInt(&ok);
        if (!ok) refuse(QStringLiteral("give a whole number"));
        return n;
    }
    case ConfigEditor::Float: {
        bool ok = false;
        const double n = text.trimmed().toDouble(&ok);
        if (!ok) refuse(QStringLiteral("give a number"));
        return n;
    }
    case ConfigEditor::Choice:
    case ConfigEditor::Lookup:
    case ConfigEditor::ClientIndex: {
        QStringList offered;
        for (const kb::Choice& choice : form.choices(field.column)) {
            if (choice.value.toString().compare(text, Qt::CaseInsensitive) == 0) return choice.value;
            offered.append(choice.value.toString().isEmpty() ? QStringLiteral("\"\"")
                                                             : choice.value.toString());
        }
        refuse(QStringLiteral("give one of ") + offered.join(QLatin1String(", ")));
        break;
    }
    case ConfigEditor::Text:
        if (field.width > 0 && text.size() > field.width)
            refuse(QStringLiteral("at most %1 characters").arg(field.width));
        return text;
    case ConfigEditor::Memo:
    case ConfigEditor::ListMemo:
        return text;
    }
    return {};
}

int runConfig(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const QString verb = args.positional(0);
    if (verb != QLatin1String("get") && verb != QLatin1String("set"))
        throw kb::app::UsageError(
            QStringLiteral("config needs get [KEY] or set KEY VALUE, not '%1'.").arg(verb));
    const bool setting = verb == QLatin1String("set");
    if (setting ? args.positionals().size() != 3 : args.positionals().size() > 2)
        throw kb::app::UsageError(setting ? QStringLiteral("config set needs KEY and VALUE.")
                                          : QStringLiteral("config get takes at most one KEY."));
    const QString key = args.positional(1);
    if (!key.isEmpty()) settingOf(key);

    // The screen's closing question is answered Yes: the change is what was asked for.
    if (setting) context.answers = kb::app::AnswerPolicy::Yes;
    kb::app::CommandSession session(context);
    kb::TFormEditConfig form(session.data());
    if (!form.open()) return 1;
    if (!setting) {
        QStringList columns;
        if (!key.isEmpty())
            columns.append(settingOf(key).column);
        else
            for (const kb::ConfigPage& page : kb::configPages())
                for (const ConfigField& field : page.fields)
                    columns.append(field.column);
        if (key.isEmpty()) {
            context.out << "setting,value\n";
            for (const QString& column : columns)
                context.out << kb::csvField(column) << ',' << kb::csvField(kb::csvText(form.value(column)))
                            << '\n';
        } else {
            context.out << columns.front() << '\n'
                        << kb::csvField(kb::csvText(form.value(columns.front()))) << '\n';
        }
        form.close();
        session.close();
        return 0;
    }

    const ConfigField& field = settingOf(key);
    if (!form.isFieldEnabled(field.column))
        throw std::runtime_error(QStringLiteral("%1 cannot be set while the setting it depends on is empty.")
                                     .arg(field.column)
                                     .toStdString());
    const bool done = form.setValue(field.column, valueFor(form, field, args.positional(2))) &&
                      form.leaveMemo(field.column);
    if (!done) return 1; // the form's destructor drops the change
    if (!form.close()) return 1;
    session.close();
    return 0;
}

const kb::app::CommandRegistration
    registration({.name = QStringLiteral("config"),
                  .arguments = QStringLiteral("get [KEY] | set KEY VALUE"),
                  .description = QStringLiteral(
                      "Reads or changes a setting of the System Configuration screen (a Config column such "
                      "as ORGANIZATN) through the screen's own rules."),
                  .minArguments = 1,
                  .maxArguments = 3,
                  .options = {},
                  .repeatable = {},
                  .needsUser = true},
                 runConfig);

} // namespace
