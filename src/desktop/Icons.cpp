#include "desktop/Icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

namespace corvanta {

namespace {

/// Draws an SVG in the colour of the buttons' text, which it names "currentColor".
class ThemedEngine final : public QIconEngine {
  public:
    explicit ThemedEngine(QByteArray svg) : m_svg(std::move(svg)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State /*state*/) override {
        const QPalette palette = QApplication::palette();
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        QByteArray svg = m_svg;
        svg.replace("currentColor", palette.color(group, QPalette::ButtonText).name().toLatin1());
        QSvgRenderer(svg).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new ThemedEngine(m_svg); }

  private:
    QByteArray m_svg;
};

} // namespace

QIcon ThemedIcon(const QString& name) {
    QFile file(":/icons/" + name + ".svg");
    return file.open(QIODevice::ReadOnly) ? QIcon(new ThemedEngine(file.readAll())) : QIcon();
}

} // namespace corvanta
