#include "tests/desktop/Photographer.h"

#include <QDir>
#include <QPixmap>
#include <QTest>

#include <iostream>

namespace corvanta::test {

Photographer::Photographer(QString folder) : m_folder(std::move(folder)) {
    QDir().mkpath(m_folder);
}

void Photographer::Take(QWidget* window, const QString& name, int width) const {
    QTest::qWait(40); // for what a window does after an event
    QPixmap picture = window == nullptr ? QPixmap() : window->grab();
    if (width > 0) {
        picture = picture.scaledToWidth(width, Qt::SmoothTransformation);
    }
    if (!picture.save(m_folder + "/" + name + ".png")) {
        std::cerr << "no picture of " << name.toStdString() << "\n";
    }
}

} // namespace corvanta::test
