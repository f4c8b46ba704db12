#include "RunCommandWords.h"

#include "TFormRunPrepare.h"

namespace kb::app {

QCommandLineOption deliveryTypeOption()
{
    return QCommandLineOption(
        QStringLiteral("type"),
        QStringLiteral("The delivery type: A all, O ongoing only, E episodic only, S scheduled "
                       "only, B episodic and scheduled. A when not given."),
        QStringLiteral("A|O|E|S|B"));
}

QChar deliveryTypeLetter(const CommandArgs& args)
{
    return args.choice(QStringLiteral("type"), {"A", "O", "E", "S", "B"}, QStringLiteral("A")).at(0);
}

QCommandLineOption confirmOption(const QString& description)
{
    return QCommandLineOption(QStringLiteral("confirm"), description, QStringLiteral("all|none|ID,..."));
}

GivenItemConfirmation itemConfirmation(const CommandArgs& args)
{
    const std::optional<GivenItemConfirmation> answer =
        GivenItemConfirmation::fromText(args.value(QStringLiteral("confirm"), QStringLiteral("none")));
    if (!answer)
        throw UsageError(
            QStringLiteral("--confirm needs all, none or item numbers separated by commas, such as 10,14."));
    return *answer;
}

void prepareRun(TFormRunPrepare& form, const QDate& date, QChar letter)
{
    form.SetDeliveryType(letter);
    form.SetPrepareDate(date);
    form.FormShow();
    form.ActionPrepare();
}

} // namespace kb::app
