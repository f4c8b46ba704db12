#include "ReportPreviewView.h"

#include "ReportPreview.h"
#include "render/PagePainter.h"

#include <QAction>
#include <QComboBox>
#include <QEvent>
#include <QFileDialog>
#include <QKeySequence>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QSpinBox>
#include <QStandardPaths>
#include <QToolBar>
#include <QVBoxLayout>

namespace kb::ui {

using reports::ReportPreview;

// The page on a grey desk, with a shadow, like paper.
class PageView : public QWidget
{
public:
    explicit PageView(QWidget* parent) : QWidget(parent) {}
    void setImage(QImage image)
    {
        m_image = std::move(image);
        setFixedSize(m_image.size() + QSize(2 * Margin, 2 * Margin));
        update();
    }
    const QImage& image() const { return m_image; }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        const QRect paper(QPoint(Margin, Margin), m_image.size());
        p.fillRect(paper.translated(3, 3), QColor(0, 0, 0, 90));
        p.drawImage(paper.topLeft(), m_image);
        p.setPen(QColor(120, 120, 120));
        p.drawRect(paper.adjusted(0, 0, -1, -1));
    }

private:
    static constexpr int Margin = 12;
    QImage m_image;
};

ReportPreviewView::ReportPreviewView(ReportPreview& presenter, QWidget* parent)
    : QDialog(parent),
      m_presenter(presenter),
      m_scroll(new QScrollArea(this)),
      m_page(new PageView(m_scroll)),
      m_pageBox(new QSpinBox(this)),
      m_pageCount(new QLabel(this)),
      m_zoomBox(new QComboBox(this))
{
    setWindowFlag(Qt::WindowMaximizeButtonHint, true);
    resize(1000, 700);
    auto* bar = new QToolBar(this);
    auto add = [&](const QString& name, const QString& text, const QKeySequence& key, auto slot) {
        auto* a = bar->addAction(text);
        a->setObjectName(name);
        if (!key.isEmpty())
            a->setShortcut(key);
        connect(a, &QAction::triggered, this, slot);
        m_actions << a;
        return a;
    };
    add(QStringLiteral("first"), QStringLiteral("First"), QKeySequence(Qt::CTRL | Qt::Key_Home),
        [this] { m_presenter.first(); });
    add(QStringLiteral("prior"), QStringLiteral("Prior"), QKeySequence(Qt::Key_PageUp), [this] { m_presenter.prior(); });
    bar->addWidget(new QLabel(QStringLiteral(" Page "), this));
    m_pageBox->setMinimum(1);
    m_pageBox->setKeyboardTracking(false);
    bar->addWidget(m_pageBox);
    bar->addWidget(m_pageCount);
    add(QStringLiteral("next"), QStringLiteral("Next"), QKeySequence(Qt::Key_PageDown), [this] { m_presenter.next(); });
    add(QStringLiteral("last"), QStringLiteral("Last"), QKeySequence(Qt::CTRL | Qt::Key_End),
        [this] { m_presenter.last(); });
    bar->addSeparator();
    add(QStringLiteral("zoomOut"), QStringLiteral("Zoom Out"), QKeySequence::ZoomOut,
        [this] { m_presenter.zoomOut(); });
    m_zoomBox->addItem(QStringLiteral("Fit Width"));
    m_zoomBox->addItem(QStringLiteral("Whole Page"));
    for (int step : ReportPreview::zoomSteps())
        m_zoomBox->addItem(QStringLiteral("%1%").arg(step), step);
    bar->addWidget(m_zoomBox);
    add(QStringLiteral("zoomIn"), QStringLiteral("Zoom In"), QKeySequence::ZoomIn, [this] { m_presenter.zoomIn(); });
    bar->addSeparator();
    add(QStringLiteral("print"), QStringLiteral("Print..."), QKeySequence::Print, [this] { m_presenter.print(); });
    add(QStringLiteral("savePdf"), QStringLiteral("Save as PDF..."), QKeySequence::Save, [this] { saveAsPdf(); });
    bar->addSeparator();
    add(QStringLiteral("close"), QStringLiteral("Close"), QKeySequence(), [this] { accept(); });

    m_scroll->setWidget(m_page);
    m_scroll->viewport()->installEventFilter(this);
    m_scroll->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_scroll->setBackgroundRole(QPalette::Dark);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar);
    layout->addWidget(m_scroll, 1);

    connect(m_pageBox, &QSpinBox::valueChanged, this, [this](int value) {
        if (!m_updating)
            m_presenter.goToPage(value);
    });
    connect(m_zoomBox, &QComboBox::activated, this, &ReportPreviewView::chooseZoom);
    connect(&m_presenter, &ReportPreview::changed, this, [this] {
        showState();
        renderPage();
    });
    showState();
    renderPage();
}

