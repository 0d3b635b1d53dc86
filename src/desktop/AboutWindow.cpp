#include "desktop/AboutWindow.h"

#include "desktop/Desktop.h"
#include "desktop/Icons.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

namespace corvanta {

namespace {

constexpr int PictureSize = 72;

} // namespace

AboutWindow::AboutWindow(Desktop& desktop, frmAbout& window)
    : QDialog(nullptr, window.IsSplash
                           ? Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint
                           : Qt::Dialog),
      m_desktop(desktop),
      m_window(window),
      m_splash(window.IsSplash) {
    setObjectName("frmAbout");
    setAttribute(Qt::WA_ShowWithoutActivating, m_splash); // the keyboard is the main window's
    setWindowTitle(tr("About Corvanta"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(36, 28, 36, 24);
    auto* picture = new QLabel(this);
    picture->setPixmap(
        ThemedIcon("corvanta").pixmap(QSize(PictureSize, PictureSize), devicePixelRatioF()));
    layout->addWidget(picture, 0, Qt::AlignHCenter);
    auto* name = new QLabel("Corvanta", this);
    QFont font = name->font();
    font.setPointSizeF(font.pointSizeF() * 2);
    name->setFont(font);
    layout->addWidget(name, 0, Qt::AlignHCenter);
    layout->addWidget(new QLabel(QString::fromStdString(window.Version), this), 0,
                      Qt::AlignHCenter);
    layout->addSpacing(8);
    layout->addWidget(new QLabel(tr("Kinematics and loads of one corner of a suspension"), this), 0,
                      Qt::AlignHCenter);
    if (m_splash) {
        QTimer::singleShot(frmAbout::SplashTime, this, [this] {
            m_desktop.Handle([this] { m_desktop.Main().TakeDownSplash(); });
        });
    } else {
        layout->addSpacing(12);
        auto* terms = new QLabel(tr("The desktop program is passed on under the terms of the GNU "
                                    "General Public License, version 3 or later.\n\n"
                                    "Libraries: Qt %1 (GNU Lesser General Public License 3)\n"
                                    "QCustomPlot (GNU General Public License 3 or later)")
                                     .arg(QString::fromLatin1(qVersion())),
                                 this);
        terms->setWordWrap(true);
        layout->addWidget(terms);
        layout->addSpacing(12);
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
        connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
        layout->addWidget(buttons);
        setWindowModality(Qt::ApplicationModal);
    }
    show();
}

void AboutWindow::done(int result) {
    QDialog::done(result);
    m_desktop.Handle([this] { m_splash ? m_desktop.Main().TakeDownSplash() : m_window.Close(); });
}

} // namespace corvanta
