#include "render/Barcode.h"

#include "MessageError.h"

#include <zint.h>

#include <QSizeF>

#include <memory>

namespace kb::reports::Barcode {

namespace {

struct Symbology
{
    const char* name;
    int id;
    bool twoDimensional;
    int quietZone;
};

constexpr Symbology Symbologies[] = {
    {"code128", BARCODE_CODE128, false, 10}, {"code39", BARCODE_CODE39, false, 10},
    {"code93", BARCODE_CODE93, false, 10},   {"ean13", BARCODE_EANX, false, 9},
    {"upca", BARCODE_UPCA, false, 9},        {"upce", BARCODE_UPCE, false, 9},
    {"itf", BARCODE_C25INTER, false, 10},    {"codabar", BARCODE_CODABAR, false, 10},
    {"qrcode", BARCODE_QRCODE, true, 4},     {"datamatrix", BARCODE_DATAMATRIX, true, 1},
    {"pdf417", BARCODE_PDF417, true, 2},
};

const Symbology* findSymbology(const QString& name)
{
    for (const Symbology& s : Symbologies) {
        if (name.compare(QLatin1String(s.name), Qt::CaseInsensitive) == 0)
            return &s;
    }
    return nullptr;
}

struct SymbolDeleter
{
    void operator()(zint_symbol* symbol) const { ZBarcode_Delete(symbol); }
};

// The longest text a barcode is asked to hold; zint refuses longer data for
// every symbology we offer anyway.
constexpr qsizetype MaxDataBytes = 2000;

} // namespace

QStringList symbologies()
{
    QStringList names;
    for (const Symbology& s : Symbologies)
        names << QLatin1String(s.name);
    return names;
}

bool isKnownSymbology(const QString& name) { return findSymbology(name) != nullptr; }

std::shared_ptr<const BarcodeShape> encode(const QString& symbologyName, const QString& data, bool showText)
{
    const Symbology* symbology = findSymbology(symbologyName);
    if (!symbology)
        throw MessageError(QStringLiteral("There is no barcode symbology named '%1'.").arg(symbologyName));
    const QByteArray bytes = data.toUtf8();
    if (bytes.isEmpty())
        return std::make_shared<BarcodeShape>();
    if (bytes.size() > MaxDataBytes)
        throw MessageError(QStringLiteral("The barcode data is too long (%1 bytes).").arg(bytes.size()));

    std::unique_ptr<zint_symbol, SymbolDeleter> symbol(ZBarcode_Create());
    if (!symbol)
        throw MessageError(QStringLiteral("The barcode library could not start."));
    symbol->symbology = symbology->id;
    symbol->show_hrt = 0;
    symbol->input_mode = UNICODE_MODE;
    // The quiet zones scanners need around the code, in modules.
    symbol->whitespace_width = symbology->quietZone;
    symbol->whitespace_height = symbology->twoDimensional ? symbology->quietZone : 0;
    const int status = ZBarcode_Encode_and_Buffer_Vector(
        symbol.get(), reinterpret_cast<const unsigned char*>(bytes.constData()), int(bytes.size()), 0);
    if (status >= ZINT_ERROR)
        throw MessageError(QStringLiteral("The barcode '%1' cannot be printed as %2: %3")
                               .arg(data, QLatin1String(symbology->name), QString::fromUtf8(symbol->errtxt)));

    auto shape = std::make_shared<BarcodeShape>();
    const zint_vector* vector = symbol->vector;
    if (!vector)
        return shape;
    shape->size = QSizeF(vector->width, vector->height);
    shape->twoDimensional = symbology->twoDimensional;
    double narrowest = vector->width;
    for (const zint_vector_rect* r = vector->rectangles; r; r = r->next) {
        // Colour -1 is the foreground; zint paints no background rectangles
        // in vectors, but any other colour is left out all the same.
        if (r->colour != -1 && r->colour != 7)
            continue;
        shape->bars.emplace_back(r->x, r->y, r->width, r->height);
        if (r->width > 0)
            narrowest = std::min<double>(narrowest, r->width);
    }
    const int modules = symbol->width + 2 * symbol->whitespace_width;
    shape->moduleWidth = modules > 0 ? vector->width / modules : narrowest;
    if (showText && !symbology->twoDimensional)
        shape->text = symbol->text[0] ? QString::fromUtf8(reinterpret_cast<const char*>(symbol->text)) : data;
    return shape;
}

} // namespace kb::reports::Barcode
