#include "labels/LabelStockSettings.h"

#include "model/LabelStock.h"
#include "settings/SettingsFile.h"

namespace kb::reports {

QStringList LabelStockSettings::entries()
{
    QStringList list{QStringLiteral("As laid out in the template")};
    for (const LabelStock& stock : LabelStock::catalogue())
        list << stock.name + QStringLiteral(" - ") + stock.description;
    return list;
}

QString LabelStockSettings::stockAt(int index)
{
    const auto& stocks = LabelStock::catalogue();
    return index >= 1 && index <= int(stocks.size()) ? stocks[size_t(index - 1)].name : QString();
}

int LabelStockSettings::indexOf(const QString& stock)
{
    const LabelStock* found = LabelStock::find(stock);
    return found ? int(found - LabelStock::catalogue().data()) + 1 : 0;
}

QString LabelStockSettings::read(const SettingsFile* settings, const QString& key)
{
    if (!settings) return {};
    return stockAt(indexOf(settings->readString(section(), key)));
}

void LabelStockSettings::write(SettingsFile* settings, const QString& key, const QString& stock)
{
    if (settings) settings->writeString(section(), key, stockAt(indexOf(stock)));
}

} // namespace kb::reports