ReportPreviewView::~ReportPreviewView() = default;

QAction* ReportPreviewView::action(const QString& name) const
{
    for (QAction* a : m_actions) {
        if (a->objectName() == name)
            return a;
    }
    return nullptr;
}

QImage ReportPreviewView::pageImage() const { return m_page->image(); }

void ReportPreviewView::showState()
{
    m_updating = true;
    setWindowTitle(m_presenter.caption());
    m_pageBox->setMaximum(std::max(1, m_presenter.pageCount()));
    m_pageBox->setValue(m_presenter.currentPage() + 1);
    m_pageCount->setText(QStringLiteral(" ") + m_presenter.pageCountText() + QStringLiteral(" "));
    action(QStringLiteral("first"))->setEnabled(m_presenter.isEnabled(ReportPreview::Command::First));
    action(QStringLiteral("prior"))->setEnabled(m_presenter.isEnabled(ReportPreview::Command::Prior));
    action(QStringLiteral("next"))->setEnabled(m_presenter.isEnabled(ReportPreview::Command::Next));
    action(QStringLiteral("last"))->setEnabled(m_presenter.isEnabled(ReportPreview::Command::Last));
    action(QStringLiteral("print"))->setEnabled(m_presenter.isEnabled(ReportPreview::Command::Print));
    action(QStringLiteral("savePdf"))->setEnabled(m_presenter.isEnabled(ReportPreview::Command::SaveAsPdf));
    switch (m_presenter.zoom()) {
    case ReportPreview::Zoom::FitWidth: m_zoomBox->setCurrentIndex(0); break;
    case ReportPreview::Zoom::WholePage: m_zoomBox->setCurrentIndex(1); break;
    case ReportPreview::Zoom::Percent:
        m_zoomBox->setCurrentIndex(std::max(0, m_zoomBox->findData(m_presenter.zoomPercent())));
        break;
    }
    m_updating = false;
}

void ReportPreviewView::renderPage()
{
    const double screenDpi = logicalDpiX() > 0 ? logicalDpiX() : 96;
    const QSizeF viewport = m_scroll->viewport()->size();
    const double dpi = m_presenter.pageDpi(viewport, screenDpi);
    m_page->setImage(reports::pageImage(m_presenter.document(), m_presenter.currentPage(), dpi));
    action(QStringLiteral("zoomIn"))->setEnabled(m_presenter.isEnabled(ReportPreview::Command::ZoomIn));
    action(QStringLiteral("zoomOut"))->setEnabled(m_presenter.isEnabled(ReportPreview::Command::ZoomOut));
}

bool ReportPreviewView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_scroll->viewport() && event->type() == QEvent::Resize &&
        m_presenter.zoom() != ReportPreview::Zoom::Percent)
        renderPage();
    return QDialog::eventFilter(watched, event);
}

void ReportPreviewView::chooseZoom(int index)
{
    if (index == 0)
        m_presenter.fitWidth();
    else if (index == 1)
        m_presenter.wholePage();
    else
        m_presenter.setZoomPercent(m_zoomBox->itemData(index).toInt());
}

void ReportPreviewView::saveAsPdf()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Save as PDF"),
                                                      folder + u'/' + m_presenter.suggestedPdfName(),
                                                      QStringLiteral("PDF files (*.pdf)"));
    if (!path.isEmpty())
        m_presenter.saveAsPdf(path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive) ? path
                                                                                       : path + QStringLiteral(".pdf"));
}

} // namespace kb::ui
