#pragma once

#include <QScrollArea>

namespace corvanta {

class QtPageWriter;

/// The pages of a report, one below the other, as wide as the view; Ctrl and the wheel zoom.
class PagePreview final : public QScrollArea {
    Q_OBJECT

  public:
    explicit PagePreview(const QtPageWriter& pages, QWidget* parent = nullptr);

    /// Shows the document that the writer holds now.
    void Refresh();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    double m_zoom = 1;
};

} // namespace corvanta
