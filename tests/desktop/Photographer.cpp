#include "tests/desktop/Photographer.h"

#include <QDir>
#include <QTest>

#include <iostream>

namespace corvanta::test {

Photographer::Photographer(QString folder) : m_folder(std::move(folder)) {
    QDir().mkpath(m_folder);
}

void Photographer::Take(QWidget* window, const QString& name) const {
    QTest::qWait(40); // for what a window does after an event
    if (window == nullptr || !window->grab().save(m_folder + "/" + name + ".png")) {
        std::cerr << "no picture of " << name.toStdString() << "\n";
    }
}

} // namespace corvanta::test
