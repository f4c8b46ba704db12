#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace kb::reports {

// A barcode as zint lays it out, kept as vectors: the dark bars (or
// modules) in zint's units, quiet zones included, so that it is drawn at
// the resolution of whatever device prints it. The human-readable text is
// the report's to print, in the element's own font.
struct BarcodeShape
{
    QSizeF size;
    double moduleWidth = 1; // the narrowest bar, in the shape's units
    bool twoDimensional = false;
    std::vector<QRectF> bars;
    QString text; // printed under a linear code, when asked for
};

namespace Barcode {

// The symbologies a template can name: code128, code39, code93, ean13,
// upca, upce, itf, codabar, qrcode, datamatrix, pdf417.
QStringList symbologies();
bool isKnownSymbology(const QString& name);

// Encodes the data. Throws MessageError with zint's reason when the data
// cannot be written in the symbology (a letter in an EAN, for example).
// showText keeps the readable text (zint's, with an EAN's check digit) for
// linear codes.
std::shared_ptr<const BarcodeShape> encode(const QString& symbology, const QString& data, bool showText);

} // namespace Barcode

} // namespace kb::reports
