#pragma once

#include "desktop/Binder.h"
#include "results/CWireframe.h"
#include "shell/frmEditGeometry.h"

#include <QWidget>

class QPlainTextEdit;
class QSplitter;
class QTabWidget;

namespace corvanta {

class ChartSheetView;
class Desktop;
class DrawingView;
class GridView;

/// The geometry editor on the screen.
class EditGeometryWindow final : public QWidget {
    Q_OBJECT

  public:
    EditGeometryWindow(Desktop& desktop, frmEditGeometry& window);

    void Refresh();
    [[nodiscard]] bool Shows(const frmEditGeometry& window) const { return &window == &m_window; }

    [[nodiscard]] GridView* Points() const { return m_points; }
    [[nodiscard]] ChartSheetView* Preview() const { return m_preview; }

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    QWidget* BuildTypePage();
    QWidget* BuildPointsPage();
    QWidget* BuildPointsTable();
    void FitPointsTable();
    QWidget* BuildPointsDrawing();
    QWidget* BuildPreview();
    void ConnectTable();
    QWidget* BuildTravelPage();
    QWidget* BuildFramesPage(const std::vector<FieldFrame*>& frames);
    QWidget* BuildDescriptionPage();
    QWidget* BuildButtons();
    QWidget* Frame(FieldFrame& frame);
    QWidget* Button(const Control& control, const char* name, const char* icon,
                    Binder::Event clicked);
    void KeepKeysOfFoot();
    void ShowPoints();
    void RememberSelection();
    void ShowDrawings();
    void Draw(DrawingView& view, const Suspension& draft, std::optional<PointNumber> ringed);
    void GiveFocus();

    Desktop& m_desktop;
    frmEditGeometry& m_window;
    Binder m_binder;
    QTabWidget* m_pages = nullptr;
    QSplitter* m_pointsPage = nullptr;
    int m_fittedWidth = 0; ///< of the table of points
    GridView* m_points = nullptr;
    DrawingView* m_typeDrawing = nullptr;
    DrawingView* m_pointsDrawing = nullptr;
    ChartSheetView* m_preview = nullptr;
    QPlainTextEdit* m_description = nullptr;
    CWireframe m_wireframe;
    CellRange m_shownSelection;
};

} // namespace corvanta
