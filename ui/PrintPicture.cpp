#include "PrintPicture.h"

#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QWidget>

namespace kb::ui {

bool printPicture(QWidget& window, bool landscape)
{
    QPrinter printer(QPrinter::HighResolution);
    if (landscape) printer.setPageOrientation(QPageLayout::Landscape);
    QPrintDialog dialog(&printer, &window);
    if (dialog.exec() != QDialog::Accepted) return false;
    const QPixmap picture = window.grab();
    QPainter painter;
    if (!painter.begin(&printer)) return false;
    const QRect page = painter.viewport();
    const QSize size = picture.size().scaled(page.size(), Qt::KeepAspectRatio);
    painter.setViewport(page.x(), page.y(), size.width(), size.height());
    painter.setWindow(picture.rect());
    painter.drawPixmap(0, 0, picture);
    return painter.end();
}

} // namespace kb::ui
