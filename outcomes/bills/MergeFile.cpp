#include "bills/MergeFile.h"

#include "MessageError.h"

#include <QStringConverter>

namespace kb {

MergeFile::MergeFile(const QString& path, QLocale locale) : m_path(path), m_locale(std::move(locale))
{
    m_file = std::make_unique<QSaveFile>(path);
    if (!m_file->open(QIODevice::WriteOnly | QIODevice::Text))
        throw MessageError(
            QStringLiteral("Unable to create the file %1: %2").arg(path, m_file->errorString()));
    m_out = std::make_unique<QTextStream>(m_file.get());
    m_out->setEncoding(QStringConverter::Utf8);
}

MergeFile::~MergeFile()
{
    // Not committed: the temporary file goes and any earlier file stays.
    m_out.reset();
    if (m_file) m_file->cancelWriting();
}

QString MergeFile::field(const QString& text)
{
    QString out = text;
    for (QChar& c : out)
        if (c == u'\t' || c == u'\n' || c == u'\r' || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = u' ';
        else if (c == u'"')
            c = u'\'';
    return out;
}

QString MergeFile::money(Money amount, const QLocale& locale)
{
    const std::int64_t units = amount.units();
    const std::int64_t half = Money::Scale / 200; // half a cent in ten-thousandths
    const std::int64_t cents = (units < 0 ? units - half : units + half) / (Money::Scale / 100);
    if (locale.language() == QLocale::C) {
        const std::int64_t a = cents < 0 ? -cents : cents;
        return QStringLiteral("%1%2.%3")
            .arg(cents < 0 ? QStringLiteral("-") : QString())
            .arg(a / 100)
            .arg(a % 100, 2, 10, QLatin1Char('0'));
    }
    // A whole count of cents over 100 is the nearest double to the decimal,
    // and two decimals print it back exactly.
    return locale.toCurrencyString(double(cents) / 100.0, locale.currencySymbol(), 2);
}

void MergeFile::writeLine(const QStringList& fields)
{
    QStringList clean;
    clean.reserve(fields.size());
    for (const QString& f : fields)
        clean << field(f);
    *m_out << clean.join(u'\t') << '\n';
}

void MergeFile::writeHeader(const QStringList& names)
{
    writeLine(names);
}

void MergeFile::write(const ClientBill& bill)
{
    QStringList fields = bill.fields;
    for (const BillSlot& s : bill.entries) {
        fields << (s.quantity ? QString::number(*s.quantity) : QString()) << s.item
               << (s.unitPrice ? money(*s.unitPrice, m_locale) : QString())
               << (s.charge ? money(*s.charge, m_locale) : QString());
    }
    fields << money(bill.total, m_locale);
    writeLine(fields);
}

void MergeFile::commit()
{
    m_out->flush();
    m_out.reset();
    if (m_file->error() != QFileDevice::NoError || !m_file->commit())
        throw MessageError(
            QStringLiteral("Unable to write the file %1: %2").arg(m_path, m_file->errorString()));
    m_file.reset();
}

} // namespace kb
