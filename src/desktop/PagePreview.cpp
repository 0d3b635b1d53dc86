#include "desktop/PagePreview.h"

#include "desktop/QtPageWriter.h"

#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace corvanta {

namespace {

constexpr double Gap = 14; ///< between pages and beside them, pixels
constexpr double LeastZoom = 0.3;
constexpr double MostZoom = 4;

/// All pages on one sheet.
class PageSheet final : public QWidget {
  public:
    explicit PageSheet(const QtPageWriter& pages) : m_pages(pages) {}

    /// Lays the pages out, each as wide as told.
    void LayOut(double pageWidth) {
        m_pageWidth = pageWidth;
        double height = Gap;
        for (int page = 0; page < m_pages.PageCount(); ++page) {
            height += m_pages.PageSize(page).height() * ScaleOf(page) + Gap;
        }
        resize(static_cast<int>(pageWidth + 2 * Gap), static_cast<int>(height));
        update();
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        double top = Gap;
        for (int page = 0; page < m_pages.PageCount(); ++page) {
            const QSizeF size = m_pages.PageSize(page) * ScaleOf(page);
            const QRectF paper(Gap, top, size.width(), size.height());
            if (paper.intersects(event->rect())) {
                painter.save();
                painter.fillRect(paper, Qt::white);
                painter.setClipRect(paper);
                painter.translate(paper.topLeft());
                painter.scale(ScaleOf(page), ScaleOf(page));
                m_pages.PaintPage(painter, page);
                painter.restore();
            }
            top += size.height() + Gap;
        }
    }

  private:
    [[nodiscard]] double ScaleOf(int page) const {
        return m_pageWidth / m_pages.PageSize(page).width();
    }

    const QtPageWriter& m_pages;
    double m_pageWidth = 1;
};

} // namespace

PagePreview::PagePreview(const QtPageWriter& pages, QWidget* parent) : QScrollArea(parent) {
    setWidget(new PageSheet(pages));
    setBackgroundRole(QPalette::Mid);
    setAlignment(Qt::AlignHCenter);
}

void PagePreview::Refresh() {
    static_cast<PageSheet*>(widget())->LayOut(m_zoom * (viewport()->width() - 2 * Gap));
}

void PagePreview::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    Refresh();
}

void PagePreview::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QScrollArea::wheelEvent(event);
        return;
    }
    constexpr double AngleOfStep = 120;
    constexpr double ZoomOfStep = 1.15;
    m_zoom = std::clamp(m_zoom * std::pow(ZoomOfStep, event->angleDelta().y() / AngleOfStep),
                        LeastZoom, MostZoom);
    Refresh();
}

} // namespace corvanta
