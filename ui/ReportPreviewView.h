#pragma once

#include <QDialog>
#include <QImage>

class QAction;
class QComboBox;
class QLabel;
class QScrollArea;
class QSpinBox;

namespace kb::reports {
class ReportPreview;
}

namespace kb::ui {

class PageView;

// The preview window of a report over its presenter: the page, zoomed to
// the width, the whole page or a percentage; first, prior, next and last
// page and a page number box; print; save as PDF; close.
class ReportPreviewView : public QDialog
{
    Q_OBJECT

public:
    explicit ReportPreviewView(reports::ReportPreview& presenter, QWidget* parent = nullptr);
    ~ReportPreviewView() override;

    QAction* action(const QString& name) const;
    QSpinBox* pageBox() const { return m_pageBox; }
    QComboBox* zoomBox() const { return m_zoomBox; }
    QLabel* pageCountLabel() const { return m_pageCount; }
    // The page as drawn now.
    QImage pageImage() const;

protected:
    // A fitted page is drawn again whenever the view's size changes.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showState();
    void renderPage();
    void chooseZoom(int index);
    void saveAsPdf();

    reports::ReportPreview& m_presenter;
    QScrollArea* m_scroll;
    PageView* m_page;
    QSpinBox* m_pageBox;
    QLabel* m_pageCount;
    QComboBox* m_zoomBox;
    QList<QAction*> m_actions;
    bool m_updating = false;
};

} // namespace kb::ui
