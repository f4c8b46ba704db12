#pragma once

#include "engine/ReportDocument.h"

#include <QPageLayout>

class QPainter;
class QPagedPaintDevice;

namespace kb::reports {

// The one painting path of reports: the preview, the printer and PDF files
// all draw pages through here.
//
// The painter's device must have its origin at the paper's top left corner
// (a printer in full-page mode, a PDF writer without margins, an image of
// the page) and no transformation; dpiX and dpiY are its resolution. Every
// length is turned into device pixels here, and texts, lines and barcodes
// are drawn at that resolution, so that they are sharp on any device.
void paintPage(QPainter& painter, const ReportDocument& document, int page, double dpiX, double dpiY);

// Paints pages first to last (counted from 0, inclusive) on a PDF writer or
// a printer, one device page each, at the report's paper size; copies times
// over, each copy whole, for a device that cannot make copies itself.
void paintPages(const ReportDocument& document, QPagedPaintDevice& device, int first, int last, int copies = 1);

// The paper of the report without margins, turned for a landscape report:
// what a printer or a PDF file is set to before the pages are painted.
QPageLayout pageLayoutOf(const ReportDocument& document);

// Writes the report as a PDF file. Throws MessageError when the file
// cannot be written.
void writePdf(const ReportDocument& document, const QString& path);

// The page as a picture at the resolution, white paper, for the preview.
QImage pageImage(const ReportDocument& document, int page, double dpi);

} // namespace kb::reports
